#include "tests/toolkit/tree_form.h"

#include <cstring>
#include <utility>

#include "tests/support/text.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

namespace {

constexpr int treeId = 1001;

std::string NameOf(XTreeItem item) {
    return item.IsValid() ? Utf8(item.ItemText()) : "-";
}

}  // namespace

void ProbeTree::Note(const std::string& line, std::uint8_t* byte) {
    lines.push_back(line);
    if (byte != nullptr) {
        if (*byte != 0) lines.push_back("the byte was set already");
        *byte = answer;
    }
    const std::function<void()> now = during;  // it may replace itself
    if (now) now();
}

void ProbeTree::OnItemExpanded(std::uint32_t action, XTreeItem item) {
    Note("expanded " + std::to_string(action) + " " + NameOf(item));
}

void ProbeTree::OnItemExpanding(std::uint32_t action, XTreeItem item, std::uint8_t* cancel) {
    Note("expanding " + std::to_string(action) + " " + NameOf(item), cancel);
}

void ProbeTree::OnSelChanged(XTreeItem newItem, XTreeItem oldItem, std::uint32_t action) {
    Note("changed " + NameOf(newItem) + " " + NameOf(oldItem) + " " + std::to_string(action));
}

void ProbeTree::OnSelChanging(XTreeItem newItem, XTreeItem oldItem, std::uint32_t action,
                              std::uint8_t* cancel) {
    Note("changing " + NameOf(newItem) + " " + NameOf(oldItem) + " " + std::to_string(action),
         cancel);
}

void ProbeTree::OnTreeClick(std::uint8_t* result) {
    Note("click", result);
}

void ProbeTree::OnTreeDoubleClick(std::uint8_t* result) {
    Note("double click", result);
}

void ProbeTree::OnTreeRightClick(std::uint8_t* result) {
    Note("right click", result);
}

void ProbeTree::OnTreeRightDoubleClick(std::uint8_t* result) {
    Note("right double click", result);
}

void ProbeTree::OnTreeContextMenu(std::uint32_t x, std::uint32_t y) {
    Note("menu " + std::to_string(x) + " " + std::to_string(y));
}

void ProbeTree::OnTreeSpace() {
    Note("space");
}

TreeForm::TreeForm(DWORD formStyle, DWORD style) {
    DialogTemplate dialog(formStyle, 160, 100);
    dialog.Add({WC_TREEVIEWW,
                WS_VISIBLE | WS_TABSTOP | WS_BORDER | TVS_HASBUTTONS | TVS_LINESATROOT |
                    TVS_SHOWSELALWAYS | style,
                5, 5, 150, 90, treeId});
    form.created = [this] {
        tree.SetTreeWindow(form.Child(treeId));
        anchor = tree.InsertItem(L"Anchor", -1, -1, 1, {});
        bow = tree.InsertItem(L"Bow", -1, -1, 2, anchor);
        cleat = tree.InsertItem(L"Cleat", -1, -1, 3, anchor);
        deck = tree.InsertItem(L"Deck", -1, -1, 4, {});
        eye = tree.InsertItem(L"Eye", -1, -1, 5, {});
    };
    form.route = [this](HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* flag) -> LRESULT {
        if (message == WM_CONTEXTMENU && !routeMenus) return 0;
        return tree.Route(window, message, wParam, lParam, flag);
    };
    form.Show(dialog);
    Select(anchor);
    PumpMessages();
    tree.lines.clear();
}

std::vector<std::string> TreeForm::Taken() {
    return std::exchange(tree.lines, {});
}

LRESULT TreeForm::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageW(tree.TreeWindow(), message, wParam, lParam);
}

std::string TreeForm::Selected() const {
    const LRESULT item = Ask(TVM_GETNEXTITEM, TVGN_CARET, 0);
    return NameOf({reinterpret_cast<HTREEITEM>(item), tree.TreeWindow()});
}

void TreeForm::Select(XTreeItem item) {
    Ask(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item.item));
}

POINT TreeForm::OnLabel(XTreeItem item) const {
    // The control takes the item from where it is to write the rectangle.
    RECT label = {};
    std::memcpy(&label, &item.item, sizeof(item.item));
    Ask(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&label));
    return ScreenMiddle(tree.TreeWindow(), label);
}

POINT TreeForm::BesideItems() const {
    RECT client = {};
    GetClientRect(tree.TreeWindow(), &client);
    return ScreenPoint(tree.TreeWindow(), client.right - 5, client.bottom - 5);
}

LRESULT TreeForm::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    handled = 99;
    return tree.Route(form.Window(), message, wParam, lParam, &handled);
}
