#include "resources/ids.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/value_list.h"
#include "tools/gallery/page.h"
#include "tools/gallery/value_rows.h"

namespace {

constexpr std::int32_t rowWidth = 300;
constexpr std::int32_t stillsLeft = 380;
constexpr std::int32_t stillColumn = rowWidth + 8;

class ValuePage : public GalleryPage {
public:
    const wchar_t* Name() const override { return L"Values"; }
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;

protected:
    void Fill() override;

private:
    void AddStills(std::int32_t x, UINT state, const wchar_t* label);

    XValueList list;
};

void ValuePage::Fill() {
    AddHeading(16, 10, L"Alive: the ten kinds of row");
    list.Create(Window());
    SetValueIcons(list);
    AddEveryKind(list);
    SetWindowPos(list.ListBox(), nullptr, 16, 34, 340, 560, SWP_NOZORDER);
    AddHeading(stillsLeft, 10, L"Stills of the same rows");
    AddStills(stillsLeft, 0, L"not selected");
    AddStills(stillsLeft + stillColumn, ODS_SELECTED | ODS_FOCUS, L"selected, with the focus");
    AddLabel(stillsLeft, 650, L"A selected row without the focus lacks the dotted frame alone:");
    XMemBitmap still;
    still.CreateEmpty(nullptr, rowWidth, 21);
    CatchValueRow(list, Window(), 0, ODS_SELECTED, still);
    AddStill(stillsLeft, 670, still);
}

void ValuePage::AddStills(std::int32_t x, UINT state, const wchar_t* label) {
    AddLabel(x, 34, label);
    for (std::int32_t row = 0; row < list.RowCount(); ++row) {
        XMemBitmap still;
        still.CreateEmpty(nullptr, rowWidth, 21);
        CatchValueRow(list, Window(), row, state, still);
        AddStill(x, 56 + row * 26, still);
    }
}

LRESULT ValuePage::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                               std::uint32_t* handled) {
    return list.Route(window, message, wParam, lParam, handled);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeValuePage() {
    return std::make_unique<ValuePage>();
}
