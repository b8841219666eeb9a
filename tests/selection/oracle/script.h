// A script of a user's actions, and the playing of it on two sides at once.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/selection/oracle/rules.h"
#include "tests/selection/oracle/stage.h"
#include "tests/selection/oracle/world.h"

namespace oracle {

enum class Act {
    ClickPicture,
    PressSpace,
    ClickLabel,
    SelectByKeyboard,
    ClickExpander,
    ClickRow,
    CheckAll,
    UncheckAll,
    Invert,
    LeaveMenu,
    ResetYes,
    ResetNo,
    Refresh,
    DriveChange,
    MakeFolder,
    DeleteFolder,
    HideFolder,  // or shows it again
    MakeFile,
    DeleteFile,
    MountVolume,  // or unmounts it
    ExcludeType,  // or lets it in again
    UntickInListDialog,
    CloseListDialog,
    ForgetFile,
    ChangeRowTick,
    ClearBranch,
    ApplyToChildren,
    UpdateAncestors,
    Count,
};

// Targets are named, not numbered: the action means the same when others before
// it are left out, and does nothing if its target isn't there.
struct Action {
    Act act = Act::LeaveMenu;
    Text target;      // a node's route, a path, or a row's path
    Text name;        // of what is made
    int number = 0;   // a type's index
    bool on = false;  // which of two: hidden, mounted, excluded or ticked
};

using Script = std::vector<Action>;

std::string Describe(const Action& action);
std::string Describe(const Script& script);

using MakeRules = std::function<std::unique_ptr<Rules>(Stage&, const World&, const PlainDisk&)>;

// The reference and a subject on equal stages over one disk.
class Duel {
public:
    // `world` outlives the duel.
    Duel(const World& world, const MakeRules& makeSubject);

    // Plays one action on both sides. False if there was nothing to do it to.
    bool Play(const Action& action);
    // What differs now; empty if nothing does. Gathers on both sides too.
    std::string Difference();

    const Stage& ReferenceStage() const { return *stages_[0]; }
    const Rules& ReferenceRules() const { return *rules_[0]; }
    const PlainDisk& Disk() const { return disk_; }
    const World& Surroundings() const { return world_; }
    const std::vector<Text>& Gathered() const { return gathered_[0]; }

private:
    bool PlayOnDisk(const Action& action);
    bool PlayOnNode(const Action& action);
    bool PlayOnRow(const Action& action);
    bool PlayOnForm(const Action& action);
    void UntickInListDialog(const Text& path);

    std::string DifferentStages() const;
    std::string DifferentLists();
    std::string DifferentAnswers() const;
    std::string DifferentFiles();

    const World& world_;
    PlainDisk disk_;
    std::unique_ptr<Stage> stages_[2];
    std::unique_ptr<Rules> rules_[2];
    std::vector<Text> gathered_[2];
    std::vector<Text> lists_[2];
};

// Plays the whole script, comparing behind every action. Returns the first
// difference, or empty; `*failedAt` then is the number of actions played.
std::string PlayAll(const World& world, const Script& script, const MakeRules& makeSubject,
                    std::size_t* failedAt = nullptr);

}  // namespace oracle
