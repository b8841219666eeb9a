#include "foundation/dir_enum.h"
#include "foundation/folders.h"
#include "foundation/mutex.h"
#include "foundation/quiet_drives.h"
#include "mainwindow/file_cells.h"
#include "mainwindow/main_form.h"

namespace {

clFileTime TimeOf(const FILETIME& time) {
    return {time.dwLowDateTime, time.dwHighDateTime};
}

FileRow RecordOf(const clDirEnum& entry) {
    FileRow record;
    const WIN32_FIND_DATAW& found = entry.record;
    record.path.Assign(entry.path);
    record.typeName.Assign(FileTypeName(entry.path));
    record.sizeBytes = (static_cast<std::uint64_t>(found.nFileSizeHigh) << 32) | found.nFileSizeLow;
    record.dateModified = TimeOf(found.ftLastWriteTime);
    record.dateAccessed = TimeOf(found.ftLastAccessTime);
    record.dateCreated = TimeOf(found.ftCreationTime);
    return record;
}

}  // namespace

// Builds the list from the directory alone, so that it is complete at once; what
// a decoder has to tell comes later, through OnTimer.
void frmMain::ListFolderOf(XTreeItem node) {
    SetCursor(LoadCursorW(nullptr, IDC_APPSTARTING));
    _ListFiles.BeginBatch();
    fileList.Clear();
    {
        // The list's many messages would each take the mutex from the kernel.
        const clMutexLock lock(SubclassMutex);
        const QuietDrives quiet;
        AddFolderRows(node);
    }
    clStringList names;
    names.Split(fileList._ColumnNames);
    KeepDecoderColumns(names);
    if (names.Count() > 0) fileList.RefillMetaDataQueue();
    _ListFiles.EndBatch();
    fileList.SortList();
    UpdateStatus();
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

void frmMain::AddFolderRows(XTreeItem node) {
    const clString folder = PathOfItem(node);
    // Without a folder it would be the drive's root that is searched.
    if (folder.IsEmpty()) return;
    clDirEnum entries(L"*.*", folder);
    const clStringList titles = fileList.ColumnTitles();
    const bool folderIsTicked = selection.SelectedFolderIsTicked();
    while (entries.Next()) {
        if ((entries.record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) continue;
        if (!audioFilter.IsWantedAudioFile(entries.path)) continue;
        const std::int32_t row = fileList.AddRow(RecordOf(entries), titles, &DirectoryCellText);
        fileList.SetTicked(row, selection.FileTicked(entries.path, folderIsTicked));
    }
}

void frmMain::FillRowCells(std::int32_t displayRow, const clStringList& titles) {
    const FileRow* record = fileList.RowAt(displayRow);
    if (record == nullptr) return;
    for (std::int32_t column = 0; column < titles.Count(); ++column) {
        const clString text = DirectoryCellText(*record, *titles.At(column));
        if (!text.IsEmpty()) _ListFiles.SetCell(text, displayRow, column);
    }
}

void frmMain::ListSelectedFolder() {
    ListFolderOf(SelectedItem());
}

void frmMain::OnTimer(std::uint32_t, std::int64_t) {
    openMaximised.OnTimer();
    PumpMetaData();
    handledFlag = 1;
}

void frmMain::PumpMetaData() {
    const auto result = fileList.PumpMetaData(&TagCellText);
    const bool isComplete = result == clFileList::PumpResult::Complete;
    // The reader ends a little behind its last file, and may then have been pumped
    // dry already; of an empty folder nothing is pumped.
    const bool noticeIsStale = noticeIsShown && !fileList.Reader().IsReading();
    if (isComplete || noticeIsStale) UpdateStatus();
    clFileList::PostRest(XWindow::Window(), result);
}
