// What a duel compares, and the words for what differs.
#include <algorithm>
#include <cstddef>

#include "tests/selection/oracle/script.h"

namespace oracle {
namespace {

std::string Versus(const std::string& what, const std::string& reference,
                   const std::string& subject) {
    return what + ": expected " + reference + ", got " + subject + "\n";
}

std::string Versus(const std::string& what, int reference, int subject) {
    return Versus(what, std::to_string(reference), std::to_string(subject));
}

std::string VersusUnlessEqual(const std::string& what, int reference, int subject) {
    return reference == subject ? std::string() : Versus(what, reference, subject);
}

std::string TextOf(const std::vector<Text>& paths) {
    std::string out;
    for (const Text& path : paths)
        out += "\n    " + Utf8(path);
    return paths.empty() ? "\n    (nothing)" : out;
}

std::string RowsOf(const Stage& stage) {
    std::string out;
    for (const ListRow& row : stage.Rows()) {
        out += (row.check == 2 ? "\n    [x] " : "\n    [ ] ") + Utf8(row.path);
    }
    return stage.Rows().empty() ? "\n    (no rows)" : out;
}

bool SameRows(const Stage& left, const Stage& right) {
    return std::equal(
        left.Rows().begin(), left.Rows().end(), right.Rows().begin(), right.Rows().end(),
        [](const ListRow& a, const ListRow& b) { return a.check == b.check && a.path == b.path; });
}

struct NodeAnswers {
    bool isCovered;
    int inherited;
    bool hasTickedFile;
    bool operator==(const NodeAnswers&) const = default;
};

NodeAnswers Ask(const Rules& rules, const Stage& stage, int node) {
    return {rules.CoveredByParent(node), rules.InheritedState(node),
            rules.HasTickedFile(stage.Item(node).path)};
}

}  // namespace

std::string Duel::Difference() {
    std::string out = DifferentStages();
    out += DifferentLists();
    if (out.empty()) out += DifferentAnswers();
    out += DifferentFiles();
    return out;
}

std::string Duel::DifferentStages() const {
    const Stage& reference = *stages_[0];
    const Stage& subject = *stages_[1];
    std::string out;
    if (reference.ItemCount() != subject.ItemCount()) return "the trees have different nodes\n";
    for (int node = 1; node < reference.ItemCount(); ++node) {
        const TreeItem& expected = reference.Item(node);
        const TreeItem& got = subject.Item(node);
        if (expected.isAlive != got.isAlive || expected.parent != got.parent) {
            return "the trees have different nodes\n";
        }
        if (!expected.isAlive || expected.state == got.state) continue;
        out +=
            Versus("state of \"" + Utf8(reference.RouteOf(node)) + "\"", expected.state, got.state);
    }
    if (!SameRows(reference, subject)) out += Versus("rows", RowsOf(reference), RowsOf(subject));
    if (reference.Selected() != subject.Selected()) out += "different nodes are selected\n";
    out += VersusUnlessEqual("refusals", reference.Refusals(), subject.Refusals());
    out += VersusUnlessEqual("questions", reference.Questions(), subject.Questions());
    out +=
        VersusUnlessEqual("result of Space", reference.LastSpaceState(), subject.LastSpaceState());
    return out;
}

std::string Duel::DifferentLists() {
    std::string out;
    for (std::size_t i = 0; i < ListCount; ++i) {
        const ListName name = static_cast<ListName>(i);
        for (std::size_t side = 0; side < 2; ++side)
            rules_[side]->ReadList(name, lists_[side]);
        if (lists_[0] == lists_[1]) continue;
        out += Versus(NameOf(name), TextOf(lists_[0]), TextOf(lists_[1]));
    }
    return out;
}

// The questions that the controls may ask at any time.
std::string Duel::DifferentAnswers() const {
    const Stage& stage = *stages_[0];
    const Rules& reference = *rules_[0];
    const Rules& subject = *rules_[1];
    for (int row = 0; row < static_cast<int>(stage.Rows().size()); ++row) {
        if (reference.RowTicked(row) == subject.RowTicked(row)) continue;
        return Versus("RowTicked of \"" + Utf8(stage.Row(row).path) + "\"",
                      reference.RowTicked(row), subject.RowTicked(row));
    }
    for (int node = 1; node < stage.ItemCount(); ++node) {
        if (!stage.Item(node).isAlive) continue;
        const NodeAnswers expected = Ask(reference, stage, node);
        const NodeAnswers got = Ask(subject, stage, node);
        if (expected == got) continue;
        const std::string of = " of \"" + Utf8(stage.RouteOf(node)) + "\"";
        return VersusUnlessEqual("CoveredByParent" + of, expected.isCovered, got.isCovered) +
               VersusUnlessEqual("InheritedState" + of, expected.inherited, got.inherited) +
               VersusUnlessEqual("HasTickedFile" + of, expected.hasTickedFile, got.hasTickedFile);
    }
    return std::string();
}

std::string Duel::DifferentFiles() {
    for (std::size_t side = 0; side < 2; ++side) {
        gathered_[side].clear();
        rules_[side]->GatherFiles(gathered_[side]);
    }
    if (gathered_[0] == gathered_[1]) return std::string();
    return Versus("gathered files", TextOf(gathered_[0]), TextOf(gathered_[1]));
}

}  // namespace oracle
