// The selection by its plain rules: vectors of text, walked from end to end at
// every question, with no index and nothing remembered. Slow and easy to check
// by eye, which is the point.
#pragma once

#include <array>
#include <vector>

#include "tests/selection/oracle/rules.h"
#include "tests/selection/oracle/stage.h"

namespace oracle {

using PathVector = std::vector<Text>;

class Reference : public Rules {
public:
    Reference(Stage& stage, const World& world, const PlainDisk& disk)
        : stage_(stage), disk_(disk), types_(world.types) {}

    void ToggleFolder(int node) override;
    int ToggleBySpace() override;
    bool CoveredByParent(int node) const override;
    int InheritedState(int node) const override;
    bool HasTickedFile(const Text& folder) const override;
    bool RowTicked(int row) const override;
    void RowTickChanged(int row, bool ticked) override;
    void ForgetFile(const Text& path) override;
    void OnRowChecked(int row, bool ticked) override;
    void RunMenu(MenuCommand command) override;
    void ApplyToChildren(int node) override;
    void UpdateAncestors(int node) override;
    void ClearStates(int first) override;
    void ResetSelections() override;

    bool IsWantedAudioFile(const Text& path) override;
    void SetTypeExcluded(int type, bool excluded) override;
    void GatherFiles(std::vector<Text>& files) override;

    void ReadList(ListName list, std::vector<Text>& out) const override { out = lists_[list]; }
    void AppendExcludedFile(const Text& path) override { lists_[FilesExcluded].push_back(path); }
    void DropExcludedFromIncluded() override;

protected:
    // Single steps, for variants that get one of them wrong.
    virtual bool SamePath(TextView left, TextView right) const { return SameText(left, right); }
    virtual void ForgetBeneath(const Text& path);
    virtual void StepState(int node);
    virtual void UpdateFirst(int node);
    virtual void UpdateByChildren(int node);
    virtual void Add(ListName list, const Text& path) { lists_[list].push_back(path); }
    virtual bool IsEntered(const DiskEntry& entry) const;
    virtual bool IsSkippedInWalk(const Text& folder) const;

    bool Contains(ListName list, TextView path) const;
    void RemoveEqual(ListName list, TextView path);
    void GatherRecursive(const Text& folder, std::vector<Text>& files);
    void GatherFile(const Text& path, std::vector<Text>& files);

    Stage& stage_;
    const PlainDisk& disk_;
    std::vector<NamedType> types_;
    Text lastAudioType_;
    std::array<PathVector, ListCount> lists_;
};

}  // namespace oracle
