#include "tests/selection/oracle/mutants.h"

#include <algorithm>

#include "tests/selection/oracle/reference.h"

namespace oracle {
namespace {

class PrefixWithoutBackslash : public Reference {
    using Reference::Reference;
    void ForgetBeneath(const Text& path) override {
        Reference::ForgetBeneath(path.substr(0, path.size() - 1));
    }
};

class FolderOnlyPassesItsTickOn : public Reference {
    using Reference::Reference;
    int InheritedState(int node) const override {
        const int parent = stage_.Item(node).parent;
        if (parent != 0 && stage_.Item(parent).state == 5) return 4;
        return Reference::InheritedState(node);
    }
};

class InclusionBeatsExclusion : public Reference {
    using Reference::Reference;
    bool RowTicked(int row) const override {
        return Contains(FilesIncluded, stage_.Row(row).path) || Reference::RowTicked(row);
    }
};

class ExactCase : public Reference {
    using Reference::Reference;
    bool SamePath(TextView left, TextView right) const override { return left == right; }
};

// Latin small letters with accents onto their capitals, as a locale would do it.
class FoldsForeignCase : public Reference {
    using Reference::Reference;
    bool SamePath(TextView left, TextView right) const override {
        return SameText(Folded(left), Folded(right));
    }
    static Text Folded(TextView path) {
        Text out(path);
        for (char16_t& unit : out) {
            if (unit >= u'\u00E0' && unit <= u'\u00FE') unit = static_cast<char16_t>(unit - 32);
        }
        return out;
    }
};

class ForgetsFoldersButNotFiles : public Reference {
    using Reference::Reference;
    void ForgetBeneath(const Text& path) override {
        const PathVector included = lists_[FilesIncluded];
        const PathVector excluded = lists_[FilesExcluded];
        Reference::ForgetBeneath(path);
        lists_[FilesIncluded] = included;
        lists_[FilesExcluded] = excluded;
    }
};

class NewEntriesInFront : public Reference {
    using Reference::Reference;
    void Add(ListName list, const Text& path) override {
        lists_[list].insert(lists_[list].begin(), path);
    }
};

class TicksADerivedState : public Reference {
    using Reference::Reference;
    void StepState(int node) override {
        const int state = stage_.Item(node).state;
        if (state == 2 || state == 3) stage_.SetState(node, 1);
        Reference::StepState(node);
    }
};

class DisturbsStateThreeOnTheWayUp : public Reference {
    using Reference::Reference;
    void UpdateByChildren(int node) override {
        if (stage_.Item(node).state == 3 && !HasTickedFile(stage_.Item(node).path)) {
            stage_.SetState(node, 1);
        }
        Reference::UpdateByChildren(node);
    }
};

class CountsDeeperFiles : public Reference {
    using Reference::Reference;
    bool HasTickedFile(const Text& folder) const override {
        return std::any_of(lists_[FilesIncluded].begin(), lists_[FilesIncluded].end(),
                           [&](const Text& file) { return BeginsWith(file, folder); });
    }
};

class KeepsTicksThatSayNothing : public Reference {
    using Reference::Reference;
    void RowTickChanged(int row, bool ticked) override {
        const Text path = stage_.Row(row).path;
        ForgetFile(path);
        Add(ticked ? FilesIncluded : FilesExcluded, path);
    }
};

class NewChildrenIgnoreExclusions : public Reference {
    using Reference::Reference;
    int InheritedState(int node) const override {
        const int parent = stage_.Item(node).parent;
        return parent != 0 && stage_.Item(parent).state == 4 ? 4 : 1;
    }
};

class WalksIntoSingleFolders : public Reference {
    using Reference::Reference;
    bool IsSkippedInWalk(const Text& folder) const override {
        return Contains(FoldersExcluded, folder);
    }
};

class EntersHiddenFolders : public Reference {
    using Reference::Reference;
    bool IsEntered(const DiskEntry& entry) const override { return entry.isDirectory; }
};

class FiltersTheIncludedFiles : public Reference {
    using Reference::Reference;
    void GatherFiles(std::vector<Text>& files) override {
        Reference::GatherFiles(files);
        const std::size_t included = lists_[FilesIncluded].size();
        const auto first = files.end() - static_cast<std::ptrdiff_t>(included);
        files.erase(std::remove_if(first, files.end(),
                                   [this](const Text& path) { return !IsWantedAudioFile(path); }),
                    files.end());
    }
};

class ResetKeepsTheLists : public Reference {
    using Reference::Reference;
    void ClearStates(int first) override {
        const std::array<PathVector, ListCount> kept = lists_;
        Reference::ClearStates(first);
        lists_ = kept;
    }
};

class SpaceLeavesTheLastStepOut : public Reference {
    using Reference::Reference;
    int ToggleBySpace() override {
        const int state = Reference::ToggleBySpace();
        if (state != 0) stage_.SetState(stage_.Selected(), state);
        return state;
    }
};

class RemembersAnExcludedType : public Reference {
    using Reference::Reference;
    void SetTypeExcluded(int type, bool excluded) override {
        const Text kept = lastAudioType_;
        Reference::SetTypeExcluded(type, excluded);
        lastAudioType_ = kept;
    }
};

template <typename Wrong>
MakeRules Make() {
    return [](Stage& stage, const World& world, const PlainDisk& disk) {
        return std::make_unique<Wrong>(stage, world, disk);
    };
}

}  // namespace

const std::vector<Mutant>& AllMutants() {
    static const std::vector<Mutant> mutants = {
        {"PrefixWithoutBackslash", 5, Make<PrefixWithoutBackslash>()},
        {"FolderOnlyPassesItsTickOn", 4, Make<FolderOnlyPassesItsTickOn>()},
        {"InclusionBeatsExclusion", 4, Make<InclusionBeatsExclusion>()},
        {"ExactCase", 6, Make<ExactCase>()},
        {"FoldsForeignCase", 6, Make<FoldsForeignCase>()},
        {"ForgetsFoldersButNotFiles", 4, Make<ForgetsFoldersButNotFiles>()},
        {"NewEntriesInFront", 4, Make<NewEntriesInFront>()},
        {"TicksADerivedState", 4, Make<TicksADerivedState>()},
        {"DisturbsStateThreeOnTheWayUp", 8, Make<DisturbsStateThreeOnTheWayUp>()},
        {"CountsDeeperFiles", 5, Make<CountsDeeperFiles>()},
        {"KeepsTicksThatSayNothing", 5, Make<KeepsTicksThatSayNothing>()},
        {"NewChildrenIgnoreExclusions", 7, Make<NewChildrenIgnoreExclusions>()},
        {"WalksIntoSingleFolders", 5, Make<WalksIntoSingleFolders>()},
        {"EntersHiddenFolders", 3, Make<EntersHiddenFolders>()},
        {"FiltersTheIncludedFiles", 4, Make<FiltersTheIncludedFiles>()},
        {"ResetKeepsTheLists", 3, Make<ResetKeepsTheLists>()},
        {"SpaceLeavesTheLastStepOut", 2, Make<SpaceLeavesTheLastStepOut>()},
        {"RemembersAnExcludedType", 4, Make<RemembersAnExcludedType>()},
    };
    return mutants;
}

}  // namespace oracle
