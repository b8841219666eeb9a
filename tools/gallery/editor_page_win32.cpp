#include <array>

#include "toolkit/value_list.h"
#include "tools/gallery/page.h"
#include "tools/gallery/value_rows.h"

namespace {

constexpr std::int32_t left = 16;
constexpr std::int32_t top = 34;
constexpr std::int32_t step = 100;

class EditorPage : public GalleryPage {
public:
    const wchar_t* Name() const override { return L"Editors"; }
    void Enter() override;
    void Leave() override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;

protected:
    void Fill() override;

private:
    void AddList(std::size_t index, const wchar_t* heading, const clValueRowParams& row);

    std::array<XValueList, 6> lists;
};

// A list has one editor at a time, so each has a list of its own.
void EditorPage::Fill() {
    AddList(0, L"Edit", ValueRow(ValueKind::Edit, L"Edit", L"a text, all of it selected"));
    clValueRowParams row = ValueRow(ValueKind::Edit, L"Edit", L"a text");
    row.buttonCaption.Assign(L"Browse...");
    AddList(1, L"Edit with a button", row);
    row =
        ValueRow(ValueKind::Edit, L"Edit", L"one\r\ntwo\r\nthree\r\nfour\r\nfive\r\nsix\r\nseven");
    row.lines = 3;
    AddList(2, L"Edit of three lines", row);
    AddList(3, L"Combo: free text with suggestions",
            ValueRow(ValueKind::Combo, L"Combo", L"Something else"));
    row = ValueRow(ValueKind::Choice, L"Choice", L"High");
    row.valueWidth = 120;
    row.buttonCaption.Assign(L"Reset");
    AddList(4, L"Choice of 120 pixels with a button", row);
    AddList(5, L"Choice, expanded", ValueRow(ValueKind::Choice, L"Choice", L"High"));
}

void EditorPage::AddList(std::size_t index, const wchar_t* heading, const clValueRowParams& row) {
    const std::int32_t y = top + static_cast<std::int32_t>(index) * step;
    AddHeading(left, y - 22, heading);
    XValueList& list = lists[index];
    list.Create(Window());
    SetWindowPos(list.ListBox(), nullptr, left, y, 420, 72, SWP_NOZORDER);
    list.AddRow(row);
    list.AddRow(ValueRow(ValueKind::Text, L"Text", L"the row below"));
}

void EditorPage::Enter() {
    GalleryPage::Enter();
    for (XValueList& list : lists)
        list.SelectRowAt(0);
    SendMessageW(lists.back().Editor().EditorWindow(), CB_SHOWDROPDOWN, TRUE, 0);
}

void EditorPage::Leave() {
    for (XValueList& list : lists)
        list.SelectRowAt(-1);
    GalleryPage::Leave();
}

LRESULT EditorPage::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                std::uint32_t* handled) {
    for (XValueList& list : lists) {
        const LRESULT result = list.Route(window, message, wParam, lParam, handled);
        if (*handled != 0) return result;
    }
    return 0;
}

}  // namespace

std::unique_ptr<GalleryPage> MakeEditorPage() {
    return std::make_unique<EditorPage>();
}
