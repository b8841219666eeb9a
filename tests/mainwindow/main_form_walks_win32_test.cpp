// How the main form goes through drives and folders: without the system's questions
// for a medium, and with a pointer that tells of it.
#include <gmock/gmock.h>
#include <windows.h>
// shlobj.h needs windows.h before it.
#include <shlobj.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <vector>

#include "tests/mainwindow/main_form_stage.h"
#include "tests/support/eventually.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"
#include "tests/ui/pointer.h"

namespace {

using testing::ElementsAre;

// One folder with another one in it, in which a file lies.
class Folders {
public:
    Folders() {
        scratch.AddFolder(L"inner");
        scratch.AddFolder(L"inner\\deepest");
        scratch.AddFile(L"inner\\a.abc");
    }
    std::wstring Path() const { return scratch.Path().Chars(); }

private:
    ScratchFolder scratch;
};

HTREEITEM Selected(HWND form) {
    return TreeView_GetSelection(TreeOf(form));
}

// The folder in the start folder; opened if that is closed.
HTREEITEM Inner(HWND form) {
    const HTREEITEM start = Selected(form);
    TreeView_Expand(TreeOf(form), start, TVE_EXPAND);
    return TreeView_GetChild(TreeOf(form), start);
}

void PressRefresh(HWND form) {
    Click(ScreenMiddle(FindWindowExW(form, nullptr, L"Static", L"Refresh")));
}

struct Search {
    std::wstring path;
    UINT mode;
};

constexpr WPARAM deviceArrived = 0x8000;  // DBT_DEVICEARRIVAL

DWORD formThread;
std::vector<Search> searches;  // read while the form waits
std::atomic<bool> hasSearched;

void KeepOfForm(const wchar_t* path) {
    if (GetCurrentThreadId() != formThread) return;
    searches.push_back({path, GetErrorMode()});
    hasSearched = true;
}

decltype(&FindFirstFileW) realFindFirst;

HANDLE WINAPI KeepSearch(LPCWSTR path, WIN32_FIND_DATAW* found) {
    // The decoders' folder is the program's own, on a medium that is there.
    if (wcsstr(path, L"\\decoder") == nullptr) KeepOfForm(path);
    return realFindFirst(path, found);
}

decltype(&GetDriveTypeW) realDriveType;

UINT WINAPI KeepDrive(LPCWSTR root) {
    KeepOfForm(root);
    return realDriveType(root);
}

decltype(&SHGetSpecialFolderLocation) realLocation;

HRESULT WINAPI KeepMusic(HWND owner, int folder, LPITEMIDLIST* item) {
    if (folder == CSIDL_MYMUSIC) KeepOfForm(L"Music");
    return realLocation(owner, folder, item);
}

// Begins with no search, and with an error mode that is the form's alone: the test
// program's own comes back at the end.
class SearchWatch {
public:
    SearchWatch() : before(SetErrorMode(0)) {
        formThread = GetCurrentThreadId();
        searches.clear();
    }
    SearchWatch(const SearchWatch&) = delete;
    SearchWatch& operator=(const SearchWatch&) = delete;
    ~SearchWatch() { SetErrorMode(before); }

private:
    UINT before;
};

// Of what the form has looked for since the last time.
void ExpectQuietSearches() {
    EXPECT_FALSE(searches.empty());
    for (const Search& search : searches)
        EXPECT_EQ(search.mode, UINT{SEM_FAILCRITICALERRORS}) << Utf8(search.path.c_str());
    searches.clear();
    hasSearched = false;
    EXPECT_EQ(GetErrorMode(), 0u);
}

}  // namespace

TEST_F(MainForm, SystemAsksForNoMediumWhileFoldersAreSearched) {
    decoders.Add("one", "type=.abc|Some sound\n");
    const Folders folders;
    const clCommandLine line(folders.Path());
    const SearchWatch watch;
    realFindFirst = &FindFirstFileW;
    const ImportStub stub("FindFirstFileW", &KeepSearch);
    RunForm([](HWND form) {
        ExpectQuietSearches();
        const HTREEITEM inner = Inner(form);
        searches.clear();
        TreeView_SelectItem(TreeOf(form), inner);
        EXPECT_EQ(ListView_GetItemCount(ListOf(form)), 1);
        ExpectQuietSearches();
        TreeView_Expand(TreeOf(form), inner, TVE_EXPAND);
        EXPECT_NE(TreeView_GetChild(TreeOf(form), inner), nullptr);
        ExpectQuietSearches();
        PressRefresh(form);
        EXPECT_TRUE(Eventually([] { return hasSearched.load(); }));
        // Answered once the form is through with all of them.
        SendMessageW(form, WM_NULL, 0, 0);
        ExpectQuietSearches();
    });
}

TEST_F(MainForm, SystemAsksForNoMediumWhileDrivesAreLookedAt) {
    const clCommandLine line;
    const SearchWatch watch;
    realDriveType = &GetDriveTypeW;
    const ImportStub stub("GetDriveTypeW", &KeepDrive);
    RunForm([](HWND form) {
        ExpectQuietSearches();
        SendMessageW(form, WM_DEVICECHANGE, deviceArrived, 0);
        ExpectQuietSearches();
    });
}

TEST_F(MainForm, SystemAsksForNoMediumWhileMusicIsLookedFor) {
    const clCommandLine line;
    const SearchWatch watch;
    realLocation = &SHGetSpecialFolderLocation;
    const ImportStub stub("SHGetSpecialFolderLocation", &KeepMusic);
    RunForm([](HWND) { ExpectQuietSearches(); });
}

namespace {

std::vector<HCURSOR> cursorsSet;

HCURSOR WINAPI KeepCursor(HCURSOR cursor) {
    if (GetCurrentThreadId() == formThread) cursorsSet.push_back(cursor);
    return nullptr;
}

}  // namespace

TEST_F(MainForm, PointerTellsOfTheStartFolderOfAListingAndOfAnOpening) {
    const Folders folders;
    const clCommandLine line(folders.Path());
    MovePointerAway();
    formThread = GetCurrentThreadId();
    cursorsSet.clear();
    const ImportStub stub("SetCursor", &KeepCursor);
    RunForm([](HWND form) {
        const HCURSOR waits = LoadCursorW(nullptr, IDC_WAIT);
        const HCURSOR works = LoadCursorW(nullptr, IDC_APPSTARTING);
        const HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
        // What the start folder leads to has its own two, each time.
        ASSERT_GE(cursorsSet.size(), 4u);
        EXPECT_EQ(cursorsSet.front(), waits);
        EXPECT_EQ(std::count(cursorsSet.begin(), cursorsSet.end(), waits), 1);
        EXPECT_EQ(cursorsSet.back(), arrow);
        EXPECT_EQ(cursorsSet[cursorsSet.size() - 2], arrow);
        const HTREEITEM inner = Inner(form);
        cursorsSet.clear();
        TreeView_SelectItem(TreeOf(form), inner);
        EXPECT_THAT(cursorsSet, ElementsAre(works, arrow));
        cursorsSet.clear();
        TreeView_Expand(TreeOf(form), inner, TVE_EXPAND);
        EXPECT_THAT(cursorsSet, ElementsAre(works, arrow));
    });
}

TEST_F(MainForm, FolderThatIsAboutToCloseIsSelected) {
    const Folders folders;
    const clCommandLine line(folders.Path());
    RunForm([](HWND form) {
        const HWND tree = TreeOf(form);
        const HTREEITEM start = Selected(form);
        const HTREEITEM inner = Inner(form);
        NMTREEVIEWW change = {};
        change.hdr = {tree, static_cast<UINT_PTR>(GetDlgCtrlID(tree)),
                      static_cast<UINT>(TVN_ITEMEXPANDINGW)};
        change.action = TVE_COLLAPSE;
        for (const HTREEITEM item : {inner, start}) {
            change.itemNew.mask = TVIF_HANDLE;
            change.itemNew.hItem = item;
            ASSERT_NE(Selected(form), item);
            SendMessageW(form, WM_NOTIFY, change.hdr.idFrom, reinterpret_cast<LPARAM>(&change));
            EXPECT_EQ(Selected(form), item);
        }
    });
}

namespace {

std::vector<std::wstring> RootTexts(HWND form) {
    const HWND tree = TreeOf(form);
    std::vector<std::wstring> texts;
    for (HTREEITEM root = TreeView_GetRoot(tree); root != nullptr;
         root = TreeView_GetNextSibling(tree, root)) {
        wchar_t text[300] = {};
        TVITEMW item = {};
        item.mask = TVIF_TEXT;
        item.hItem = root;
        item.pszText = text;
        item.cchTextMax = 300;
        SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        texts.emplace_back(text);
    }
    return texts;
}

bool IsDriveC(const std::wstring& root) {
    return root.ends_with(L"(C:)") || root == L"C:\\";
}

constexpr DWORD driveC = 4;
std::atomic<DWORD> missingDrives;
decltype(&GetLogicalDrives) realDrives;

DWORD WINAPI TellDrives() {
    return realDrives() & ~missingDrives;
}

}  // namespace

// Its folder is there all the time, and no message tells that it comes and goes.
TEST_F(MainForm, RefreshSeesADriveComeAndGo) {
    const clCommandLine line;
    missingDrives = driveC;
    realDrives = &GetLogicalDrives;
    const ImportStub stub("GetLogicalDrives", &TellDrives);
    RunForm([](HWND form) {
        const std::vector<std::wstring> before = RootTexts(form);
        ASSERT_TRUE(std::none_of(before.begin(), before.end(), &IsDriveC));
        missingDrives = 0;
        PressRefresh(form);
        EXPECT_TRUE(Eventually([&] { return RootTexts(form).size() == before.size() + 1; }));
        std::vector<std::wstring> with = RootTexts(form);
        EXPECT_TRUE(IsDriveC(with.back())) << Utf8(with.back().c_str());
        with.pop_back();
        EXPECT_EQ(with, before);
        missingDrives = driveC;
        PressRefresh(form);
        EXPECT_TRUE(Eventually([&] {
            const std::vector<std::wstring> without = RootTexts(form);
            return std::none_of(without.begin(), without.end(), &IsDriveC);
        }));
    });
}
