// The developers' gallery of widgets, run as its user runs it.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace {

constexpr DWORD limitMs = 120000;

std::wstring ProgramFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring full = path;
    return full.substr(0, full.find_last_of(L'\\') + 1);
}

// The exit code; 99 if it could not be started or had to be ended.
DWORD RunGallery(const std::wstring& arguments) {
    std::wstring line = L"\"" + ProgramFolder() + L"gallery.exe\" " + arguments;
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process)) {
        return 99;
    }
    if (WaitForSingleObject(process.hProcess, limitMs) != WAIT_OBJECT_0)
        TerminateProcess(process.hProcess, 99);
    WaitForSingleObject(process.hProcess, limitMs);
    DWORD code = 99;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

std::vector<std::uint32_t> PixelsOfFile(const std::string& bytes) {
    constexpr std::size_t headers = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    if (bytes.size() <= headers) return {};
    std::vector<std::uint32_t> pixels((bytes.size() - headers) / sizeof(std::uint32_t));
    std::memcpy(pixels.data(), bytes.data() + headers, pixels.size() * sizeof(std::uint32_t));
    return pixels;
}

TEST(Gallery, ShowsEachPageAndEnds) {
    const ScratchFolder folder;
    // Without the backslash at its end, which would guard the quote.
    const std::wstring path(folder.Path().Chars(),
                            static_cast<std::size_t>(folder.Path().Length() - 1));
    ASSERT_EQ(RunGallery(L"--pictures \"" + path + L"\""), 0u);
    std::map<std::string, const wchar_t*> seen;
    for (const wchar_t* page : {L"Buttons", L"Tree", L"Lists", L"Values", L"Editors", L"Menus",
                                L"Tooltips", L"Display list", L"Coordinates"}) {
        const std::string bytes = FileContent(folder.Path((std::wstring(page) + L".bmp").c_str()));
        const auto pixels = PixelsOfFile(bytes);
        const std::set<std::uint32_t> colours(pixels.begin(), pixels.end());
        // Two for the ground and a label, and some of a widget.
        EXPECT_GT(colours.size(), 5u) << "page " << page;
        const auto [other, isNew] = seen.emplace(bytes, page);
        EXPECT_TRUE(isNew) << page << " shows what " << other->second << " does";
    }
}

TEST(Gallery, TellsThatAPictureCannotBeWritten) {
    EXPECT_EQ(RunGallery(L"--pictures C:\\no\\such\\folder"), 1u);
    EXPECT_EQ(RunGallery(L"--pictures"), 1u);
}

}  // namespace
