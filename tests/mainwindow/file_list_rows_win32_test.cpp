// Rows as they are added: the picture of each file's type.
#include <gtest/gtest.h>
// shellapi.h needs windows.h before it.
#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

#include "tests/mainwindow/file_list_form.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"

namespace {

struct ShellQuestion {
    std::string path;
    DWORD attributes;
    UINT flags;
};

std::vector<ShellQuestion> questions;

// Knows two types, and no other.
DWORD_PTR WINAPI AnswerForTypes(LPCWSTR path, DWORD attributes, SHFILEINFOW* info, UINT,
                                UINT flags) {
    questions.push_back({Utf8(path), attributes, flags});
    const std::string& asked = questions.back().path;
    info->iIcon = 3;
    if (asked.ends_with(".abc")) info->iIcon = 7;
    if (asked.ends_with(".def")) info->iIcon = 9;
    return info->iIcon == 3 ? 0 : 1;
}

int PictureAt(const FileListForm& form, int row) {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    item.iImage = -100;
    SendMessageW(form.Control(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iImage;
}

class AddedRow : public testing::Test {
protected:
    AddedRow() { questions.clear(); }

    FileListForm form{L"Name"};
    const ImportStub shell{"SHGetFileInfoW", &AnswerForTypes};
};

}  // namespace

TEST_F(AddedRow, HasThePictureOfItsTypeOrNone) {
    const struct {
        const wchar_t* path;
        int picture;
    } rows[] = {{L"C:\\none.x", I_IMAGENONE},
                {L"C:\\a.abc", 7},
                {L"C:\\b.def", 9},
                {L"C:\\c.abc", 7},
                {L"C:\\d.x", I_IMAGENONE}};
    for (const auto& row : rows)
        form.AddRow(row.path, {L"name"});
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(PictureAt(form, i), rows[i].picture) << Utf8(rows[i].path);
}

// No file is touched for it, and the shell takes long: once for each type will do.
TEST_F(AddedRow, TheShellIsAskedForItsNameAloneAndOnceForEachType) {
    for (const wchar_t* path : {L"C:\\a.abc", L"C:\\b.def", L"D:\\c.ABC", L"C:\\d.x", L"C:\\e.x"})
        form.AddRow(path, {L"name"});
    ASSERT_EQ(questions.size(), 3u);
    const char* const paths[] = {"C:\\a.abc", "C:\\b.def", "C:\\d.x"};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(questions[i].path, paths[i]);
        EXPECT_EQ(questions[i].attributes, 0u) << paths[i];
        EXPECT_EQ(questions[i].flags,
                  UINT{SHGFI_USEFILEATTRIBUTES} | SHGFI_SYSICONINDEX | SHGFI_SMALLICON)
            << paths[i];
    }
}

// What has been learnt of the types goes with the rows.
TEST_F(AddedRow, ANewListingAsksTheShellAnew) {
    form.AddRow(L"C:\\a.abc", {L"name"});
    form.files.Clear();
    form.AddRow(L"C:\\a.abc", {L"name"});
    EXPECT_EQ(questions.size(), 2u);
}
