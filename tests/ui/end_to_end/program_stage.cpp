#include "tests/ui/end_to_end/program_stage.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tests/support/converter_side.h"
#include "tests/support/registry_number.h"
#include "tests/ui/pointer.h"

namespace fs = std::filesystem;

namespace {

// Spelled out: a test that took them from the program could not see them change.
constexpr const wchar_t* settingsKey = L"Software\\Brindlefen\\Tonequarry";
constexpr const wchar_t* keptKey = L"Software\\Brindlefen\\Kept by the tests";
constexpr const wchar_t* temporaryFolder = L"C:\\tq\\";

void CopyKey(const wchar_t* from, const wchar_t* to) {
    HKEY source = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, from, 0, KEY_READ, &source) != ERROR_SUCCESS) return;
    HKEY target = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, to, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &target,
                    nullptr);
    const LSTATUS status = RegCopyTreeW(source, nullptr, target);
    RegCloseKey(target);
    RegCloseKey(source);
    if (status != ERROR_SUCCESS) throw std::runtime_error("cannot copy the settings");
}

struct WindowSearch {
    DWORD process = 0;
    bool isForm = false;
    const std::wstring* title = nullptr;
    HWND found = nullptr;
};

BOOL CALLBACK LookAtWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != search.process || IsWindowVisible(window) == FALSE) return TRUE;
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::wstring(name) != L"#32770") return TRUE;
    if ((GetDlgItem(window, 1001) != nullptr) != search.isForm) return TRUE;
    if (search.title != nullptr && !search.title->empty() &&
        TextOfWindow(window) != *search.title) {
        return TRUE;
    }
    search.found = window;
    return FALSE;
}

void MakeParents(const std::wstring& path) {
    for (auto at = path.find(L'\\', 3); at != std::wstring::npos; at = path.find(L'\\', at + 1))
        CreateDirectoryW((L"\\\\?\\" + path.substr(0, at)).c_str(), nullptr);
}

// Painting comes behind all input that waits, so a window that has painted has had
// the clicks before. One that has gone or is hidden has nothing to paint.
void AwaitInputTaken(HWND window) {
    const RECT corner = {0, 0, 1, 1};
    InvalidateRect(window, &corner, FALSE);
    (void)WaitUntil([window] { return GetUpdateRect(window, nullptr, FALSE) == FALSE; }, 3000);
}

}  // namespace

void SettlePointer(POINT screen) {
    const auto isThere = [screen] {
        POINT now = {};
        GetCursorPos(&now);
        return now.x == screen.x && now.y == screen.y;
    };
    for (int attempt = 0; attempt < 20; ++attempt) {
        MovePointer(screen);
        Sleep(40);
        if (isThere()) return;
    }
    throw std::runtime_error("the pointer does not stay");
}

void ClickSettled(POINT screen, PointerButton button) {
    SettlePointer(screen);
    const HWND clicked = GetAncestor(WindowFromPoint(screen), GA_ROOT);
    Click(screen, button);
    AwaitInputTaken(clicked);
}

Standstill::Standstill(HWND window, DWORD milliseconds)
    : stopped(OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(window, nullptr))) {
    if (SuspendThread(stopped) == static_cast<DWORD>(-1)) {
        throw std::runtime_error("the thread does not stop");
    }
    end = std::thread([this, milliseconds] {
        Sleep(milliseconds);
        ResumeThread(stopped);
    });
}

Standstill::~Standstill() {
    end.join();
    CloseHandle(stopped);
}

RunningProgram::RunningProgram(std::wstring commandLine, const std::wstring& folder) {
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        folder.c_str(), &startup, &process)) {
        throw std::runtime_error("the program does not start");
    }
    if (!WaitUntil([this] { return (form = FindForm()) != nullptr || !IsRunning(); }, 20000) ||
        form == nullptr) {
        TerminateProcess(process.hProcess, 99);
        throw std::runtime_error("the program shows no window");
    }
    // Answered once the form is through with its making.
    Ask(form, WM_NULL);
    SetForegroundWindow(form);
}

RunningProgram::~RunningProgram() {
    if (IsRunning()) {
        TerminateProcess(process.hProcess, 99);
        WaitForSingleObject(process.hProcess, 10000);
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

bool RunningProgram::IsRunning() const {
    return WaitForSingleObject(process.hProcess, 0) == WAIT_TIMEOUT;
}

HWND RunningProgram::FindForm() const {
    WindowSearch search{process.dwProcessId, true, nullptr, nullptr};
    EnumWindows(&LookAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND RunningProgram::FindDialog(const std::wstring& title) const {
    WindowSearch search{process.dwProcessId, false, &title, nullptr};
    EnumWindows(&LookAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

RemoteTree RunningProgram::Tree() const {
    return RemoteTree(GetDlgItem(form, 1001));
}

RemoteList RunningProgram::List() const {
    return RemoteList(GetDlgItem(form, 1002));
}

HWND RunningProgram::Dialog(const std::wstring& title) const {
    HWND dialog = nullptr;
    if (!WaitUntil([&] { return (dialog = FindDialog(title)) != nullptr; })) {
        throw std::runtime_error("the dialog does not show");
    }
    Ask(dialog, WM_NULL);
    return dialog;
}

std::wstring RunningProgram::AnswerBox(int button) const {
    const HWND box = Dialog(L"Tonequarry Batch Converter");
    std::wstring text;
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t name[16] = {};
        GetClassNameW(child, name, 16);
        if (std::wstring(name) == L"Static") text += TextOfWindow(child);
        if (std::wstring(name) == L"Edit") text += TextOfWindow(child);
    }
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    if (!WaitUntil([box] { return IsWindow(box) == FALSE; })) {
        throw std::runtime_error("the box stays");
    }
    return text;
}

void RunningProgram::PressButton(BarButton button) const {
    // Answered once nothing is under way that would keep the press waiting.
    Ask(form, WM_NULL);
    ClickSettled(ScreenPoint(form, static_cast<int>(button) + 20, 22));
}

DWORD RunningProgram::Close() {
    PostMessageW(form, WM_CLOSE, 0, 0);
    if (WaitForSingleObject(process.hProcess, 20000) != WAIT_OBJECT_0) {
        throw std::runtime_error("the program does not end");
    }
    DWORD code = 99;
    GetExitCodeProcess(process.hProcess, &code);
    return code;
}

ProgramStage::KeptSettings::KeptSettings() {
    RegDeleteTreeW(HKEY_CURRENT_USER, keptKey);
    CopyKey(settingsKey, keptKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey);
}

ProgramStage::KeptSettings::~KeptSettings() {
    RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey);
    CopyKey(keptKey, settingsKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, keptKey);
}

ProgramStage::ScratchRoot::~ScratchRoot() {
    RemoveDirectoryW(temporaryFolder);
}

ProgramStage::ProgramStage() : temporary(L"TMP", temporaryFolder) {
    program = parent.AddFolder(L"program").Chars() + std::wstring(L"\\");
    music = parent.AddFolder(L"music").Chars() + std::wstring(L"\\");
    fs::copy_file(TestProgramFolder() + L"Tonequarry.exe", program + L"Tonequarry.exe");
    CreateDirectoryW((program + L"decoder").c_str(), nullptr);
}

ProgramStage::~ProgramStage() {
    // The folders can go only when nothing runs in them.
    running.reset();
}

void ProgramStage::AddDecoder(const std::wstring& name, const std::string& script) const {
    // As the libraries that ship: a session loads one thousands of times.
    if (!WriteBytes(program + L"decoder\\" + name + L".txt", "pin=1\n" + script)) {
        throw std::runtime_error("cannot write the script");
    }
    fs::copy_file(TestProgramFolder() + L"complete.dll", program + L"decoder\\" + name + L".dll",
                  fs::copy_options::overwrite_existing);
}

std::string ProgramStage::DecoderLog(const std::wstring& name) const {
    std::ifstream log(fs::path(program) / L"decoder" / (name + L".log"));
    return {std::istreambuf_iterator<char>(log), {}};
}

std::wstring ProgramStage::AddFile(const std::wstring& name, std::size_t bytes) const {
    const std::wstring path = music + name;
    MakeParents(path);
    if (!WriteBytes(path, std::string(bytes, 'x'))) {
        throw std::runtime_error("cannot write " + NarrowUtf8(path));
    }
    return path;
}

std::wstring ProgramStage::AddFolder(const std::wstring& name) const {
    MakeParents(music + name + L"\\");
    return music + name + L"\\";
}

RunningProgram& ProgramStage::Start(const std::wstring& arguments) {
    running.reset();
    // A pointer over a folder's name opens that folder.
    SettlePointer({GetSystemMetrics(SM_CXSCREEN) - 5, GetSystemMetrics(SM_CYSCREEN) - 5});
    running = std::make_unique<RunningProgram>(
        L"\"" + program + L"Tonequarry.exe\"" + (arguments.empty() ? L"" : L" ") + arguments,
        program);
    return *running;
}

RunningProgram& ProgramStage::StartUnquoted() {
    running.reset();
    running = std::make_unique<RunningProgram>(program + L"Tonequarry.exe", program);
    return *running;
}

std::optional<DWORD> ProgramStage::Number(const wchar_t* name) const {
    return RegistryNumber(settingsKey, name);
}

std::optional<std::wstring> ProgramStage::Text(const wchar_t* name) const {
    wchar_t text[4000] = {};
    DWORD size = sizeof text;
    if (RegGetValueW(HKEY_CURRENT_USER, settingsKey, name, RRF_RT_REG_SZ, nullptr, text, &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    return text;
}

void ProgramStage::SetNumber(const wchar_t* name, DWORD value) const {
    RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, name, REG_DWORD, &value, sizeof value);
}

void ProgramStage::SetText(const wchar_t* name, const std::wstring& text) const {
    RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, name, REG_SZ, text.c_str(),
                    static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}
