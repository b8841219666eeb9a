// The main window: the folder tree, the files of the selected folder, and the
// buttons that lead from a choice to the converter.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <cstdint>

#include "decoders/audio_type.h"
#include "foundation/arrays.h"
#include "foundation/mutex.h"
#include "foundation/string.h"
#include "mainwindow/column_menu.h"
#include "mainwindow/file_list.h"
#include "mainwindow/open_maximised.h"
#include "mainwindow/splitter.h"
#include "selection/gather.h"
#include "selection/hand_off.h"
#include "selection/selection_host.h"
#include "selection/selection_model.h"
#include "toolkit/button.h"
#include "toolkit/button_bar.h"
#include "toolkit/list_view.h"
#include "toolkit/mem_bitmap.h"
#include "toolkit/skin_menu.h"
#include "toolkit/tree_view.h"
#include "toolkit/window.h"

// The one main window of the process. Its constructor runs the dialog and returns
// when the window is closed. All on the user interface thread.
class frmMain : public XWindow, private SelectionHost, private HandOffHost, private ColumnMenuHost {
public:
    frmMain();
    ~frmMain() override;

    void OnClose() override;
    void OnCreate() override;
    void OnDestroy() override;
    void OnEraseBackground(HDC dc) override;
    void OnMouseDown(std::int32_t x, std::int32_t y, std::uint32_t message,
                     std::uint32_t keys) override;
    void OnMouseUp(std::int32_t x, std::int32_t y, std::uint32_t message,
                   std::uint32_t keys) override;
    void OnMouseMove(std::int32_t x, std::int32_t y, std::uint32_t keys) override;
    void OnMove(std::int32_t x, std::int32_t y) override;
    void OnPaint() override;
    void OnSize(std::uint32_t width, std::uint32_t height, std::uint32_t type) override;
    void OnTimer(std::uint32_t id, std::int64_t userValue) override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;

private:
    class _TreeDriveView final : public XTreeView {
    public:
        explicit _TreeDriveView(frmMain& form) : owner(form) {}
        void OnItemExpanding(std::uint32_t action, XTreeItem item, std::uint8_t* cancel) override;
        void OnSelChanged(XTreeItem newItem, XTreeItem oldItem, std::uint32_t action) override;
        void OnTreeClick(std::uint8_t* result) override;
        void OnTreeDoubleClick(std::uint8_t* result) override;
        void OnTreeSpace() override;

    private:
        frmMain& owner;
    };
    class _ListFilesView final : public XListView {
    public:
        explicit _ListFilesView(frmMain& form) : owner(form) {}
        void OnRowChecked(std::int32_t row, bool checked) override;
        void OnColumnClick(std::int32_t column) override;
        void OnListContextMenu(std::uint32_t x, std::uint32_t y, HWND list) override;
        void OnDrawRow(const DRAWITEMSTRUCT& item) override;
        LRESULT WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;

    private:
        frmMain& owner;
    };
    // A button that calls one operation of the form.
    class FormButton final : public XButton {
    public:
        using Action = void (frmMain::*)();
        explicit FormButton(Action whenClicked) : action(whenClicked) {}
        // Either button of the mouse counts.
        void OnClick(std::uint32_t which) override;

    private:
        Action action;
    };
    class _cmdHelpButton final : public XButton {
    public:
        void OnClick(std::uint32_t which) override;
    };

    // Lifecycle.
    void MakeButtons();
    void AddFormButton(FormButton& button, std::uint32_t picture, std::int32_t x,
                       const wchar_t* caption, const wchar_t* tooltip);
    void SetUpTree();
    void SetUpList();
    void PlaceWindow();
    void SaveSettings();
    static void DeletePlacement();
    void UpdateFilterButton();

    // Layout.
    void BuildBackground();
    void LayoutPanes(std::int32_t width, std::int32_t height);
    void UpdateStatus();
    SplitterZone GrabZone() const;

    // Tree.
    XTreeItem AddTreeNode(const clString& text, const clString& path, XTreeItem parent,
                          bool sharedIcon);
    void AddTreeNodeIfThere(const clString& text, std::int32_t csidl);
    void FillRoots();
    void AddMusicRoots();
    void AddLibraryFolders();
    void ExpandNode(XTreeItem node);
    void AddNetworkNodes(XTreeItem root);
    void AddSubfolders(XTreeItem node);
    void RefreshDrives();
    void RefreshBranch(XTreeItem first);
    void RefreshFolderNode(XTreeItem node);
    void RefreshTree();
    void SetChildrenFlag(XTreeItem node, bool hasChildren);
    clString PathOfItem(XTreeItem node) const;
    XTreeItem ItemOf(TreeNode node) const;
    XTreeItem Relative(XTreeItem node, UINT relation) const;
    XTreeItem SelectedItem() const;
    XTreeItem ItemUnderPointer(UINT* flags) const;
    void SelectItem(XTreeItem node);
    // Steps the node's state as a click on its picture does.
    void ToggleNode(XTreeItem node);
    // Does what a Space pressed before has left to be done.
    void FinishSpace() const;
    void RepairSpace(HTREEITEM item, std::int32_t state);

    // Start folder.
    void OpenStartFolder();
    void FollowStartFolder(const clString& argument);
    XTreeItem FirstStartNode(bool onNetwork);

    // Listing.
    void ListFolderOf(XTreeItem node);
    void AddFolderRows(XTreeItem node);
    // `titles`: of all columns, so that not every row asks for them.
    void FillRowCells(std::int32_t displayRow, const clStringList& titles);
    void ListSelectedFolder();
    void PumpMetaData();
    void TickRows(RowCommand command);
    void ShowRowMenu();

    // The buttons.
    void Convert();
    void ShowConversionList();
    void RefreshAll();
    void ResetAll();
    void ShowFilterDialog();

    // SelectionHost.
    TreeNode FirstRoot() const override;
    TreeNode SelectedNode() const override;
    TreeNode Parent(TreeNode node) const override;
    TreeNode FirstChild(TreeNode node) const override;
    TreeNode NextSibling(TreeNode node) const override;
    clString NodePath(TreeNode node) const override;
    std::int32_t State(TreeNode node) const override;
    void SetState(TreeNode node, std::int32_t state) override;
    std::int32_t RowCount() const override;
    clString RowFilePath(std::int32_t row) const override;
    std::int32_t RowCheckState(std::int32_t row) const override;
    void SetRowCheckState(std::int32_t row, std::int32_t check) override;
    void BeginRowFlips() override;
    void EndRowFlips() override;
    void RefuseNetworkNode() override;
    bool ConfirmReset() override;
    void ListFolder(TreeNode node) override;

    // HandOffHost.
    void StopReader() override;
    void Gather(clStringList& files) override;
    HWND Window() override { return XWindow::Window(); }

    // ColumnMenuHost.
    void FillNewColumn() override;
    void FillDefaultColumns() override;

    _TreeDriveView _TreeDrive;
    clStringList _FolderPaths;  // one for each node ever made; a node's param is its index
    HIMAGELIST _StateImages;
    _ListFilesView _ListFiles;
    clFileList fileList;  // rows, columns and reader of `_ListFiles`
    XSkinMenu _RowMenu;
    XButtonBar buttonBar;
    FormButton _cmdConvert;
    FormButton _cmdList;
    FormButton _cmdRefresh;
    FormButton _cmdReset;
    FormButton _cmdFilter;
    _cmdHelpButton _cmdHelp;
    clAudioTypes _AudioTypes;
    AudioTypeFilter audioFilter;
    XMemBitmap _Background;
    SIZE _ScreenSize;
    clSplitter splitter;
    clString _StatusText;
    SelectionModel selection;
    clOpenMaximised openMaximised;
    std::int32_t statusHolds;  // runs of row flips under way: the status line waits
    bool statusIsStale;
    bool noticeIsShown;  // that the reader works, as last painted
};
