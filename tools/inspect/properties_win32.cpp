#include <memory>
#include <utility>
#include <vector>

#include "decoders/file_date.h"
#include "decoders/meta_data_cells.h"
#include "decoders/meta_data_source.h"
#include "decoders/tag_list.h"
#include "foundation/folders.h"
#include "foundation/paths.h"
#include "foundation/regional.h"
#include "tools/inspect/commands_win32.h"

namespace {

constexpr DWORD pollMs = 5;

// The files as a list of the program would hold them.
class FileList : public ListedRows {
public:
    // A file that is named twice is shown once, as in a list of the program.
    void Add(const clString& path) {
        for (const auto& known : rows_) {
            if (known->path.Equals(path)) return;
        }
        auto row = std::make_unique<FileRow>();
        row->path.Assign(path);
        row->typeName.Assign(FileTypeName(path));
        rows_.push_back(std::move(row));
    }

    std::int32_t Count() const override { return static_cast<std::int32_t>(rows_.size()); }
    std::int64_t ParamAt(std::int32_t displayRow) const override { return displayRow; }
    FileRow* RowOf(std::int64_t param) const override {
        return rows_[static_cast<std::size_t>(param)].get();
    }

private:
    std::vector<std::unique_ptr<FileRow>> rows_;
};

bool IsFile(const clString& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path, folderLongPathLimit).Chars());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// False if one of the files is not there; says so.
bool AddFiles(const clStringList& given, FileList& list, Output& errors) {
    bool complete = true;
    for (std::int64_t i = 0; i < given.Count(); ++i) {
        const clString path = AbsolutePath(*given.At(i));
        if (IsFile(path)) {
            list.Add(path);
        } else {
            PrintError(L"there is no file ", *given.At(i), errors);
            complete = false;
        }
    }
    return complete;
}

// One row of a list, with every column that has a text for it.
class Cells {
public:
    explicit Cells(const MetaDataItem& item) {
        const FileRow& row = *item.row;
        Add(L"Name", FileNameOf(row.path));
        Add(L"Folder", DirectoryOf(row.path));
        Add(L"Size", SizeText(static_cast<std::int64_t>(row.sizeBytes), true));
        Add(L"Type", row.typeName);
        Add(L"Date Modified", FileDateText(row.dateModified));
        Add(L"Date Created", FileDateText(row.dateCreated));
        Add(L"Date Accessed", FileDateText(row.dateAccessed));
        TagList tags;
        item.tags.CopyTo(tags);
        for (std::int64_t i = 0; i < tags.Count(); ++i)
            AddColumn(tags.At(i).name);
        WriteTagCells(item.tags, columns_, [this](std::int64_t column, const clString& text) {
            texts_[static_cast<std::size_t>(column)].Assign(text);
        });
    }

    void Print(Output& out) const {
        for (std::int64_t i = 0; i < columns_.Count(); ++i) {
            const clString& text = texts_[static_cast<std::size_t>(i)];
            if (!text.IsEmpty()) PrintCell(*columns_.At(i), text, out);
        }
    }

private:
    void Add(const wchar_t* name, const clString& text) {
        columns_.Add(clString(name));
        texts_.push_back(text);
    }

    // Entries behind the first one of a name are never shown.
    void AddColumn(const clString& name) {
        for (std::int64_t i = 0; i < columns_.Count(); ++i) {
            if (columns_.At(i)->CompareNoCase(name) == 0) return;
        }
        Add(name.Chars(), {});
    }

    static void PrintCell(const clString& name, const clString& text, Output& out) {
        constexpr std::int32_t nameWidth = 22;
        clString line(L"  ");
        line.Append(name);
        do {
            line.Append(L' ');
        } while (line.Length() < nameWidth);
        line.Append(text);
        for (const wchar_t* lineEnd : {L"\r", L"\n"})
            line.Replace(lineEnd, L" ");
        out.PrintLine(line);
    }

    clStringList columns_;
    std::vector<clString> texts_;
};

void PrintFile(const MetaDataItem& item, Output& out) {
    const FileRow& row = *item.row;
    out.PrintLine(row.path);
    Cells(item).Print(out);
    clString numbers;
    numbers.Format(
        L"  sorted by: size %s, length %s ms, bit rate %d bit/s, compression %d%%, "
        L"rating %d",
        clString(static_cast<std::int64_t>(row.sizeBytes)).Chars(), clString(row.lengthMs).Chars(),
        row.bitRate, row.compressionPercent, row.rating);
    out.PrintLine(numbers);
}

}  // namespace

int RunProperties(const InspectRequest& request, Output& out, Output& errors) {
    FileList list;
    if (!AddFiles(request.files, list, errors)) return exitUsage;
    bool allRead = true;
    std::int32_t left = list.Count();
    const auto take = [&](const MetaDataItem& item) {
        PrintFile(item, out);
        --left;
        if (item.tags.Count() > 0) return;
        PrintError(L"no decoder reads ", item.row->path, errors);
        allRead = false;
    };
    clMetaDataSource source;
    source.Refill(list);
    while (left > 0) {
        const bool isReading = source.IsReading();
        source.TakeFinished(take);
        if (left == 0) break;
        if (!isReading) {
            PrintError(L"the reader stopped before ", list.RowOf(list.Count() - left)->path,
                       errors);
            return exitNothing;
        }
        Sleep(pollMs);
    }
    return allRead ? exitDone : exitNothing;
}
