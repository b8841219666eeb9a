// A list of files of a form: its rows, columns, sorting, painting and reading.
// What the main window and the conversion list have in common.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "decoders/file_row.h"
#include "decoders/list_rows.h"
#include "decoders/meta_data_source.h"
#include "foundation/arrays.h"
#include "foundation/string.h"
#include "mainwindow/columns.h"
#include "mainwindow/file_rows.h"
#include "mainwindow/row_pictures.h"
#include "selection/selection_host.h"
#include "toolkit/list_view.h"
#include "toolkit/mem_bitmap.h"

// The order of a list, as its header shows it.
struct SortContext {
    clString columnName;  // empty if no column carries an arrow
    std::int32_t column = 0;
    bool ascending = true;
    XListView* list = nullptr;
    const ListedRows* rows = nullptr;
};

// The platform's form of a comparator: display indices, and a SortContext. 0 for
// rows that do not exist or have no record. Reads both rows' cells each time;
// SortList reads each row once and compares by the same rule.
int CALLBACK CompareRows(LPARAM first, LPARAM second, LPARAM sortContext);

// Belongs to the form, as its XListView does; each list row's item parameter is
// the index of its FileRow. All on the thread of the form.
class clFileList : public ListedRows {
public:
    explicit clFileList(XListView& listView) : view(listView) {}
    clFileList(const clFileList&) = delete;
    clFileList& operator=(const clFileList&) = delete;
    // Stops the reader, then frees rows and arrows.
    ~clFileList() override;

    std::int32_t Count() const override { return view.RowCount(); }
    std::int64_t ParamAt(std::int32_t displayRow) const override;
    FileRow* RowOf(std::int64_t param) const override { return rows.At(param); }
    // The record of a display row; null if there is none.
    FileRow* RowAt(std::int32_t displayRow) const { return rows.At(ParamAt(displayRow)); }

    // Gives the list the system's pictures, `extendedStyle` (LVS_EX_*) and the two
    // arrows of its header. Once, when the control is known.
    void SetUp(DWORD extendedStyle);

    // Rows.

    // Stops the reader and waits for the file that it is at, then destroys all rows.
    void Clear();
    // Makes room for so many rows more: each of them is then added sooner.
    void ExpectRows(std::int64_t count);
    // What a cell of a new row shows: the text for that column's name.
    using FirstTextOf = clString (*)(const FileRow& row, const clString& columnName);
    // Appends a row with the picture of its type, the cells of the columns `titles`,
    // and no tick box; returns its display index, or -1 if the control refuses. What
    // the record held is taken over.
    std::int32_t AddRow(FileRow&& record, const clStringList& titles, FirstTextOf textOf);
    bool IsTicked(std::int32_t displayRow) const;
    void SetTicked(std::int32_t displayRow, bool ticked);

    // Columns. Names are kept in `_ColumnNames`, which the control may have left
    // behind: dragged headers and removed columns show only in the control.

    // Appends a column of the control; `width` 0 takes the default one.
    void InsertListColumn(const clString& name, std::int32_t width);
    // Appends one for each name of `_ColumnNames`, with the saved widths, which
    // have one CR between two.
    void RestoreColumns(const clString& widths);
    // Removes the control's columns, all with their minimum widths.
    void RemoveAllColumns();
    // Puts the arrow of the sort order on a column: -1 none, 0 ascending, 1 descending.
    void SetColumnSortImage(std::int32_t column, std::int32_t image);
    // Titles and widths as they stand from left to right.
    SavedColumns DisplayedColumns() const;
    // In the order of the columns' numbers.
    clStringList ColumnTitles() const;
    // The column with exactly this title, or -1.
    std::int32_t ColumnTitled(const clString& title) const;
    // Paints the whole list anew.
    void Repaint();

    // Sorting.

    // A click on a header: ascending at first, then each time the other way.
    void ToggleSort(std::int32_t column);
    // Sorts by the column that carries an arrow, the last one if there are several,
    // and by the text of column 0 without one.
    void SortList();

    // Paints one row from its cells, tick and picture.
    void DrawRow(const DRAWITEMSTRUCT& item);

    // Reading.

    clMetaDataSource& Reader() { return reader; }
    const clMetaDataSource& Reader() const { return reader; }
    // Reads all rows anew, in display order.
    void RefillMetaDataQueue();
    // What a cell of a finished file shows: the text for that column's name.
    using CellTextOf =
        std::function<clString(const MetaDataItem& item, const clString& columnName)>;
    enum class PumpResult {
        Idle,      // the reader has to go on first
        More,      // more files are finished than were to be written in one go
        Complete,  // the list is complete by this
    };
    // Writes the finished files' cells, for some 30 ms at most: other messages come
    // between then.
    PumpResult PumpMetaData(const CellTextOf& textOf);
    // Gives the form a WorkMessage with what is left behind such a pump: at once if
    // nothing waits, otherwise behind the keys, clicks, paintings and timers that do.
    // A posted message would come before them all, again and again.
    static void PostRest(HWND form, PumpResult result);
    // What wParam of a WorkMessage tells to do.
    enum Work : WPARAM { GoOnPumping, Sort };

    // The number of that message; the same in all forms.
    static UINT WorkMessage();

    clString _ColumnNames;  // in display order, one CR between two

private:
    int PictureOf(const clString& path);
    SortContext CurrentOrder();

    XListView& view;
    clFileRows rows;
    // Each display row's item parameter, which nobody but this class changes: the
    // control is not asked for it.
    std::vector<std::int64_t> paramsInOrder;
    clStringList pictureTypes;  // extensions whose pictures are known by now
    std::vector<int> pictures;  // one for each of them
    HIMAGELIST headerImages = nullptr;
    clRowPictures rowPictures;
    XMemBitmap rowBitmap;  // of the row that was painted last: nearly all have one size
    DisplayRowIndex displayRows;
    clMetaDataSource reader;
};

// The tag of that name: what the cells of a listed folder show.
[[nodiscard]] clString TagCellText(const MetaDataItem& item, const clString& columnName);

// What the cells of a list of bare paths show, in which nothing stands before its
// file is read: size and dates of the row, whatever tags are named so, and the tag
// of any other name. Of a row that is gone, the tags alone.
[[nodiscard]] clString FileCellText(const MetaDataItem& item, const clString& columnName);
