#include "foundation/drives.h"
#include "foundation/folders.h"
#include "foundation/network.h"
#include "foundation/paths.h"
#include "foundation/quiet_drives.h"
#include "mainwindow/folder_names.h"
#include "mainwindow/main_form.h"
#include "mainwindow/shell_source.h"

namespace {

FolderIcons IconsOfNode(const clString& text, const clString& path, bool sharedIcon) {
    if (path.Equals(networkMarker)) return IconsOfNetwork();
    if (sharedIcon) {
        const std::int32_t icon = SharedFolderIcon(path);
        return {icon, icon};
    }
    if (!path.Equals(networkComputerMarker)) return IconsOfFolder(path);
    clString server(L"\\\\");
    server.Append(text);
    server.Append(L'\\');
    return IconsOfFolder(server);
}

}  // namespace

XTreeItem frmMain::Relative(XTreeItem node, UINT relation) const {
    const HWND tree = _TreeDrive.TreeWindow();
    return {reinterpret_cast<HTREEITEM>(
                SendMessageW(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(node.item))),
            tree};
}

XTreeItem frmMain::SelectedItem() const {
    return Relative({}, TVGN_CARET);
}

XTreeItem frmMain::ItemUnderPointer(UINT* flags) const {
    const HWND tree = _TreeDrive.TreeWindow();
    TVHITTESTINFO hit = {};
    GetCursorPos(&hit.pt);
    ScreenToClient(tree, &hit.pt);
    SendMessageW(tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    *flags = hit.flags;
    return {hit.hItem, tree};
}

void frmMain::SelectItem(XTreeItem node) {
    SendMessageW(node.tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(node.item));
}

// No item has no path. Its data would be 0, which is the number of the first one.
clString frmMain::PathOfItem(XTreeItem node) const {
    return node.IsValid() ? _FolderPaths.ItemCopy(node.ItemData()) : clString();
}

void frmMain::SetChildrenFlag(XTreeItem node, bool hasChildren) {
    TVITEMW item = {};
    item.mask = TVIF_CHILDREN;
    item.hItem = node.item;
    item.cChildren = hasChildren ? 1 : 0;
    SendMessageW(node.tree, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

XTreeItem frmMain::AddTreeNode(const clString& text, const clString& path, XTreeItem parent,
                               bool sharedIcon) {
    _FolderPaths.Add(path);
    const FolderIcons icons = IconsOfNode(text, path, sharedIcon);
    const XTreeItem node =
        _TreeDrive.InsertItem(text, icons.normal, icons.open, _FolderPaths.Count() - 1, parent);
    SetChildrenFlag(node, true);
    return node;
}

void frmMain::ExpandNode(XTreeItem node) {
    if (node.IsValid()) SelectItem(node);
    if (!node.IsValid() || Relative(node, TVGN_CHILD).IsValid()) return;
    SetCursor(LoadCursorW(nullptr, IDC_APPSTARTING));
    if (PathOfItem(node).Equals(networkMarker)) {
        AddNetworkNodes(node);
    } else {
        AddSubfolders(node);
    }
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

void frmMain::AddNetworkNodes(XTreeItem root) {
    const clNetworkNeighbourhood network;
    for (std::int64_t i = 0; i < network.ServerCount(); ++i) {
        const clNetworkServer& server = *network.ServerAt(i);
        const XTreeItem node = AddTreeNode(server.name, networkComputerMarker, root, false);
        for (std::int64_t share = 0; share < server.shareNames.Count(); ++share)
            AddTreeNode(*server.shareNames.At(share), *server.sharePaths.At(share), node, true);
        if (server.shareNames.Count() == 0) SetChildrenFlag(node, false);
    }
}

void frmMain::AddSubfolders(XTreeItem node) {
    clStringList folders;
    {
        const QuietDrives quiet;
        ListSubfolders(PathOfItem(node), folders);
    }
    folders.Sort(1);
    for (std::int64_t i = 0; i < folders.Count(); ++i) {
        clString path(*folders.At(i));
        const clString name = FileNameOf(path);
        path.Append(L'\\');
        const XTreeItem child = AddTreeNode(name, path, node, true);
        const auto id = reinterpret_cast<TreeNode>(child.item);
        SetState(id, selection.InheritedState(id));
    }
    if (folders.Count() == 0) SetChildrenFlag(node, false);
}

void frmMain::_TreeDriveView::OnItemExpanding(std::uint32_t, XTreeItem item, std::uint8_t*) {
    owner.ExpandNode(item);
}

// A click on a name opens that folder; the arrow keys only show its files.
void frmMain::_TreeDriveView::OnSelChanged(XTreeItem newItem, XTreeItem, std::uint32_t action) {
    if (action != TVC_BYKEYBOARD) {
        UINT flags = 0;
        owner.ItemUnderPointer(&flags);
        if (flags == TVHT_ONITEMLABEL && !newItem.IsExpanded()) {
            owner.ExpandNode(newItem);
            SendMessageW(newItem.tree, TVM_EXPAND, TVE_EXPAND,
                         reinterpret_cast<LPARAM>(newItem.item));
        }
    }
    owner.ListFolderOf(newItem);
}

void frmMain::RefreshDrives() {
    const QuietDrives quiet;
    const clStringList drives = ListDrives();
    for (std::int64_t i = 0; i < drives.Count(); ++i) {
        const clString name = DriveDisplayName(drives, i);
        XTreeItem root = Relative({}, TVGN_ROOT);
        while (root.IsValid() && !root.ItemText().Equals(name))
            root = Relative(root, TVGN_NEXT);
        if (!root.IsValid()) AddTreeNode(name, DriveRootAt(drives, i), {}, false);
    }
    XTreeItem root = Relative({}, TVGN_ROOT);
    while (root.IsValid()) {
        const XTreeItem next = Relative(root, TVGN_NEXT);
        if (!IsRootOfADrive(PathOfItem(root), drives)) {
            SendMessageW(root.tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(root.item));
        }
        root = next;
    }
}

void frmMain::RefreshTree() {
    {
        const QuietDrives quiet;
        RefreshBranch(Relative({}, TVGN_ROOT));
    }
    ListSelectedFolder();
}

void frmMain::RefreshBranch(XTreeItem first) {
    XTreeItem node = first;
    while (node.IsValid()) {
        const XTreeItem next = Relative(node, TVGN_NEXT);
        const clString path = PathOfItem(node);
        if (!path.Equals(networkMarker)) {
            if (PathExists(path)) {
                RefreshFolderNode(node);
            } else {
                SendMessageW(node.tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(node.item));
            }
        }
        node = next;
    }
}

void frmMain::RefreshFolderNode(XTreeItem node) {
    RefreshBranch(Relative(node, TVGN_CHILD));
    SetChildrenFlag(node, true);
    XTreeItem child = Relative(node, TVGN_CHILD);
    if (!child.IsValid()) return;
    clStringList known;
    for (; child.IsValid(); child = Relative(child, TVGN_NEXT))
        known.Add(child.ItemText());
    known.Sort(0);
    clStringList folders;
    ListSubfolders(PathOfItem(node), folders);
    for (std::int64_t i = 0; i < folders.Count(); ++i) {
        clString path(*folders.At(i));
        const clString name = FileNameOf(path);
        if (HasSorted(known, name)) continue;
        path.Append(L'\\');
        const XTreeItem added = AddTreeNode(name, path, node, true);
        const auto id = reinterpret_cast<TreeNode>(added.item);
        SetState(id, selection.InheritedState(id));
    }
}

// The roots, in the order in which they are shown.
void frmMain::FillRoots() {
    const bool isVistaOrLater = ReadSystemVersion().major >= 6;
    {
        const QuietDrives quiet;
        AddMusicRoots();
    }
    RefreshDrives();
    {
        const QuietDrives quiet;
        if (isVistaOrLater) {
            AddTreeNodeIfThere(L"Video", SHELL_VIDEO);
            AddTreeNodeIfThere(L"Public Video", SHELL_SHARED_VIDEO);
        }
        AddTreeNode(L"Network", networkMarker, {}, false);
    }
}

void frmMain::AddTreeNodeIfThere(const clString& text, std::int32_t csidl) {
    const clString path = FolderPath(csidl, L"");
    if (!path.IsEmpty() && PathExists(path)) AddTreeNode(text, path, {}, false);
}

void frmMain::AddMusicRoots() {
    const SystemVersion version = ReadSystemVersion();
    if (version.major < 6) {
        AddTreeNodeIfThere(L"My Documents", SHELL_DOCUMENTS);
    } else if (version.minor == 0) {
        AddTreeNodeIfThere(L"Music", SHELL_MUSIC);
        AddTreeNodeIfThere(L"Public Music", SHELL_SHARED_MUSIC);
    } else {
        AddLibraryFolders();
    }
}

void frmMain::AddLibraryFolders() {
    const clString music = FolderPath(SHELL_MUSIC, L"");
    const clString publicMusic = FolderPath(SHELL_SHARED_MUSIC, L"");
    WalkMusicLibrary([&](const clString& name, const clString& path) {
        AddTreeNode(LibraryFolderText(name, path, music, publicMusic), path, {}, true);
    });
}
