#include "tests/dialogs/open_list.h"

#include <gtest/gtest.h>

#include "dialogs/list_form.h"
#include "resources/ids.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"
#include "tests/ui/pixels.h"
#include "toolkit/font.h"

namespace {

constexpr UINT untilTheLoopRunsMs = 10;

// The one that is at work.
const std::function<void(const ShownList&)>* workToDo = nullptr;

HWND DialogOfThisThread() {
    HWND found = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM result) -> BOOL {
            if (GetDlgItem(window, IDC_FILE_LIST) == nullptr) return TRUE;
            *reinterpret_cast<HWND*>(result) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

void CALLBACK WorkInLoop(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    const HWND dialog = DialogOfThisThread();
    if (dialog == nullptr) {
        ADD_FAILURE() << "no dialog shows";
        return;
    }
    (*workToDo)(ShownList(dialog));
    PostMessageW(dialog, WM_CLOSE, 0, 0);
}

int commandToChoose = 0;

BOOL WINAPI ChooseAtOnce(HMENU, UINT, int, int, int, HWND, const RECT*) {
    return commandToChoose;
}

// The line's place is that of the list's corner: 7 horizontal and 5 vertical units,
// with the list at 17.
bool Shows(HWND dialog, const Canvas& expected, const SIZE& band) {
    const Canvas seen(band.cx, band.cy);
    const HDC dc = GetDC(dialog);
    BitBlt(seen.Dc(), 0, 0, band.cx, band.cy, dc, 0, 0, SRCCOPY);
    ReleaseDC(dialog, dc);
    for (int y = 0; y < band.cy; ++y) {
        for (int x = 0; x < band.cx; ++x) {
            if (seen.At(x, y) != expected.At(x, y)) return false;
        }
    }
    return true;
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

bool ShownList::Tells(const clString& text) const {
    UpdateWindow(dialog);
    RECT client = {};
    GetClientRect(dialog, &client);
    const POINT place = Units(7, 5);
    const SIZE band = {client.right, Units(7, 17).y};
    const Canvas expected(band.cx, band.cy, PixelOf(dialog, 1, 1));
    clFont font;
    font.Create(expected.Dc());
    font.DrawString(place.x, place.y, text);
    font.Release();
    return Shows(dialog, expected, band);
}

ListOutcome RunList(const clStringList& files, const wchar_t* columns,
                    const std::function<void(const ShownList&)>& work) {
    workToDo = &work;
    SetTimer(nullptr, 0, untilTheLoopRunsMs, &WorkInLoop);
    PathList excluded;
    ListOutcome outcome;
    { const frmList dialog(nullptr, files, excluded, columns, &outcome.converts); }
    excluded.ForEach([&outcome](const clString& path) { outcome.excluded.push_back(Utf8(path)); });
    return outcome;
}
