#include <algorithm>
#include <cstddef>
#include <exception>
#include <utility>

#include "tests/selection/oracle/reference.h"
#include "tests/selection/oracle/script.h"

namespace oracle {
namespace {

bool MakeEntry(PlainDisk& disk, const Action& action, bool isDirectory) {
    DiskEntry* folder = disk.FindFolder(action.target);
    if (folder == nullptr || FindEntry(*folder, action.name) != nullptr) return false;
    DiskEntry entry;
    entry.name = action.name;
    entry.isDirectory = isDirectory;
    folder->entries.push_back(entry);
    return true;
}

// The folder that holds `path`, and the entry in it; null if there is none.
DiskEntry* FindHolder(PlainDisk& disk, Text path, Text& name) {
    if (!path.empty() && path.back() == u'\\') path.pop_back();
    name = path.substr(FolderPart(path).size());
    DiskEntry* holder = disk.FindFolder(FolderPart(path));
    return holder != nullptr && FindEntry(*holder, name) != nullptr ? holder : nullptr;
}

bool DeleteEntry(PlainDisk& disk, const Text& path) {
    Text name;
    DiskEntry* holder = FindHolder(disk, path, name);
    if (holder == nullptr) return false;
    std::erase_if(holder->entries, [&](const DiskEntry& entry) { return entry.name == name; });
    return true;
}

bool HideEntry(PlainDisk& disk, const Text& path, bool hidden) {
    Text name;
    DiskEntry* holder = FindHolder(disk, path, name);
    if (holder == nullptr) return false;
    DiskEntry* entry = FindEntry(*holder, name);
    return std::exchange(entry->isHidden, hidden) != hidden;
}

bool MountVolume(PlainDisk& disk, const Text& path, bool mounted) {
    for (Volume& volume : disk.volumes) {
        if (volume.path == path) return std::exchange(volume.isPresent, mounted) != mounted;
    }
    return false;
}

MenuCommand CommandOf(Act act) {
    switch (act) {
        case Act::CheckAll:
            return MenuCommand::CheckAll;
        case Act::UncheckAll:
            return MenuCommand::UncheckAll;
        case Act::Invert:
            return MenuCommand::Invert;
        default:
            return MenuCommand::Nothing;
    }
}

}  // namespace

Duel::Duel(const World& world, const MakeRules& makeSubject) : world_(world), disk_(world.disk) {
    for (auto& stage : stages_)
        stage = std::make_unique<Stage>(world_, disk_);
    rules_[0] = std::make_unique<Reference>(*stages_[0], world_, disk_);
    rules_[1] = makeSubject(*stages_[1], world_, disk_);
    for (std::size_t side = 0; side < 2; ++side)
        stages_[side]->Start(*rules_[side]);
}

bool Duel::Play(const Action& action) {
    switch (action.act) {
        case Act::MakeFolder:
        case Act::DeleteFolder:
        case Act::HideFolder:
        case Act::MakeFile:
        case Act::DeleteFile:
        case Act::MountVolume:
            return PlayOnDisk(action);
        case Act::ClickPicture:
        case Act::ClickLabel:
        case Act::SelectByKeyboard:
        case Act::ClickExpander:
        case Act::ClearBranch:
        case Act::ApplyToChildren:
        case Act::UpdateAncestors:
            return PlayOnNode(action);
        case Act::ClickRow:
        case Act::ChangeRowTick:
            return PlayOnRow(action);
        default:
            return PlayOnForm(action);
    }
}

bool Duel::PlayOnDisk(const Action& action) {
    switch (action.act) {
        case Act::MakeFolder:
            return MakeEntry(disk_, action, true);
        case Act::MakeFile:
            return MakeEntry(disk_, action, false);
        case Act::HideFolder:
            return HideEntry(disk_, action.target, action.on);
        case Act::MountVolume:
            return oracle::MountVolume(disk_, action.target, action.on);
        default:
            return DeleteEntry(disk_, action.target);
    }
}

bool Duel::PlayOnNode(const Action& action) {
    const int node = stages_[0]->FindRoute(action.target);
    if (node == 0) return false;
    for (std::size_t side = 0; side < 2; ++side) {
        Stage& stage = *stages_[side];
        switch (action.act) {
            case Act::ClickPicture:
                stage.ClickPicture(node);
                break;
            case Act::ClickLabel:
                stage.ClickLabel(node);
                break;
            case Act::SelectByKeyboard:
                stage.SelectByKeyboard(node);
                break;
            case Act::ClickExpander:
                stage.ClickExpander(node);
                break;
            case Act::ApplyToChildren:
                rules_[side]->ApplyToChildren(node);
                break;
            case Act::UpdateAncestors:
                rules_[side]->UpdateAncestors(node);
                break;
            default:
                if (stage.FirstChild(node) == 0) return false;
                rules_[side]->ClearStates(stage.FirstChild(node));
                break;
        }
    }
    return true;
}

bool Duel::PlayOnRow(const Action& action) {
    const int row = stages_[0]->FindRow(action.target);
    if (row < 0) return false;
    for (std::size_t side = 0; side < 2; ++side) {
        if (action.act == Act::ClickRow) {
            stages_[side]->ClickRow(row);
        } else {
            rules_[side]->RowTickChanged(row, action.on);
        }
    }
    return true;
}

bool Duel::PlayOnForm(const Action& action) {
    if (action.act == Act::UntickInListDialog) {
        UntickInListDialog(action.target);
        return true;
    }
    for (std::size_t side = 0; side < 2; ++side) {
        Stage& stage = *stages_[side];
        switch (action.act) {
            case Act::PressSpace:
                stage.PressSpace();
                break;
            case Act::Refresh:
                stage.Refresh();
                break;
            case Act::DriveChange:
                stage.DriveChange();
                break;
            case Act::ResetYes:
                stage.Reset(true);
                break;
            case Act::ResetNo:
                stage.Reset(false);
                break;
            case Act::ForgetFile:
                rules_[side]->ForgetFile(action.target);
                break;
            case Act::ExcludeType:
                rules_[side]->SetTypeExcluded(action.number, action.on);
                stage.ListSelected();
                break;
            case Act::CloseListDialog:
                rules_[side]->DropExcludedFromIncluded();
                stage.ListSelected();
                break;
            default:
                stage.UseRowMenu(CommandOf(action.act));
                break;
        }
    }
    return true;
}

// The dialog shows what was gathered, a file twice where it was gathered twice,
// and each unticked row goes to the excluded files as it stands.
void Duel::UntickInListDialog(const Text& path) {
    for (auto& rules : rules_) {
        std::vector<Text> shown;
        rules->GatherFiles(shown);
        for (const Text& file : shown) {
            if (file == path) rules->AppendExcludedFile(file);
        }
    }
}

std::string PlayAll(const World& world, const Script& script, const MakeRules& makeSubject,
                    std::size_t* failedAt) {
    Duel duel(world, makeSubject);
    for (std::size_t i = 0; i < script.size(); ++i) {
        std::string difference;
        try {
            if (!duel.Play(script[i])) continue;
            difference = duel.Difference();
        } catch (const std::exception& failure) {
            difference = std::string("stopped by an error: ") + failure.what() + "\n";
        }
        if (difference.empty()) continue;
        if (failedAt != nullptr) *failedAt = i + 1;
        return difference;
    }
    return std::string();
}

}  // namespace oracle
