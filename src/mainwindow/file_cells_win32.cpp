#include "decoders/file_date.h"
#include "foundation/paths.h"
#include "foundation/regional.h"
#include "mainwindow/file_cells.h"

clString SizeCellText(const FileRow& row) {
    return SizeText(static_cast<std::int64_t>(row.sizeBytes), true);
}

clString DirectoryCellText(const FileRow& row, const clString& columnName) {
    if (columnName.Equals(L"Name")) return FileNameOf(row.path);
    if (columnName.Equals(L"Size")) return SizeCellText(row);
    if (columnName.Equals(L"Type")) return row.typeName;
    if (columnName.Equals(L"Date Modified")) return FileDateText(row.dateModified);
    if (columnName.Equals(L"Date Created")) return FileDateText(row.dateCreated);
    if (columnName.Equals(L"Date Accessed")) return FileDateText(row.dateAccessed);
    return {};
}
