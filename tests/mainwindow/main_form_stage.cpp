#include "tests/mainwindow/main_form_stage.h"

#include <thread>

#include "foundation/settings.h"
#include "mainwindow/main_form.h"
#include "resources/ids.h"
#include "tests/support/eventually.h"
#include "tests/ui/pointer.h"

namespace {

BOOL CALLBACK LookAtWindow(HWND window, LPARAM parameter) {
    if (IsWindowVisible(window) == FALSE || GetDlgItem(window, IDC_FILE_LIST) == nullptr)
        return TRUE;
    *reinterpret_cast<HWND*>(parameter) = window;
    return FALSE;
}

std::wstring commandLine;

LPWSTR WINAPI TellCommandLine() {
    return commandLine.data();
}

}  // namespace

void RunForm(const std::function<void(HWND form)>& steps) {
    InitSettings();
    const DWORD thread = GetCurrentThreadId();
    std::thread user([&] {
        HWND form = nullptr;
        EXPECT_TRUE(Eventually([&] {
            EnumThreadWindows(thread, &LookAtWindow, reinterpret_cast<LPARAM>(&form));
            return form != nullptr;
        }));
        if (form == nullptr) {
            PostThreadMessageW(thread, WM_QUIT, 0, 0);
            return;
        }
        // Answered once the form is through with its making.
        SendMessageW(form, WM_NULL, 0, 0);
        SetForegroundWindow(form);
        Eventually([form] { return GetForegroundWindow() == form; });
        steps(form);
        PostMessageW(form, WM_CLOSE, 0, 0);
        if (Eventually([form] { return IsWindow(form) == FALSE; })) return;
        ADD_FAILURE() << "something keeps the form open";
        PostMessageW(GetLastActivePopup(form), WM_CLOSE, 0, 0);
    });
    { const frmMain form; }
    user.join();
}

void MovePointerAway() {
    MovePointer({GetSystemMetrics(SM_CXSCREEN) - 5, GetSystemMetrics(SM_CYSCREEN) - 5});
}

HWND TreeOf(HWND form) {
    return GetDlgItem(form, IDC_FOLDER_TREE);
}

HWND ListOf(HWND form) {
    return GetDlgItem(form, IDC_FILE_LIST);
}

HWND HeaderOf(HWND form) {
    return reinterpret_cast<HWND>(SendMessageW(ListOf(form), LVM_GETHEADER, 0, 0));
}

LONG TreeWidth(HWND form) {
    RECT tree = {};
    GetWindowRect(TreeOf(form), &tree);
    return tree.right - tree.left;
}

int Differences(const Canvas& one, const Canvas& other, int width, int height) {
    int different = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            different += one.At(x, y) != other.At(x, y) ? 1 : 0;
    }
    return different;
}

clCommandLine::clCommandLine(const std::wstring& arguments)
    : stub("GetCommandLineW", &TellCommandLine) {
    commandLine = L"\"program.exe\"" + (arguments.empty() ? L"" : L" " + arguments);
}

MainForm::MainForm() {
    SetNumber(L"zKR-FileSelector-X", 60);
    SetNumber(L"zKR-FileSelector-Y", 40);
    SetNumber(L"zKR-FileSelector-W", 1000);
    SetNumber(L"zKR-FileSelector-H", 600);
    SetNumber(L"zKR-FileSelector-NotMax", 1);
    SetNumber(L"zKR-FileSelector-Devider", divider);
}

void MainForm::SetNumber(const wchar_t* name, DWORD value) {
    ScratchRegistry::Set(HKEY_CURRENT_USER, settingsKey, name, REG_DWORD, &value, sizeof value);
}
