#include "tests/toolkit/list_form.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "tests/support/text.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

namespace {

constexpr DWORD programsListStyle = WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT |
                                    LVS_OWNERDRAWFIXED | LVS_SHAREIMAGELISTS | LVS_ALIGNLEFT;

RECT HeaderRect(HWND header, std::int32_t column) {
    RECT rect = {};
    SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&rect));
    return rect;
}

}  // namespace

void ProbeList::Note(const char* format, ...) {
    char text[200];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    calls.emplace_back(text);
    if (nestedMessage != 0) SendMessageW(GetParent(ListWindow()), nestedMessage, 0, 0);
}

int ProbeList::Count(const std::string& start) const {
    return static_cast<int>(std::ranges::count_if(
        calls, [&start](const std::string& call) { return call.starts_with(start); }));
}

LRESULT ProbeList::WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                           std::uint32_t* handled) {
    ++messages;
    if (message == WM_ERASEBKGND) ++erasures;
    if (message == WM_SETREDRAW && swallowRedraw) {
        *handled = 1;
        return 0;
    }
    return XListView::WndHook(window, message, wParam, lParam, handled);
}

bool ProbeList::CanEditCell(std::int32_t row, std::int32_t column) {
    Note("may edit %d,%d", row, column);
    return std::ranges::find(lockedColumns, column) == lockedColumns.end();
}

void ProbeList::OnItemChanged(std::int32_t row, std::int32_t column, std::uint32_t changedMask,
                              std::uint32_t oldState, std::uint32_t newState) {
    if (recordChanges) {
        Note("changed %d,%d %x: %x to %x", row, column, changedMask, oldState, newState);
    }
}

void ProbeList::OnRowSelected(std::int32_t row, std::int32_t column, bool selected) {
    Note("%s %d,%d", selected ? "selected" : "deselected", row, column);
}

void ProbeList::OnRowChecked(std::int32_t row, bool checked) {
    Note("%s %d", checked ? "checked" : "unchecked", row);
}

std::uint8_t ProbeList::OnLabelEditBegin(std::int32_t row) {
    Note("label begin %d", row);
    return labelEditAnswer;
}

bool ProbeList::OnLabelEditEnd(std::int32_t row, const clString& text) {
    Note("label end %d %s, cell %s", row, Utf8(text).c_str(), Utf8(CellText(row, 0)).c_str());
    return true;
}

void ProbeList::OnCellEdited(std::int32_t row, std::int32_t column, const clString& text) {
    Note("edited %d,%d %s, cell %s", row, column, Utf8(text).c_str(),
         Utf8(CellText(row, column)).c_str());
}

void ProbeList::OnLabelEditCancelled(std::int32_t row) {
    Note("label cancelled %d", row);
}

void ProbeList::OnBeginDrag(const NMLISTVIEW& drag) {
    Note("drag %d", drag.iItem);
}

void ProbeList::OnListKey(std::uint32_t virtualKey) {
    Note("key %02x", virtualKey);
}

bool ProbeList::CanEditByKey() {
    Note("may edit by key");
    return mayEditByKey;
}

bool ProbeList::CanSelectAll() {
    Note("may select all");
    return maySelectAll;
}

clString ProbeList::GetInfoTip(std::int32_t row) {
    Note("tip %d", row);
    return infoTip;
}

std::uint8_t ProbeList::OnMarqueeBegin() {
    Note("marquee");
    return marqueeAnswer;
}

void ProbeList::OnColumnClick(std::int32_t column) {
    Note("column %d", column);
}

void ProbeList::OnRowClick(std::int32_t row, std::int32_t column, const POINT& point) {
    Note("click %d,%d at %ld,%ld", row, column, point.x, point.y);
}

void ProbeList::OnLeftDown(std::int32_t row, const POINT& point, std::uint32_t* handled) {
    Note("left %d at %ld,%ld", row, point.x, point.y);
    XListView::OnLeftDown(row, point, handled);
    if (takePresses) *handled = 1;
}

void ProbeList::OnRowDoubleClick(std::int32_t row, std::int32_t column, const POINT& point) {
    Note("double click %d,%d at %ld,%ld", row, column, point.x, point.y);
}

void ProbeList::OnRowRightClick(std::int32_t row, std::int32_t column, const POINT& point) {
    Note("right click %d,%d at %ld,%ld", row, column, point.x, point.y);
}

void ProbeList::OnRowRightDoubleClick(std::int32_t row, std::int32_t column, const POINT& point) {
    Note("right double click %d,%d at %ld,%ld", row, column, point.x, point.y);
}

void ProbeList::OnListContextMenu(std::uint32_t x, std::uint32_t y, HWND window) {
    Note("menu %u,%u%s", x, y, window == ListWindow() ? "" : " elsewhere");
}

void ProbeList::OnColumnResized(std::int32_t column) {
    Note("resized %d", column);
}

void ProbeList::OnColumnsReordered() {
    Note("reordered");
}

void ProbeList::OnDrawRow(const DRAWITEMSTRUCT& item) {
    if (recordDrawing) Note("draw %d", static_cast<int>(item.itemID));
}

void ProbeList::OnVScroll(std::uint32_t code, std::uint32_t position) {
    Note("scroll %u %u", code, position);
}

ListForm::ListForm(DWORD extraStyle, DWORD exStyle) {
    form.route = [this](HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* flag) {
        return list.Route(window, message, wParam, lParam, flag);
    };
    form.created = [this, exStyle] {
        const HWND control = form.Child(listId);
        SetWindowPos(control, nullptr, 10, 10, 500, 260, SWP_NOZORDER);
        SendMessageW(control, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(exStyle));
        list.SetListWindow(control);
        list.Attach(control);
        list.AddColumn(L"Name", 200, LVCFMT_LEFT, 50);
        list.AddColumn(L"Size", 100, LVCFMT_RIGHT, 5);
        list.AddColumn(L"Type", 120, LVCFMT_LEFT, 5);
    };
    DialogTemplate dialog(visibleForm, 360, 200);
    dialog.Add({WC_LISTVIEWW, programsListStyle | extraStyle, 0, 0, 10, 10, listId});
    form.Show(dialog);
    SetFocus(Control());
    list.Forget();
}

void ListForm::Fill(std::int32_t count) {
    list.BeginBatch();
    for (std::int32_t i = 0; i < count; ++i) {
        const std::int32_t row = list.InsertRow(-1, 0, -1, i);
        for (std::int32_t column = 0; column < 3; ++column) {
            clString text;
            text.Format(L"r%dc%d", i, column);
            if (column != 0) list.InsertRow(row, column, -1, 0);
            list.SetCell(text, row, column);
        }
    }
    list.EndBatch();
    PumpMessages();
    list.Forget();
}

LRESULT ListForm::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageW(Control(), message, wParam, lParam);
}

HWND ListForm::Header() const {
    return reinterpret_cast<HWND>(Ask(LVM_GETHEADER));
}

std::uint32_t ListForm::RowBits(std::int32_t row) const {
    return static_cast<std::uint32_t>(Ask(LVM_GETITEMSTATE, static_cast<WPARAM>(row), 0xFFFF));
}

void ListForm::Tick(std::int32_t row) {
    LVITEMW item = {};
    item.state = INDEXTOSTATEIMAGEMASK(2);
    item.stateMask = LVIS_STATEIMAGEMASK;
    Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    list.Forget();
}

std::string ListForm::Marks() const {
    std::string marks;
    for (std::int32_t row = 0; row < list.RowCount(); ++row) {
        const std::uint32_t state = RowBits(row);
        const bool ticked = (state & LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
        const bool selected = (state & LVIS_SELECTED) != 0;
        marks += selected ? (ticked ? 'S' : 's') : (ticked ? 'N' : 'n');
    }
    return marks;
}

void ListForm::SetColumnOrder(std::vector<int> order) {
    Ask(LVM_SETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data()));
    PumpMessages();
}

POINT ListForm::InCell(std::int32_t row, std::int32_t column, int dx) const {
    RECT rect = {};
    rect.left = LVIR_BOUNDS;
    Ask(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
    return ScreenPoint(Control(), HeaderRect(Header(), column).left + dx,
                       (rect.top + rect.bottom) / 2);
}

POINT ListForm::InHeader(std::int32_t column, int dx) const {
    const RECT rect = HeaderRect(Header(), column);
    return ScreenPoint(Header(), rect.left + dx, (rect.top + rect.bottom) / 2);
}

POINT ListForm::AtHeaderEdge(std::int32_t column, int dx) const {
    const RECT rect = HeaderRect(Header(), column);
    return ScreenPoint(Header(), rect.right + dx, (rect.top + rect.bottom) / 2);
}

POINT ListForm::BelowRows(int dx) const {
    POINT point = InCell(list.RowCount() - 1, 0, dx);
    point.y += 40;
    return point;
}

LRESULT ListForm::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    handled = 77;
    return list.Route(form.Window(), message, wParam, lParam, &handled);
}
