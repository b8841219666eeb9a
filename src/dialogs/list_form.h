// The conversion list: every file that is about to be converted, with totals.
#pragma once

#include <windows.h>

#include <cstdint>

#include "dialogs/list_summary.h"
#include "foundation/arrays.h"
#include "foundation/string.h"
#include "mainwindow/column_menu.h"
#include "mainwindow/file_list.h"
#include "mainwindow/open_maximised.h"
#include "selection/path_list.h"
#include "toolkit/list_view.h"
#include "toolkit/skin_menu.h"
#include "toolkit/window.h"

// A modal dialog, run by its constructor. The user interface thread.
class frmList : public XWindow, private ColumnMenuHost {
public:
    // `files`: the paths to show. `filesExcluded` receives those that the user left
    // unticked, unless the dialog was cancelled. Both stay the caller's.
    // `defaultNames`: the columns to show if none were ever saved, one CR between
    // two. `*convert` is set to true if the dialog was left by its Convert button,
    // and otherwise left alone.
    frmList(HWND parent, const clStringList& files, PathList& filesExcluded,
            const clString& defaultNames, bool* convert);

    void OnClose() override;
    void OnCreate() override;
    void OnDestroy() override;
    void OnPaint() override;
    void OnShow(std::uint32_t reason) override;
    void OnSize(std::uint32_t width, std::uint32_t height, std::uint32_t type) override;
    void OnTimer(std::uint32_t id, std::int64_t userValue) override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;
    void OnIdOk() override;
    void OnIdCancel() override;

private:
    class _ListFilesView final : public XListView {
    public:
        explicit _ListFilesView(frmList& form) : owner(form) {}
        void OnRowChecked(std::int32_t row, bool checked) override;
        void OnColumnClick(std::int32_t column) override;
        void OnListContextMenu(std::uint32_t x, std::uint32_t y, HWND list) override;
        void OnDrawRow(const DRAWITEMSTRUCT& item) override;

    private:
        frmList& owner;
    };

    void SetUpList();
    void FillList();
    // All of them; without `byName` in the order in which they were given.
    void AddFiles(bool byName);
    void AddFile(const clString& path, const clStringList& titles);
    void UpdateSummary();
    void CountSummary();
    void RefillQueue();
    void PumpMetaData();
    void TickRows(int command);
    void MoveControl(int id, std::int32_t x, std::int32_t y) const;
    void FinishList(INT_PTR result);

    // ColumnMenuHost.
    void FillNewColumn() override;
    void FillDefaultColumns() override;

    _ListFilesView _ListFiles;
    const clStringList& _Files;
    PathList& _FilesExcluded;
    clFileList fileList;  // rows, columns and reader of `_ListFiles`
    XSkinMenu _RowMenu;
    clString _SummaryText;
    clOpenMaximised openMaximised;
    ListSummary summary;    // follows each flip
    bool summaryIsSettled;  // counted after the reader's end: no row changes any more
    bool summaryIsInvalid;  // its line waits to be painted
};
