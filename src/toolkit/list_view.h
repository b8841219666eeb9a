// A report list of a dialog: its notifications become virtual operations, and it
// gains what the control lacks.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "foundation/arrays.h"
#include "foundation/string.h"
#include "toolkit/font.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/sub_class_ctrl.h"

// Check boxes that act on the whole selection, a least width per column, a key
// that selects all, batches of changes, and an in-place editor. The form finds
// the control, gives it to `SetListWindow` and to `Attach`, and offers every
// message of its own to `Route`: the control's notifications go to the form,
// and what happens inside the control comes through `WndHook`.
//
// Rows and columns count from 0; a row of -1 is none. A column is known by its
// number, wherever the user has dragged it. All of it belongs to the thread of
// the control.
class XListView : public XSubClassCtrl {
public:
    XListView() = default;
    // Detaches, then ends an edit without taking its text.
    ~XListView() override;

    // The operations, in the order of their slots. Where nothing else is said the
    // base does nothing.

    LRESULT WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                    std::uint32_t* handled) override;
    // Asked before a press, or the arrows to the left and to the right, start an
    // edit. Base: yes.
    virtual bool CanEditCell(std::int32_t row, std::int32_t column);
    // A row has changed, and not in a batch. `changedMask` is LVIF_*, the states LVIS_*.
    virtual void OnItemChanged(std::int32_t row, std::int32_t column, std::uint32_t changedMask,
                               std::uint32_t oldState, std::uint32_t newState);
    // A row was selected or no longer is, and not in a batch; also for each row of
    // a select-all, which is one.
    virtual void OnRowSelected(std::int32_t row, std::int32_t column, bool selected);
    // A row's state image changed, and not in a batch; `checked` for any image but
    // the first. A row that is inserted outside of a batch counts too.
    virtual void OnRowChecked(std::int32_t row, bool checked);
    // The control's own editor is about to open; anything but 0 refuses. Base: 0.
    virtual std::uint8_t OnLabelEditBegin(std::int32_t row);
    // The control's own editor closed; `text` is in column 0 already. The result
    // is not used. Base: true.
    virtual bool OnLabelEditEnd(std::int32_t row, const clString& text);
    // The in-place editor closed or moved on; the changed text is in its cell already.
    virtual void OnCellEdited(std::int32_t row, std::int32_t column, const clString& text);
    // The control's own editor closed and the text stays.
    virtual void OnLabelEditCancelled(std::int32_t row);
    // Rows are being dragged with the left button.
    virtual void OnBeginDrag(const NMLISTVIEW& drag);
    // Every key, behind what the list itself does with it.
    virtual void OnListKey(std::uint32_t virtualKey);
    // F2, where the list allows editing at all. Base: yes.
    virtual bool CanEditByKey();
    // Ctrl+A, where the list allows more than one selected row. Base: yes.
    virtual bool CanSelectAll();
    // The tip of a row; what the control has no room for is cut. Base: empty.
    virtual clString GetInfoTip(std::int32_t row);
    // The user begins to draw a selection rectangle; anything but 0 refuses. Base: 0.
    virtual std::uint8_t OnMarqueeBegin();
    // A click on a header.
    virtual void OnColumnClick(std::int32_t column);
    // Clicks; the row may be -1. Client coordinates.
    virtual void OnRowClick(std::int32_t row, std::int32_t column, const POINT& point);
    // A press of the left button that is none on a check box nor the second of two
    // fast ones, before the control sees it; `row` and `point` (client coordinates) are
    // those of the pointer. Setting `*handled` keeps the press from the control. Base:
    // clears it.
    virtual void OnLeftDown(std::int32_t row, const POINT& point, std::uint32_t* handled);
    virtual void OnRowDoubleClick(std::int32_t row, std::int32_t column, const POINT& point);
    virtual void OnRowRightClick(std::int32_t row, std::int32_t column, const POINT& point);
    virtual void OnRowRightDoubleClick(std::int32_t row, std::int32_t column, const POINT& point);
    // Unsigned screen coordinates, both 65535 from the keyboard. The header counts
    // as part of the list.
    virtual void OnListContextMenu(std::uint32_t x, std::uint32_t y, HWND list);
    // The user let go of a column's edge.
    virtual void OnColumnResized(std::int32_t column);
    // The user has dropped a dragged header; the new order is not yet in force.
    virtual void OnColumnsReordered();
    // A row of an owner-drawn list is to be painted: itemID is the row.
    virtual void OnDrawRow(const DRAWITEMSTRUCT& item);
    // WM_VSCROLL: SB_*, and the position for the two codes that have one.
    virtual void OnVScroll(std::uint32_t code, std::uint32_t position);

    // Serves the form's WM_NOTIFY, WM_CONTEXTMENU and WM_DRAWITEM that concern the
    // list, and clears `*handled` for every other message. Returns the message's
    // result.
    LRESULT Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam, std::uint32_t* handled);

    // The control, which is the form's to find and to `Attach`; null until set.
    void SetListWindow(HWND window) { listWindow = window; }
    HWND ListWindow() const { return listWindow; }

    // What may be edited in place: nothing, column 0 alone, or every column.
    enum class EditMode : std::uint32_t { None = 0, FirstColumn = 1, AllColumns = 2 };
    void SetEditMode(EditMode mode) { editMode = mode; }

    // Appends a column; nothing happens if the control refuses. `width` and
    // `minimumWidth` in pixels, `format` LVCFMT_*. The user cannot drag the
    // column below its minimum; 0 leaves it free.
    void AddColumn(const clString& title, std::int32_t width, std::int32_t format,
                   std::int32_t minimumWidth);
    // Takes its minimum width and its texts along; of texts behind the first column,
    // when that goes, the first 998 characters stay. Outside the columns nothing
    // happens.
    void RemoveColumn(std::int32_t column);
    std::int32_t ColumnCount() const;
    // Pixels; 0 outside the columns.
    std::int32_t ColumnWidth(std::int32_t column) const;
    // The first 998 characters; empty outside the columns.
    clString ColumnTitle(std::int32_t column) const;
    // Fills `order` with the column numbers, from the leftmost displayed one on.
    void ColumnOrder(clPtrArray& order) const;
    // Client x of the left edge of column 0 while the list is not scrolled sideways.
    std::int32_t FirstColumnLeft() const;
    // Shows an image of the header's list beside the title, on the side towards
    // the column's inner space; -1 shows none. Outside the columns nothing happens.
    void SetColumnImage(std::int32_t column, std::int32_t image);
    // -1 for none, outside the columns and without a list window.
    std::int32_t ColumnImage(std::int32_t column) const;

    std::int32_t RowCount() const;
    // With column 0 inserts a row before `row`, -1 for the end, with an empty text
    // and `data`, and returns where it stands, -1 if the control refuses. With
    // another column empties that cell of an existing row, -1 for the last one,
    // leaves the row's data alone and returns the row. `image` is an index into
    // the list's small images; -1 shows none.
    std::int32_t InsertRow(std::int32_t row, std::int32_t column, std::int32_t image,
                           std::int64_t data);
    // The same for column 0 with its text, at `row`, which is not -1: one message for
    // what `InsertRow` and `SetCell` need three for.
    std::int32_t InsertRowWithText(const clString& text, std::int32_t row, std::int32_t image,
                                   std::int64_t data);
    void SetCell(const clString& text, std::int32_t row, std::int32_t column);
    // The first 998 characters; empty if there is no such cell.
    clString CellText(std::int32_t row, std::int32_t column) const;
    // What `InsertRow` was given; 0 if there is no such row.
    std::int64_t RowData(std::int32_t row) const;

    // Adds the row to the selection. With `exclusive` it gets the focus, the
    // selection and the selection mark, and all other rows lose focus, selection,
    // cut and drop marks.
    void SelectRow(std::int32_t row, bool exclusive);
    // Fills `rows` with the selected rows, in ascending order.
    void SelectedRows(clPtrArray& rows) const;
    // The row under the mouse pointer, in any of its columns, or -1.
    std::int32_t RowUnderPointer() const;

    // Sorts the rows. `compare` gets display indices as they are before the sort,
    // and the list must not change meanwhile. Rows that compare equal keep their
    // order. One batch; holds the subclass mutex. Rows are told apart by their
    // data: if two share it nothing is sorted, and the result is false.
    bool SortRows(PFNLVCOMPARE compare, LPARAM context);
    // The same for who knows each row's data already, in display order: `rowData`
    // comes back in the new one.
    bool SortRows(PFNLVCOMPARE compare, LPARAM context, std::vector<std::int64_t>& rowData);

    // Until `EndBatch` nothing is redrawn, and changes of rows are not told. They
    // are not counted: the first `EndBatch`, that of SortRows too, ends them all.
    void BeginBatch();
    // Redraws the whole list.
    void EndBatch();

    // What of the list and its header is to be painted when it is made.
    class Marks {
    public:
        explicit Marks(const XListView& list);
        // Marks that, and nothing else.
        void PutBack() const;

    private:
        struct Mark {
            HWND window;
            clRegionHandle region;
        };

        Mark ofList;
        Mark ofHeader;
    };

    // While it lives nothing is redrawn, then the whole list is; changes of rows are
    // told, and no row or column may come or go. For states of many rows, each of
    // which the control would look up on the screen. Neither within nor around
    // another one, a batch, a sort or a CellWriter.
    class RedrawPause {
    public:
        explicit RedrawPause(XListView& list);
        RedrawPause(const RedrawPause&) = delete;
        RedrawPause& operator=(const RedrawPause&) = delete;
        ~RedrawPause();

    private:
        XListView& view;
        Marks marks;
    };

    // Writes many cells. The control would work out for each one what of the
    // window it lies in; here each row that is in view is marked once, at the end.
    // No batch: nothing else is redrawn, and changes of rows are told. No row or
    // column may come or go meanwhile.
    class CellWriter {
    public:
        explicit CellWriter(XListView& list) : view(list) {}
        CellWriter(const CellWriter&) = delete;
        CellWriter& operator=(const CellWriter&) = delete;
        ~CellWriter();

        void SetCell(const clString& text, std::int32_t row, std::int32_t column);

    private:
        XListView& view;
        std::optional<Marks> marks;      // from the first cell on
        std::vector<std::int32_t> rows;  // written ones; a row's cells come together
    };

    // The in-place editor: an edit field over one cell.
    class clValueControl : public XSubClassCtrl {
    public:
        clValueControl() = default;
        // `Close`.
        ~clValueControl() override;

        LRESULT WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;

        // Commits and closes a running edit, selects the row exclusively, and
        // edits that cell. If the platform refuses, nothing is edited.
        void Start(XListView& list, std::int32_t atRow, std::int32_t atColumn);
        // Takes the text over if it differs from the cell's first 998 characters,
        // and tells the list. The edit goes on. Without one, or if its row is
        // gone, nothing happens.
        void Commit();
        // Ends the edit; its text is lost unless it was committed.
        void Close();
        // -1 when nothing is edited.
        std::int32_t Row() const { return row; }
        std::int32_t Column() const { return column; }

    private:
        bool RunKey(std::uint32_t virtualKey);
        bool MoveSideways(std::int32_t step);
        bool MoveToRow(std::int32_t newRow);
        clString Text() const;

        std::int32_t row = -1;
        std::int32_t column = 0;
        HWND editWindow = nullptr;
        HWND listWindow = nullptr;
        clFont font;
        XListView* owner = nullptr;
    };
    // The editor, owned by the list.
    clValueControl& Editor() { return valueControl; }

private:
    // What a routed message comes to.
    struct Answer {
        LRESULT result = 0;
        std::uint32_t handled = 0;
    };

    LRESULT Ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    HWND Header() const;
    bool ReadColumn(std::int32_t column, LVCOLUMNW& parts) const;
    std::uint32_t RowState(std::int32_t row, std::uint32_t mask) const;
    void SetRowState(std::int32_t row, std::uint32_t state, std::uint32_t mask);
    LVHITTESTINFO HitTest(const POINT& point) const;
    POINT PointerInList() const;

    Answer RouteMessage(UINT message, WPARAM wParam, LPARAM lParam);
    Answer RouteNotify(NMHDR* header);
    Answer RouteOfHeader(const NMHEADERW& change);
    Answer RouteOfList(NMHDR* header);
    Answer RouteLabelEnd(const LVITEMW& item);
    Answer RouteLabelBegin(const LVITEMW& item);
    Answer RouteInfoTip(const NMLVGETINFOTIPW& tip);
    Answer RouteItemChanged(const NMLISTVIEW& change);
    void RouteClick(const NMITEMACTIVATE& click);
    void RouteDrawItem(const DRAWITEMSTRUCT& item);

    void RunListKey(std::uint32_t virtualKey);
    void EditByKey();
    void SelectAllByKey();

    // Turns redraw on where neither rows nor columns have come or gone since it was
    // turned off, and `marks` was made before. What is to be painted is what was to be
    // then; the window may lose WS_VISIBLE for a moment.
    void RedrawInPlace(const Marks& marks);
    void LeaveBatch();

    void RemoveFirstColumn();
    Answer KeepMinimumWidth(const NMHEADERW& change);
    Answer HookHeaderNotify(NMHDR* header);
    void HookLeftDown(LPARAM lParam, std::uint32_t* handled);
    bool ClickCheckBox();
    bool EditUnderPress(LPARAM lParam);
    bool MayEdit(std::int32_t row, std::int32_t column);

    HWND listWindow = nullptr;
    bool batching = false;
    clPtrArray minimumWidths;  // one for each column, in order of insertion
    EditMode editMode = EditMode::None;
    clValueControl valueControl;
};
