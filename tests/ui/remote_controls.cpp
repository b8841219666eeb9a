#include "tests/ui/remote_controls.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr std::size_t blockSize = 8192;
constexpr std::size_t textOffset = 256;
constexpr int textRoom = 1000;

}  // namespace

bool WaitUntil(const std::function<bool()>& condition, DWORD limitMs) {
    const ULONGLONG begin = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - begin > limitMs) return condition();
        Sleep(10);
    }
    return true;
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, 20000, &result) == 0) {
        throw std::runtime_error(IsWindow(window) ? "a window does not answer"
                                                  : "a window has gone");
    }
    return static_cast<LRESULT>(result);
}

std::wstring TextOfWindow(HWND window) {
    wchar_t text[textRoom] = {};
    const auto length =
        Ask(window, WM_GETTEXT, textRoom, reinterpret_cast<LPARAM>(static_cast<wchar_t*>(text)));
    return {text, static_cast<std::size_t>(length)};
}

RemoteBlock::RemoteBlock(HWND window) : process(nullptr), block(nullptr) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
    if (process == nullptr) throw std::runtime_error("the program has gone");
    block = VirtualAllocEx(process, nullptr, blockSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    if (block == nullptr) throw std::runtime_error("no room in the program");
}

RemoteBlock::~RemoteBlock() {
    VirtualFreeEx(process, block, 0, MEM_RELEASE);
    CloseHandle(process);
}

LPARAM RemoteBlock::At(std::size_t offset) const {
    return reinterpret_cast<LPARAM>(block) + static_cast<LPARAM>(offset);
}

void RemoteBlock::Write(const void* bytes, std::size_t size, std::size_t offset) const {
    if (!WriteProcessMemory(process, reinterpret_cast<void*>(At(offset)), bytes, size, nullptr)) {
        throw std::runtime_error("cannot write to the program");
    }
}

void RemoteBlock::Read(void* bytes, std::size_t size, std::size_t offset) const {
    if (!ReadProcessMemory(process, reinterpret_cast<void*>(At(offset)), bytes, size, nullptr)) {
        throw std::runtime_error("cannot read from the program");
    }
}

std::wstring RemoteBlock::TakeText(std::size_t offset) const {
    wchar_t text[textRoom] = {};
    Read(text, (textRoom - 1) * sizeof(wchar_t), offset);
    return text;
}

std::vector<RemoteItem> RemoteTree::Children(RemoteItem parent) const {
    std::vector<RemoteItem> children;
    for (RemoteItem item = parent == 0 ? Root() : Child(parent); item != 0; item = Next(item))
        children.push_back(item);
    return children;
}

std::vector<std::wstring> RemoteTree::Texts(RemoteItem parent) const {
    std::vector<std::wstring> texts;
    for (const RemoteItem item : Children(parent))
        texts.push_back(Text(item));
    return texts;
}

RemoteItem RemoteTree::Find(RemoteItem parent, const std::wstring& text) const {
    for (const RemoteItem item : Children(parent)) {
        if (Text(item) == text) return item;
    }
    return 0;
}

std::wstring RemoteTree::Text(RemoteItem item) const {
    const RemoteBlock block(window);
    TVITEMW parts = {};
    parts.mask = TVIF_TEXT;
    parts.hItem = reinterpret_cast<HTREEITEM>(item);
    parts.pszText = reinterpret_cast<wchar_t*>(block.At(textOffset));
    parts.cchTextMax = textRoom;
    block.Put(parts);
    if (Ask(window, TVM_GETITEMW, 0, block.At()) == 0) return L"(no item)";
    return block.TakeText(textOffset);
}

int RemoteTree::State(RemoteItem item) const {
    return static_cast<int>(
        Ask(window, TVM_GETITEMSTATE, static_cast<WPARAM>(item), TVIS_STATEIMAGEMASK) >> 12);
}

bool RemoteTree::IsExpanded(RemoteItem item) const {
    return (Ask(window, TVM_GETITEMSTATE, static_cast<WPARAM>(item), TVIS_EXPANDED) &
            TVIS_EXPANDED) != 0;
}

bool RemoteTree::HasExpander(RemoteItem item) const {
    const RemoteBlock block(window);
    TVITEMW parts = {};
    parts.mask = TVIF_CHILDREN;
    parts.hItem = reinterpret_cast<HTREEITEM>(item);
    block.Put(parts);
    Ask(window, TVM_GETITEMW, 0, block.At());
    return block.Take<TVITEMW>().cChildren != 0;
}

RemoteTree::Images RemoteTree::ImagesOf(RemoteItem item) const {
    const RemoteBlock block(window);
    TVITEMW parts = {};
    parts.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    parts.hItem = reinterpret_cast<HTREEITEM>(item);
    block.Put(parts);
    Ask(window, TVM_GETITEMW, 0, block.At());
    parts = block.Take<TVITEMW>();
    return {parts.iImage, parts.iSelectedImage};
}

// The middle of the part's pixels on the item's line. Each look is three calls into
// the other process: the part, which no other one interrupts, is first found roughly.
POINT RemoteTree::Point(RemoteItem item, UINT part) const {
    constexpr LONG leastPart = 5;
    constexpr LONG enough = 30;
    Ask(window, TVM_ENSUREVISIBLE, 0, item);
    const RemoteBlock block(window);
    block.Put(item);  // the rectangle is asked for with its item in its place
    Ask(window, TVM_GETITEMRECT, TRUE, block.At());
    const RECT label = block.Take<RECT>();
    const LONG middle = (label.top + label.bottom) / 2;
    const auto isPart = [&](LONG x) {
        TVHITTESTINFO hit = {};
        hit.pt = {x, middle};
        block.Put(hit);
        Ask(window, TVM_HITTEST, 0, block.At());
        return block.Take<TVHITTESTINFO>().flags == part;
    };
    LONG first = 0;
    while (first < label.right && !isPart(first))
        first += leastPart;
    if (first >= label.right) throw std::runtime_error("the item has no such part");
    LONG last = first;
    while (first > 0 && isPart(first - 1))
        --first;
    while (last + 1 < label.right && last - first <= enough && isPart(last + 1))
        ++last;
    POINT point = {(first + last) / 2, middle};
    ClientToScreen(window, &point);
    return point;
}

HWND RemoteList::Header() const {
    return reinterpret_cast<HWND>(Ask(window, LVM_GETHEADER));
}

std::wstring RemoteList::Cell(int row, int column) const {
    const RemoteBlock block(window);
    LVITEMW parts = {};
    parts.iSubItem = column;
    parts.pszText = reinterpret_cast<wchar_t*>(block.At(textOffset));
    parts.cchTextMax = textRoom;
    block.Put(parts);
    Ask(window, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), block.At());
    return block.TakeText(textOffset);
}

std::vector<std::wstring> RemoteList::Column(const std::wstring& title) const {
    std::vector<std::wstring> texts;
    const int column = ColumnTitled(title);
    for (int row = 0; row < RowCount(); ++row)
        texts.push_back(Cell(row, column));
    return texts;
}

std::vector<std::wstring> RemoteList::Titles() const {
    const RemoteBlock block(window);
    std::vector<std::wstring> titles;
    const auto count = static_cast<WPARAM>(Ask(Header(), HDM_GETITEMCOUNT));
    for (WPARAM column = 0; column < count; ++column) {
        LVCOLUMNW parts = {};
        parts.mask = LVCF_TEXT;
        parts.pszText = reinterpret_cast<wchar_t*>(block.At(textOffset));
        parts.cchTextMax = textRoom;
        block.Put(parts);
        Ask(window, LVM_GETCOLUMNW, column, block.At());
        titles.push_back(block.TakeText(textOffset));
    }
    return titles;
}

std::vector<std::wstring> RemoteList::DisplayedTitles() const {
    const std::vector<std::wstring> titles = Titles();
    const RemoteBlock block(window);
    Ask(window, LVM_GETCOLUMNORDERARRAY, titles.size(), block.At());
    std::vector<std::wstring> displayed;
    for (std::size_t i = 0; i < titles.size(); ++i)
        displayed.push_back(titles.at(static_cast<std::size_t>(block.Take<int>(i * sizeof(int)))));
    return displayed;
}

int RemoteList::ColumnTitled(const std::wstring& title) const {
    const std::vector<std::wstring> titles = Titles();
    const auto found = std::find(titles.begin(), titles.end(), title);
    return found == titles.end() ? -1 : static_cast<int>(found - titles.begin());
}

int RemoteList::RowOf(const std::wstring& name) const {
    const std::vector<std::wstring> names = Column(L"Name");
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

bool RemoteList::IsTicked(int row) const {
    return (Ask(window, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_STATEIMAGEMASK) >> 12) ==
           2;
}

std::vector<bool> RemoteList::Ticks() const {
    std::vector<bool> ticks;
    for (int row = 0; row < RowCount(); ++row)
        ticks.push_back(IsTicked(row));
    return ticks;
}

int RemoteList::ColumnWidth(int column) const {
    return static_cast<int>(Ask(window, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
}

void RemoteList::Select(int row) const {
    const RemoteBlock block(window);
    LVITEMW parts = {};
    parts.state = LVIS_SELECTED;
    parts.stateMask = LVIS_SELECTED;
    block.Put(parts);
    Ask(window, LVM_SETITEMSTATE, static_cast<WPARAM>(row), block.At());
}

RECT RemoteList::RowRect(int row) const {
    Ask(window, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    const RemoteBlock block(window);
    RECT asked = {};
    asked.left = LVIR_BOUNDS;
    block.Put(asked);
    Ask(window, LVM_GETITEMRECT, static_cast<WPARAM>(row), block.At());
    return block.Take<RECT>();
}

POINT RemoteList::TickPoint(int row) const {
    const RECT rect = RowRect(row);
    POINT point = {rect.left + 8, (rect.top + rect.bottom) / 2};
    ClientToScreen(window, &point);
    return point;
}

POINT RemoteList::RowPoint(int row) const {
    const RECT rect = RowRect(row);
    POINT point = {rect.left + 90, (rect.top + rect.bottom) / 2};
    ClientToScreen(window, &point);
    return point;
}

RECT RemoteList::HeaderRect(int column) const {
    const RemoteBlock block(window);
    Ask(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(column), block.At());
    return block.Take<RECT>();
}

POINT RemoteList::HeaderPoint(int column) const {
    const RECT rect = HeaderRect(column);
    POINT point = {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    ClientToScreen(Header(), &point);
    return point;
}

POINT RemoteList::HeaderEdge(int column) const {
    const RECT rect = HeaderRect(column);
    POINT point = {rect.right - 1, (rect.top + rect.bottom) / 2};
    ClientToScreen(Header(), &point);
    return point;
}
