#include <gtest/gtest.h>
#include <windows.h>

#include <shlobj.h>

#include <cwchar>
#include <map>
#include <string>
#include <vector>

#include "foundation/folders.h"
#include "foundation/paths.h"
#include "tests/support/import_stub.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_registry.h"
#include "tests/support/text.h"

namespace {

// A shell that has these folders and no others.
std::map<int, std::wstring> shellFolders;
int itemLists;  // given and not yet freed

// COM interfaces have no virtual destructor: nobody destroys through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class CountingAllocator final : public IMalloc {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return ++released; }
    void* STDMETHODCALLTYPE Alloc(SIZE_T) override { return nullptr; }
    void* STDMETHODCALLTYPE Realloc(void*, SIZE_T) override { return nullptr; }
    void STDMETHODCALLTYPE Free(void* block) override {
        delete static_cast<int*>(block);
        --itemLists;
    }
    SIZE_T STDMETHODCALLTYPE GetSize(void*) override { return 0; }
    int STDMETHODCALLTYPE DidAlloc(void*) override { return 1; }
    void STDMETHODCALLTYPE HeapMinimize() override {}

    ULONG released = 0;
};
#pragma GCC diagnostic pop

CountingAllocator allocator;

HRESULT WINAPI Locate(HWND, int csidl, LPITEMIDLIST* items) {
    if (!shellFolders.contains(csidl)) return E_FAIL;
    ++itemLists;
    *items = reinterpret_cast<LPITEMIDLIST>(new int(csidl));
    return S_OK;
}

BOOL WINAPI PathOf(LPCITEMIDLIST items, LPWSTR path) {
    const std::wstring& text = shellFolders.at(*reinterpret_cast<const int*>(items));
    std::wcscpy(path, text.c_str());
    return !text.empty();
}

HRESULT WINAPI GiveAllocator(LPMALLOC* result) {
    *result = &allocator;
    return S_OK;
}

class ScriptedShell : public testing::Test {
protected:
    ScriptedShell()
        : location("SHGetSpecialFolderLocation", Locate),
          path("SHGetPathFromIDListW", PathOf),
          memory("SHGetMalloc", GiveAllocator) {
        shellFolders.clear();
        itemLists = 0;
        allocator.released = 0;
    }

    ImportStub location;
    ImportStub path;
    ImportStub memory;
};

// A folder call of the platform: what it puts into the buffer and answers.
const wchar_t* given;
UINT answered;
UINT limit;

UINT GiveFolder(LPWSTR text, UINT size) {
    limit = size;
    if (given != nullptr) std::wcscpy(text, given);
    return answered;
}

UINT WINAPI GiveFolderBySize(LPWSTR text, UINT size) {
    return GiveFolder(text, size);
}

DWORD WINAPI GiveTempFolder(DWORD size, LPWSTR text) {
    return GiveFolder(text, size);
}

const wchar_t versionKey[] = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion";

}  // namespace

TEST_F(ScriptedShell, ShellFolderIsThePathOrNothing) {
    shellFolders[SHELL_MUSIC] = L"D:\\Music";
    shellFolders[SHELL_VIDEO] = L"";
    EXPECT_EQ(Utf8(ShellFolder(SHELL_MUSIC)), "D:\\Music");
    EXPECT_EQ(Utf8(ShellFolder(SHELL_VIDEO)), "");
    EXPECT_EQ(Utf8(ShellFolder(SHELL_DOCUMENTS)), "");
    // What the shell gave went back to its allocator.
    EXPECT_EQ(itemLists, 0);
    EXPECT_EQ(allocator.released, 2u);
}

TEST_F(ScriptedShell, AShellFolderGetsItsBackslash) {
    shellFolders[SHELL_MUSIC] = L"D:\\Music";
    shellFolders[SHELL_DOCUMENTS] = L"D:\\Documents\\";
    shellFolders[40] = L"D:\\Profile";
    EXPECT_EQ(Utf8(FolderPath(SHELL_MUSIC, L"")), "D:\\Music\\");
    EXPECT_EQ(Utf8(FolderPath(SHELL_DOCUMENTS)), "D:\\Documents\\");
    EXPECT_EQ(Utf8(FolderPath(40)), "D:\\Profile\\");
}

TEST_F(ScriptedShell, FoldersThatOlderSystemsLackAreRebuilt) {
    shellFolders[SHELL_DOCUMENTS] = L"C:\\Users\\me\\Documents\\";
    shellFolders[SHELL_SHARED_DOCUMENTS] = L"C:\\Users\\all\\Documents";
    const struct {
        std::int32_t id;
        const char* expected;
    } rows[] = {{26, "C:\\Users\\me\\Application Data\\"},
                {13, "C:\\Users\\me\\Documents\\My Music\\"},
                {14, "C:\\Users\\me\\Documents\\My Video\\"},
                {53, "C:\\Users\\all\\Documents\\My Music\\"},
                {55, "C:\\Users\\all\\Documents\\My Video\\"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Utf8(FolderPath(row.id, L"")), row.expected) << row.id;
        EXPECT_EQ(Utf8(FolderPath(row.id)), row.expected) << row.id;
    }
}

TEST_F(ScriptedShell, WithoutTheirParentTheMediaFoldersAreNoRealPath) {
    for (const std::int32_t id : {13, 53}) {
        EXPECT_EQ(Utf8(FolderPath(id, L"")), "\\My Music\\");
        EXPECT_EQ(Utf8(FolderPath(id)), "\\My Music\\");
    }
    for (const std::int32_t id : {14, 55})
        EXPECT_EQ(Utf8(FolderPath(id, L"")), "\\My Video\\");
    EXPECT_EQ(Utf8(FolderPath(26, L"")), "");
    EXPECT_EQ(Utf8(FolderPath(26, L"D:\\x")), "D:\\x\\");
}

TEST_F(ScriptedShell, AnUnknownFolderIsTheFallback) {
    for (const std::int32_t id : {SHELL_DOCUMENTS, 46, 999, 0x5005, 0x4FFF}) {
        EXPECT_EQ(Utf8(FolderPath(id)), "C:\\Error\\") << id;
        EXPECT_EQ(Utf8(FolderPath(id, L"")), "") << id;
        EXPECT_EQ(Utf8(FolderPath(id, L"\\")), "") << id;
        EXPECT_EQ(Utf8(FolderPath(id, L"D:\\x")), "D:\\x\\") << id;
    }
}

TEST(Folders, TheShellsMusicFolderIsFound) {
    const clString music = FolderPath(SHELL_MUSIC, L"");
    EXPECT_GT(music.Length(), 3);
    EXPECT_EQ(music.CharAt(POS_LAST), L'\\');
    EXPECT_TRUE(PathExists(music)) << Utf8(music);
}

TEST(Folders, FolderNumbersAreTheirPublishedOnes) {
    EXPECT_EQ(FOLDER_PROGRAM_FILES, 0x5000);
    EXPECT_EQ(FOLDER_WINDOWS, 0x5001);
    EXPECT_EQ(FOLDER_SYSTEM, 0x5002);
    EXPECT_EQ(FOLDER_TEMP, 0x5003);
    EXPECT_EQ(FOLDER_PROGRAM_FILES_NATIVE, 0x5004);
    EXPECT_EQ(SHELL_DOCUMENTS, CSIDL_PERSONAL);
    EXPECT_EQ(SHELL_MUSIC, CSIDL_MYMUSIC);
    EXPECT_EQ(SHELL_VIDEO, CSIDL_MYVIDEO);
    EXPECT_EQ(SHELL_APPLICATION_DATA, CSIDL_APPDATA);
    EXPECT_EQ(SHELL_SHARED_DOCUMENTS, CSIDL_COMMON_DOCUMENTS);
    EXPECT_EQ(SHELL_SHARED_MUSIC, CSIDL_COMMON_MUSIC);
    EXPECT_EQ(SHELL_SHARED_VIDEO, CSIDL_COMMON_VIDEO);
}

TEST(Folders, ProgramFilesAreReadFromTheRegistry) {
    const ScratchRegistry registry;
    EXPECT_EQ(Utf8(FolderPath(FOLDER_PROGRAM_FILES)), "C:\\Error\\");
    EXPECT_EQ(Utf8(FolderPath(FOLDER_PROGRAM_FILES_NATIVE, L"")), "");
    ScratchRegistry::SetText(HKEY_LOCAL_MACHINE, versionKey, L"ProgramFilesDir", L"C:\\Programs");
    EXPECT_EQ(Utf8(FolderPath(FOLDER_PROGRAM_FILES)), "C:\\Programs\\");
    EXPECT_EQ(Utf8(FolderPath(FOLDER_PROGRAM_FILES_NATIVE)), "C:\\Programs\\");
    ScratchRegistry::SetText(HKEY_LOCAL_MACHINE, versionKey, L"ProgramW6432Dir", L"C:\\Native");
    EXPECT_EQ(Utf8(FolderPath(FOLDER_PROGRAM_FILES)), "C:\\Programs\\");
    EXPECT_EQ(Utf8(FolderPath(FOLDER_PROGRAM_FILES_NATIVE)), "C:\\Native\\");
}

TEST(Folders, ThePlatformsFoldersEndInABackslash) {
    for (const std::int32_t id : {FOLDER_WINDOWS, FOLDER_SYSTEM, FOLDER_TEMP}) {
        const clString folder = FolderPath(id, L"");
        EXPECT_EQ(folder.CharAt(POS_LAST), L'\\') << id;
        EXPECT_GT(folder.Length(), 3) << id;
    }
    EXPECT_EQ(FolderPath(FOLDER_SYSTEM).CompareNoCase(FolderPath(FOLDER_WINDOWS), -1), 0);
}

TEST(Folders, AFolderCallThatFailsLeavesTheFallback) {
    const ImportStub windows("GetWindowsDirectoryW", GiveFolderBySize);
    const ImportStub system("GetSystemDirectoryW", GiveFolderBySize);
    const ImportStub temp("GetTempPathW", GiveTempFolder);
    for (const std::int32_t id : {FOLDER_WINDOWS, FOLDER_SYSTEM, FOLDER_TEMP}) {
        given = nullptr;
        answered = 0;
        EXPECT_EQ(Utf8(FolderPath(id, L"D:\\x")), "D:\\x\\") << id;
        EXPECT_EQ(limit, 260u);
        for (const UINT needed : {260u, 300u}) {  // the length it would need
            answered = needed;
            given = nullptr;
            EXPECT_EQ(Utf8(FolderPath(id)), "C:\\Error\\") << id;
            given = L"E:\\what stands in the buffer then";
            EXPECT_EQ(Utf8(FolderPath(id)), "C:\\Error\\") << id;
        }
        given = L"E:\\folder";
        answered = 9;
        EXPECT_EQ(Utf8(FolderPath(id)), "E:\\folder\\") << id;
    }
}

TEST(Folders, TheTemporaryFolderHasAFallbackAndABackslash) {
    const ImportStub temp("GetTempPathW", GiveTempFolder);
    given = nullptr;
    answered = 0;
    EXPECT_EQ(Utf8(TempDirectory()), "C:\\Temp\\");
    EXPECT_EQ(limit, 260u);
    answered = 300;
    EXPECT_EQ(Utf8(TempDirectory()), "C:\\Temp\\");
    given = L"E:\\temporary";
    answered = 12;
    EXPECT_EQ(Utf8(TempDirectory()), "E:\\temporary\\");
    given = L"E:\\temporary\\";
    answered = 13;
    EXPECT_EQ(Utf8(TempDirectory()), "E:\\temporary\\");
}

TEST(Folders, TheModuleIsThisProgram) {
    EXPECT_TRUE(PathExists(ModulePath()));
    EXPECT_EQ(Utf8(ModuleDirectory()), Utf8(DirectoryOf(ModulePath())));
    EXPECT_EQ(ModuleDirectory().CharAt(POS_LAST), L'\\');
}

TEST(Folders, TheModulesPathIsCutAt1000Characters) {
    const ImportStub stub(
        "GetModuleFileNameW", +[](HMODULE module, LPWSTR text, DWORD size) -> DWORD {
            EXPECT_EQ(module, nullptr);
            // As old systems do: full to the brim, no terminator.
            for (DWORD i = 0; i < size; ++i)
                text[i] = L'a';
            return size;
        });
    EXPECT_EQ(ModulePath().Length(), 1000);
}

TEST(Folders, QuotesAroundTheModulesPathGo) {
    const ImportStub stub(
        "GetModuleFileNameW", +[](HMODULE, LPWSTR text, DWORD) -> DWORD {
            std::wcscpy(text, L"\"C:\\folder\\app.exe\" -x");
            return 22;
        });
    EXPECT_EQ(Utf8(ModulePath()), "C:\\folder\\app.exe");
    EXPECT_EQ(Utf8(ModuleDirectory()), "C:\\folder\\");
}

TEST(Folders, TheArgumentsAreThoseOfThisProcess) {
    const ImportStub stub(
        "GetCommandLineW", +[]() -> LPWSTR {
            static wchar_t line[] = L"\"C:\\app.exe\"  D:\\My Music ";
            return line;
        });
    EXPECT_EQ(Utf8(CommandLineArguments()), "D:\\My Music");
}

namespace {

std::vector<std::string> shellCall;
INT_PTR shellAnswer;

HINSTANCE WINAPI WatchedExecute(HWND owner, LPCWSTR verb, LPCWSTR file, LPCWSTR arguments,
                                LPCWSTR folder, INT show) {
    EXPECT_EQ(owner, nullptr);
    shellCall = {Utf8(verb), Utf8(file), Utf8(arguments), Utf8(folder), std::to_string(show)};
    return reinterpret_cast<HINSTANCE>(shellAnswer);
}

}  // namespace

TEST(Folders, ShellOpenStartsADocumentInItsFolder) {
    const ImportStub stub("ShellExecuteW", WatchedExecute);
    shellAnswer = 33;
    EXPECT_TRUE(ShellOpen(L"C:\\Help\\page.htm"));
    EXPECT_EQ(shellCall, (std::vector<std::string>{"(null)", "C:\\Help\\page.htm", "(null)",
                                                   "C:\\Help\\", "10"}));
    shellAnswer = 32;
    EXPECT_FALSE(ShellOpen(L"C:\\Help\\page.htm"));
    shellAnswer = 0;
    EXPECT_FALSE(ShellOpen(L"C:\\Help\\page.htm"));
}

TEST(Folders, AMissingDocumentIsNotOpened) {
    const ScratchFolder scratch;
    EXPECT_FALSE(ShellOpen(scratch.Path(L"missing.htm")));
}
