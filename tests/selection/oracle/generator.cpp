#include "tests/selection/oracle/generator.h"

#include <cstddef>
#include <exception>

namespace oracle {
namespace {

struct Weight {
    Act act;
    int weight;
};

// How often each action comes. Clicks on pictures and rows lead; what wipes much
// at once is rare, so that choices pile up in between.
constexpr Weight weights[] = {
    {Act::ClickPicture, 150},   {Act::PressSpace, 60},
    {Act::ClickLabel, 70},      {Act::SelectByKeyboard, 40},
    {Act::ClickExpander, 110},  {Act::ClickRow, 140},
    {Act::CheckAll, 14},        {Act::UncheckAll, 14},
    {Act::Invert, 24},          {Act::LeaveMenu, 12},
    {Act::ResetYes, 3},         {Act::ResetNo, 6},
    {Act::Refresh, 30},         {Act::DriveChange, 8},
    {Act::MakeFolder, 14},      {Act::DeleteFolder, 10},
    {Act::HideFolder, 8},       {Act::MakeFile, 16},
    {Act::DeleteFile, 10},      {Act::MountVolume, 5},
    {Act::ExcludeType, 12},     {Act::UntickInListDialog, 26},
    {Act::CloseListDialog, 16}, {Act::ForgetFile, 6},
    {Act::ChangeRowTick, 12},   {Act::ClearBranch, 3},
    {Act::ApplyToChildren, 4},  {Act::UpdateAncestors, 6},
};

Act RandomAct(Random& random) {
    int total = 0;
    for (const Weight& entry : weights)
        total += entry.weight;
    int drawn = random.Below(total);
    for (const Weight& entry : weights) {
        if (drawn < entry.weight) return entry.act;
        drawn -= entry.weight;
    }
    return Act::LeaveMenu;
}

// A living node; often one near the selected node, so that actions meet.
int RandomNode(Random& random, const Stage& stage) {
    const int selected = stage.Selected();
    if (selected != 0 && random.Chance(45)) {
        const TreeItem& item = stage.Item(selected);
        const int kind = random.Below(3);
        if (kind == 0) return selected;
        if (kind == 1 && item.parent != 0) return item.parent;
        if (kind == 2 && !item.children.empty()) return random.Pick(item.children);
    }
    std::vector<int> alive;
    for (int node = 1; node < stage.ItemCount(); ++node) {
        if (stage.Item(node).isAlive) alive.push_back(node);
    }
    return alive.empty() ? 0 : random.Pick(alive);
}

bool AimAtNode(Random& random, const Stage& stage, Action& action) {
    const int node = RandomNode(random, stage);
    if (node == 0) return false;
    if (action.act == Act::ClearBranch && stage.FirstChild(node) == 0) return false;
    action.target = stage.RouteOf(node);
    return true;
}

bool AimAtRow(Random& random, const Stage& stage, Action& action) {
    if (stage.Rows().empty()) return false;
    action.target = random.Pick(stage.Rows()).path;
    action.on = random.Chance(50);
    return true;
}

// A folder or file on the disk; the roots of volumes stay.
bool AimAtDisk(Random& random, const Duel& duel, Action& action) {
    const bool isFile = action.act == Act::DeleteFile || action.act == Act::ForgetFile;
    const std::vector<Text> paths = isFile ? AllFiles(duel.Disk()) : AllFolders(duel.Disk());
    if (paths.empty()) return false;
    action.target = random.Pick(paths);
    if (action.act == Act::MakeFolder) action.name = random.Pick(duel.Surroundings().folderNames);
    if (action.act == Act::MakeFile) action.name = random.Pick(duel.Surroundings().fileNames);
    const bool makes = action.act == Act::MakeFolder || action.act == Act::MakeFile;
    if (isFile || makes) return true;
    action.on = random.Chance(50);
    for (const Volume& volume : duel.Disk().volumes) {
        if (volume.path == action.target) return false;
    }
    return true;
}

bool AimAtVolume(Random& random, const Duel& duel, Action& action) {
    // Mostly back: without drives there is little to do.
    for (const Volume& volume : duel.Disk().volumes) {
        if (volume.isPresent || !random.Chance(80)) continue;
        action.target = volume.path;
        action.on = true;
        return true;
    }
    action.target = random.Pick(duel.Disk().volumes).path;
    return true;
}

bool AimAtGathered(Random& random, const Duel& duel, Action& action) {
    if (duel.Gathered().empty()) return false;
    action.target = random.Pick(duel.Gathered());
    return true;
}

bool Aim(Random& random, const Duel& duel, Action& action) {
    const Stage& stage = duel.ReferenceStage();
    switch (action.act) {
        case Act::ClickPicture:
        case Act::ClickLabel:
        case Act::SelectByKeyboard:
        case Act::ClickExpander:
        case Act::ClearBranch:
        case Act::ApplyToChildren:
        case Act::UpdateAncestors:
            return AimAtNode(random, stage, action);
        case Act::ClickRow:
        case Act::ChangeRowTick:
            return AimAtRow(random, stage, action);
        case Act::MakeFolder:
        case Act::DeleteFolder:
        case Act::HideFolder:
        case Act::MakeFile:
        case Act::DeleteFile:
        case Act::ForgetFile:
            return AimAtDisk(random, duel, action);
        case Act::MountVolume:
            return AimAtVolume(random, duel, action);
        case Act::UntickInListDialog:
            return AimAtGathered(random, duel, action);
        case Act::ExcludeType:
            action.number = random.Below(static_cast<int>(duel.Surroundings().types.size()));
            action.on = random.Chance(40);
            return true;
        default:
            return true;
    }
}

}  // namespace

Action RandomAction(Random& random, const Duel& duel) {
    for (;;) {
        Action action;
        action.act = RandomAct(random);
        if (Aim(random, duel, action)) return action;
    }
}

std::string PlayRandomly(const World& world, std::uint64_t seed, int length,
                         const MakeRules& makeSubject, Script& script,
                         const std::function<void(const Action&, const Duel&)>& watch) {
    Random random(seed);
    Duel duel(world, makeSubject);
    while (static_cast<int>(script.size()) < length) {
        const Action action = RandomAction(random, duel);
        std::string difference;
        try {
            if (!duel.Play(action)) continue;
            script.push_back(action);
            difference = duel.Difference();
        } catch (const std::exception& failure) {
            script.push_back(action);
            difference = std::string("stopped by an error: ") + failure.what() + "\n";
        }
        if (!difference.empty()) return difference;
        if (watch) watch(action, duel);
    }
    return std::string();
}

}  // namespace oracle
