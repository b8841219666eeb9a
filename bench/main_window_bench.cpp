// The main window over a folder of 10,000 files, against bare loops over the same
// kind of list in a dialog that does nothing:
//   main_window_bench FOLDER
// The window opens FOLDER itself, as it does with a start folder.
#include <windows.h>
// The platform's other headers need windows.h before them.
#include <commctrl.h>

#include <cstdio>

#include "bench/measure.h"
#include "bench/ui_measure.h"
#include "foundation/folders.h"
#include "mainwindow/main_form.h"
#include "resources/ids.h"

namespace {

constexpr double listingLimit = 1.3;
constexpr double tickingLimit = 3;
constexpr double waitLimitMs = 100;
constexpr int fileCount = 10000;
constexpr int rounds = 5;
constexpr DWORD patienceMs = 120000;

// The main window as its user has it: through its controls.
class Window {
public:
    Window()
        : form(ShownDialog()),
          tree(GetDlgItem(form, IDC_FOLDER_TREE)),
          list(GetDlgItem(form, IDC_FILE_LIST)),
          folder(TreeView_GetSelection(tree)),
          parent(TreeView_GetParent(tree, folder)) {}

    HWND Form() const { return form; }
    HWND List() const { return list; }
    int Rows() const { return ListView_GetItemCount(list); }

    void SelectFolder() const { TreeView_SelectItem(tree, folder); }
    // Which has no files, and ends the reading.
    void SelectParent() const { TreeView_SelectItem(tree, parent); }

    // Files are read in the order of the list: the last row comes last.
    bool AllRead() const {
        wchar_t text[100] = {};
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.iItem = Rows() - 1;
        item.iSubItem = artistColumn;
        item.pszText = text;
        item.cchTextMax = 100;
        SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return *item.pszText != 0;
    }

    void RunCommand(int command) const { RunRowCommand(form, list, command); }

private:
    static constexpr int artistColumn = 4;  // of the default columns

    HWND form;
    HWND tree;
    HWND list;
    HTREEITEM folder;
    HTREEITEM parent;
};

void WalkBare(const clString& folder) {
    clString pattern(folder);
    pattern.Append(L"*.*");
    WIN32_FIND_DATAW found;
    const HANDLE find = FindFirstFileW(pattern.Chars(), &found);
    if (find == INVALID_HANDLE_VALUE) return;
    while (FindNextFileW(find, &found)) {
    }
    FindClose(find);
}

void MeasureListing(const Window& window, Judge& judge) {
    window.SelectParent();
    judge.Require("rows of the folder above", window.Rows(), 0);
    window.SelectFolder();
    const ListContents contents(window.List());
    judge.Require("rows", window.Rows(), fileCount);
    const BareForm bare(IDD_MAIN, IDC_FILE_LIST, window.List());
    const clString folder = CommandLineArguments();
    const std::vector<double> seconds = MediansOf(
        rounds,
        [&] {
            window.SelectParent();
            bare.Clear();
            return WallSecondsOf([&] {
                WalkBare(folder);
                bare.Insert(contents);
            });
        },
        [&] { return WallSecondsOf([&] { window.SelectFolder(); }); });
    std::printf("listing: bare %.3f s, window %.3f s\n", seconds[0], seconds[1]);
    judge.Check("listing 10,000 files, over a bare walk and insertion", seconds[1] / seconds[0],
                listingLimit);
}

void MeasureTicking(const Window& window, Judge& judge) {
    const BareForm bare(IDD_MAIN, IDC_FILE_LIST, window.List());
    bare.Insert(ListContents(window.List()));
    const auto tickBare = [&](bool ticked) {
        for (int row = 0; row < fileCount; ++row)
            bare.SetTick(row, ticked);
    };
    const std::vector<double> seconds = MediansOf(
        rounds,
        [&] {
            tickBare(false);
            return WallSecondsOf([&] { tickBare(true); });
        },
        [&] { return WallSecondsOf([&] { window.RunCommand(ID_UNCHECK_ALL); }); },
        [&] { return WallSecondsOf([&] { window.RunCommand(ID_CHECK_ALL); }); });
    judge.Require("tick of the first row", ListView_GetCheckState(window.List(), 0), 1);
    judge.Require("tick of the last row", ListView_GetCheckState(window.List(), fileCount - 1), 1);
    std::printf("ticking: bare %.4f s, Uncheck All %.4f s, Check All %.4f s\n", seconds[0],
                seconds[1], seconds[2]);
    judge.Check("Check All on 10,000 rows, over a bare loop", seconds[2] / seconds[0],
                tickingLimit);
    judge.Check("Uncheck All on 10,000 rows, over a bare loop", seconds[1] / seconds[0],
                tickingLimit);
}

void MeasureWaits(const Window& window, Judge& judge) {
    window.SelectParent();
    window.SelectFolder();
    const LongestWait wait;
    const double begin = Now();
    const bool isRead = ServeUntil([&] { return window.AllRead(); }, patienceMs);
    const double seconds = Now() - begin;
    judge.Require("all files read", isRead, 1);
    std::printf("reading: %.1f s, %lld messages, the longest wait ended after %.2f s\n", seconds,
                static_cast<long long>(wait.Messages()), wait.When());
    judge.Check("longest wait of a message while 10,000 files are read, ms", wait.Milliseconds(),
                waitLimitMs);
}

void RunAll(Judge& judge) {
    const Window window;
    judge.Require("rows at the start", window.Rows(), fileCount);
    MeasureListing(window, judge);
    MeasureWaits(window, judge);
    MeasureTicking(window, judge);
    PostMessageW(window.Form(), WM_CLOSE, 0, 0);
}

}  // namespace

int wmain(int argc, wchar_t**) {
    if (argc != 2) {
        std::printf("usage: main_window_bench FOLDER\n");
        return 2;
    }
    const ProgramGround ground;
    Judge judge;
    {
        LoopScript script([&judge] { RunAll(judge); });
        script.RunWhenIdle();
        const frmMain form;
    }
    return judge.Held() ? 0 : 1;
}
