#include "toolkit/list_view.h"

namespace {

constexpr std::int32_t textBuffer = 999;
constexpr std::uint32_t allMarks = LVIS_FOCUSED | LVIS_SELECTED | LVIS_CUT | LVIS_DROPHILITED;

// The control takes text that it only reads as if it wrote it.
wchar_t* Writable(const clString& text) {
    return const_cast<wchar_t*>(text.Chars());
}

clRegionHandle MarkedRegion(HWND window) {
    clRegionHandle region(CreateRectRgn(0, 0, 0, 0));
    GetUpdateRgn(window, region.Get(), FALSE);
    return region;
}

}  // namespace

std::int32_t XListView::RowCount() const {
    return static_cast<std::int32_t>(Ask(LVM_GETITEMCOUNT));
}

std::int32_t XListView::InsertRow(std::int32_t row, std::int32_t column, std::int32_t image,
                                  std::int64_t data) {
    if (column == 0) return InsertRowWithText({}, row == -1 ? RowCount() : row, image, data);
    wchar_t empty[] = L"";
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.pszText = empty;
    item.iSubItem = column;
    if (image != -1) {
        item.mask |= LVIF_IMAGE;
        item.iImage = image;
    }
    item.iItem = row == -1 ? RowCount() - 1 : row;
    Ask(LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iItem;
}

std::int32_t XListView::InsertRowWithText(const clString& text, std::int32_t row,
                                          std::int32_t image, std::int64_t data) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_PARAM | LVIF_IMAGE;
    item.pszText = Writable(text);
    item.iItem = row;
    item.lParam = data;
    // An image that is left out would be the first of the list's.
    item.iImage = image == -1 ? I_IMAGENONE : image;
    return static_cast<std::int32_t>(Ask(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

void XListView::SetCell(const clString& text, std::int32_t row, std::int32_t column) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = Writable(text);
    Ask(LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

clString XListView::CellText(std::int32_t row, std::int32_t column) const {
    wchar_t text[textBuffer] = {};
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = textBuffer;
    if (Ask(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) == FALSE) return {};
    return item.pszText;  // the control may point at a text of its own
}

std::int64_t XListView::RowData(std::int32_t row) const {
    LVITEMW item = {};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    if (Ask(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) == FALSE) return 0;
    return item.lParam;
}

std::uint32_t XListView::RowState(std::int32_t row, std::uint32_t mask) const {
    return static_cast<std::uint32_t>(
        Ask(LVM_GETITEMSTATE, static_cast<WPARAM>(row), static_cast<LPARAM>(mask)));
}

void XListView::SetRowState(std::int32_t row, std::uint32_t state, std::uint32_t mask) {
    LVITEMW item = {};
    item.state = state;
    item.stateMask = mask;
    Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void XListView::SelectRow(std::int32_t row, bool exclusive) {
    if (!exclusive) {
        SetRowState(row, LVIS_SELECTED, LVIS_SELECTED);
        return;
    }
    const std::int32_t count = RowCount();
    for (std::int32_t i = 0; i < count; ++i)
        SetRowState(i, i == row ? LVIS_FOCUSED | LVIS_SELECTED : 0, allMarks);
    Ask(LVM_SETSELECTIONMARK, 0, row);
}

void XListView::SelectedRows(clPtrArray& rows) const {
    rows.Clear();
    const LRESULT count = RowCount();
    LRESULT row = -1;
    for (;;) {
        const LRESULT next = Ask(LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED);
        // A control that is gone answers 0 for ever.
        if (next <= row || next >= count) return;
        rows.Add(next);
        row = next;
    }
}

POINT XListView::PointerInList() const {
    POINT point = {};
    GetCursorPos(&point);
    ScreenToClient(listWindow, &point);
    return point;
}

LVHITTESTINFO XListView::HitTest(const POINT& point) const {
    LVHITTESTINFO hit = {};
    hit.pt = point;
    hit.iItem = -1;
    Ask(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return hit;
}

std::int32_t XListView::RowUnderPointer() const {
    return HitTest(PointerInList()).iItem;
}

XListView::RedrawPause::RedrawPause(XListView& list) : view(list), marks(list) {
    view.Ask(WM_SETREDRAW, FALSE);
}

XListView::RedrawPause::~RedrawPause() {
    view.RedrawInPlace(marks);
    // For no window the platform would redraw the whole screen.
    if (view.listWindow != nullptr) InvalidateRect(view.listWindow, nullptr, FALSE);
}

void XListView::CellWriter::SetCell(const clString& text, std::int32_t row, std::int32_t column) {
    if (!marks.has_value()) {
        marks.emplace(view);
        view.Ask(WM_SETREDRAW, FALSE);
    }
    if (rows.empty() || rows.back() != row) rows.push_back(row);
    view.SetCell(text, row, column);
}

XListView::CellWriter::~CellWriter() {
    if (!marks.has_value()) return;
    view.RedrawInPlace(*marks);
    const auto first = static_cast<std::int32_t>(view.Ask(LVM_GETTOPINDEX));
    // The last one may be in view by a part.
    const auto last = first + static_cast<std::int32_t>(view.Ask(LVM_GETCOUNTPERPAGE));
    for (const std::int32_t row : rows) {
        if (row >= first && row <= last) view.Ask(LVM_REDRAWITEMS, static_cast<WPARAM>(row), row);
    }
}

XListView::Marks::Marks(const XListView& list)
    : ofList{list.listWindow, MarkedRegion(list.listWindow)},
      ofHeader{list.Header(), MarkedRegion(list.Header())} {}

void XListView::Marks::PutBack() const {
    for (const Mark* mark : {&ofList, &ofHeader}) {
        // For no window the platform would redraw the whole screen.
        if (mark->window == nullptr) continue;
        RedrawWindow(mark->window, nullptr, nullptr, RDW_VALIDATE | RDW_NOCHILDREN);
        RedrawWindow(mark->window, nullptr, mark->region.Get(),
                     RDW_INVALIDATE | RDW_ERASE | RDW_NOCHILDREN);
    }
}

// Where redraw comes back some versions of the control mark what has changed, others
// all of it, which would flicker. And some draw their scroll bars anew, two or three
// times over, which takes as long as to write a thousand cells: in a window that is
// not visible for that moment they draw nothing. To become invisible takes the marks
// back, in children too. An editor is a child that comes and goes: beside one, and in
// a list that is hidden anyway, the bars are drawn.
void XListView::RedrawInPlace(const Marks& marks) {
    const bool isVisible = (GetWindowLongPtrW(listWindow, GWL_STYLE) & WS_VISIBLE) != 0;
    const HWND child = GetWindow(listWindow, GW_CHILD);
    const bool hasEditor = child != nullptr && GetWindow(child, GW_HWNDNEXT) != nullptr;
    const bool drawsBars = !isVisible || hasEditor;
    if (!drawsBars) DefWindowProcW(listWindow, WM_SETREDRAW, FALSE, 0);
    Ask(WM_SETREDRAW, TRUE);
    if (!drawsBars) DefWindowProcW(listWindow, WM_SETREDRAW, TRUE, 0);
    marks.PutBack();
}

void XListView::BeginBatch() {
    Ask(WM_SETREDRAW, FALSE);
    batching = true;
}

void XListView::EndBatch() {
    Ask(WM_SETREDRAW, TRUE);
    LeaveBatch();
}

void XListView::LeaveBatch() {
    batching = false;
    // For no window the platform would redraw the whole screen.
    if (listWindow != nullptr) InvalidateRect(listWindow, nullptr, TRUE);
}
