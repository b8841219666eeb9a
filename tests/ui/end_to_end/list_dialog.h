// The conversion list over the main window, with three files in two folders.
#pragma once

#include <gmock/gmock.h>

#include <optional>
#include <string>

#include "tests/support/converter_stage.h"
#include "tests/ui/end_to_end/program_stage.h"

inline constexpr int convertId = 3;

class ListDialogTest : public testing::Test {
protected:
    ListDialogTest();

    // Presses List and waits until everything is read.
    HWND Open();
    // The same without the waiting.
    HWND OpenUnread() const;
    HWND DialogThatShows() const;
    static RemoteList ListOf(HWND dialog) { return RemoteList(GetDlgItem(dialog, 1002)); }
    static bool Goes(HWND dialog);
    static void Untick(const RemoteList& list, const std::wstring& name);
    // Steps the folder that the program was started with on to no tick.
    static void UntickSelectedFolder(RunningProgram& program);
    static void ClickControl(HWND dialog, int id);
    // Of the maximised dialog.
    static void ClickCloseBox(HWND dialog);
    // Drags the right edge of a header by that many pixels.
    static void DragEdge(const RemoteList& list, int column, int pixels);
    // Opens the menu of the rows, presses Down that many times, and Return.
    static void ChooseFromRowMenu(const RemoteList& list, int place);
    std::wstring Path(const wchar_t* name) const { return stage.Music() + name; }
    // Presses Convert in the main window and waits for the converter's end.
    std::optional<std::string> Convert() const;

    ProgramStage stage;
    // The program tells it where its script is, so that it is there first.
    ConverterStage converter{"read\nsignal\n", stage.ProgramFolder()};
};
