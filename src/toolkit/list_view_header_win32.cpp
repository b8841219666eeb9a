#include <vector>

#include "foundation/mutex.h"
#include "toolkit/list_rules.h"
#include "toolkit/list_view.h"

namespace {

constexpr std::int32_t titleBuffer = 999;

}  // namespace

HWND XListView::Header() const {
    return reinterpret_cast<HWND>(Ask(LVM_GETHEADER));
}

std::int32_t XListView::ColumnCount() const {
    const HWND header = Header();
    if (header == nullptr) return 0;
    const LRESULT count = SendMessageW(header, HDM_GETITEMCOUNT, 0, 0);
    return count > 0 ? static_cast<std::int32_t>(count) : 0;
}

bool XListView::ReadColumn(std::int32_t column, LVCOLUMNW& parts) const {
    return Ask(LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&parts)) !=
           FALSE;
}

void XListView::AddColumn(const clString& title, std::int32_t width, std::int32_t format,
                          std::int32_t minimumWidth) {
    const std::int32_t column = ColumnCount();
    LVCOLUMNW parts = {};
    parts.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
    parts.fmt = format;
    parts.cx = width;
    parts.pszText = const_cast<wchar_t*>(title.Chars());  // only read
    parts.iSubItem = column;
    if (Ask(LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&parts)) ==
        -1) {
        return;
    }
    minimumWidths.InsertAt(column, minimumWidth);
}

void XListView::RemoveColumn(std::int32_t column) {
    if (column < 0 || column >= ColumnCount()) return;
    if (column == 0) {
        RemoveFirstColumn();
    } else {
        Ask(LVM_DELETECOLUMN, static_cast<WPARAM>(column));
    }
    minimumWidths.RemoveAt(column);
}

// The texts of a row follow their columns. Wine's list leaves them where they are
// when its first column goes, so that each would stand under the title of its
// right neighbour.
void XListView::RemoveFirstColumn() {
    const clMutexLock lock(SubclassMutex);
    std::vector<clString> texts;
    const std::int32_t rows = RowCount();
    const std::int32_t columns = ColumnCount() - 1;
    for (std::int32_t row = 0; row < rows; ++row) {
        for (std::int32_t column = 0; column < columns; ++column)
            texts.push_back(CellText(row, column + 1));
    }
    Ask(LVM_DELETECOLUMN, 0);
    auto text = texts.begin();
    for (std::int32_t row = 0; row < rows; ++row) {
        for (std::int32_t column = 0; column < columns; ++column, ++text) {
            if (!CellText(row, column).Equals(*text)) SetCell(*text, row, column);
        }
    }
}

std::int32_t XListView::ColumnWidth(std::int32_t column) const {
    LVCOLUMNW parts = {};
    parts.mask = LVCF_WIDTH;
    return ReadColumn(column, parts) ? parts.cx : 0;
}

clString XListView::ColumnTitle(std::int32_t column) const {
    wchar_t text[titleBuffer] = {};
    LVCOLUMNW parts = {};
    parts.mask = LVCF_TEXT;
    parts.pszText = text;
    parts.cchTextMax = titleBuffer;
    return ReadColumn(column, parts) ? clString(text) : clString();
}

void XListView::ColumnOrder(clPtrArray& order) const {
    order.Clear();
    std::vector<int> columns(static_cast<std::size_t>(ColumnCount()));
    if (Ask(LVM_GETCOLUMNORDERARRAY, columns.size(), reinterpret_cast<LPARAM>(columns.data())) ==
        FALSE) {
        return;
    }
    for (const int column : columns)
        order.Add(column);
}

std::int32_t XListView::FirstColumnLeft() const {
    clPtrArray order;
    ColumnOrder(order);
    std::int32_t left = 0;
    for (std::int64_t i = 0; i < order.Count() && order.Get(i) != 0; ++i)
        left += ColumnWidth(static_cast<std::int32_t>(order.Get(i)));
    POINT origin = {};
    if (Ask(LVM_GETORIGIN, 0, reinterpret_cast<LPARAM>(&origin)) != FALSE) left += origin.x;
    return left;
}

void XListView::SetColumnImage(std::int32_t column, std::int32_t image) {
    LVCOLUMNW parts = {};
    parts.mask = LVCF_FMT;
    if (!ReadColumn(column, parts)) return;
    if ((parts.fmt & LVCFMT_JUSTIFYMASK) != LVCFMT_RIGHT) parts.fmt |= LVCFMT_BITMAP_ON_RIGHT;
    parts.fmt |= LVCFMT_IMAGE;
    Ask(LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&parts));
    parts.mask = LVCF_IMAGE;
    parts.iImage = image;
    Ask(LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&parts));

    // Wine's list does not pass LVCFMT_IMAGE on to its header, which then draws no
    // image. Windows has done so by now, and finds nothing changed.
    HDITEMW item = {};
    item.mask = HDI_FORMAT;
    if (SendMessageW(Header(), HDM_GETITEMW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&item)) == FALSE) {
        return;
    }
    item.mask = HDI_FORMAT | HDI_IMAGE;
    item.fmt |= HDF_IMAGE;
    item.iImage = image;
    SendMessageW(Header(), HDM_SETITEMW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&item));
}

std::int32_t XListView::ColumnImage(std::int32_t column) const {
    LVCOLUMNW parts = {};
    parts.mask = LVCF_IMAGE;
    return ReadColumn(column, parts) ? parts.iImage : -1;
}

// The one place that enforces the minimum widths. Windows' list forwards the
// header's announcement to the form, so that it arrives through `Route`; Wine's
// keeps it, and it is seen in `WndHook` alone. On Windows too the hook sees it
// first; what it refuses goes no further.
XListView::Answer XListView::KeepMinimumWidth(const NMHEADERW& change) {
    HeaderChange announced = {};
    announced.hasItem = change.pitem != nullptr;
    announced.column = change.iItem;
    if (announced.hasItem) {
        announced.mask = change.pitem->mask;
        announced.width = change.pitem->cxy;
    }
    const std::optional<std::int32_t> width = WidthToKeep(announced, minimumWidths);
    if (!width) return {};
    // Announced in its turn, and passed: it is not below the minimum.
    Ask(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(change.iItem), *width);
    return {1, 1};
}

// What the list's header tells the list.
XListView::Answer XListView::HookHeaderNotify(NMHDR* header) {
    switch (header->code) {
        case HDN_ITEMCHANGINGW:
            return KeepMinimumWidth(*reinterpret_cast<const NMHEADERW*>(header));
        case HDN_GETDISPINFOA:
        case HDN_GETDISPINFOW: {
            // The image "none", -1, is also the header's "ask for it". Wine's header
            // takes 0 without an answer, so that no column would be without an image.
            auto& asked = *reinterpret_cast<NMHDDISPINFOW*>(header);
            if ((asked.mask & HDI_IMAGE) == 0) return {};
            asked.iImage = -1;
            return {0, 1};
        }
        default:
            return {};
    }
}
