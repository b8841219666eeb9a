// The tree and the list of another process, read and found through messages.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

// Polls until the condition holds, at most `limitMs`; then what it last said.
[[nodiscard]] bool WaitUntil(const std::function<bool()>& condition, DWORD limitMs = 10000);

// Sends a message; throws if the window does not answer within 20 seconds.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
// The text of a window of another process.
std::wstring TextOfWindow(HWND window);

// A block in the process of a window, for messages with pointers.
class RemoteBlock {
public:
    explicit RemoteBlock(HWND window);
    RemoteBlock(const RemoteBlock&) = delete;
    RemoteBlock& operator=(const RemoteBlock&) = delete;
    ~RemoteBlock();

    // An address in the other process, `offset` bytes into the block.
    LPARAM At(std::size_t offset = 0) const;
    template <class Value>
    void Put(const Value& value, std::size_t offset = 0) const {
        Write(&value, sizeof value, offset);
    }
    template <class Value>
    Value Take(std::size_t offset = 0) const {
        Value value = {};
        Read(&value, sizeof value, offset);
        return value;
    }
    std::wstring TakeText(std::size_t offset) const;

private:
    void Write(const void* bytes, std::size_t size, std::size_t offset) const;
    void Read(void* bytes, std::size_t size, std::size_t offset) const;

    HANDLE process;
    void* block;
};

using RemoteItem = LPARAM;  // an item of a tree; 0 for none

class RemoteTree {
public:
    explicit RemoteTree(HWND tree) : window(tree) {}
    HWND Window() const { return window; }

    RemoteItem Root() const { return Relative(TVGN_ROOT, 0); }
    RemoteItem Selected() const { return Relative(TVGN_CARET, 0); }
    RemoteItem Child(RemoteItem item) const { return Relative(TVGN_CHILD, item); }
    RemoteItem Next(RemoteItem item) const { return Relative(TVGN_NEXT, item); }
    RemoteItem Parent(RemoteItem item) const { return Relative(TVGN_PARENT, item); }
    std::vector<RemoteItem> Children(RemoteItem parent) const;
    std::vector<std::wstring> Texts(RemoteItem parent) const;  // of the children; 0: the roots
    // The child, or root for 0, of that text; 0 if there is none.
    RemoteItem Find(RemoteItem parent, const std::wstring& text) const;

    std::wstring Text(RemoteItem item) const;
    int State(RemoteItem item) const;  // number of its picture
    bool IsExpanded(RemoteItem item) const;
    bool HasExpander(RemoteItem item) const;
    // In the list of images, by number.
    struct Images {
        int normal = -1;
        int selected = -1;
    };
    Images ImagesOf(RemoteItem item) const;
    // Screen points, scrolled into view first.
    POINT PicturePoint(RemoteItem item) const { return Point(item, TVHT_ONITEMSTATEICON); }
    POINT ExpanderPoint(RemoteItem item) const { return Point(item, TVHT_ONITEMBUTTON); }
    POINT IconPoint(RemoteItem item) const { return Point(item, TVHT_ONITEMICON); }
    POINT LabelPoint(RemoteItem item) const { return Point(item, TVHT_ONITEMLABEL); }

private:
    RemoteItem Relative(UINT relation, RemoteItem item) const {
        return Ask(window, TVM_GETNEXTITEM, relation, item);
    }
    POINT Point(RemoteItem item, UINT part) const;

    HWND window;
};

class RemoteList {
public:
    explicit RemoteList(HWND list) : window(list) {}
    HWND Window() const { return window; }
    HWND Header() const;

    int RowCount() const { return static_cast<int>(Ask(window, LVM_GETITEMCOUNT)); }
    std::wstring Cell(int row, int column) const;
    // The texts of a column from the first row to the last; the column by its title.
    std::vector<std::wstring> Column(const std::wstring& title) const;
    int ColumnTitled(const std::wstring& title) const;  // -1 for none
    int RowOf(const std::wstring& name) const;          // by the column "Name"; -1 for none
    bool IsTicked(int row) const;
    std::vector<bool> Ticks() const;
    std::vector<std::wstring> Titles() const;  // in the order of the columns' creation
    std::vector<std::wstring> DisplayedTitles() const;
    int ColumnWidth(int column) const;
    // Adds a row to the selection.
    void Select(int row) const;
    // Screen points.
    POINT TickPoint(int row) const;
    POINT RowPoint(int row) const;
    POINT HeaderPoint(int column) const;  // the middle of a header
    POINT HeaderEdge(int column) const;   // where its width is dragged

private:
    RECT HeaderRect(int column) const;
    RECT RowRect(int row) const;

    HWND window;
};
