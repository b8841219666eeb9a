// The product's selection on a stage: its model behind a host of plain data, its
// gathering over the disk in memory.
#pragma once

#include <vector>

#include "decoders/audio_type.h"
#include "selection/gather.h"
#include "selection/selection_host.h"
#include "selection/selection_model.h"
#include "tests/selection/oracle/rules.h"
#include "tests/selection/oracle/stage.h"

namespace oracle {

class StageHost : public SelectionHost {
public:
    explicit StageHost(Stage& stage) : stage_(stage) {}

    TreeNode FirstRoot() const override { return stage_.FirstRoot(); }
    TreeNode SelectedNode() const override { return stage_.Selected(); }
    TreeNode Parent(TreeNode node) const override { return stage_.Item(ToItem(node)).parent; }
    TreeNode FirstChild(TreeNode node) const override { return stage_.FirstChild(ToItem(node)); }
    TreeNode NextSibling(TreeNode node) const override { return stage_.NextSibling(ToItem(node)); }
    clString NodePath(TreeNode node) const override;
    std::int32_t State(TreeNode node) const override { return stage_.Item(ToItem(node)).state; }
    void SetState(TreeNode node, std::int32_t state) override;

    std::int32_t RowCount() const override;
    clString RowFilePath(std::int32_t row) const override;
    std::int32_t RowCheckState(std::int32_t row) const override { return stage_.Row(row).check; }
    void SetRowCheckState(std::int32_t row, std::int32_t check) override;

    void RefuseNetworkNode() override { stage_.RefuseNetworkNode(); }
    bool ConfirmReset() override { return stage_.ConfirmReset(); }
    void ListFolder(TreeNode node) override;

private:
    // Ends the test for a node that doesn't exist: the model must not ask for one.
    int ToItem(TreeNode node) const;

    Stage& stage_;
};

class ModelSide : public Rules {
public:
    ModelSide(Stage& stage, const World& world, const PlainDisk& disk);

    void ToggleFolder(int node) override { model_.ToggleFolder(node); }
    int ToggleBySpace() override { return model_.ToggleBySpace(); }
    bool CoveredByParent(int node) const override { return model_.CoveredByParent(node); }
    int InheritedState(int node) const override { return model_.InheritedState(node); }
    bool HasTickedFile(const Text& folder) const override;
    bool RowTicked(int row) const override { return model_.RowTicked(row); }
    void RowTickChanged(int row, bool ticked) override { model_.RowTickChanged(row, ticked); }
    void ForgetFile(const Text& path) override { model_.ForgetFile(ToProduct(path)); }
    void OnRowChecked(int row, bool ticked) override { model_.OnRowChecked(row, ticked); }
    void RunMenu(MenuCommand command) override;
    void ApplyToChildren(int node) override { model_.ApplyToChildren(node); }
    void UpdateAncestors(int node) override { model_.UpdateAncestors(node); }
    void ClearStates(int first) override { model_.ClearStates(first); }
    void ResetSelections() override { model_.ResetSelections(); }

    bool IsWantedAudioFile(const Text& path) override;
    void SetTypeExcluded(int type, bool excluded) override;
    void GatherFiles(std::vector<Text>& files) override;

    void ReadList(ListName list, std::vector<Text>& out) const override;
    void AppendExcludedFile(const Text& path) override;
    void DropExcludedFromIncluded() override;

private:
    const PathList& ListOf(ListName list) const;

    StageHost host_;
    SelectionModel model_;
    const PlainDisk& disk_;
    clAudioTypes types_;
    AudioTypeFilter filter_;
};

}  // namespace oracle
