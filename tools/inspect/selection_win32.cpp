#include <vector>

#include "decoders/decoder_registry.h"
#include "foundation/folders.h"
#include "foundation/paths.h"
#include "selection/disk_walk.h"
#include "selection/gather.h"
#include "selection/hand_off.h"
#include "selection/selection_model.h"
#include "tools/inspect/commands_win32.h"

void PrintError(const wchar_t* before, const clString& path, Output& errors) {
    errors.Print(errorPrefix);
    errors.Print(before);
    errors.PrintLine(path);
}

clString AbsolutePath(const clString& path) {
    const DWORD size = GetFullPathNameW(path.Chars(), 0, nullptr, nullptr);
    std::vector<wchar_t> text(size + 1, L'\0');
    GetFullPathNameW(path.Chars(), size, text.data(), nullptr);
    return clString(text.data());
}

namespace {

bool IsFolder(const clString& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path, folderLongPathLimit).Chars());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// As a toggle leaves the lists of the program: no path stands twice in one of them.
void AddOnce(const clString& path, PathList& list) {
    if (!list.Contains(path)) list.Add(path);
}

// False if one of the folders is not there; says so.
bool AddFolders(const clStringList& given, PathList& list, Output& errors) {
    bool complete = true;
    for (std::int64_t i = 0; i < given.Count(); ++i) {
        clString folder = AbsolutePath(*given.At(i));
        EnsureBackslash(folder);
        if (IsFolder(folder)) {
            AddOnce(folder, list);
        } else {
            PrintError(L"there is no folder ", *given.At(i), errors);
            complete = false;
        }
    }
    return complete;
}

void AddFiles(const clStringList& given, PathList& list) {
    for (std::int64_t i = 0; i < given.Count(); ++i)
        AddOnce(AbsolutePath(*given.At(i)), list);
}

void ExcludeType(const clString& extension, clAudioTypes& types, Output& errors) {
    bool known = false;
    for (std::int64_t i = 0; i < types.Count(); ++i) {
        if (types.At(i).extension.CompareNoCase(extension) != 0) continue;
        types.At(i).excluded = true;
        known = true;
    }
    if (!known) PrintError(L"note: no decoder offers the type ", extension, errors);
}

// What the program's window holds of a selection.
class Selection {
public:
    // False, and said on the error stream, if a folder is not there.
    bool Fill(const InspectRequest& request, Output& errors) {
        bool complete = AddFolders(request.folders, lists_._FoldersRecursive, errors);
        complete = AddFolders(request.foldersOnly, lists_._FoldersOnly, errors) && complete;
        complete = AddFolders(request.foldersExcluded, lists_._FoldersExcluded, errors) && complete;
        if (!complete) return false;
        AddFiles(request.filesIncluded, lists_._FilesIncluded);
        AddFiles(request.filesExcluded, lists_._FilesExcluded);
        LoadAudioTypes(types_);
        for (std::int64_t i = 0; i < request.typesExcluded.Count(); ++i) {
            ExcludeType(*request.typesExcluded.At(i), types_, errors);
        }
        return true;
    }

    void Gather(clStringList& files) const {
        AudioTypeFilter filter(types_);
        DiskWalk walk;
        GatherFiles(lists_, filter, walk, files);
    }

private:
    SelectionLists lists_;
    clAudioTypes types_;
};

// A program without a window and without a reader.
class ConsoleHost : public HandOffHost {
public:
    explicit ConsoleHost(const Selection& selection) : selection_(selection) {}

    void StopReader() override {}
    void Gather(clStringList& files) override {
        selection_.Gather(files);
        count_ = files.Count();
    }
    HWND__* Window() override { return nullptr; }

    std::int64_t Count() const { return count_; }

private:
    const Selection& selection_;
    std::int64_t count_ = 0;
};

int ReportNoFiles(Output& errors) {
    errors.Print(errorPrefix);
    errors.PrintLine(L"no audio file was found");
    return exitNothing;
}

}  // namespace

int RunGather(const InspectRequest& request, Output& out, Output& errors) {
    Selection selection;
    if (!selection.Fill(request, errors)) return exitUsage;
    clStringList files;
    selection.Gather(files);
    if (files.Count() == 0) return ReportNoFiles(errors);
    for (std::int64_t i = 0; i < files.Count(); ++i)
        out.PrintLine(*files.At(i));
    return exitDone;
}

int RunConvert(const InspectRequest& request, Output& out, Output& errors) {
    Selection selection;
    if (!selection.Fill(request, errors)) return exitUsage;
    ConsoleHost host(selection);
    const clString converter = ConverterPath(ModuleDirectory());
    switch (ConvertSelected(host)) {
        case HandOffResult::NothingGathered:
            return ReportNoFiles(errors);
        case HandOffResult::NotStarted:
            PrintError(L"could not start ", converter, errors);
            return exitNothing;
        case HandOffResult::Converted:
            break;
    }
    out.Print(clString(host.Count()));
    out.Print(host.Count() == 1 ? L" file handed to " : L" files handed to ");
    out.PrintLine(converter);
    return exitDone;
}
