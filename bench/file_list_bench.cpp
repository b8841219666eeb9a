// A list of files as both forms have it, with 100,000 rows: its pump, its sorting
// and its memory, against a bare list with the same cells.
#include <windows.h>
// The platform's other headers need windows.h before them.
#include <commctrl.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/measure.h"
#include "bench/ui_measure.h"
#include "foundation/folders.h"
#include "foundation/mutex.h"
#include "mainwindow/columns.h"
#include "mainwindow/file_cells.h"
#include "mainwindow/file_list.h"
#include "resources/ids.h"
#include "toolkit/window.h"

namespace {

constexpr double pumpLimit = 1.3;
constexpr double sortLimit = 2;
constexpr int fewRows = 10000;
constexpr int manyRows = 100000;
constexpr int pumpRounds = 5;
constexpr int sortRounds = 5;
constexpr std::int32_t nameColumn = 0;
constexpr std::int32_t sizeColumn = 1;

// Name and size do not go together: each sort finds the order of the other.
FileRow RecordOf(std::int64_t number) {
    const std::int64_t mixed = number * 7919 % manyRows;
    wchar_t path[128] = {};
    std::swprintf(path, 128, L"C:\\Music\\Artist %03lld\\%02lld - Title of the piece %06lld.tone",
                  static_cast<long long>(number / 100), static_cast<long long>(mixed % 97 + 1),
                  static_cast<long long>(number));
    FileRow record;
    record.path.Assign(path);
    record.typeName.Assign(FileTypeName(record.path));
    record.sizeBytes = static_cast<std::uint64_t>(1000000 + (number * 48271 % manyRows) * 190);
    record.dateModified = {static_cast<std::uint32_t>(mixed) * 10000, 29000000};
    return record;
}

class ListForm : public XWindow {
public:
    ListForm() : list(view) {
        CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_LIST), nullptr,
                           &XWindow::DialogProcedure,
                           reinterpret_cast<LPARAM>(static_cast<XWindow*>(this)));
        ShowWindow(Window(), SW_SHOWMAXIMIZED);
    }
    ~ListForm() override {
        view.Attach(nullptr);
        DestroyWnd();
    }

    void OnCreate() override {
        view.SetListWindow(GetDlgItem(Window(), IDC_FILE_LIST));
        view.Attach(view.ListWindow());
        list.SetUp(LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
        list._ColumnNames.Assign(defaultColumns);
        list.RestoreColumns({});
        list.SetColumnSortImage(0, 0);
    }
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override {
        return view.Route(window, message, wParam, lParam, handled);
    }

    void Fill(int count) {
        view.BeginBatch();
        list.Clear();
        const clMutexLock lock(SubclassMutex);
        const clStringList titles = list.ColumnTitles();
        for (int number = 0; number < count; ++number) {
            const std::int32_t displayRow =
                list.AddRow(RecordOf(number), titles, &DirectoryCellText);
            list.SetTicked(displayRow, true);
        }
        view.EndBatch();
    }
    // To the end, without a pump: every file is finished then.
    void Read() {
        list.RefillMetaDataQueue();
        while (list.Reader().IsReading())
            Sleep(10);
    }
    // As the timer of a form does it. True if the queue is empty by this.
    bool Pump() {
        for (;;) {
            const auto result = list.PumpMetaData(&TagCellText);
            if (result != clFileList::PumpResult::More)
                return result == clFileList::PumpResult::Complete;
        }
    }
    void Sort(std::int32_t column) { list.ToggleSort(column); }
    std::wstring Cell(std::int32_t row, std::int32_t column) const {
        return view.CellText(row, column).Chars();
    }
    HWND List() const { return view.ListWindow(); }

private:
    XListView view;
    clFileList list;
};

// The cells of the bare list are those of a finished file: `finished` is one.
void InsertBare(const BareForm& bare, const FileRow& record, const clStringList& titles,
                ListContents::Row finished) {
    std::vector<clString> texts;
    texts.reserve(static_cast<std::size_t>(titles.Count()));  // their characters stay put
    for (std::int64_t column = 0; column < titles.Count(); ++column) {
        texts.push_back(DirectoryCellText(record, *titles.At(column)));
        if (!texts.back().IsEmpty())
            finished.cells[static_cast<std::size_t>(column)] = texts.back().Chars();
    }
    bare.InsertRow(finished);
}

void FillBare(const BareForm& bare, const ListContents::Row& finished) {
    clStringList titles;
    titles.Split(defaultColumns);
    SendMessageW(bare.List(), WM_SETREDRAW, FALSE, 0);
    for (int number = 0; number < manyRows; ++number)
        InsertBare(bare, RecordOf(number), titles, finished);
    SendMessageW(bare.List(), WM_SETREDRAW, TRUE, 0);
}

// As the memory's measure leaves them.
void FillBoth(ListForm& form, const BareForm& bare, const ListContents::Row& finished) {
    FillBare(bare, finished);
    form.Fill(manyRows);
}

// Before anything else that takes much: what was freed would be used again.
void MeasureMemory(ListForm& form, const BareForm& bare, const ListContents::Row& finished) {
    const SIZE_T before = CommittedBytes();
    FillBare(bare, finished);
    const SIZE_T withBare = CommittedBytes();
    form.Fill(manyRows);
    const SIZE_T listed = CommittedBytes();
    form.Read();
    const SIZE_T read = CommittedBytes();
    form.Pump();
    const SIZE_T complete = CommittedBytes();
    const auto perRow = [](SIZE_T from, SIZE_T to) {
        return (static_cast<double>(to) - static_cast<double>(from)) / manyRows;
    };
    std::printf(
        "bytes for a row: bare list %.0f, listed %.0f, with all read and none taken %.0f, "
        "with all cells %.0f\n",
        perRow(before, withBare), perRow(withBare, listed), perRow(withBare, read),
        perRow(withBare, complete));
    std::printf("%-66s %6.3f\n", "memory of a row with all its cells over a bare one",
                perRow(withBare, complete) / perRow(before, withBare));
}

// What the control's own sort is given: the keys of all rows, made beforehand.
struct BareKeys {
    std::vector<std::wstring> names;
    std::vector<std::uint64_t> sizes;
};

int CALLBACK CompareNames(LPARAM first, LPARAM second, LPARAM keys) {
    const auto& names = reinterpret_cast<const BareKeys*>(keys)->names;
    return names[static_cast<std::size_t>(first)].compare(names[static_cast<std::size_t>(second)]);
}

int CALLBACK CompareSizes(LPARAM first, LPARAM second, LPARAM keys) {
    const auto& sizes = reinterpret_cast<const BareKeys*>(keys)->sizes;
    const std::uint64_t a = sizes[static_cast<std::size_t>(first)];
    const std::uint64_t b = sizes[static_cast<std::size_t>(second)];
    return a < b ? -1 : a > b ? 1 : 0;
}

double SortBare(const BareForm& bare, PFNLVCOMPARE compare, const BareKeys& keys) {
    return WallSecondsOf([&] {
        SendMessageW(bare.List(), WM_SETREDRAW, FALSE, 0);
        SendMessageW(bare.List(), LVM_SORTITEMS, reinterpret_cast<WPARAM>(&keys),
                     reinterpret_cast<LPARAM>(compare));
        SendMessageW(bare.List(), WM_SETREDRAW, TRUE, 0);
    });
}

std::wstring CellOf(HWND list, int row, int column) {
    wchar_t text[200] = {};
    ListView_GetItemText(list, row, column, text, 200);
    return text;
}

void MeasureSorting(ListForm& form, const BareForm& bare, Judge& judge) {
    BareKeys keys;
    for (int number = 0; number < manyRows; ++number) {
        const FileRow record = RecordOf(number);
        keys.names.emplace_back(DirectoryCellText(record, L"Name").Lower().Chars());
        keys.sizes.push_back(record.sizeBytes);
    }
    form.Sort(sizeColumn);
    SortBare(bare, &CompareSizes, keys);
    const std::vector<double> seconds = MediansOf(
        sortRounds, [&] { return SortBare(bare, &CompareNames, keys); },
        [&] { return WallSecondsOf([&] { form.Sort(nameColumn); }); },
        [&] { return SortBare(bare, &CompareSizes, keys); },
        [&] { return WallSecondsOf([&] { form.Sort(sizeColumn); }); });
    for (const int row : {0, 1, manyRows / 2, manyRows - 1})
        judge.Require("same row at the same place",
                      form.Cell(row, nameColumn) == CellOf(bare.List(), row, nameColumn), 1);
    std::printf("sorting: text %.3f s, bare %.3f s; size %.3f s, bare %.3f s\n", seconds[1],
                seconds[0], seconds[3], seconds[2]);
    judge.Check("sorting 100,000 rows by text, over the control's sort of keys",
                seconds[1] / seconds[0], sortLimit);
    judge.Check("sorting 100,000 rows by size, over the control's sort of keys",
                seconds[3] / seconds[2], sortLimit);
}

double SecondsOfPump(ListForm& form, int count, Judge& judge) {
    form.Fill(count);
    form.Read();
    bool isComplete = false;
    const double seconds = WallSecondsOf([&] { isComplete = form.Pump(); });
    judge.Require("emptied queues", isComplete, 1);
    judge.Require("written cells", form.Cell(count - 1, 4) == L"The Limestone Quartet", 1);
    return seconds / count;
}

void MeasurePump(ListForm& form, Judge& judge) {
    const std::vector<double> seconds = MediansOf(
        pumpRounds, [&] { return SecondsOfPump(form, fewRows, judge); },
        [&] { return SecondsOfPump(form, manyRows, judge); });
    std::printf("pump: %.1f us for a row of 10,000, %.1f us for one of 100,000\n", seconds[0] * 1e6,
                seconds[1] * 1e6);
    judge.Check("pump, time for a row of 100,000 over one of 10,000", seconds[1] / seconds[0],
                pumpLimit);
}

}  // namespace

// file_list_bench [memory|sorting|pump]   all three without an argument.
int wmain(int argumentCount, wchar_t** arguments) {
    const std::wstring part = argumentCount > 1 ? arguments[1] : L"";
    if (!part.empty() && part != L"memory" && part != L"sorting" && part != L"pump") {
        std::printf("usage: file_list_bench [memory|sorting|pump]\n");
        return 2;
    }
    const auto measures = [&](const wchar_t* name) { return part.empty() || part == name; };
    const ProgramGround ground;
    Judge judge;
    {
        ListForm form;
        form.Fill(1);
        form.Read();
        form.Pump();
        const ListContents sample(form.List());
        ListContents::Row finished;
        sample.Take(0, finished);
        const BareForm bare(IDD_LIST, IDC_FILE_LIST, form.List());
        if (measures(L"memory")) MeasureMemory(form, bare, finished);
        if (measures(L"sorting")) {
            if (!measures(L"memory")) FillBoth(form, bare, finished);
            MeasureSorting(form, bare, judge);
        }
        if (measures(L"pump")) MeasurePump(form, judge);
    }
    return judge.Held() ? 0 : 1;
}
