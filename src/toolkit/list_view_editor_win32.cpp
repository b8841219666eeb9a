#include <vector>

#include "toolkit/dpi.h"
#include "toolkit/list_rules.h"
#include "toolkit/list_view.h"

static_assert(VK_RETURN == 0x0D && VK_ESCAPE == 0x1B);
static_assert(VK_LEFT == 0x25 && VK_UP == 0x26 && VK_RIGHT == 0x27 && VK_DOWN == 0x28);

namespace {

constexpr std::int32_t fontSize = 13;  // at 96 DPI
constexpr int spareCharacters = 10;
constexpr DWORD editStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL;
static_assert(editStyle == 0x50010080);

HWND CreateEditOver(HWND list, std::int32_t row, std::int32_t column) {
    RECT rect = {};
    rect.left = LVIR_LABEL;
    rect.top = column;
    if (SendMessageW(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&rect)) == FALSE) {
        return nullptr;
    }
    return CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", nullptr, editStyle, rect.left, rect.top,
                           rect.right - rect.left, rect.bottom - rect.top, list, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

XListView::clValueControl::~clValueControl() {
    Close();
}

void XListView::clValueControl::Start(XListView& list, std::int32_t atRow, std::int32_t atColumn) {
    Commit();
    Close();
    owner = &list;
    listWindow = list.ListWindow();
    list.SelectRow(atRow, true);
    editWindow = CreateEditOver(listWindow, atRow, atColumn);
    if (editWindow == nullptr) return;
    row = atRow;
    column = atColumn;
    font.Create(nullptr, nullptr, ScaleForDpi(fontSize));
    SendMessageW(editWindow, WM_SETFONT, reinterpret_cast<WPARAM>(font.Handle()), FALSE);
    SetWindowTextW(editWindow, list.CellText(row, column).Chars());
    SendMessageW(editWindow, EM_SETSEL, 0, -1);
    Attach(editWindow);
    SetFocus(editWindow);
}

clString XListView::clValueControl::Text() const {
    std::vector<wchar_t> text(
        static_cast<std::size_t>(GetWindowTextLengthW(editWindow) + spareCharacters));
    GetWindowTextW(editWindow, text.data(), static_cast<int>(text.size()));
    return text.data();
}

void XListView::clValueControl::Commit() {
    if (editWindow == nullptr || row < 0 || row >= owner->RowCount()) return;
    const clString text = Text();
    if (text.Equals(owner->CellText(row, column))) return;
    owner->SetCell(text, row, column);
    owner->OnCellEdited(row, column, text);
}

void XListView::clValueControl::Close() {
    // Detached first, and forgotten before it goes: its end sends messages.
    const HWND ending = editWindow;
    editWindow = nullptr;
    row = -1;
    Detach();
    if (ending != nullptr) DestroyWindow(ending);
}

bool XListView::clValueControl::MoveSideways(std::int32_t step) {
    const auto mayEdit = [this](std::int32_t to) { return owner->MayEdit(row, to); };
    const std::int32_t to = NextEditableColumn(column, step, owner->ColumnCount(), mayEdit);
    if (to == -1) return false;
    Start(*owner, row, to);
    return true;
}

bool XListView::clValueControl::MoveToRow(std::int32_t newRow) {
    if (newRow < 0 || newRow >= owner->RowCount()) return false;
    Start(*owner, newRow, column);
    return true;
}

// True if the key is not for the edit field: its window may be gone by then.
bool XListView::clValueControl::RunKey(std::uint32_t virtualKey) {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(editWindow, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    const EditSelection selection = {static_cast<std::int32_t>(start),
                                     static_cast<std::int32_t>(end)};
    switch (EditorKeyMeaning(virtualKey, selection, GetWindowTextLengthW(editWindow))) {
        case EditorKey::Left:
            return MoveSideways(-1);
        case EditorKey::Right:
            return MoveSideways(1);
        case EditorKey::Up:
            return MoveToRow(row - 1);
        case EditorKey::Down:
            return MoveToRow(row + 1);
        case EditorKey::Commit:
            Commit();
            Close();
            return true;
        case EditorKey::Cancel:
            Close();
            return true;
        case EditorKey::Pass:
            break;
    }
    return false;
}

LRESULT XListView::clValueControl::WndHook(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                           std::uint32_t* handled) {
    *handled = 0;
    switch (message) {
        case WM_GETDLGCODE:
            *handled = 1;
            return DLGC_WANTALLKEYS;
        case WM_KEYDOWN:
            // Last: a move sends messages to the edit.
            *handled = RunKey(static_cast<std::uint32_t>(wParam)) ? 1 : 0;
            return 0;
        case WM_MOUSEWHEEL:
            // The rows scroll beneath the edit.
            PostMessageW(listWindow, message, wParam, lParam);
            *handled = 1;
            return 0;
        case WM_DESTROY:
            // Its list goes, and takes it along.
            editWindow = nullptr;
            row = -1;
            return 0;
        default:
            return 0;
    }
}
