#include <gtest/gtest.h>
#include <windows.h>

#include "tests/support/import_stub.h"
#include "toolkit/dpi.h"

namespace {

TEST(DisplayDpi, IsThatOfTheScreen) {
    const HDC screen = GetDC(nullptr);
    const int expected = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(DisplayDpi(), expected);
    EXPECT_EQ(ScaleForDpi(21), 21 * expected / 96);
}

int WINAPI OtherScreen(HDC, int) {
    return 192;
}

// A form that was laid out stays as it was.
TEST(DisplayDpi, IsReadOnce) {
    const std::int32_t before = DisplayDpi();
    const ImportStub stub("GetDeviceCaps", &OtherScreen);
    EXPECT_EQ(DisplayDpi(), before);
}

}  // namespace
