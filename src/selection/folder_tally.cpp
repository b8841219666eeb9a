#include "selection/folder_tally.h"

#include "selection/path_text.h"

std::int32_t FolderTally::Find(const wchar_t* text, std::int32_t length, std::uint32_t hash) const {
    return index_.Find(hash, [&](std::int32_t number) {
        const clString& folder = folders_[static_cast<std::size_t>(number)].text;
        return folder.Length() == length && SamePathText(folder.Chars(), text, length);
    });
}

void FolderTally::Add(const clString& path) {
    const std::int32_t length = FolderLength(path);
    const std::uint32_t hash = PathHash::Of(path.Chars(), length);
    const std::int32_t number = Find(path.Chars(), length, hash);
    if (number != PathIndex::none) {
        ++folders_[static_cast<std::size_t>(number)].paths;
        return;
    }
    index_.Insert(hash, static_cast<std::int32_t>(folders_.size()));
    folders_.push_back({path.Left(length), hash, 1});
}

void FolderTally::Remove(const clString& path) {
    const std::int32_t length = FolderLength(path);
    const std::uint32_t hash = PathHash::Of(path.Chars(), length);
    const std::int32_t number = Find(path.Chars(), length, hash);
    if (number == PathIndex::none) return;
    Folder& folder = folders_[static_cast<std::size_t>(number)];
    if (--folder.paths > 0) return;
    index_.Erase(hash, number);
    // The last folder takes the free place.
    const Folder& last = folders_.back();
    if (&last != &folder) {
        index_.Renumber(last.hash, static_cast<std::int32_t>(folders_.size() - 1), number);
        folder.text.Assign(last.text);
        folder.hash = last.hash;
        folder.paths = last.paths;
    }
    folders_.pop_back();
}

bool FolderTally::Has(const clString& folder) const {
    return Find(folder.Chars(), folder.Length(), PathHash::Of(folder.Chars(), folder.Length())) !=
           PathIndex::none;
}

void FolderTally::Clear() {
    folders_ = std::vector<Folder>();
    index_.Clear();
}
