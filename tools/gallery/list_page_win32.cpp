#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <utility>

#include "mainwindow/file_list.h"
#include "toolkit/list_view.h"
#include "tools/gallery/page.h"

namespace {

constexpr std::uint16_t paintedId = 2001;
constexpr DWORD commonStyle = WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_SHAREIMAGELISTS;
constexpr DWORD exStyle =
    LVS_EX_CHECKBOXES | LVS_EX_HEADERDRAGDROP | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP;

struct RowText {
    const wchar_t* path;
    const wchar_t* title;
    const wchar_t* size;
    const wchar_t* rating;
    bool ticked;
    bool selected;
};
constexpr RowText rowTexts[] = {
    {L"C:\\Music\\Ticked.mp3", L"black text", L"4.1 MB", L"10", true, false},
    {L"C:\\Music\\Unticked.flac", L"grey text, grey stars", L"31 MB", L"7", false, false},
    {L"C:\\Music\\Ticked and selected.wav", L"black text", L"52 MB", L"5", true, true},
    {L"C:\\Music\\Unticked and selected.mp3", L"grey text", L"3.9 MB", L"", false, true},
    {L"C:\\Music\\A name that is too long for its column, so that it ends in dots.mp3",
     L"also a title that is too long for its column", L"120,404 KB", L"1", true, false},
    {L"C:\\Music\\Without a rating.txt", L"", L"1 KB", L"", true, false},
};

class PaintedList : public XListView {
public:
    void OnDrawRow(const DRAWITEMSTRUCT& item) override { files.DrawRow(item); }
    void OnColumnClick(std::int32_t column) override { files.ToggleSort(column); }

    clFileList files{*this};
};

class ListPage : public GalleryPage {
public:
    const wchar_t* Name() const override { return L"Lists"; }
    void Enter() override;
    void OnDestroy() override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;

protected:
    void Fill() override;

private:
    void AddList(XListView& list, DWORD style, const RECT& place, std::uint16_t id);
    void FillPainted();
    void FillPlain(XListView& list);
    void CatchFocused();

    PaintedList painted;
    XListView plain;
    XListView edited;
    bool isCaught = false;
};

constexpr RECT paintedPlace = {16, 34, 980, 210};
constexpr RECT plainPlace = {16, 254, 480, 400};
constexpr RECT editedPlace = {16, 444, 480, 590};

void ListPage::Fill() {
    AddHeading(16, 10,
               L"Drawn by the owner, as the program's lists are: ticks, stars, sorted header");
    AddList(painted, LVS_OWNERDRAWFIXED | LVS_SHOWSELALWAYS, paintedPlace, paintedId);
    FillPainted();
    AddHeading(16, 230, L"Drawn by the platform, without the focus");
    AddList(plain, LVS_SHOWSELALWAYS, plainPlace, 0);
    FillPlain(plain);
    AddHeading(500, 230, L"The same with the focus (a still)");
    AddHeading(16, 420, L"With the editor in a cell");
    AddList(edited, LVS_SHOWSELALWAYS, editedPlace, 0);
    FillPlain(edited);
    edited.SetEditMode(XListView::EditMode::AllColumns);
    AddLabel(500, 444, L"A press on a cell, or F2, opens the editor; the arrows move it on.");
    AddLabel(500, 462, L"Return takes the text over, Escape does not.");
    AddLabel(
        16, 610,
        L"A click in the first 21 pixels of column 0 ticks the whole selection; Ctrl+A selects "
        L"all; no column can be dragged below 50 pixels.");
}

void ListPage::AddList(XListView& list, DWORD style, const RECT& place, std::uint16_t id) {
    HWND const control = AddControl(WC_LISTVIEWW, L"", commonStyle | style, place, id);
    SendMessageW(control, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(exStyle));
    list.SetListWindow(control);
    list.Attach(control);
}

void ListPage::FillPainted() {
    clFileList& files = painted.files;
    files.SetUp(exStyle);
    files.InsertListColumn(clString(L"Name"), 300);
    files.InsertListColumn(clString(L"Title"), 220);
    files.InsertListColumn(clString(L"Size"), 100);
    files.InsertListColumn(clString(L"Rating"), 110);
    files.SetColumnSortImage(0, 0);
    files.SetColumnSortImage(2, 1);
    for (const RowText& text : rowTexts) {
        FileRow record;
        record.path.Assign(text.path);
        const std::int32_t row = files.AddRow(
            std::move(record), {}, [](const FileRow&, const clString&) -> clString { return {}; });
        files.SetTicked(row, text.ticked);
        const wchar_t* name = wcsrchr(text.path, L'\\') + 1;
        const wchar_t* const cells[] = {name, text.title, text.size, text.rating};
        for (std::int32_t column = 0; column < 4; ++column)
            painted.SetCell(clString(cells[column]), row, column);
        if (text.selected) painted.SelectRow(row, false);
    }
}

void ListPage::FillPlain(XListView& list) {
    SendMessageW(list.ListWindow(), LVM_SETIMAGELIST, LVSIL_SMALL,
                 SendMessageW(painted.ListWindow(), LVM_GETIMAGELIST, LVSIL_SMALL, 0));
    list.AddColumn(clString(L"Name"), 200, LVCFMT_LEFT, 50);
    list.AddColumn(clString(L"Centred"), 120, LVCFMT_CENTER, 50);
    list.AddColumn(clString(L"Right"), 120, LVCFMT_RIGHT, 50);
    for (std::int32_t i = 0; i < 5; ++i) {
        clString text;
        text.Format(L"row %d", i);
        const std::int32_t row = list.InsertRow(-1, 0, i == 4 ? -1 : 0, i);
        list.SetCell(text, row, 0);
        list.InsertRow(row, 1, -1, 0);
        list.SetCell(clString(L"middle"), row, 1);
        list.InsertRow(row, 2, -1, 0);
        list.SetCell(clString(i * 1000), row, 2);
    }
    list.SelectRow(1, true);
    list.SelectRow(2, false);
}

// One window alone has the focus, so the other's look is kept.
void ListPage::CatchFocused() {
    HWND const list = plain.ListWindow();
    SetFocus(list);
    RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT size{};
    GetClientRect(list, &size);
    XMemBitmap still;
    still.CreateEmpty(nullptr, size.right, size.bottom);
    HDC const dc = GetDC(list);
    BitBlt(still.Context(), 0, 0, size.right, size.bottom, dc, 0, 0, SRCCOPY);
    ReleaseDC(list, dc);
    AddStill(500, plainPlace.top, still);
    InvalidateRect(Window(), nullptr, FALSE);
}

void ListPage::Enter() {
    GalleryPage::Enter();
    UpdateWindow(Window());
    if (!isCaught) CatchFocused();
    isCaught = true;
    edited.Editor().Start(edited, 2, 1);
}

void ListPage::OnDestroy() {
    edited.Editor().Close();
    for (XListView* list : {static_cast<XListView*>(&painted), &plain, &edited})
        list->Detach();
}

LRESULT ListPage::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              std::uint32_t* handled) {
    for (XListView* list : {static_cast<XListView*>(&painted), &plain, &edited}) {
        const LRESULT result = list->Route(window, message, wParam, lParam, handled);
        if (*handled != 0) return result;
    }
    return 0;
}

}  // namespace

std::unique_ptr<GalleryPage> MakeListPage() {
    return std::make_unique<ListPage>();
}
