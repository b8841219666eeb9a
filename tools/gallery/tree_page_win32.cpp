#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include "foundation/folders.h"
#include "resources/ids.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/icon_resource.h"
#include "toolkit/tree_view.h"
#include "tools/gallery/page.h"

namespace {

constexpr std::int32_t stateSize = 16;
constexpr std::int32_t itemHeight = 18;

struct StateName {
    const wchar_t* name;
    int icon;
};
// In the order of their numbers, from 1 on.
constexpr StateName states[] = {
    {L"1: nothing chosen", IDI_STATE_NONE},
    {L"2: a folder below is chosen", IDI_STATE_CHILD_SELECTED},
    {L"3: single files are chosen", IDI_STATE_HAS_FILES},
    {L"4: chosen with its sub-folders", IDI_STATE_RECURSIVE},
    {L"5: chosen without sub-folders", IDI_STATE_FOLDER_ONLY},
};

HIMAGELIST MakeStateImages() {
    HIMAGELIST const images = ImageList_Create(stateSize, stateSize, ILC_COLOR24 | ILC_MASK, 0, 8);
    const auto add = [images](int id) {
        const clIconHandle icon = LoadIconResource(id, stateSize);
        ImageList_ReplaceIcon(images, -1, icon.Get());
    };
    add(IDI_STATE_NONE);  // number 0 is never shown
    for (const StateName& state : states)
        add(state.icon);
    return images;
}

// Writes on the page what it was told.
class LiveTree final : public XTreeView {
public:
    HWND log = nullptr;

    void OnItemExpanded(std::uint32_t, XTreeItem item) override { Tell(L"opened or closed", item); }
    void OnSelChanged(XTreeItem item, XTreeItem, std::uint32_t) override {
        Tell(L"selected", item);
    }
    void OnTreeContextMenu(std::uint32_t x, std::uint32_t y) override {
        clString text;
        text.Format(L"menu at %u, %u", x, y);
        SetWindowTextW(log, text.Chars());
    }
    void OnTreeSpace() override { SetWindowTextW(log, L"Space"); }

private:
    void Tell(const wchar_t* what, XTreeItem item) const {
        clString text = item.ItemText();
        text.Append(L": ");
        text.Append(what);
        SetWindowTextW(log, text.Chars());
    }
};

class TreePage : public GalleryPage {
public:
    const wchar_t* Name() const override { return L"Tree"; }
    void Enter() override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;
    ~TreePage() override { ImageList_Destroy(images); }

protected:
    void Fill() override;

private:
    void FillTree(LiveTree& tree, std::int32_t x, const wchar_t* heading);

    LiveTree focused;
    LiveTree other;
    HIMAGELIST images = MakeStateImages();
};

void TreePage::Fill() {
    FillTree(focused, 16, L"With the focus: the selection is lit");
    FillTree(other, 500, L"Without the focus: the selection is grey");
    HWND const log =
        AddControl(L"STATIC", L"What a tree is told shows here.", 0, {16, 520, 900, 540});
    focused.log = log;
    other.log = log;
}

void TreePage::FillTree(LiveTree& tree, std::int32_t x, const wchar_t* heading) {
    AddHeading(x, 10, heading);
    HWND const control = AddControl(WC_TREEVIEWW, L"",
                                    WS_TABSTOP | WS_BORDER | TVS_HASBUTTONS | TVS_LINESATROOT |
                                        TVS_SHOWSELALWAYS | TVS_CHECKBOXES,
                                    {x, 34, x + 440, 500});
    tree.SetTreeWindow(control);
    SendMessageW(control, TVM_SETITEMHEIGHT, itemHeight, 0);
    SendMessageW(control, TVM_SETIMAGELIST, TVSIL_NORMAL,
                 reinterpret_cast<LPARAM>(SystemImageList(false)));
    SendMessageW(control, TVM_SETIMAGELIST, TVSIL_STATE, reinterpret_cast<LPARAM>(images));
    const int folder = ShellIconIndex(clString(L"C:\\windows\\"), SHELL_ICON_REAL);
    XTreeItem selected;
    for (const wchar_t* parent : {L"Open, with every state below", L"Closed"}) {
        const XTreeItem root = tree.InsertItem(clString(parent), folder, folder, 0, {});
        root.SetItemStateImage(1);
        for (std::uint32_t i = 0; i < std::size(states); ++i) {
            const XTreeItem item =
                tree.InsertItem(clString(states[i].name), folder, folder, 0, root);
            item.SetItemStateImage(i + 1);
            if (i == 3 && !selected.IsValid()) selected = item;
        }
    }
    tree.InsertItem(clString(L"Inserted without an image: the first of the list"), -1, -1, 0, {})
        .SetItemStateImage(1);
    SendMessageW(control, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(selected.item));
}

void TreePage::Enter() {
    GalleryPage::Enter();
    SetFocus(focused.TreeWindow());
}

LRESULT TreePage::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              std::uint32_t* handled) {
    for (LiveTree* tree : {&focused, &other}) {
        const LRESULT result = tree->Route(window, message, wParam, lParam, handled);
        if (*handled != 0) return result;
    }
    return 0;
}

}  // namespace

std::unique_ptr<GalleryPage> MakeTreePage() {
    return std::make_unique<TreePage>();
}
