// A list of names and values, with an editor on the selected row.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "foundation/arrays.h"
#include "foundation/string.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/mem_bitmap.h"
#include "toolkit/sub_class_ctrl.h"
#include "toolkit/text.h"
#include "toolkit/value_rules.h"

class XValueList;

// Called when the button of the row was pressed; its value is up to date.
using ValueButtonCallback = void (*)(XValueList& list, std::int32_t row);
// Called when the text of an Edit changed, a choice of a Choice or Combo was
// selected, or a switch was flipped. The value is up to date, but for a Combo: the
// platform tells of the choice before it shows it, so its value is still the text
// from before, and takes the choice over at the next commit. Text typed into a
// Combo does not call. The row is the list's current one, but for a switch that was
// clicked while another row was selected.
using ValueChangeCallback = void (*)(XValueList& list);

// What a row is made from. Coordinates are coded (see coordinate.h) and given for
// 96 DPI; sizes of text are pixels. Colours are COLORREF values.
struct clValueRowParams {
    ValueKind kind = ValueKind::Text;
    clString name{};
    std::int32_t nameX = 0;     // 0 is 4
    std::int32_t nameSize = 0;  // 0 is 13
    COLORREF nameColour = 0;
    bool bold = false;  // this and the two others: of the name
    bool underline = false;
    bool readOnly = false;  // no editor, no button, no switching; painted grey
    bool italic = false;
    clString value{};
    std::int32_t valueX = 0;  // 0 is 150
    COLORREF valueColour = 0;
    std::int32_t valueWidth = 0;  // 0 is up to the end of the row
    std::int32_t lines = 0;       // of the editor of an Edit row, above 1 for several
    HICON icon = nullptr;         // duplicated; may be null
    std::int32_t iconX = 0;
    std::int32_t toggleX = 0;  // of a switch's icon; 0 is 4
    // Copied. Null is none.
    const clStringList* choices = nullptr;
    // Not empty: the row has a button.
    clString buttonCaption{};
    // Both may be null.
    ValueButtonCallback buttonCallback = nullptr;
    ValueChangeCallback changeCallback = nullptr;
    std::int64_t userData = 0;
};

// A row of a list. Whoever changes name or value calls `Invalidate` of the list.
struct clValueRow {
    ValueKind kind = ValueKind::Text;
    clString name;
    std::int32_t nameX = 0;   // coded, in pixels of this display
    std::int32_t valueX = 0;  // the same
    clString value;           // as text, whatever the kind
    bool readOnly = false;
    clText layout;
    clStringList choices;
    clString buttonCaption;
    ValueButtonCallback buttonCallback = nullptr;
    ValueChangeCallback changeCallback = nullptr;
    std::int32_t lines = 0;
    std::int32_t toggleX = 0;     // as nameX
    std::int32_t valueWidth = 0;  // as nameX; 0 is up to the end of the row
    std::int64_t userData = 0;    // the owner's
};

// The icons of the switches. The disabled forms may stay unset: the others show
// in their place then.
enum class ToggleIcon : std::uint8_t {
    On,
    Off,
    DisabledOn,
    DisabledOff,
    RadioOn,
    RadioOff,
    DisabledRadioOn,
    DisabledRadioOff,
};

// The form makes the list by `Create` and offers every message of its own to
// `Route`: the list box tells the form what happens, and what happens inside the
// list box comes through `WndHook`.
//
// Rows count from 0; a row of -1 is none, and rows outside the list are ignored.
// Only the selected row has child windows: its editor and its button. A change of
// row takes the edited text over first. All of it belongs to the thread of the form.
class XValueList : public XSubClassCtrl {
    // What a routed or hooked message comes to.
    struct Answer {
        LRESULT result = 0;
        std::uint32_t handled = 0;
    };

public:
    XValueList();
    // Takes an open edit over, then destroys the list box, rows and icons.
    ~XValueList() override;

    // The operations, in the order of their slots. The bases do nothing, but for
    // the hook.

    LRESULT WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                    std::uint32_t* handled) override;
    // Another row is selected, or none; or the same one once more.
    virtual void OnSelChange();
    // The name of the row was edited and taken over. A value tells the row's
    // change callback instead.
    virtual void OnValueChanged(std::int32_t row);
    // The right button was let go; signed screen coordinates.
    virtual void OnRowContextMenu(std::int32_t x, std::int32_t y);
    // A double click; a link is being opened by then.
    virtual void OnRowDoubleClick(std::int32_t row);

    // Makes the list box on the dialog, at the dialog units (7, 7) and 336 by 254
    // in size, with the dialog's font, in place of an earlier one. Without a
    // `ListBox` afterwards the platform has refused.
    void Create(HWND dialog);
    // Null before `Create` and once it was destroyed with its dialog.
    HWND ListBox() const { return listBox; }

    // Shows duplicates of these icons on Toggle rows; null shows none.
    void SetToggleIcons(HICON on, HICON off);
    // The same for any of the icons. A disabled form shows on rows that are added
    // behind it.
    void SetToggleIcon(ToggleIcon which, HICON icon);

    // Closes an open editor and appends a row. Returns its index, -1 without a
    // list box.
    std::int32_t AddRow(const clValueRowParams& params);
    std::int32_t RowCount() const { return static_cast<std::int32_t>(rows.size()); }
    // Owned by the list; null outside it. What was typed into an open editor may not
    // have reached its value yet: `Editor().Commit()` sees to that.
    clValueRow* Row(std::int32_t row) const;

    // The selected row, or -1.
    std::int32_t CurrentRow() const;
    // -1 removes the selection. Takes an open edit over, gives the row's editor
    // the focus, and tells OnSelChange.
    void SelectRowAt(std::int32_t row);
    // The row at the height of the mouse pointer, the last one below all rows; -1
    // if the pointer is over another window.
    std::int32_t RowUnderPointer() const;

    // Whether a switch is on; false for other kinds and outside the list.
    bool IsOn(std::int32_t row) const;
    // Flips no other kind than a switch. A radio row that is switched on switches
    // off the one of its group that was. The change callback is not called.
    void SetOn(bool on, std::int32_t row);

    // Serves the form's WM_DRAWITEM and WM_MEASUREITEM for the list, its commands,
    // and presses on it; `*handled` is cleared for everything but the first two
    // and the drag notifications. While any list serves a message, others than
    // WM_DRAWITEM are not looked at. Returns the message's result.
    LRESULT Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam, std::uint32_t* handled);

    // Opens the editor of the current row, or closes an open one where that has
    // none, and repaints.
    void SyncEditor();
    // Repaints the list and the two windows on the selected row.
    void Invalidate() const;

    // The editor of a row, and the row's button.
    class clValueControl : public XSubClassCtrl {
    public:
        explicit clValueControl(XValueList& list) : owner(list) {}

        LRESULT WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;

        // Closes an open editor, then makes what the row needs and gives the editor
        // the focus. `valueX` stands for a row without an own one. Nothing opens on
        // a read-only row.
        void ShowEditor(std::int32_t atRow, std::int32_t valueX);
        // Takes the edited text over; the edit goes on. Without one nothing happens.
        void Commit();
        // Commits, then destroys the editor and, unless it is kept, the button. With
        // the focus in the editor the list box gets it. `refresh` repaints.
        void CloseEditor(bool refresh = false, bool keepButton = false);

        // The row whose value is edited; -1 for none.
        std::int32_t Row() const { return row; }
        bool IsNameEdited() const { return nameEditing; }
        // Null for none.
        HWND EditorWindow() const { return editorWindow; }
        HWND ButtonWindow() const { return buttonWindow; }

    private:
        friend class XValueList;

        void MakeEditor(const clValueRow& shown, const clArea& place);
        void MakeEdit(const clValueRow& shown, const clArea& place);
        void MakeCombo(const clValueRow& shown, const clArea& place);
        HWND MakeChild(const wchar_t* className, const wchar_t* text, DWORD style, DWORD exStyle,
                       const clArea& place) const;
        void PutBack() const;
        static bool HasFocusIn(HWND window);
        clString Text() const;
        clString ChosenText() const;
        Answer HookMessage(UINT message, WPARAM wParam, LPARAM lParam);
        bool RunKeyDown(std::uint32_t virtualKey, LPARAM keyData);
        bool RunKeyUp(std::uint32_t virtualKey, LPARAM keyData);
        ValueCaret Caret() const;
        void Complete();
        void DropCompletion() const;

        std::int32_t row = -1;
        bool nameEditing = false;
        HWND buttonWindow = nullptr;
        HWND editorWindow = nullptr;
        XValueList& owner;
        ValueEditorPlaces places;
    };
    clValueControl& Editor() { return valueControl; }
    const clValueControl& Editor() const { return valueControl; }

protected:
    // The registered message (DRAGLISTMSGSTRING) by which a list box that was made
    // draggable tells of rows being dragged. 0, as it stands, lets none be dragged.
    void SetDragMessage(UINT message) { dragMessage = message; }
    // From now on, rows take coordinates as pixels of the display. `Create` ends it.
    void SetPixelMode(bool pixels) { pixelMode = pixels; }

private:
    LRESULT Ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    RECT RowRect(std::int32_t row) const;
    std::int32_t Scaled(std::int32_t coded) const;
    HICON IconOf(ToggleIcon which) const;
    void ForgetListBox();

    void AddBackground(clValueRow& row) const;
    void AddTexts(clValueRow& row, const clValueRowParams& params) const;
    void AddHints(clValueRow& row) const;
    void AddSwitchIcons(clValueRow& row) const;

    Answer RouteMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void RouteCommand(WORD code, LRESULT& result);
    void RoutePress();
    Answer DrawItem(const DRAWITEMSTRUCT& item);
    void PaintRow(std::int32_t row, const DRAWITEMSTRUCT& item);
    Answer RouteDrag(UINT code, const POINT& screen);
    Answer DragOver(const POINT& screen);
    void DropAt(const POINT& screen);
    void MoveRow(std::int32_t from, std::int32_t to);

    Answer HookMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    Answer HookFocus(HWND losing);
    Answer HookScroll(UINT message, WPARAM wParam, LPARAM lParam);
    void HookRightUp(LPARAM lParam);
    void HookCommand(WORD code, HWND from);
    bool RunKeyDown(std::uint32_t virtualKey, LPARAM keyData);
    bool RunKeyUp(std::uint32_t virtualKey, LPARAM keyData);
    void RunSpace();
    void SelectPage(std::int32_t direction);
    void TellChange(std::int32_t row);

    HWND parent = nullptr;
    HWND listBox = nullptr;
    std::int32_t controlId = 0;
    UINT dragMessage = 0;
    bool dragMoved = false;
    std::int32_t draggedRow = -1;
    bool pixelMode = false;
    std::int32_t rowHeight = 0;
    std::int32_t defaultNameX = 0;
    std::int32_t defaultValueX = 0;
    std::int32_t defaultNameSize = 0;
    std::int32_t defaultValueSize = 0;
    XMemBitmap work;                        // rows are painted in it; grows, never shrinks
    std::array<HICON, 8> toggleIcons = {};  // owned; in the order of ToggleIcon
    std::vector<std::unique_ptr<clValueRow>> rows;
    bool scrolling = false;  // the control's own part of a scroll runs
    clValueControl valueControl;
};
