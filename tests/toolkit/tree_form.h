// A form with one real tree, and a record of what the tree tells.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/ui/host_form.h"
#include "toolkit/tree_view.h"

// Writes down each operation as one line; items stand there by their texts, and
// "-" for none.
class ProbeTree final : public XTreeView {
public:
    void OnItemExpanded(std::uint32_t action, XTreeItem item) override;
    void OnItemExpanding(std::uint32_t action, XTreeItem item, std::uint8_t* cancel) override;
    void OnSelChanged(XTreeItem newItem, XTreeItem oldItem, std::uint32_t action) override;
    void OnSelChanging(XTreeItem newItem, XTreeItem oldItem, std::uint32_t action,
                       std::uint8_t* cancel) override;
    void OnTreeClick(std::uint8_t* result) override;
    void OnTreeDoubleClick(std::uint8_t* result) override;
    void OnTreeRightClick(std::uint8_t* result) override;
    void OnTreeRightDoubleClick(std::uint8_t* result) override;
    void OnTreeContextMenu(std::uint32_t x, std::uint32_t y) override;
    void OnTreeSpace() override;

    std::uint8_t answer = 0;       // what each cancel or result is set to
    std::function<void()> during;  // what each operation does first
    std::vector<std::string> lines;

private:
    void Note(const std::string& line, std::uint8_t* byte = nullptr);
};

// "Anchor" with "Bow" and "Cleat" below it, "Deck", "Eye"; data 1 to 5 in this order.
class TreeForm {
public:
    // `style` joins that of the tree.
    explicit TreeForm(DWORD formStyle = visibleForm, DWORD style = 0);

    // Declared first, so that it still hears what the end of its window sends.
    ProbeTree tree;
    HostForm form;
    bool routeMenus = true;  // WM_CONTEXTMENU is offered to the tree as well

    XTreeItem anchor, bow, cleat, deck, eye;

    // The lines since the last call.
    std::vector<std::string> Taken();
    std::string Selected() const;
    void Select(XTreeItem item);
    LRESULT Ask(UINT message, WPARAM wParam, LPARAM lParam) const;
    // A point of the screen on the item's label, or right of all labels.
    POINT OnLabel(XTreeItem item) const;
    POINT BesideItems() const;

    // What `Route` made of a message; the flag stands in `handled`.
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam);
    // A notification of the tree.
    template <class Notification>
    LRESULT Notify(Notification notification, UINT code) {
        notification.hdr.hwndFrom = tree.TreeWindow();
        notification.hdr.code = code;
        return Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
    }
    std::uint32_t handled = 0;
};
