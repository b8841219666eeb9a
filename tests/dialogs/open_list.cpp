#include "tests/dialogs/open_list.h"

#include <gtest/gtest.h>

#include "dialogs/list_form.h"
#include "resources/ids.h"
#include "tests/dialogs/dialog_loop.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"
#include "tests/ui/painted_line.h"

namespace {

int commandToChoose = 0;

BOOL WINAPI ChooseAtOnce(HMENU, UINT, int, int, int, HWND, const RECT*) {
    return commandToChoose;
}

}  // namespace

HWND ShownList::List() const {
    return GetDlgItem(dialog, IDC_FILE_LIST);
}

void ShownList::SetTicked(int row, bool ticked) const {
    ListView_SetCheckState(List(), row, ticked ? TRUE : FALSE);
}

std::string ShownList::Cell(int row, int column) const {
    wchar_t text[500] = {};
    ListView_GetItemText(List(), row, column, text, 500);
    return Utf8(text);
}

RECT ShownList::Place(int id) const {
    RECT place = {};
    GetWindowRect(GetDlgItem(dialog, id), &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

POINT ShownList::Units(int horizontal, int vertical) const {
    RECT units = {horizontal, vertical, 1, 1};
    MapDialogRect(dialog, &units);
    return {units.left, units.top};
}

void ShownList::Choose(POINT pointer, int command) const {
    ClientToScreen(List(), &pointer);
    SetCursorPos(pointer.x, pointer.y);
    commandToChoose = command;
    const ImportStub stub("TrackPopupMenu", &ChooseAtOnce);
    SendMessageW(dialog, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(List()), -1);
}

void ShownList::ChooseForRows(int command) const {
    Choose({60, 21}, command);
}

void ShownList::ChooseForColumns(int command) const {
    Choose({60, 20}, command);
}

void ShownList::Press(int id) const {
    SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void ShownList::ClickHeader(int column) const {
    NMLISTVIEW click = {};
    click.hdr = {List(), IDC_FILE_LIST, static_cast<UINT>(LVN_COLUMNCLICK)};
    click.iItem = -1;
    click.iSubItem = column;
    SendMessageW(dialog, WM_NOTIFY, IDC_FILE_LIST, reinterpret_cast<LPARAM>(&click));
}

int ShownList::Arrow(int column) const {
    HDITEMW item = {};
    item.mask = HDI_IMAGE;
    Header_GetItem(ListView_GetHeader(List()), column, &item);
    return item.iImage;
}

std::vector<std::string> ShownList::Cells(int column) const {
    std::vector<std::string> cells;
    for (int row = 0; row < RowCount(); ++row)
        cells.push_back(Cell(row, column));
    return cells;
}

bool ShownList::Tells(const clString& text) const {
    UpdateWindow(dialog);
    RECT client = {};
    GetClientRect(dialog, &client);
    // The list stands at 17 vertical units.
    return ShowsLine(dialog, {client.right, Units(7, 17).y}, Units(7, 5), text);
}

ListOutcome RunList(const clStringList& files, const wchar_t* columns,
                    const std::function<void(const ShownList&)>& work, HWND owner) {
    PathList excluded;
    ListOutcome outcome;
    WorkInDialog(
        IDC_FILE_LIST, [&work](HWND dialog) { work(ShownList(dialog)); },
        [&] { const frmList dialog(owner, files, excluded, columns, &outcome.converts); });
    excluded.ForEach([&outcome](const clString& path) { outcome.excluded.push_back(Utf8(path)); });
    return outcome;
}
