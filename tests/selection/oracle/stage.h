// The controls and the form around the selection, as plain data: a tree that is
// filled lazily, the rows of the selected folder, and what a user does to them.
#pragma once

#include <vector>

#include "tests/selection/oracle/rules.h"
#include "tests/selection/oracle/world.h"

namespace oracle {

// A node keeps its number for good; numbers are never used again.
struct TreeItem {
    Text text;
    Text path;
    int parent = 0;
    int place = 0;  // among its siblings
    std::vector<int> children;
    int state = 1;
    bool isExpanded = false;
    bool isAlive = true;
};

struct ListRow {
    Text path;  // empty for a row without a record
    int check = 1;
};

// Item 0 is no node: it stands above the roots.
class Stage {
public:
    // `world` and `disk` outlive the stage. The disk may change between two calls.
    Stage(const World& world, const PlainDisk& disk) : world_(world), disk_(disk), items(1) {}

    // The rules that the controls report to from now on; then the roots are made.
    void Start(Rules& rules);

    // The user's doings. Nodes are alive and rows are on show.
    void SelectByKeyboard(int node);
    void ClickLabel(int node);
    void ClickPicture(int node);
    void PressSpace();
    void ClickExpander(int node);
    void ClickRow(int row);
    void UseRowMenu(MenuCommand command);
    void Refresh();
    void DriveChange();  // what the drive-change message starts
    void Reset(bool answer);

    // For the rules.
    const TreeItem& Item(int node) const { return items[Index(node)]; }
    void SetState(int node, int state) { items[Index(node)].state = state; }
    int NextSibling(int node) const;
    int FirstChild(int node) const;
    int FirstRoot() const { return FirstChild(0); }
    int Selected() const { return selected; }
    const std::vector<ListRow>& Rows() const { return rows; }
    const ListRow& Row(int row) const { return rows[Index(row)]; }
    // Reports a flip unless the list is being filled.
    void SetRowCheck(int row, int check);
    void ListFolder(int node);
    void ListSelected() { ListFolder(selected); }
    void RefuseNetworkNode() { ++refusals; }
    bool ConfirmReset();

    int ItemCount() const { return static_cast<int>(items.size()); }
    int Refusals() const { return refusals; }
    int Questions() const { return questions; }
    int LastSpaceState() const { return lastSpaceState; }

    // The texts from the root down with "|" between them, and back; 0 if there is
    // no such node.
    Text RouteOf(int node) const;
    int FindRoute(const Text& route) const;
    // The first row of that path, or -1.
    int FindRow(const Text& path) const;

private:
    static std::size_t Index(int number) { return static_cast<std::size_t>(number); }

    int AddNode(const Text& text, const Text& path, int parent);
    void DeleteNode(int node);
    bool IsAtOrBeneath(int node, int ancestor) const;
    void MarkDead(int node);
    void Select(int node, bool onLabel);
    void ExpandNode(int node);
    void FillNetwork(int node);
    void FillFolder(int node);
    void RefreshDrives();
    void RefreshBranch(int first);
    void AddNewFolders(int node);
    bool HasPresentDrive(const Text& path) const;
    bool IsPresent(const Text& volumePath) const;

    const World& world_;
    const PlainDisk& disk_;
    Rules* rules_ = nullptr;

    std::vector<TreeItem> items;
    int selected = 0;
    std::vector<ListRow> rows;
    bool isFilling = false;
    bool resetAnswer = false;
    int refusals = 0;
    int questions = 0;
    int lastSpaceState = 0;
};

}  // namespace oracle
