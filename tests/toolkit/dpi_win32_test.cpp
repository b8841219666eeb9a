#include <gtest/gtest.h>
#include <windows.h>

#include "toolkit/dpi.h"

namespace {

TEST(DisplayDpi, IsThatOfTheScreen) {
    const HDC screen = GetDC(nullptr);
    const int expected = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(DisplayDpi(), expected);
    EXPECT_EQ(ScaleForDpi(21), 21 * expected / 96);
}

}  // namespace
