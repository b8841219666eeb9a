// Looks at message boxes and answers them, as a user would, while the test's
// own thread stands in the call that shows them.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// One box as the screen showed it.
struct SeenBox {
    std::string text;
    std::string caption;
    std::vector<int> buttons;  // ids of the visible buttons, from left to right
    bool hasInformationIcon = false;
    bool hasHandIcon = false;
    bool hasOwner = false;
};

// From its construction on answers the boxes of this process that bear
// `caption`, each by its entry of `answers`, a button's id such as IDRETRY. A
// box beyond them is noted and cancelled, so that a test that sees too many
// ends all the same.
class MessageBoxDriver {
public:
    // Before a box is answered `beforeAnswer` gets its 0-based number, on the
    // driver's thread, for what a user does before pressing Retry.
    MessageBoxDriver(const wchar_t* caption, std::vector<int> answers,
                     std::function<void(std::size_t)> beforeAnswer = {});
    MessageBoxDriver(const MessageBoxDriver&) = delete;
    MessageBoxDriver& operator=(const MessageBoxDriver&) = delete;
    ~MessageBoxDriver();

    // Ends the driver and tells what it has seen. The boxes are gone by then if
    // the call that showed them has returned.
    const std::vector<SeenBox>& Seen();

private:
    void Run();
    HWND FindBox() const;
    void AnswerBox(HWND box);

    std::wstring wantedCaption;
    std::vector<int> planned;
    std::function<void(std::size_t)> before;
    std::vector<SeenBox> seen;  // the driver's thread, until it has ended
    std::atomic<bool> isOver{false};
    std::thread thread;
};
