#include "mainwindow/status_text.h"

#include <gtest/gtest.h>

#include "tests/support/regional_profile.h"
#include "tests/support/text.h"

namespace {

std::string Status(const ListTotals& totals) {
    const RegionalProfile region(englishRegion);
    return Utf8(StatusText(totals, L"C:\\Music\\"));
}

TEST(StatusText, CountsWhatIsShownAndWhatIsSelected) {
    EXPECT_EQ(Status({12, 1572864, 2, 2048}),
              "12 Audio Files Shown (1.5 MB), 2 Files Selected (2 KB) in Folder: C:\\Music\\");
}

TEST(StatusText, OfAnEmptyFolderHasNoBracket) {
    EXPECT_EQ(Status({}), "0 Audio Files Shown in Folder: C:\\Music\\");
}

TEST(StatusText, WithoutATickSaysNothingOfSelectedFiles) {
    EXPECT_EQ(Status({3, 1024, 0, 0}), "3 Audio Files Shown (1 KB) in Folder: C:\\Music\\");
}

TEST(StatusText, TellsTheSizeOfSelectedFilesEvenWhenItIsNothing) {
    EXPECT_EQ(Status({3, 0, 1, 0}),
              "3 Audio Files Shown, 1 Files Selected (0 bytes) in Folder: C:\\Music\\");
}

}  // namespace
