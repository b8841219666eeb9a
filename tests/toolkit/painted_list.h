// Display lists painted onto a canvas, compared with what GDI paints by itself.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>

#include "tests/support/import_stub.h"
#include "tests/ui/pixels.h"
#include "toolkit/text.h"

// Lists are painted as 100 by 40 pixels from (10, 5) on.
namespace painted {

inline constexpr COLORREF paper = RGB(250, 251, 252);
inline constexpr COLORREF red = RGB(255, 0, 0);
inline constexpr COLORREF green = RGB(0, 255, 0);
inline constexpr COLORREF blue = RGB(0, 0, 255);
inline constexpr int width = 120;
inline constexpr int height = 60;
inline constexpr std::int32_t left = 10;
inline constexpr std::int32_t top = 5;

void Paint(clText& list, const Canvas& canvas);
// Fails if `draw` leaves the paper as it is, too.
void ExpectPaintedAs(clText& list, const std::function<void(HDC)>& draw);

}  // namespace painted

// With COM, which pictures in encoded form need.
class PaintedList : public testing::Test {
protected:
    PaintedList();
    ~PaintedList() override;
};

// Counts the fonts that are made while it lives. One at a time.
class FontCount {
public:
    FontCount();

    static int Made() { return made; }

private:
    static HFONT WINAPI Count(const LOGFONTW* description);

    static int made;
    static const ImportStub* current;
    ImportStub stub;
};
