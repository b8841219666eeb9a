// The main form within this process, over a registry and decoders of its own.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <functional>
#include <string>

#include "tests/support/decoder_folder.h"
#include "tests/support/import_stub.h"
#include "tests/support/scratch_registry.h"
#include "tests/ui/pixels.h"

// Runs a main form. Once it shows, `steps` run on a thread of their own; behind them
// the form is closed.
void RunForm(const std::function<void(HWND form)>& steps);

// Beside the form, before it runs: what lies under the pointer looks and acts otherwise.
void MovePointerAway();

// The form's parts.
HWND TreeOf(HWND form);
HWND ListOf(HWND form);
HWND HeaderOf(HWND form);
LONG TreeWidth(HWND form);

// How many pixels of the upper left parts of two canvases differ.
int Differences(const Canvas& one, const Canvas& other, int width, int height);

// What the form takes for its command line, while this is there. One at a time.
class clCommandLine {
public:
    // What stands behind the program's name. Without it the form would take the
    // tests' own arguments for a folder.
    explicit clCommandLine(const std::wstring& arguments = {});

private:
    ImportStub stub;
};

// A window of 1000 by 600 pixels, away from the display's lower right corner.
class MainForm : public testing::Test {
public:
    static constexpr const wchar_t* settingsKey = L"Software\\Brindlefen\\Tonequarry";
    static constexpr LONG divider = 300;

protected:
    MainForm();
    static void SetNumber(const wchar_t* name, DWORD value);

    ScratchRegistry registry;
    clScriptedFolder decoders;
};
