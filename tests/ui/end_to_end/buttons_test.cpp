// What the buttons of the band tell and open.
#include <gmock/gmock.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/pointer.h"
#include "toolkit/tool_tip.h"

namespace {

HWND ButtonNamed(HWND form, const std::wstring& caption) {
    for (HWND child = GetWindow(form, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (TextOfWindow(child) == caption) return child;
    }
    throw std::runtime_error("no such button");
}

struct TipSearch {
    DWORD process;
    HWND found;
};

BOOL CALLBACK LookForTip(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<TipSearch*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    if (process != search.process || !std::wstring(name).starts_with(L"XWnd")) return TRUE;
    if (IsWindowVisible(window) == FALSE) return TRUE;
    search.found = window;
    return FALSE;
}

HWND ShownTip(DWORD process) {
    TipSearch search{process, nullptr};
    EnumWindows(&LookForTip, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

using Extent = std::pair<LONG, LONG>;

Extent ExtentOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

// Of a tip of this process with that text.
Extent ExtentOfTip(const wchar_t* text) {
    XToolTip tip;
    XToolTipParams params;
    params.point = {300, 500};
    params.text = text;
    params.noFade = true;
    tip.AddTool(params);
    return ExtentOf(tip.ShownWindow());
}

// A program for a kind of document, as long as it lives. In the key of all users:
// not every system that runs Windows programs looks at the user's own.
class DocumentProgram {
public:
    DocumentProgram(const wchar_t* ending, const std::wstring& command)
        : endingKey_(ending), kindBefore_(Default(ending)) {
        SetDefault(endingKey_, kind);
        SetDefault(std::wstring(kind) + L"\\shell\\open\\command", command);
    }
    DocumentProgram(const DocumentProgram&) = delete;
    DocumentProgram& operator=(const DocumentProgram&) = delete;
    ~DocumentProgram() {
        if (kindBefore_) {
            SetDefault(endingKey_, *kindBefore_);
        } else {
            RegDeleteKeyValueW(HKEY_CLASSES_ROOT, endingKey_.c_str(), nullptr);
        }
        RegDeleteTreeW(HKEY_CLASSES_ROOT, kind);
    }

private:
    static std::optional<std::wstring> Default(const wchar_t* key) {
        wchar_t text[1000] = {};
        DWORD bytes = sizeof(text);
        if (RegGetValueW(HKEY_CLASSES_ROOT, key, nullptr, RRF_RT_REG_SZ, nullptr, text, &bytes) !=
            ERROR_SUCCESS) {
            return std::nullopt;
        }
        return text;
    }
    static void SetDefault(const std::wstring& key, const std::wstring& text) {
        const LSTATUS status =
            RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, text.c_str(),
                            static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
        EXPECT_EQ(status, ERROR_SUCCESS);
    }

    static constexpr const wchar_t* kind = L"Brindlefen.TestPage";
    std::wstring endingKey_;
    std::optional<std::wstring> kindBefore_;
};

TEST(Buttons, TipsTellWhatTheyDo) {
    ProgramStage stage;
    RunningProgram& program = stage.Start(stage.Music());
    const std::pair<const wchar_t*, const wchar_t*> tips[] = {
        {L"Convert", L"Convert Selected Files"},
        {L"List", L"List Audio Files Converting"},
        {L"Refresh", L"Refreshes, Showing New Files or Folders"},
        {L"Reset", L"Unselects all Folders & Files"},
        {L"Filter", L"Remove Audio Types From Conversion"},
        {L"Help", L"Displays Help For Batch Converter"},
    };
    for (const auto& [caption, text] : tips) {
        const Extent expected = ExtentOfTip(text);
        SettlePointer(ScreenMiddle(ButtonNamed(program.Form(), caption)));
        ASSERT_TRUE(WaitUntil([&] { return ShownTip(program.ProcessId()) != nullptr; }, 5000));
        EXPECT_EQ(ExtentOf(ShownTip(program.ProcessId())), expected) << NarrowUtf8(text);
        SettlePointer({GetSystemMetrics(SM_CXSCREEN) - 5, GetSystemMetrics(SM_CYSCREEN) - 5});
        ASSERT_TRUE(WaitUntil([&] { return ShownTip(program.ProcessId()) == nullptr; }, 5000));
    }
}

TEST(Buttons, HelpOpensItsPage) {
    ProgramStage stage;
    const std::wstring page = stage.ProgramFolder() + L"Help\\zKR\\FileSelector.htm";
    for (const wchar_t* folder : {L"Help", L"Help\\zKR"})
        ASSERT_TRUE(CreateDirectoryW((stage.ProgramFolder() + folder).c_str(), nullptr));
    ASSERT_TRUE(WriteBytes(page, "how to choose"));
    const std::wstring opened = stage.Music() + L"opened.txt";
    const DocumentProgram reader(L".htm", L"cmd.exe /c copy \"%1\" \"" + opened + L"\"");
    RunningProgram& program = stage.Start(stage.Music());
    EXPECT_FALSE(FileExists(opened));
    ClickSettled(ScreenMiddle(ButtonNamed(program.Form(), L"Help")));
    ASSERT_TRUE(WaitUntil([&] { return FileExists(opened); }, 10000));
    EXPECT_TRUE(WaitUntil([&] { return ReadBytes(opened) == "how to choose"; }, 5000));
    EXPECT_EQ(program.Close(), 0u);
}

}  // namespace
