// A form with one real list, and a record of what the list tells.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/ui/host_form.h"
#include "toolkit/list_view.h"

using Calls = std::vector<std::string>;

// Records every operation that it is told of, and answers as it was set to.
class ProbeList : public XListView {
public:
    ProbeList() = default;
    ~ProbeList() override = default;

    LRESULT WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                    std::uint32_t* handled) override;
    bool CanEditCell(std::int32_t row, std::int32_t column) override;
    void OnItemChanged(std::int32_t row, std::int32_t column, std::uint32_t changedMask,
                       std::uint32_t oldState, std::uint32_t newState) override;
    void OnRowSelected(std::int32_t row, std::int32_t column, bool selected) override;
    void OnRowChecked(std::int32_t row, bool checked) override;
    std::uint8_t OnLabelEditBegin(std::int32_t row) override;
    bool OnLabelEditEnd(std::int32_t row, const clString& text) override;
    void OnCellEdited(std::int32_t row, std::int32_t column, const clString& text) override;
    void OnLabelEditCancelled(std::int32_t row) override;
    void OnBeginDrag(const NMLISTVIEW& drag) override;
    void OnListKey(std::uint32_t virtualKey) override;
    bool CanEditByKey() override;
    bool CanSelectAll() override;
    clString GetInfoTip(std::int32_t row) override;
    std::uint8_t OnMarqueeBegin() override;
    void OnColumnClick(std::int32_t column) override;
    void OnRowClick(std::int32_t row, std::int32_t column, const POINT& point) override;
    void OnLeftDown(std::int32_t row, const POINT& point, std::uint32_t* handled) override;
    void OnRowDoubleClick(std::int32_t row, std::int32_t column, const POINT& point) override;
    void OnRowRightClick(std::int32_t row, std::int32_t column, const POINT& point) override;
    void OnRowRightDoubleClick(std::int32_t row, std::int32_t column, const POINT& point) override;
    void OnListContextMenu(std::uint32_t x, std::uint32_t y, HWND list) override;
    void OnColumnResized(std::int32_t column) override;
    void OnColumnsReordered() override;
    void OnDrawRow(const DRAWITEMSTRUCT& item) override;
    void OnVScroll(std::uint32_t code, std::uint32_t position) override;

    // The calls since `Forget`. What comes many times over is only recorded if
    // it is asked for.
    Calls calls;
    bool recordChanges = false;
    bool recordDrawing = false;
    void Forget() { calls.clear(); }
    // How many of the calls begin with `start`.
    int Count(const std::string& start) const;

    // Answers.
    std::uint8_t labelEditAnswer = 0;
    std::uint8_t marqueeAnswer = 0;
    bool mayEditByKey = true;
    bool maySelectAll = true;
    std::vector<std::int32_t> lockedColumns;
    clString infoTip;
    bool takePresses = false;
    // A message sent to the form from within every operation, to disturb its
    // handled flag; 0 sends none.
    UINT nestedMessage = 0;

    // Keeps WM_SETREDRAW from the control, which invalidates itself on some systems.
    bool swallowRedraw = false;

    // Messages that the control got, batches and all, and the WM_ERASEBKGND of them.
    std::int64_t messages = 0;
    std::int64_t erasures = 0;

private:
    void Note(const char* format, ...);
};

// A dialog with a list as the dialogs of the program have it, whose messages are
// offered to the list alone. Columns: 0 "Name" (200 pixels, at least 50), 1 "Size"
// (100, right-aligned, at least 5), 2 "Type" (120, at least 5).
class ListForm {
public:
    static constexpr DWORD programsExStyle = LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT;

    // In front and with the focus in the list. `extraStyle` joins the style.
    explicit ListForm(DWORD extraStyle = 0, DWORD exStyle = programsExStyle);

    // Declared first, so that it still hears what the end of its window sends.
    ProbeList list;
    HostForm form;

    // Appends `count` rows with the texts "r<row>c<column>" and the row as data.
    void Fill(std::int32_t count);
    HWND Control() const { return list.ListWindow(); }
    HWND Header() const;
    // Sends a message to the list.
    LRESULT Ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // State bits of a row.
    std::uint32_t RowBits(std::int32_t row) const;
    void Tick(std::int32_t row);
    // One letter for each row: s for a selected one, n for another, in capitals if ticked.
    std::string Marks() const;
    void SetColumnOrder(std::vector<int> order);

    // Screen points: `dx` pixels behind the left edge of a cell, of a header, or
    // behind the right edge of a header; in the middle of their height.
    POINT InCell(std::int32_t row, std::int32_t column, int dx) const;
    POINT InHeader(std::int32_t column, int dx) const;
    POINT AtHeaderEdge(std::int32_t column, int dx) const;
    // The row is the one behind the last.
    POINT BelowRows(int dx) const;

    // Gives `Route` a message as the form would; `handled` is what it leaves.
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam);
    // The same for a notification that the list, or another window, sends.
    template <class Notification>
    LRESULT Notify(Notification notification, UINT code, HWND from = nullptr) {
        notification.hdr.hwndFrom = from != nullptr ? from : Control();
        notification.hdr.idFrom = listId;
        notification.hdr.code = code;
        return Send(WM_NOTIFY, listId, reinterpret_cast<LPARAM>(&notification));
    }
    std::uint32_t handled = 0;

    static constexpr UINT_PTR listId = 1002;
};
