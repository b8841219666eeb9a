#include <chrono>
#include <utility>

#include "decoders/file_date.h"
#include "decoders/meta_data_cells.h"
#include "foundation/folders.h"
#include "foundation/mutex.h"
#include "foundation/paths.h"
#include "mainwindow/file_cells.h"
#include "mainwindow/file_list.h"
#include "resources/ids.h"
#include "toolkit/icon_resource.h"

namespace {

constexpr std::chrono::milliseconds longestPump{30};
constexpr UINT stateImageMask = 0xF000;
// XWindow::AddTimer counts from 1, the bars of buttons from 7788.
constexpr UINT_PTR restTimer = 5000;
// What a thread is given only when no posted message is left.
constexpr UINT behindPosted = QS_INPUT | QS_PAINT | QS_TIMER;

// The two arrows, ascending first.
HIMAGELIST MakeHeaderImages() {
    const HIMAGELIST images =
        ImageList_Create(smallIconSize, smallIconSize, ILC_COLOR24 | ILC_MASK, 0, 16);
    for (const int id : {IDI_SORT_ASCENDING, IDI_SORT_DESCENDING}) {
        const clIconHandle icon = LoadIconResource(id);
        ImageList_ReplaceIcon(images, -1, icon.Get());
    }
    return images;
}

void CALLBACK OnRestTimer(HWND form, UINT, UINT_PTR timer, DWORD) {
    KillTimer(form, timer);
    SendMessageW(form, clFileList::WorkMessage(), clFileList::GoOnPumping, 0);
}

}  // namespace

clFileList::~clFileList() {
    reader.StopReader();
    reader.ForgetRows();
    if (headerImages != nullptr) ImageList_Destroy(headerImages);
}

void clFileList::SetUp(DWORD extendedStyle) {
    const HWND list = view.ListWindow();
    for (const bool large : {true, false}) {
        SendMessageW(list, LVM_SETIMAGELIST, large ? LVSIL_NORMAL : LVSIL_SMALL,
                     reinterpret_cast<LPARAM>(SystemImageList(large)));
    }
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(extendedStyle));
    headerImages = MakeHeaderImages();
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    SendMessageW(header, HDM_SETIMAGELIST, HDSIL_NORMAL, reinterpret_cast<LPARAM>(headerImages));
}

void clFileList::Clear() {
    reader.StopReader();
    reader.ForgetRows();
    rows.Clear();
    paramsInOrder.clear();
    pictureTypes.Clear();
    pictures.clear();
    rowPictures.Clear();
    SendMessageW(view.ListWindow(), LVM_DELETEALLITEMS, 0, 0);
}

std::int64_t clFileList::ParamAt(std::int32_t displayRow) const {
    if (displayRow < 0 || displayRow >= static_cast<std::int32_t>(paramsInOrder.size())) return 0;
    return paramsInOrder[static_cast<std::size_t>(displayRow)];
}

void clFileList::ExpectRows(std::int64_t count) {
    const std::size_t total = paramsInOrder.size() + static_cast<std::size_t>(count);
    paramsInOrder.reserve(total);
    SendMessageW(view.ListWindow(), LVM_SETITEMCOUNT, total, LVSICF_NOINVALIDATEALL);
}

// Each cell that begins with a text is written once, and the control is not asked
// where its end is: of the time of a long list nearly all goes into the control's
// messages. A cell that was never written is empty.
std::int32_t clFileList::AddRow(FileRow&& record, const clStringList& titles, FirstTextOf textOf) {
    const FileRow& row = rows.Add(std::move(record));
    const std::int64_t param = rows.Count() - 1;
    const auto end = static_cast<std::int32_t>(paramsInOrder.size());
    const clString first = titles.Count() > 0 ? textOf(row, *titles.At(0)) : clString();
    const std::int32_t displayRow = view.InsertRowWithText(first, end, PictureOf(row.path), param);
    if (displayRow < 0) return displayRow;
    paramsInOrder.push_back(param);
    for (std::int32_t column = 1; column < titles.Count(); ++column) {
        const clString text = textOf(row, *titles.At(column));
        if (!text.IsEmpty()) view.SetCell(text, displayRow, column);
    }
    return displayRow;
}

// The name alone decides, and of the name only the extension: the shell is asked
// once for each, which takes longer than all the rest of a row. Forgotten with the
// rows, so that a new listing shows what has changed.
int clFileList::PictureOf(const clString& path) {
    const clString type = ExtensionOf(path);
    const std::int64_t known = pictureTypes.IndexOf(type, true);
    if (known >= 0) return pictures[static_cast<std::size_t>(known)];
    pictureTypes.Add(type);
    pictures.push_back(ShellIconIndex(path, 0));
    return pictures.back();
}

bool clFileList::IsTicked(std::int32_t displayRow) const {
    const LRESULT state = SendMessageW(view.ListWindow(), LVM_GETITEMSTATE,
                                       static_cast<WPARAM>(displayRow), stateImageMask);
    return (state >> 12) != RowUnticked;
}

void clFileList::SetTicked(std::int32_t displayRow, bool ticked) {
    if (displayRow < 0) return;  // to the control -1 is every row
    LVITEMW item = {};
    item.state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(ticked ? RowTicked : RowUnticked));
    item.stateMask = stateImageMask;
    SendMessageW(view.ListWindow(), LVM_SETITEMSTATE, static_cast<WPARAM>(displayRow),
                 reinterpret_cast<LPARAM>(&item));
}

void clFileList::InsertListColumn(const clString& name, std::int32_t width) {
    const std::int32_t column = view.ColumnCount();
    view.AddColumn(name, width == 0 ? DefaultColumnWidth(name) : width,
                   IsRightAligned(name) ? LVCFMT_RIGHT : LVCFMT_LEFT,
                   LeastColumnWidth(column == 0));
    SetColumnSortImage(column, -1);
}

void clFileList::RestoreColumns(const clString& widths) {
    clStringList names;
    names.Split(_ColumnNames);
    clStringList savedWidths;
    savedWidths.Split(widths);
    for (std::int64_t i = 0; i < names.Count(); ++i)
        InsertListColumn(*names.At(i), SavedWidth(savedWidths, i));
}

void clFileList::RemoveAllColumns() {
    while (view.ColumnCount() > 0)
        view.RemoveColumn(view.ColumnCount() - 1);
}

void clFileList::SetColumnSortImage(std::int32_t column, std::int32_t image) {
    view.SetColumnImage(column, image);
}

SavedColumns clFileList::DisplayedColumns() const {
    clPtrArray order;
    view.ColumnOrder(order);
    SavedColumns saved;
    for (std::int64_t i = 0; i < order.Count(); ++i) {
        const auto column = static_cast<std::int32_t>(order.Get(i));
        if (column < 0 || column >= view.ColumnCount()) continue;
        saved.Append(view.ColumnTitle(column), view.ColumnWidth(column));
    }
    return saved;
}

clStringList clFileList::ColumnTitles() const {
    clStringList titles;
    for (std::int32_t column = 0; column < view.ColumnCount(); ++column)
        titles.Add(view.ColumnTitle(column));
    return titles;
}

std::int32_t clFileList::ColumnTitled(const clString& title) const {
    return static_cast<std::int32_t>(ColumnTitles().IndexOf(title, false));
}

void clFileList::Repaint() {
    view.BeginBatch();
    view.EndBatch();
}

void clFileList::RefillMetaDataQueue() {
    // Waits for its file, which the mutex must not be held for.
    reader.StopReader();
    // Without it each of the list's many messages would enter the kernel.
    const clMutexLock lock(SubclassMutex);
    reader.Refill(*this);
}

clFileList::PumpResult clFileList::PumpMetaData(const CellTextOf& textOf) {
    // The list's many messages would each take the mutex from the kernel.
    const clMutexLock lock(SubclassMutex);
    const auto end = std::chrono::steady_clock::now() + longestPump;
    const clStringList titles = ColumnTitles();
    XListView::CellWriter cells(view);
    displayRows.BeginPass();
    bool isOver = false;
    const bool isComplete = reader.TakeFinishedWhile([&](const MetaDataItem& item) {
        isOver = std::chrono::steady_clock::now() >= end;
        const std::int32_t displayRow = displayRows.Find(*this, item.rowIndex);
        if (displayRow < 0) return !isOver;
        WriteCells(
            item.tags, titles, [&](const clString& name) { return textOf(item, name); },
            [&](std::int64_t column, const clString& text) {
                cells.SetCell(text, displayRow, static_cast<std::int32_t>(column));
            });
        return !isOver;
    });
    if (isComplete) return PumpResult::Complete;
    return isOver ? PumpResult::More : PumpResult::Idle;
}

void clFileList::PostRest(HWND form, PumpResult result) {
    if (result == PumpResult::Idle) return;
    if (result == PumpResult::More && HIWORD(GetQueueStatus(behindPosted)) != 0) {
        SetTimer(form, restTimer, USER_TIMER_MINIMUM, &OnRestTimer);
        return;
    }
    PostMessageW(form, WorkMessage(), result == PumpResult::Complete ? Sort : GoOnPumping, 0);
}

UINT clFileList::WorkMessage() {
    static const UINT message = RegisterWindowMessageW(L"TonequarryListWork");
    return message;
}

clString TagCellText(const MetaDataItem& item, const clString& columnName) {
    return item.tags.Get(columnName);
}

clString FileCellText(const MetaDataItem& item, const clString& columnName) {
    if (item.row != nullptr) {
        if (columnName.Equals(L"Date Modified")) return FileDateText(item.row->dateModified);
        if (columnName.Equals(L"Date Created")) return FileDateText(item.row->dateCreated);
        if (columnName.Equals(L"Date Accessed")) return FileDateText(item.row->dateAccessed);
        if (columnName.Equals(L"Size")) return SizeCellText(*item.row);
    }
    return TagCellText(item, columnName);
}
