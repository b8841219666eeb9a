// A display of 120 DPI, as one has it that shows everything a quarter larger. The
// display's DPI is read once in a process, so these tests have a program of their
// own: the others run at whatever the display has.
#pragma once

#include <gtest/gtest.h>

struct LargeScreen {
    int dpi = 120;
    int reads = 0;  // how often somebody asked for it
};
inline LargeScreen largeScreen;

// The display while the tests of this name run, in whatever file they are.
class LargeText : public testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
};
