#include "foundation/folders.h"
#include "mainwindow/main_form.h"
#include "mainwindow/start_path.h"

XTreeItem frmMain::FirstStartNode(bool onNetwork) {
    XTreeItem node = Relative({}, TVGN_ROOT);
    if (!onNetwork) return node;
    while (node.IsValid() && !PathOfItem(node).Equals(networkMarker))
        node = Relative(node, TVGN_NEXT);
    if (!node.IsValid()) return {};
    SendMessageW(node.tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(node.item));
    return Relative(node, TVGN_CHILD);
}

void frmMain::OpenStartFolder() {
    const clString argument = CommandLineArguments();
    if (SplitStartPath(argument).names.Count() == 0) return;
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    const HWND tree = _TreeDrive.TreeWindow();
    SendMessageW(tree, WM_SETREDRAW, FALSE, 0);
    FollowStartFolder(argument);
    SendMessageW(tree, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(tree, nullptr, TRUE);
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

void frmMain::FollowStartFolder(const clString& argument) {
    const StartPath start = SplitStartPath(argument);
    const bool onNetwork = argument.CompareNoCase(L"\\\\", 2) == 0;
    XTreeItem node = FirstStartNode(onNetwork);
    for (std::int64_t i = 0; i < start.names.Count(); ++i) {
        const bool isComputer = onNetwork && i == 0;
        const clString computer = WithoutBackslashes(*start.names.At(i));
        while (node.IsValid()) {
            if (isComputer ? node.ItemText().CompareNoCase(computer) == 0
                           : PathOfItem(node).CompareNoCase(*start.paths.At(i)) == 0) {
                break;
            }
            node = Relative(node, TVGN_NEXT);
        }
        if (!node.IsValid()) break;
        if (i + 1 == start.names.Count()) {
            SelectItem(node);
            ToggleNode(node);
            return;
        }
        SendMessageW(node.tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(node.item));
        node = Relative(node, TVGN_CHILD);
    }
    const XTreeItem root = AddTreeNode(argument, argument, {}, true);
    SelectItem(root);
    SendMessageW(root.tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(root.item));
}
