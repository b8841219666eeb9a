// The cost of the exceptions and of the gathering, over folders in memory, and
// of ticking all rows. Prints ratios and fails beyond limits; seconds belong to
// the machine and are not judged.
#include <algorithm>
#include <cstdio>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/measure.h"
#include "decoders/audio_type.h"
#include "selection/gather.h"
#include "selection/path_text.h"
#include "selection/selection_model.h"

namespace {

// With 10,000 and 2,000 exceptions against none.
constexpr double exceptionsLimit = 1.3;
// Against a loop that only makes the same list.
constexpr double bareLimit = 3.0;
// Of the time for each file or row, at ten times as many of them.
constexpr double growthLimit = 2.5;
constexpr int rounds = 15;

// A folder's entries: the sub-folders first, as many file systems list them.
struct Folder {
    clString path;  // with its backslash
    std::vector<clString> folders;
    std::vector<clString> files;
};

class MemoryEntries : public FolderEntries {
public:
    explicit MemoryEntries(const Folder* folder) : folder_(folder) {}

    bool Next(FolderEntry& entry) override {
        if (folder_ == nullptr) return false;
        const std::size_t folders = folder_->folders.size();
        if (next_ == folders + folder_->files.size()) return false;
        const std::size_t index = next_++;
        path_.Assign(folder_->path);
        path_.Append(index < folders ? folder_->folders[index] : folder_->files[index - folders]);
        entry.path = &path_;
        entry.isDirectory = index < folders;
        entry.isHidden = false;
        return true;
    }

private:
    const Folder* folder_;
    clString path_;
    std::size_t next_ = 0;
};

// A library of music: genres, in them artists, in them albums with the files.
class MemoryTree : public FolderWalk {
public:
    // `files` lie in albums of fourteen, so that 100,000 make 8,000 folders.
    explicit MemoryTree(int files);

    std::unique_ptr<FolderEntries> Open(const clString& folder) override {
        const auto found = byHash_.find(PathHash::Of(folder));
        return std::make_unique<MemoryEntries>(found == byHash_.end() ? nullptr
                                                                      : &folders[found->second]);
    }
    const clString& Root() const { return folders.front().path; }
    // Adds a folder without entries beneath `parent`.
    void AddFolder(std::size_t parent, const clString& name) {
        folders[parent].folders.push_back(name);
        clString path(folders[parent].path);
        path.Append(name);
        path.Append(L'\\');
        byHash_.emplace(PathHash::Of(path), folders.size());
        folders.push_back({path, {}, {}});
    }

    std::vector<Folder> folders;

private:
    std::unordered_map<std::uint32_t, std::size_t> byHash_;
};

constexpr int filesInAlbum = 14;
constexpr int albumsOfArtist = 12;
constexpr int artistsOfGenre = 20;

clString Name(const wchar_t* format, int number) {
    clString name;
    name.Format(format, number);
    return name;
}

MemoryTree::MemoryTree(int files) {
    const wchar_t* root = L"D:\\Users\\Listener\\Music\\";
    folders.push_back({root, {}, {}});
    byHash_.emplace(PathHash::Of(root), 0);
    std::size_t genre = 0;
    std::size_t artist = 0;
    for (int album = 0; album * filesInAlbum < files; ++album) {
        if (album % (albumsOfArtist * artistsOfGenre) == 0) {
            genre = folders.size();
            AddFolder(0, Name(L"Genre %d", album / (albumsOfArtist * artistsOfGenre)));
        }
        if (album % albumsOfArtist == 0) {
            artist = folders.size();
            AddFolder(genre, Name(L"Orchestra and Choir No. %d", album / albumsOfArtist));
        }
        AddFolder(artist, Name(L"Album %d (Remastered)", album));
        const int first = album * filesInAlbum;
        for (int i = first; i < std::min(files, first + filesInAlbum); ++i)
            folders.back().files.push_back(Name(L"%d - Movement.flac", i));
    }
}

template <class Visit>
void ForEachFile(const MemoryTree& tree, Visit&& visit) {
    for (const Folder& folder : tree.folders) {
        for (const clString& name : folder.files)
            visit(folder.path, name);
    }
}

// One gathering of the whole tree; the list's own end is not timed.
double Gather(MemoryTree& tree, const SelectionLists& lists, std::int64_t& found) {
    clAudioTypes types;
    for (const wchar_t* extension : {L".wav", L".mp3", L".flac"})
        types.Add(extension, L"", false);
    AudioTypeFilter filter(types);
    clStringList files;
    const double seconds = SecondsOf([&] { GatherFiles(lists, filter, tree, files); });
    found = files.Count();
    return seconds;
}

// Makes each path and appends it: what no gathering can do without.
double MakeListBare(const MemoryTree& tree, std::int64_t& found) {
    clStringList files;
    const double seconds = SecondsOf([&] {
        ForEachFile(tree, [&](const clString& folder, const clString& name) {
            clString path(folder);
            path.Append(name);
            files.Add(path);
        });
    });
    found = files.Count();
    return seconds;
}

// Names beside existing ones, so that nothing is left out: the same files are
// listed and the same folders walked as without them, and every entry that is
// met looks up its like in vain.
void AddNeighbours(const MemoryTree& tree, int files, int folders, SelectionLists& lists) {
    std::int64_t seen = 0;
    const std::int64_t total = static_cast<std::int64_t>(tree.folders.size());
    for (int i = 0; i < folders; ++i) {
        clString path(tree.folders[static_cast<std::size_t>(1 + i * (total - 1) / folders)].path);
        path.EraseRange(path.Length(), path.Length());
        path.Append(L" (copy)\\");
        lists._FoldersExcluded.Add(path);
    }
    std::int64_t count = 0;
    ForEachFile(tree, [&](const clString&, const clString&) { ++count; });
    ForEachFile(tree, [&](const clString& folder, const clString& name) {
        const std::int64_t before = seen++;
        if (before * files / count == seen * files / count) return;
        clString path(folder);
        path.Append(L"Copy of ");
        path.Append(name);
        lists._FilesExcluded.Add(path);
    });
}

// Every `step`th file that there is.
void ExcludeFiles(const MemoryTree& tree, int step, SelectionLists& lists) {
    int seen = 0;
    ForEachFile(tree, [&](const clString& folder, const clString& name) {
        if (seen++ % step != 0) return;
        clString path(folder);
        path.Append(name);
        lists._FilesExcluded.Add(path);
    });
}

// Puts empty folders into the tree that are all excluded: entries to look at on
// top of those that are walked anyway.
void AddExcludedFolders(MemoryTree& tree, int folders, SelectionLists& lists) {
    const std::size_t total = tree.folders.size();
    for (int i = 0; i < folders; ++i) {
        const std::size_t parent = static_cast<std::size_t>(i) % total;
        tree.AddFolder(parent, Name(L"Left out %d", i));
        lists._FoldersExcluded.Add(tree.folders.back().path);
    }
}

void PrintLengths(const MemoryTree& tree) {
    std::int32_t shortest = 1000;
    std::int32_t longest = 0;
    ForEachFile(tree, [&](const clString& folder, const clString& name) {
        shortest = std::min(shortest, folder.Length() + name.Length());
        longest = std::max(longest, folder.Length() + name.Length());
    });
    std::printf("100,000 files in %zu folders, paths of %d to %d characters, %d rounds\n",
                tree.folders.size(), static_cast<int>(shortest), static_cast<int>(longest), rounds);
}

void MeasureExceptions(Judge& judge) {
    constexpr int files = 100000;
    MemoryTree tree(files);
    PrintLengths(tree);
    SelectionLists none;
    none._FoldersRecursive.Add(tree.Root());
    SelectionLists neighbours;
    neighbours._FoldersRecursive.Add(tree.Root());
    AddNeighbours(tree, 10000, 2000, neighbours);
    MemoryTree fuller(files);
    SelectionLists hits;
    hits._FoldersRecursive.Add(fuller.Root());
    ExcludeFiles(fuller, 10, hits);
    AddExcludedFolders(fuller, 2000, hits);
    judge.Require("neighbouring files", neighbours._FilesExcluded.Count(), 10000);
    judge.Require("excluded files", hits._FilesExcluded.Count(), 10000);
    judge.Require("excluded folders", hits._FoldersExcluded.Count(), 2000);
    std::int64_t found[4] = {};
    const std::vector<double> seconds = MediansOf(
        rounds, [&] { return MakeListBare(tree, found[0]); },
        [&] { return Gather(tree, none, found[1]); },
        [&] { return Gather(tree, neighbours, found[2]); },
        [&] { return Gather(fuller, hits, found[3]); });
    judge.Require("files of the bare loop", found[0], files);
    judge.Require("files without exceptions", found[1], files);
    judge.Require("files with neighbours excluded", found[2], files);
    judge.Require("files with one in ten excluded", found[3], files - 10000);
    std::printf("bare %.1f ms, none %.1f ms, neighbours %.1f ms, hits %.1f ms\n", seconds[0] * 1e3,
                seconds[1] * 1e3, seconds[2] * 1e3, seconds[3] * 1e3);
    judge.Check("gathering over a bare loop", seconds[1] / seconds[0], bareLimit);
    judge.Check("10,000 + 2,000 exceptions that leave nothing out, over none",
                seconds[2] / seconds[1], exceptionsLimit);
    judge.Check("10,000 files left out, 2,000 more folders passed by, over none",
                seconds[3] / seconds[1], exceptionsLimit);
}

// One exception for each ten files, whatever their number.
void MeasureGrowth(Judge& judge) {
    constexpr int sizes[] = {1000, 10000, 100000};
    std::vector<std::unique_ptr<MemoryTree>> trees;
    SelectionLists lists[3];
    for (std::size_t i = 0; i < 3; ++i) {
        trees.push_back(std::make_unique<MemoryTree>(sizes[i]));
        lists[i]._FoldersRecursive.Add(trees[i]->Root());
        AddNeighbours(*trees[i], sizes[i] / 10, sizes[i] / 50, lists[i]);
    }
    std::int64_t found[3] = {};
    // The small ones as often as makes them long enough for the clock.
    const auto repeated = [&](std::size_t i) {
        const int times = sizes[2] / sizes[i];
        double seconds = 0;
        for (int k = 0; k < times; ++k)
            seconds += Gather(*trees[i], lists[i], found[i]);
        return seconds / times;
    };
    const std::vector<double> seconds = MediansOf(
        rounds, [&] { return repeated(0); }, [&] { return repeated(1); },
        [&] { return repeated(2); });
    for (std::size_t i = 0; i < 3; ++i) {
        judge.Require("files gathered", found[i], sizes[i]);
        std::printf("%6d files, %5d exceptions: %.0f ns each\n", sizes[i],
                    sizes[i] / 10 + sizes[i] / 50, seconds[i] * 1e9 / sizes[i]);
    }
    judge.Check("time for each file, 10,000 over 1,000", seconds[1] / seconds[0] / 10, growthLimit);
    judge.Check("time for each file, 100,000 over 10,000", seconds[2] / seconds[1] / 10,
                growthLimit);
}

// One folder with rows, which reports each flip as the real list does.
class RowHost : public SelectionHost {
public:
    explicit RowHost(int rows) : checks_(static_cast<std::size_t>(rows), ::RowUnticked) {
        for (int i = 0; i < rows; ++i) {
            clString path(folder_);
            path.Append(Name(L"%d - Movement.flac", i));
            paths_.push_back(std::move(path));
        }
    }

    TreeNode FirstRoot() const override { return 1; }
    TreeNode SelectedNode() const override { return 1; }
    TreeNode Parent(TreeNode) const override { return 0; }
    TreeNode FirstChild(TreeNode) const override { return 0; }
    TreeNode NextSibling(TreeNode) const override { return 0; }
    clString NodePath(TreeNode) const override { return folder_; }
    std::int32_t State(TreeNode) const override { return state_; }
    void SetState(TreeNode, std::int32_t state) override { state_ = state; }
    std::int32_t RowCount() const override { return static_cast<std::int32_t>(checks_.size()); }
    clString RowFilePath(std::int32_t row) const override {
        return paths_[static_cast<std::size_t>(row)];
    }
    std::int32_t RowCheckState(std::int32_t row) const override {
        return checks_[static_cast<std::size_t>(row)];
    }
    void SetRowCheckState(std::int32_t row, std::int32_t check) override {
        std::int32_t& now = checks_[static_cast<std::size_t>(row)];
        if (std::exchange(now, check) != check) model.OnRowChecked(row, check == ::RowTicked);
    }
    void RefuseNetworkNode() override {}
    bool ConfirmReset() override { return true; }
    void ListFolder(TreeNode) override {}

    SelectionModel model{*this};

private:
    const clString folder_ =
        L"D:\\Users\\Listener\\Music\\Genre 1\\Orchestra and Choir No. 1\\Album 1 (Remastered)\\";
    std::int32_t state_ = StateNone;
    std::vector<clString> paths_;
    std::vector<std::int32_t> checks_;
};

// Seconds for all rows ticked and unticked again.
double TickAll(RowHost& host, std::int64_t& ticked) {
    return SecondsOf([&] {
        host.model.RunRowCommand(RowCommand::CheckAll);
        ticked = host.model.Lists()._FilesIncluded.Count();
        host.model.RunRowCommand(RowCommand::UncheckAll);
    });
}

void MeasureRows(Judge& judge) {
    RowHost few(10000);
    RowHost many(100000);
    std::int64_t ticked[2] = {};
    const std::vector<double> seconds = MediansOf(
        rounds,
        [&] {
            double sum = 0;
            for (int k = 0; k < 10; ++k)
                sum += TickAll(few, ticked[0]);
            return sum / 10;
        },
        [&] { return TickAll(many, ticked[1]); });
    judge.Require("rows ticked", ticked[0], 10000);
    judge.Require("rows ticked", ticked[1], 100000);
    std::printf("Check All and Uncheck All: 10,000 rows %.0f ns each, 100,000 rows %.0f ns each\n",
                seconds[0] * 1e5, seconds[1] * 1e4);
    judge.Check("time for each row, 100,000 over 10,000", seconds[1] / seconds[0] / 10,
                growthLimit);
}

}  // namespace

int main() {
    Judge judge;
    MeasureExceptions(judge);
    MeasureGrowth(judge);
    MeasureRows(judge);
    return judge.Held() ? 0 : 1;
}
