#include "tests/ui/menu_driver.h"

#include <utility>

#include "tests/ui/keys.h"

namespace {

constexpr UINT tickMs = 40;
constexpr int patience = 100;  // ticks

MenuDriver* current;

}  // namespace

HWND OpenMenuWindow() {
    const HWND window = FindWindowW(L"#32768", nullptr);
    return window != nullptr && IsWindowVisible(window) ? window : nullptr;
}

MenuDriver::MenuDriver(std::vector<Step> stepsToTake)
    : steps(std::move(stepsToTake)), ticksLeft(patience) {
    current = this;
    timer = SetTimer(nullptr, 0, tickMs, [](HWND, UINT, UINT_PTR, DWORD) {
        if (current != nullptr) current->Tick();
    });
}

MenuDriver::~MenuDriver() {
    KillTimer(nullptr, timer);
    current = nullptr;
}

void MenuDriver::Tick() {
    const HWND menu = OpenMenuWindow();
    if (menu == nullptr || isInStep) return;
    if (next < steps.size()) {
        isInStep = true;
        steps[next++](menu);
        isInStep = false;
    } else if (--ticksLeft == 0) {
        EndMenu();
    }
}

MenuDriver::Step Key(WORD virtualKey) {
    return [virtualKey](HWND) {
        HoldKey(virtualKey);
        ReleaseKey(virtualKey);
    };
}
