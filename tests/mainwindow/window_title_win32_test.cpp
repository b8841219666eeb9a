#include "mainwindow/window_title.h"

#include <gtest/gtest.h>

#include <string_view>

#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"

namespace {

// The title beside a file of these UTF-16 units.
std::string TitleWith(std::wstring_view content) {
    const ScratchFolder folder;
    folder.AddFile(L"OEM.txt",
                   std::string(reinterpret_cast<const char*>(content.data()), content.size() * 2));
    return Utf8(BuildWindowTitle(folder.Path()));
}

}  // namespace

TEST(WindowTitle, StandsAloneWithoutTheFile) {
    const ScratchFolder folder;
    EXPECT_EQ(Utf8(BuildWindowTitle(folder.Path())), "Tonequarry Batch Converter");
}

TEST(WindowTitle, TakesTheFirstLine) {
    EXPECT_EQ(TitleWith(L"Acme"), "Tonequarry Batch Converter: Acme");
    EXPECT_EQ(TitleWith(L"Acme\rmore"), "Tonequarry Batch Converter: Acme");
    EXPECT_EQ(TitleWith(L"Acme\nmore"), "Tonequarry Batch Converter: Acme");
    EXPECT_EQ(TitleWith(L"\xFEFF\x65E5\x672C\r\nmore"),
              "Tonequarry Batch Converter: \xE6\x97\xA5\xE6\x9C\xAC");
}

TEST(WindowTitle, EndsInItsColonForAnEmptyLine) {
    EXPECT_EQ(TitleWith(L""), "Tonequarry Batch Converter: ");
    EXPECT_EQ(TitleWith(L"\xFEFF"), "Tonequarry Batch Converter: ");
    EXPECT_EQ(TitleWith(L"\r\nAcme"), "Tonequarry Batch Converter: ");
}

TEST(WindowTitle, FolderOfThatNameIsNoFile) {
    const ScratchFolder folder;
    folder.AddFolder(L"OEM.txt");
    EXPECT_EQ(Utf8(BuildWindowTitle(folder.Path())), "Tonequarry Batch Converter");
}
