// A tree and a list of rows over plain data, as a form shows them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "selection/selection_model.h"

// Nodes are numbered from 1 in the order of adding. Like the real controls it
// reports each flip of a row, but not the writing of the same state.
class TreeHost : public SelectionHost {
public:
    TreeNode Add(TreeNode parent, const wchar_t* path) {
        nodes_.push_back({parent, path, StateNone});
        return static_cast<TreeNode>(nodes_.size());
    }
    // What an opening does: the new node gets the state that it inherits.
    TreeNode AddOpened(TreeNode parent, const wchar_t* path) {
        const TreeNode node = Add(parent, path);
        SetState(node, model.InheritedState(node));
        return node;
    }
    // Selects the node and lists these files of it, with the ticks of the model.
    void Show(TreeNode node, std::initializer_list<const wchar_t*> files) {
        selected_ = node;
        rows_.clear();
        for (const wchar_t* file : files)
            AddRow(file);
    }
    void AddRow(const wchar_t* file) {
        rows_.push_back({file, ::RowUnticked});
        const auto row = static_cast<std::int32_t>(rows_.size() - 1);
        rows_.back().check = model.RowTicked(row) ? ::RowTicked : ::RowUnticked;
    }
    // A click on the state picture.
    void Click(TreeNode node) {
        if (selected_ != node) Show(node, {});
        model.ToggleFolder(node);
    }
    // The key, and the step that the control adds to it.
    std::int32_t PressSpace() {
        const std::int32_t wanted = model.ToggleBySpace();
        if (selected_ != 0) SetState(selected_, State(selected_) % 5 + 1);
        return wanted;
    }
    // A click on a row's check box.
    void Flip(std::int32_t row) {
        SetRowCheckState(row, rows_[Index(row)].check == ::RowTicked ? ::RowUnticked : ::RowTicked);
    }
    // The check boxes from the first row on, "x" for ticked.
    std::string Ticks() const {
        std::string ticks;
        for (const Row& row : rows_)
            ticks += row.check == ::RowTicked ? 'x' : '-';
        return ticks;
    }
    void Select(TreeNode node) { selected_ = node; }

    TreeNode FirstRoot() const override { return NextBelow(0, 0); }
    TreeNode SelectedNode() const override { return selected_; }
    TreeNode Parent(TreeNode node) const override { return nodes_.at(Index(node - 1)).parent; }
    TreeNode FirstChild(TreeNode node) const override { return NextBelow(node, 0); }
    TreeNode NextSibling(TreeNode node) const override { return NextBelow(Parent(node), node); }
    clString NodePath(TreeNode node) const override { return nodes_.at(Index(node - 1)).path; }
    std::int32_t State(TreeNode node) const override {
        ++stateReads;
        return nodes_.at(Index(node - 1)).state;
    }
    void SetState(TreeNode node, std::int32_t state) override {
        nodes_.at(Index(node - 1)).state = state;
    }
    std::int32_t RowCount() const override { return static_cast<std::int32_t>(rows_.size()); }
    clString RowFilePath(std::int32_t row) const override { return rows_.at(Index(row)).path; }
    std::int32_t RowCheckState(std::int32_t row) const override {
        return rows_.at(Index(row)).check;
    }
    void SetRowCheckState(std::int32_t row, std::int32_t check) override {
        std::int32_t& now = rows_.at(Index(row)).check;
        if (now == check) return;
        now = check;
        if (openRowFlips == 0) ++singleFlips;
        if (reportsFlips) model.OnRowChecked(row, check == ::RowTicked);
    }
    void BeginRowFlips() override { ++openRowFlips; }
    void EndRowFlips() override {
        --openRowFlips;
        ++rowFlipRuns;
    }
    void RefuseNetworkNode() override {
        ++refusals;
        if (openRowFlips > 0) ++toldWithinRowFlips;
    }
    bool ConfirmReset() override {
        ++questions;
        if (openRowFlips > 0) ++toldWithinRowFlips;
        return answersYes;
    }
    void ListFolder(TreeNode node) override { listed.push_back(node); }

    SelectionModel model{*this};
    bool reportsFlips = true;
    bool answersYes = true;
    int refusals = 0;
    int questions = 0;
    int openRowFlips = 0;        // of BeginRowFlips without its EndRowFlips
    int rowFlipRuns = 0;         // that have come to their end
    int singleFlips = 0;         // outside all runs
    int toldWithinRowFlips = 0;  // refusals and questions
    mutable std::int64_t stateReads = 0;
    std::vector<TreeNode> listed;

private:
    struct Node {
        TreeNode parent;
        clString path;
        std::int32_t state;
    };
    struct Row {
        clString path;
        std::int32_t check;
    };

    static std::size_t Index(std::int64_t number) { return static_cast<std::size_t>(number); }
    // The next node behind `node` with that parent, or 0.
    TreeNode NextBelow(TreeNode parent, TreeNode node) const {
        for (std::size_t i = Index(node); i < nodes_.size(); ++i) {
            if (nodes_[i].parent == parent) return static_cast<TreeNode>(i + 1);
        }
        return 0;
    }

    std::vector<Node> nodes_;
    std::vector<Row> rows_;
    TreeNode selected_ = 0;
};
