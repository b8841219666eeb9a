#include "tests/selection/oracle/stage.h"

#include <algorithm>
#include <cstddef>

namespace oracle {

void Stage::Start(Rules& rules) {
    rules_ = &rules;
    for (const TreeRoot& root : world_.roots)
        AddNode(root.text, root.path, 0);
}

// ---- The user's doings ----

void Stage::SelectByKeyboard(int node) {
    Select(node, false);
}

void Stage::ClickLabel(int node) {
    Select(node, true);
}

void Stage::ClickPicture(int node) {
    Select(node, false);
    rules_->ToggleFolder(node);
}

void Stage::PressSpace() {
    lastSpaceState = rules_->ToggleBySpace();
    if (selected == 0) return;
    // The control's own step, which comes after the handler.
    const int state = Item(selected).state;
    SetState(selected, state == 5 ? 1 : state + 1);
}

void Stage::ClickExpander(int node) {
    ExpandNode(node);
    TreeItem& item = items[Index(node)];
    item.isExpanded = !item.isExpanded && !item.children.empty();
}

void Stage::ClickRow(int row) {
    SetRowCheck(row, Row(row).check == 2 ? 1 : 2);
}

void Stage::UseRowMenu(MenuCommand command) {
    rules_->RunMenu(command);
}

void Stage::Reset(bool answer) {
    resetAnswer = answer;
    rules_->ResetSelections();
}

void Stage::DriveChange() {
    RefreshDrives();
}

void Stage::Refresh() {
    RefreshDrives();
    RefreshBranch(FirstRoot());
    ListSelected();
}

// ---- What the rules ask for ----

int Stage::NextSibling(int node) const {
    const std::vector<int>& siblings = Item(Item(node).parent).children;
    const std::size_t next = Index(Item(node).place) + 1;
    return next < siblings.size() ? siblings[next] : 0;
}

int Stage::FirstChild(int node) const {
    const std::vector<int>& children = Item(node).children;
    return children.empty() ? 0 : children.front();
}

void Stage::SetRowCheck(int row, int check) {
    ListRow& changed = rows[Index(row)];
    if (changed.check == check) return;
    changed.check = check;
    if (!isFilling) rules_->OnRowChecked(row, check == 2);
}

void Stage::ListFolder(int node) {
    isFilling = true;
    rows.clear();
    const DiskEntry* folder = node == 0 ? nullptr : disk_.FindFolder(Item(node).path);
    if (folder != nullptr) {
        for (const DiskEntry& entry : folder->entries) {
            if (entry.isDirectory) continue;
            const Text path = Item(node).path + entry.name;
            if (rules_->IsWantedAudioFile(path)) rows.push_back({path});
        }
        if (world_.hasRowWithoutRecord && !rows.empty()) rows.push_back({Text()});
    }
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        rows[Index(row)].check = rules_->RowTicked(row) ? 2 : 1;
    }
    isFilling = false;
}

bool Stage::ConfirmReset() {
    ++questions;
    return resetAnswer;
}

// ---- Nodes ----

int Stage::AddNode(const Text& text, const Text& path, int parent) {
    const int node = ItemCount();
    TreeItem item;
    item.text = text;
    item.path = path;
    item.parent = parent;
    item.place = static_cast<int>(Item(parent).children.size());
    items.push_back(item);
    items[Index(parent)].children.push_back(node);
    return node;
}

void Stage::MarkDead(int node) {
    items[Index(node)].isAlive = false;
    for (const int child : Item(node).children)
        MarkDead(child);
}

bool Stage::IsAtOrBeneath(int node, int ancestor) const {
    while (node != 0 && node != ancestor)
        node = Item(node).parent;
    return node != 0;
}

// The control moves the selection off what it deletes.
void Stage::DeleteNode(int node) {
    const bool losesSelection = IsAtOrBeneath(selected, node);
    const int parent = Item(node).parent;
    const std::size_t place = Index(Item(node).place);
    MarkDead(node);
    std::vector<int>& siblings = items[Index(parent)].children;
    siblings.erase(siblings.begin() + static_cast<std::ptrdiff_t>(place));
    for (std::size_t i = place; i < siblings.size(); ++i) {
        items[Index(siblings[i])].place = static_cast<int>(i);
    }
    if (!losesSelection) return;
    if (place < siblings.size()) {
        selected = siblings[place];
    } else {
        selected = siblings.empty() ? parent : siblings.back();
    }
    ListSelected();
}

void Stage::Select(int node, bool onLabel) {
    if (selected == node) return;
    selected = node;
    if (onLabel && !Item(node).isExpanded) {
        ExpandNode(node);
        items[Index(node)].isExpanded = !Item(node).children.empty();
    }
    ListSelected();
}

void Stage::ExpandNode(int node) {
    Select(node, false);
    if (FirstChild(node) != 0) return;
    if (Item(node).path == networkPath) {
        FillNetwork(node);
    } else {
        FillFolder(node);
    }
}

void Stage::FillNetwork(int node) {
    for (const Computer& computer : world_.computers) {
        const int computerNode = AddNode(computer.name, computerPath, node);
        for (const TreeRoot& share : computer.shares) {
            AddNode(share.text, share.path, computerNode);
        }
    }
}

void Stage::FillFolder(int node) {
    const Text path = Item(node).path;
    const DiskEntry* folder = disk_.FindFolder(path);
    if (folder == nullptr) return;
    std::vector<Text> names;
    for (const DiskEntry& entry : folder->entries) {
        if (entry.isDirectory && !entry.isHidden) names.push_back(entry.name);
    }
    std::stable_sort(names.begin(), names.end(), [&path](const Text& left, const Text& right) {
        return GoesBefore(path + left, path + right);
    });
    for (const Text& name : names) {
        const int child = AddNode(name, path + name + u"\\", node);
        SetState(child, rules_->InheritedState(child));
    }
}

// ---- Refreshing ----

bool Stage::IsPresent(const Text& volumePath) const {
    for (const Volume& volume : disk_.volumes) {
        if (volume.path == volumePath) return volume.isPresent;
    }
    return false;
}

bool Stage::HasPresentDrive(const Text& path) const {
    return std::any_of(world_.roots.begin(), world_.roots.end(), [&](const TreeRoot& root) {
        return root.isDrive && root.path.front() == path.front() && IsPresent(root.path);
    });
}

void Stage::RefreshDrives() {
    for (const TreeRoot& root : world_.roots) {
        if (!root.isDrive || !IsPresent(root.path)) continue;
        const std::vector<int>& roots = Item(0).children;
        const bool isShown = std::any_of(roots.begin(), roots.end(),
                                         [&](int node) { return Item(node).text == root.text; });
        if (!isShown) AddNode(root.text, root.path, 0);
    }
    for (int node = FirstRoot(); node != 0;) {
        const int next = NextSibling(node);
        const Text& path = Item(node).path;
        const bool stays =
            path == networkPath || path.starts_with(u"\\\\") || HasPresentDrive(path);
        if (!stays) DeleteNode(node);
        node = next;
    }
}

void Stage::RefreshBranch(int first) {
    for (int node = first; node != 0;) {
        const int next = NextSibling(node);
        if (Item(node).path != networkPath) {
            if (disk_.FindFolder(Item(node).path) == nullptr) {
                DeleteNode(node);
            } else {
                RefreshBranch(FirstChild(node));
                AddNewFolders(node);
            }
        }
        node = next;
    }
}

void Stage::AddNewFolders(int node) {
    if (FirstChild(node) == 0) return;
    const Text path = Item(node).path;
    for (const DiskEntry& entry : disk_.FindFolder(path)->entries) {
        if (!entry.isDirectory || entry.isHidden) continue;
        const std::vector<int>& children = Item(node).children;
        const bool isShown = std::any_of(children.begin(), children.end(),
                                         [&](int child) { return Item(child).text == entry.name; });
        if (isShown) continue;
        const int child = AddNode(entry.name, path + entry.name + u"\\", node);
        SetState(child, rules_->InheritedState(child));
    }
}

// ---- Names ----

Text Stage::RouteOf(int node) const {
    Text route = Item(node).text;
    for (int up = Item(node).parent; up != 0; up = Item(up).parent) {
        route.insert(0, Item(up).text + u"|");
    }
    return route;
}

int Stage::FindRoute(const Text& route) const {
    int node = 0;
    TextView rest = route;
    for (;;) {
        const std::size_t bar = rest.find(u'|');
        const TextView text = rest.substr(0, bar);
        const std::vector<int>& children = Item(node).children;
        const auto found = std::find_if(children.begin(), children.end(),
                                        [&](int child) { return Item(child).text == text; });
        if (found == children.end()) return 0;
        node = *found;
        if (bar == TextView::npos) return node;
        rest.remove_prefix(bar + 1);
    }
}

int Stage::FindRow(const Text& path) const {
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].path == path) return static_cast<int>(row);
    }
    return -1;
}

}  // namespace oracle
