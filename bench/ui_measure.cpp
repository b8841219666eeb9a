#include "bench/ui_measure.h"

#include <objbase.h>

#include <algorithm>
#include <chrono>
#include <cwchar>
#include <utility>

#include "foundation/settings.h"

// The import's own slot: for a menu that chooses at once, without being shown.
extern "C" decltype(&TrackPopupMenu) __imp_TrackPopupMenu;

namespace {

constexpr UINT runMessage = WM_APP;
constexpr UINT_PTR idleTimer = 1;
constexpr UINT idleMs = 700;
constexpr DWORD betweenPostsMs = 4;
constexpr int cellCapacity = 999;
constexpr UINT stateImageMask = 0xF000;

HWND MessageWindow(const wchar_t* className, WNDPROC procedure, void* object) {
    WNDCLASSW description = {};
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = className;
    RegisterClassW(&description);
    const HWND window = CreateWindowExW(0, className, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        description.hInstance, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    return window;
}

INT_PTR CALLBACK BareProcedure(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG || message == WM_DRAWITEM ? TRUE : FALSE;
}

bool IsBare(HWND dialog) {
    return reinterpret_cast<DLGPROC>(GetWindowLongPtrW(dialog, DWLP_DLGPROC)) == &BareProcedure;
}

LRESULT Ask(HWND list, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(list, message, wParam, lParam);
}

int ColumnCount(HWND list) {
    return Header_GetItemCount(reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER)));
}

void CopyLooks(HWND from, HWND to) {
    for (const WPARAM kind : {WPARAM{LVSIL_NORMAL}, WPARAM{LVSIL_SMALL}})
        Ask(to, LVM_SETIMAGELIST, kind, Ask(from, LVM_GETIMAGELIST, kind));
    Ask(to, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, Ask(from, LVM_GETEXTENDEDLISTVIEWSTYLE));
    for (int column = 0; column < ColumnCount(from); ++column) {
        wchar_t title[cellCapacity] = {};
        LVCOLUMNW parts = {};
        parts.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
        parts.pszText = title;
        parts.cchTextMax = cellCapacity;
        Ask(from, LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&parts));
        Ask(to, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&parts));
    }
}

}  // namespace

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

SIZE_T CommittedBytes() {
    SIZE_T sum = 0;
    MEMORY_BASIC_INFORMATION range = {};
    const char* at = nullptr;
    while (VirtualQuery(at, &range, sizeof range) != 0) {
        if (range.State == MEM_COMMIT && range.Type == MEM_PRIVATE) sum += range.RegionSize;
        at = static_cast<const char*>(range.BaseAddress) + range.RegionSize;
    }
    return sum;
}

OwnSettings::OwnSettings() : path() {
    std::swprintf(path, 64, L"Software\\bench-%lu", GetCurrentProcessId());
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                    nullptr, &key, nullptr);
    RegOverridePredefKey(HKEY_CURRENT_USER, key);
    RegCloseKey(key);
}

OwnSettings::~OwnSettings() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, path);
}

ProgramGround::ProgramGround() {
    static_cast<void>(CoInitialize(nullptr));
    const INITCOMMONCONTROLSEX all = {sizeof all, 0xFF};
    InitCommonControlsEx(&all);
    InitSettings();
}

ProgramGround::~ProgramGround() {
    CoUninitialize();
}

LoopScript::LoopScript(std::function<void()> toRun)
    : script(std::move(toRun)), window(MessageWindow(L"LoopScript", &Procedure, this)) {}

LoopScript::~LoopScript() {
    DestroyWindow(window);
}

void LoopScript::RunFirst() {
    PostMessageW(window, runMessage, 0, 0);
}

void LoopScript::RunWhenIdle() {
    SetTimer(window, idleTimer, idleMs, nullptr);
}

LRESULT CALLBACK LoopScript::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<LoopScript*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr || (message != runMessage && message != WM_TIMER))
        return DefWindowProcW(window, message, wParam, lParam);
    KillTimer(window, idleTimer);
    if (self->script) std::exchange(self->script, nullptr)();
    return 0;
}

LongestWait::LongestWait()
    : window(MessageWindow(L"LongestWait", &Procedure, this)),
      begin(Now()),
      poster([this] { Post(); }) {}

LongestWait::~LongestWait() {
    stops = true;
    poster.join();
    DestroyWindow(window);
}

void LongestWait::Post() {
    while (!stops) {
        const double posted = Now();
        LPARAM bits = 0;
        static_assert(sizeof bits == sizeof posted);
        std::copy_n(reinterpret_cast<const char*>(&posted), sizeof posted,
                    reinterpret_cast<char*>(&bits));
        PostMessageW(window, runMessage, 0, bits);
        Sleep(betweenPostsMs);
    }
}

LRESULT CALLBACK LongestWait::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<LongestWait*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr || message != runMessage)
        return DefWindowProcW(window, message, wParam, lParam);
    double posted = 0;
    std::copy_n(reinterpret_cast<const char*>(&lParam), sizeof posted,
                reinterpret_cast<char*>(&posted));
    const double now = Now();
    ++self->messages;
    if (now - posted > self->longest) {
        self->longest = now - posted;
        self->when = now - self->begin;
    }
    return 0;
}

namespace {

int commandToChoose = 0;

BOOL WINAPI ChooseAtOnce(HMENU, UINT, int, int, int, HWND, const RECT*) {
    return commandToChoose;
}

}  // namespace

void RunRowCommand(HWND form, HWND list, int command) {
    RECT area = {};
    GetWindowRect(list, &area);
    SetCursorPos((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    commandToChoose = command;
    const ImportSwap swap(__imp_TrackPopupMenu, &ChooseAtOnce);
    SendMessageW(form, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), -1);
}

HWND ShownDialog() {
    HWND found = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM result) -> BOOL {
            wchar_t name[16] = {};
            GetClassNameW(window, name, 16);
            if (std::wcscmp(name, L"#32770") != 0 || IsBare(window)) return TRUE;
            *reinterpret_cast<HWND*>(result) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

bool ServeUntil(const std::function<bool()>& condition, DWORD limitMs) {
    const DWORD begin = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - begin > limitMs) return false;
        MsgWaitForMultipleObjectsEx(0, nullptr, 10, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    return true;
}

ListContents::ListContents(HWND list) : columns(ColumnCount(list)) {
    const auto count = static_cast<int>(Ask(list, LVM_GETITEMCOUNT));
    begins.reserve(static_cast<std::size_t>(count) * static_cast<std::size_t>(columns));
    images.reserve(static_cast<std::size_t>(count));
    states.reserve(static_cast<std::size_t>(count));
    for (int cell = 0; cell < count * columns; ++cell) {
        wchar_t text[cellCapacity] = {};
        LVITEMW item = {};
        item.iItem = cell / columns;
        item.iSubItem = cell % columns;
        item.mask = LVIF_TEXT | (item.iSubItem == 0 ? LVIF_IMAGE | LVIF_STATE : 0U);
        item.stateMask = stateImageMask;
        item.pszText = text;
        item.cchTextMax = cellCapacity;
        Ask(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        begins.push_back(texts.size());
        texts.append(item.pszText).push_back(L'\0');
        if (item.iSubItem != 0) continue;
        images.push_back(item.iImage);
        states.push_back(item.state & stateImageMask);
    }
}

void ListContents::Take(int number, Row& row) const {
    const auto at = static_cast<std::size_t>(number);
    row.image = images[at];
    row.state = states[at];
    row.cells.clear();
    const auto width = static_cast<std::size_t>(columns);
    for (std::size_t cell = at * width; cell < (at + 1) * width; ++cell)
        row.cells.push_back(texts.c_str() + begins[cell]);
}

BareForm::BareForm(int dialogId, int listId, HWND likeList)
    : dialog(CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(dialogId), nullptr,
                                &BareProcedure, 0)),
      list(GetDlgItem(dialog, listId)),
      columns(ColumnCount(likeList)) {
    CopyLooks(likeList, list);
    RECT place = {};
    GetWindowRect(likeList, &place);
    SetWindowPos(dialog, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    SetWindowPos(list, nullptr, 0, 0, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void BareForm::Insert(const ListContents& contents) const {
    Ask(list, WM_SETREDRAW, FALSE);
    ListContents::Row row;
    for (int number = 0; number < contents.RowCount(); ++number) {
        contents.Take(number, row);
        InsertRow(row);
    }
    Ask(list, WM_SETREDRAW, TRUE);
    InvalidateRect(list, nullptr, TRUE);
}

void BareForm::InsertRow(const ListContents::Row& row) const {
    wchar_t empty[] = L"";
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
    item.iItem = static_cast<int>(Ask(list, LVM_GETITEMCOUNT));
    item.lParam = item.iItem;
    item.iImage = row.image;
    item.pszText = empty;
    item.iItem = static_cast<int>(Ask(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    item.mask = LVIF_TEXT;
    for (item.iSubItem = 1; item.iSubItem < columns; ++item.iSubItem)
        Ask(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    SetTick(item.iItem, row.state != INDEXTOSTATEIMAGEMASK(1));
    for (item.iSubItem = 0; item.iSubItem < columns; ++item.iSubItem) {
        const wchar_t* const text = row.cells[static_cast<std::size_t>(item.iSubItem)];
        if (*text == 0) continue;
        item.pszText = const_cast<wchar_t*>(text);  // only read
        Ask(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

void BareForm::SetTick(int row, bool ticked) const {
    LVITEMW item = {};
    item.state = INDEXTOSTATEIMAGEMASK(ticked ? 2U : 1U);
    item.stateMask = stateImageMask;
    Ask(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}
