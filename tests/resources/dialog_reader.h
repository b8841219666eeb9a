// Dialog templates of this program's resources, read back.
#pragma once

#include <windows.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

// Text is ASCII throughout the templates; other characters become '?'.
struct ReadControl {
    int id;
    std::string className;  // in capitals
    std::string text;
    DWORD style;
    // In dialog units.
    short x, y, width, height;

    bool operator==(const ReadControl&) const = default;
};
void PrintTo(const ReadControl& control, std::ostream* out);

struct ReadDialog {
    DWORD style;
    short width, height;
    std::string title;
    int fontSize;
    std::string fontFace;
    std::vector<ReadControl> controls;
};

// None if there is no dialog of that number, or if it has a menu, a window class of
// its own, no font, or the extended form: the program's have none of these.
std::optional<ReadDialog> ReadDialogResource(int number);
