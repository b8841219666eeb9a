#include <memory>
#include <utility>

#include "decoders/meta_data_cells.h"
#include "foundation/folders.h"
#include "mainwindow/file_list.h"
#include "resources/ids.h"
#include "toolkit/gdi_handle.h"

namespace {

constexpr int smallIcon = 16;
constexpr UINT stateImageMask = 0xF000;

// The two arrows, ascending first.
HIMAGELIST MakeHeaderImages() {
    const HIMAGELIST images = ImageList_Create(smallIcon, smallIcon, ILC_COLOR24 | ILC_MASK, 0, 16);
    for (const int id : {IDI_SORT_ASCENDING, IDI_SORT_DESCENDING}) {
        const clIconHandle icon(static_cast<HICON>(LoadImageW(
            GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_ICON, smallIcon, smallIcon, 0)));
        ImageList_ReplaceIcon(images, -1, icon.Get());
    }
    return images;
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
    SendMessageW(view.ListWindow(), LVM_DELETEALLITEMS, 0, 0);
}

std::int32_t clFileList::AddRow(std::unique_ptr<FileRow> record, bool ticked) {
    const FileRow* row = rows.Add(std::move(record));
    const int picture = ShellIconIndex(row->path, 0);
    const std::int32_t displayRow = view.InsertRow(-1, 0, picture, rows.Count() - 1);
    for (std::int32_t column = 1; column < view.ColumnCount(); ++column)
        view.InsertRow(displayRow, column, -1, 0);
    SetTicked(displayRow, ticked);
    return displayRow;
}

bool clFileList::IsTicked(std::int32_t displayRow) const {
    const LRESULT state = SendMessageW(view.ListWindow(), LVM_GETITEMSTATE,
                                       static_cast<WPARAM>(displayRow), stateImageMask);
    return (state >> 12) != RowUnticked;
}

void clFileList::SetTicked(std::int32_t displayRow, bool ticked) {
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

bool clFileList::PumpMetaData(const CellTextOf& textOf) {
    const clStringList titles = ColumnTitles();
    displayRows.BeginPass();
    return reader.TakeFinished([&](const MetaDataItem& item) {
        const std::int32_t displayRow = displayRows.Find(*this, item.rowIndex);
        if (displayRow < 0) return;
        WriteCells(
            item.tags, titles, [&](const clString& name) { return textOf(item, name); },
            [&](std::int64_t column, const clString& text) {
                view.SetCell(text, displayRow, static_cast<std::int32_t>(column));
            });
    });
}

clString TagCellText(const MetaDataItem& item, const clString& columnName) {
    return item.tags.Get(columnName);
}
