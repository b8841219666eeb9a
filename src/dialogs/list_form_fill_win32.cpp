// The conversion list's contents: its rows, their cells and their totals.
#include <utility>

#include "dialogs/list_form.h"
#include "dialogs/name_order.h"
#include "foundation/folders.h"
#include "foundation/mutex.h"
#include "foundation/paths.h"
#include "foundation/program_title.h"
#include "foundation/settings.h"
#include "mainwindow/row_menu.h"
#include "mainwindow/setting_names.h"
#include "resources/ids.h"

namespace {

constexpr DWORD listStyle = LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP;
constexpr std::int32_t summaryUnits = 21;

// Of a file that was not read yet: what its path says.
clString CellTextOfPath(const FileRow& row, const clString& columnName) {
    if (columnName.Equals(L"Name")) return FileNameOf(row.path);
    if (columnName.Equals(L"Folder")) return DirectoryOf(row.path);
    if (columnName.Equals(L"Type")) return row.typeName;
    return {};
}

// Appends the name unless its text stands anywhere among the names.
void NeedColumn(clString& names, const wchar_t* name) {
    if (names.Find(name) != 0) return;
    if (!names.IsEmpty()) names.Append(L'\r');
    names.Append(name);
}

}  // namespace

void frmList::OnCreate() {
    clString title(programTitle);
    title.Append(L": Audio Files Converting");
    SetWindowTextW(Window(), title.Chars());
    NeedColumn(fileList._ColumnNames, L"Folder");
    NeedColumn(fileList._ColumnNames, L"Name");
    PrepareRowMenu(_RowMenu);
    SetUpList();
    FillList();
    CenterOnScreen();
    openMaximised.Show(Window());
    RECT client = {};
    GetClientRect(Window(), &client);
    OnSize(static_cast<std::uint32_t>(client.right), static_cast<std::uint32_t>(client.bottom), 0);
    AddTimer(0);
    BringWindowToTop(Window());
}

void frmList::SetUpList() {
    const HWND list = GetDlgItem(Window(), IDC_FILE_LIST);
    _ListFiles.SetListWindow(list);
    _ListFiles.Attach(list);
    fileList.SetUp(listStyle);
    fileList.RestoreColumns(ReadSettingString(setting::listColumnWidths));
}

void frmList::FillList() {
    SetCursor(LoadCursorW(nullptr, IDC_APPSTARTING));
    _ListFiles.BeginBatch();
    fileList.Clear();
    const std::int32_t nameColumn = fileList.ColumnTitled(L"Name");
    fileList.SetColumnSortImage(nameColumn, 0);
    AddFiles(nameColumn >= 0);
    // Added by their names they are in the order of that column.
    if (nameColumn < 0) fileList.SortList();
    RefillQueue();
    UpdateSummary();
    _ListFiles.EndBatch();
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

void frmList::AddFiles(bool byName) {
    // The list's many messages would each take the mutex from the kernel.
    const clMutexLock lock(SubclassMutex);
    const clStringList titles = fileList.ColumnTitles();
    fileList.ExpectRows(_Files.Count());
    summary = {};
    if (byName) {
        for (const std::int64_t i : OrderByName(_Files))
            AddFile(*_Files.At(i), titles);
    } else {
        for (std::int64_t i = 0; i < _Files.Count(); ++i)
            AddFile(*_Files.At(i), titles);
    }
}

void frmList::AddFile(const clString& path, const clStringList& titles) {
    FileRow record;
    record.path.Assign(path);
    record.typeName.Assign(FileTypeName(path));
    const std::int32_t row = fileList.AddRow(std::move(record), titles, &CellTextOfPath);
    if (row < 0) return;
    fileList.SetTicked(row, true);
    summary.Add(*fileList.RowAt(row));
}

void frmList::RefillQueue() {
    summaryIsSettled = false;
    fileList.RefillMetaDataQueue();
}

void frmList::CountSummary() {
    const clMutexLock listLock(SubclassMutex);
    const clMutexLock rowsLock(MetaDataMutex);
    summary = {};
    for (std::int32_t row = 0; row < fileList.Count(); ++row) {
        const FileRow* record = fileList.RowAt(row);
        if (record != nullptr && fileList.IsTicked(row)) summary.Add(*record);
    }
}

// While the reader works, a row's size and length may change between its counting
// in and its counting out: the sums, which are not shown then, are made once more
// behind its end.
void frmList::UpdateSummary() {
    const bool isReading = !summaryIsSettled && fileList.Reader().IsReading();
    if (!isReading && !summaryIsSettled) {
        CountSummary();
        summaryIsSettled = true;
    }
    _SummaryText.Assign(SummaryText(summary, isReading));
    // Once for all the rows that a command turns.
    if (summaryIsInvalid) return;
    summaryIsInvalid = true;
    RECT client = {};
    GetClientRect(Window(), &client);
    RECT units = {1, summaryUnits, 1, 1};
    MapDialogRect(Window(), &units);
    const RECT band = {0, 0, client.right, units.top};
    InvalidateRect(Window(), &band, TRUE);
}

void frmList::OnTimer(std::uint32_t, std::int64_t) {
    openMaximised.OnTimer();
    PumpMetaData();
    handledFlag = 1;
}

void frmList::PumpMetaData() {
    const auto result = fileList.PumpMetaData(&FileCellText);
    const bool isComplete = result == clFileList::PumpResult::Complete;
    // The reader ends a little behind its last file, and may then have been pumped
    // dry already.
    const bool canCount = !summaryIsSettled && !fileList.Reader().IsReading();
    if (isComplete || canCount) UpdateSummary();
    clFileList::PostRest(Window(), result);
}

void frmList::FillNewColumn() {
    RefillQueue();
}

void frmList::FillDefaultColumns() {
    RefillQueue();
}
