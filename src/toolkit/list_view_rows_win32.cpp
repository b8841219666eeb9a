#include "toolkit/gdi_handle.h"
#include "toolkit/list_view.h"

namespace {

constexpr std::int32_t textBuffer = 999;
constexpr std::uint32_t allMarks = LVIS_FOCUSED | LVIS_SELECTED | LVIS_CUT | LVIS_DROPHILITED;

// The control takes text that it only reads as if it wrote it.
wchar_t* Writable(const clString& text) {
    return const_cast<wchar_t*>(text.Chars());
}

}  // namespace

std::int32_t XListView::RowCount() const {
    return static_cast<std::int32_t>(Ask(LVM_GETITEMCOUNT));
}

std::int32_t XListView::InsertRow(std::int32_t row, std::int32_t column, std::int32_t image,
                                  std::int64_t data) {
    wchar_t empty[] = L"";
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.pszText = empty;
    item.iSubItem = column;
    if (image != -1) {
        item.mask |= LVIF_IMAGE;
        item.iImage = image;
    }
    if (column != 0) {
        item.iItem = row == -1 ? RowCount() - 1 : row;
        Ask(LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return item.iItem;
    }
    item.iItem = row == -1 ? RowCount() : row;
    item.mask |= LVIF_PARAM | LVIF_IMAGE;
    item.lParam = data;
    // An image that is left out would be the first of the list's.
    if (image == -1) item.iImage = I_IMAGENONE;
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

void XListView::CellWriter::SetCell(const clString& text, std::int32_t row, std::int32_t column) {
    if (rows.empty()) view.Ask(WM_SETREDRAW, FALSE);
    if (rows.empty() || rows.back() != row) rows.push_back(row);
    view.SetCell(text, row, column);
}

// Where redraw comes back some versions of the control mark what has changed, and
// others all of it, which would flicker. So what was marked before is put back, and
// the written rows are added.
XListView::CellWriter::~CellWriter() {
    if (rows.empty() || view.listWindow == nullptr) return;
    const clRegionHandle marked(CreateRectRgn(0, 0, 0, 0));
    GetUpdateRgn(view.listWindow, marked.Get(), FALSE);
    view.Ask(WM_SETREDRAW, TRUE);
    ValidateRect(view.listWindow, nullptr);
    InvalidateRgn(view.listWindow, marked.Get(), TRUE);
    const auto first = static_cast<std::int32_t>(view.Ask(LVM_GETTOPINDEX));
    // The last one may be in view by a part.
    const auto last = first + static_cast<std::int32_t>(view.Ask(LVM_GETCOUNTPERPAGE));
    for (const std::int32_t row : rows) {
        if (row >= first && row <= last) view.Ask(LVM_REDRAWITEMS, static_cast<WPARAM>(row), row);
    }
}

void XListView::BeginBatch() {
    Ask(WM_SETREDRAW, FALSE);
    batching = true;
}

void XListView::EndBatch() {
    Ask(WM_SETREDRAW, TRUE);
    batching = false;
    // For no window the platform would redraw the whole screen.
    if (listWindow != nullptr) InvalidateRect(listWindow, nullptr, TRUE);
}
