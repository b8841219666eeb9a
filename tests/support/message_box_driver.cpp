#include "tests/support/message_box_driver.h"

#include <algorithm>
#include <utility>

#include "tests/support/text.h"

namespace {

std::wstring TextOf(HWND window) {
    wchar_t text[1024] = {};
    GetWindowTextW(window, text, 1024);
    return text;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

LONG LeftOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect.left;
}

std::vector<HWND> VisibleChildren(HWND box) {
    std::vector<HWND> result;
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child)) result.push_back(child);
    }
    std::ranges::sort(result, {}, LeftOf);
    return result;
}

SeenBox Look(HWND box) {
    SeenBox seen;
    seen.caption = Utf8(TextOf(box).c_str());
    seen.hasOwner = GetWindow(box, GW_OWNER) != nullptr;
    const auto information = reinterpret_cast<LRESULT>(LoadIconW(nullptr, IDI_INFORMATION));
    const auto hand = reinterpret_cast<LRESULT>(LoadIconW(nullptr, IDI_HAND));
    for (HWND child : VisibleChildren(box)) {
        if (ClassOf(child) == L"Button") {
            seen.buttons.push_back(GetDlgCtrlID(child));
        } else if ((GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
            const LRESULT icon = SendMessageW(child, STM_GETICON, 0, 0);
            seen.hasInformationIcon = icon == information;
            seen.hasHandIcon = icon == hand;
        } else {
            seen.text += Utf8(TextOf(child).c_str());
        }
    }
    return seen;
}

}  // namespace

MessageBoxDriver::MessageBoxDriver(const wchar_t* caption, std::vector<int> answers,
                                   std::function<void(std::size_t)> beforeAnswer)
    : wantedCaption(caption),
      planned(std::move(answers)),
      before(std::move(beforeAnswer)),
      thread([this] { Run(); }) {}

MessageBoxDriver::~MessageBoxDriver() {
    Seen();
}

const std::vector<SeenBox>& MessageBoxDriver::Seen() {
    isOver = true;
    if (thread.joinable()) thread.join();
    return seen;
}

HWND MessageBoxDriver::FindBox() const {
    HWND box = nullptr;
    while ((box = FindWindowExW(nullptr, box, L"#32770", wantedCaption.c_str())) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(box, &process);
        // Visible only when all of it is there.
        if (process == GetCurrentProcessId() && IsWindowVisible(box)) return box;
    }
    return nullptr;
}

void MessageBoxDriver::AnswerBox(HWND box) {
    const std::size_t number = seen.size();
    seen.push_back(Look(box));
    if (before) before(number);
    int answer = seen.back().buttons.size() == 1 ? seen.back().buttons.front() : IDCANCEL;
    if (number < planned.size()) answer = planned[number];
    const auto button = reinterpret_cast<LPARAM>(GetDlgItem(box, answer));
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED), button);
    // A box that does not take this answer would stay for ever.
    for (int waited = 0; IsWindow(box) && IsWindowVisible(box); waited += 5) {
        if (waited == 5000) PostMessageW(box, WM_CLOSE, 0, 0);
        Sleep(5);
    }
}

void MessageBoxDriver::Run() {
    while (!isOver) {
        if (HWND box = FindBox()) {
            AnswerBox(box);
        } else {
            Sleep(5);
        }
    }
}
