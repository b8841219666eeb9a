// Works a popup menu from within its own loop.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

// The menu's window on the screen; null while none shows.
HWND OpenMenuWindow();

// From its construction on it waits for a menu to show, and then takes one step
// after the other, with time for the menu between them; each gets the menu's
// window. A menu that still shows long after the last step is ended. One at a time.
class MenuDriver {
public:
    using Step = std::function<void(HWND)>;

    explicit MenuDriver(std::vector<Step> stepsToTake);
    MenuDriver(const MenuDriver&) = delete;
    MenuDriver& operator=(const MenuDriver&) = delete;
    ~MenuDriver();

    bool IsDone() const { return next == steps.size(); }

private:
    void Tick();

    std::vector<Step> steps;
    std::size_t next = 0;
    bool isInStep = false;  // one that dispatches messages is not overtaken
    int ticksLeft = 0;
    UINT_PTR timer = 0;
};

// A step that presses a key.
MenuDriver::Step Key(WORD virtualKey);
