#include "tests/ui/large_text.h"

#include <windows.h>

#include <optional>

#include "tests/support/import_stub.h"

namespace {

std::optional<ImportStub> screenStub;

int WINAPI TellLargeScreen(HDC dc, int index) {
    if (index != LOGPIXELSX) return screenStub->Original<decltype(GetDeviceCaps)>()(dc, index);
    ++largeScreen.reads;
    return largeScreen.dpi;
}

}  // namespace

void LargeText::SetUpTestSuite() {
    screenStub.emplace("GetDeviceCaps", &TellLargeScreen);
}

void LargeText::TearDownTestSuite() {
    screenStub.reset();
}
