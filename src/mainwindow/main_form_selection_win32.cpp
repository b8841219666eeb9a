// The selection's host over the controls, and what the user does to it.
#include "foundation/program_title.h"
#include "mainwindow/main_form.h"
#include "mainwindow/row_menu.h"
#include "resources/ids.h"

namespace {

// Sent by the form to itself: a node's item handle and the state it must end in.
UINT RepairMessage() {
    static const UINT message = RegisterWindowMessageW(L"TonequarryRepairNodeState");
    return message;
}

constexpr WPARAM deviceArrived = 0x8000;  // DBT_DEVICEARRIVAL
constexpr WPARAM deviceRemoved = 0x8004;  // DBT_DEVICEREMOVECOMPLETE

}  // namespace

XTreeItem frmMain::ItemOf(TreeNode node) const {
    return {reinterpret_cast<HTREEITEM>(node), _TreeDrive.TreeWindow()};
}

TreeNode frmMain::FirstRoot() const {
    return reinterpret_cast<TreeNode>(Relative({}, TVGN_ROOT).item);
}

TreeNode frmMain::SelectedNode() const {
    return reinterpret_cast<TreeNode>(SelectedItem().item);
}

TreeNode frmMain::Parent(TreeNode node) const {
    return reinterpret_cast<TreeNode>(Relative(ItemOf(node), TVGN_PARENT).item);
}

TreeNode frmMain::FirstChild(TreeNode node) const {
    return reinterpret_cast<TreeNode>(Relative(ItemOf(node), TVGN_CHILD).item);
}

TreeNode frmMain::NextSibling(TreeNode node) const {
    return reinterpret_cast<TreeNode>(Relative(ItemOf(node), TVGN_NEXT).item);
}

clString frmMain::NodePath(TreeNode node) const {
    return PathOfItem(ItemOf(node));
}

std::int32_t frmMain::State(TreeNode node) const {
    return static_cast<std::int32_t>(ItemOf(node).ItemStateImage());
}

void frmMain::SetState(TreeNode node, std::int32_t state) {
    ItemOf(node).SetItemStateImage(static_cast<std::uint32_t>(state));
}

std::int32_t frmMain::RowCount() const {
    return fileList.Count();
}

clString frmMain::RowFilePath(std::int32_t row) const {
    const FileRow* record = fileList.RowAt(row);
    return record != nullptr ? record->path : clString();
}

std::int32_t frmMain::RowCheckState(std::int32_t row) const {
    return fileList.IsTicked(row) ? RowTicked : RowUnticked;
}

void frmMain::SetRowCheckState(std::int32_t row, std::int32_t check) {
    fileList.SetTicked(row, check != RowUnticked);
}

// The status line would count all rows once for each flip, and the list's many
// messages would each take the mutex from the kernel.
void frmMain::BeginRowFlips() {
    SubclassMutex.Lock();
    ++statusHolds;
}

void frmMain::EndRowFlips() {
    if (--statusHolds == 0 && statusIsStale) {
        statusIsStale = false;
        UpdateStatus();
    }
    SubclassMutex.Unlock();
}

void frmMain::RefuseNetworkNode() {
    MessageBoxW(XWindow::Window(), L"Only folders within a network can be set for inclusion",
                programTitle, MB_OK | MB_ICONHAND);
}

bool frmMain::ConfirmReset() {
    return MessageBoxW(XWindow::Window(), L"Clear All Selections?", programTitle,
                       MB_YESNO | MB_ICONQUESTION) == IDYES;
}

void frmMain::ListFolder(TreeNode node) {
    ListFolderOf(ItemOf(node));
}

void frmMain::_TreeDriveView::OnTreeClick(std::uint8_t* result) {
    UINT flags = 0;
    const XTreeItem node = owner.ItemUnderPointer(&flags);
    if (node.IsValid()) owner.SelectItem(node);
    if (flags != TVHT_ONITEMSTATEICON) return;
    owner.FinishSpace();
    if (node.IsValid()) owner.ToggleNode(node);
    *result = 1;
}

// The second of two fast clicks is a step like the first. The control itself would
// step the picture alone, and show what is not selected.
void frmMain::_TreeDriveView::OnTreeDoubleClick(std::uint8_t* result) {
    OnTreeClick(result);
}

// Windows' tree steps the state by one after the handler, which the state left
// here allows for. Wine's leaves states 3 to 5 alone: there the message that the
// form posts to itself sets what has to stand, before anything is painted, and on
// Windows it finds nothing to do.
void frmMain::_TreeDriveView::OnTreeSpace() {
    owner.FinishSpace();
    const XTreeItem node = owner.SelectedItem();
    const std::int32_t state = owner.selection.ToggleBySpace();
    if (state == 0) return;
    PostMessageW(owner.XWindow::Window(), RepairMessage(), static_cast<WPARAM>(state),
                 reinterpret_cast<LPARAM>(node.item));
}

void frmMain::ToggleNode(XTreeItem node) {
    selection.ToggleFolder(reinterpret_cast<TreeNode>(node.item));
}

// A key that waited in the queue already would step on from the state in between.
void frmMain::FinishSpace() const {
    MSG repair = {};
    while (PeekMessageW(&repair, XWindow::Window(), RepairMessage(), RepairMessage(), PM_REMOVE)) {
        if (repair.message == WM_QUIT) {
            // That one comes through every filter, and is for the form's own loop.
            PostQuitMessage(static_cast<int>(repair.wParam));
            return;
        }
        DispatchMessageW(&repair);
    }
}

void frmMain::RepairSpace(HTREEITEM item, std::int32_t state) {
    const XTreeItem node = {item, _TreeDrive.TreeWindow()};
    // A node that was deleted meanwhile answers with no state at all.
    if (node.ItemStateImage() != 0 && node.ItemStateImage() != static_cast<std::uint32_t>(state))
        node.SetItemStateImage(static_cast<std::uint32_t>(state));
}

LRESULT frmMain::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                             std::uint32_t* handled) {
    LRESULT result = buttonBar.Route(window, message, wParam, lParam, handled);
    if (*handled == 0) result = _ListFiles.Route(window, message, wParam, lParam, handled);
    if (*handled == 0) result = _TreeDrive.Route(window, message, wParam, lParam, handled);
    if (*handled == 0) result = _RowMenu.Route(window, message, wParam, lParam, handled);
    if (*handled != 0) return result;
    if (message == WM_DEVICECHANGE && (wParam == deviceArrived || wParam == deviceRemoved)) {
        RefreshDrives();
        *handled = 0;
    }
    if (message == clFileList::WorkMessage()) {
        if (wParam == clFileList::Sort) fileList.SortList();
        if (wParam == clFileList::GoOnPumping) PumpMetaData();
    }
    if (message == RepairMessage()) {
        RepairSpace(reinterpret_cast<HTREEITEM>(lParam), static_cast<std::int32_t>(wParam));
    }
    return 0;
}

void frmMain::_ListFilesView::OnRowChecked(std::int32_t row, bool checked) {
    owner.selection.OnRowChecked(row, checked);
    owner.UpdateStatus();
}

// A press on the check box of a selected row, the second of two fast ones included,
// flips the whole selection, row by row.
LRESULT frmMain::_ListFilesView::WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                         std::uint32_t* handled) {
    if (message != WM_LBUTTONDOWN && message != WM_LBUTTONDBLCLK)
        return XListView::WndHook(window, message, wParam, lParam, handled);
    const SelectionModel::RowFlips flips(owner.selection);
    return XListView::WndHook(window, message, wParam, lParam, handled);
}

void frmMain::_ListFilesView::OnColumnClick(std::int32_t column) {
    owner.fileList.ToggleSort(column);
}

void frmMain::_ListFilesView::OnListContextMenu(std::uint32_t, std::uint32_t, HWND list) {
    POINT pointer = {};
    GetCursorPos(&pointer);
    ScreenToClient(list, &pointer);
    // A horizontal measure for a height, as it has always been.
    RECT header = {14, 1, 1, 1};
    MapDialogRect(owner.XWindow::Window(), &header);
    if (pointer.y < header.left) {
        ShowColumnMenu(owner.XWindow::Window(), *this, owner.fileList, owner);
    } else {
        owner.ShowRowMenu();
    }
}

void frmMain::_ListFilesView::OnDrawRow(const DRAWITEMSTRUCT& item) {
    owner.fileList.DrawRow(item);
}

void frmMain::TickRows(RowCommand command) {
    const XListView::RedrawPause pause(_ListFiles);
    selection.RunRowCommand(command);
}

void frmMain::ShowRowMenu() {
    switch (AskRowMenu(_RowMenu, XWindow::Window())) {
        case ID_CHECK_ALL:
            TickRows(RowCommand::CheckAll);
            break;
        case ID_UNCHECK_ALL:
            TickRows(RowCommand::UncheckAll);
            break;
        case ID_INVERT_SELECTION:
            TickRows(RowCommand::InvertSelection);
            break;
        default:
            selection.UpdateSelectedAncestors();
            break;
    }
}

void frmMain::FillNewColumn() {
    {
        // The list's many messages would each take the mutex from the kernel.
        const clMutexLock lock(SubclassMutex);
        const clStringList titles = fileList.ColumnTitles();
        for (std::int32_t row = 0; row < fileList.Count(); ++row)
            FillRowCells(row, titles);
    }
    ListSelectedFolder();
}

void frmMain::FillDefaultColumns() {
    ListSelectedFolder();
}
