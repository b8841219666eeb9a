// Sizes on a display of 120 DPI, as one has it that shows everything a quarter
// larger. The display's DPI is read once in a process, so this program is one of
// its own: the others run at whatever the display has.
#include <gtest/gtest.h>
#include <windows.h>

#include <optional>

#include "tests/support/import_stub.h"
#include "tests/toolkit/list_form.h"
#include "tests/toolkit/value_form.h"
#include "toolkit/dpi.h"
#include "toolkit/font.h"
#include "toolkit/gdi_handle.h"

namespace {

std::optional<ImportStub> screenStub;
int dpiOfTheScreen = 120;
int reads = 0;

int WINAPI LargeScreen(HDC dc, int index) {
    if (index != LOGPIXELSX) return screenStub->Original<decltype(GetDeviceCaps)>()(dc, index);
    ++reads;
    return dpiOfTheScreen;
}

class LargeText : public testing::Test {
protected:
    static void SetUpTestSuite() { screenStub.emplace("GetDeviceCaps", &LargeScreen); }
    static void TearDownTestSuite() { screenStub.reset(); }
};

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

TEST_F(LargeText, DisplayIsAskedOnceAndNeverAgain) {
    EXPECT_EQ(DisplayDpi(), 120);
    EXPECT_EQ(ScaleForDpi(21), 26);
    EXPECT_EQ(ScaleForDpi(-21), -26);
    dpiOfTheScreen = 144;
    const int readsBefore = reads;
    EXPECT_EQ(DisplayDpi(), 120);
    EXPECT_EQ(ScaleForDpi(21), 26);
    EXPECT_EQ(reads, readsBefore);
    dpiOfTheScreen = 120;
}

TEST_F(LargeText, RowsOfAValueListGrow) {
    ValueForm form;
    form.Fill(1);
    EXPECT_EQ(form.Ask(LB_GETITEMHEIGHT), 26);
    clValueRowParams params;
    params.nameX = 30;
    params.valueX = 200;
    params.toggleX = 11;
    params.valueWidth = 90;
    const clValueRow& row = *form.list.Row(form.Add(ValueKind::Edit, L"Name", L"Value", params));
    EXPECT_EQ(row.nameX, 37);
    EXPECT_EQ(row.valueX, 250);
    EXPECT_EQ(row.toggleX, 13);
    EXPECT_EQ(row.valueWidth, 112);
}

TEST_F(LargeText, RowsInPixelsDoNot) {
    ValueForm form;
    form.list.SetPixelMode(true);
    clValueRowParams params;
    params.valueX = 200;
    EXPECT_EQ(form.list.Row(form.Add(ValueKind::Edit, L"Name", L"Value", params))->valueX, 200);
}

TEST_F(LargeText, EditorsOfAValueListGrow) {
    ValueForm form;
    clValueRowParams params;
    params.buttonCaption = L"Pick";
    params.lines = 3;
    form.Add(ValueKind::Edit, L"name", L"value");
    form.Add(ValueKind::Edit, L"name", L"value", params);
    form.list.SelectRowAt(0);
    ASSERT_NE(form.Edit(), nullptr);
    EXPECT_EQ(SizeOf(form.Place(form.Edit())).cy, 26);
    form.list.SelectRowAt(1);
    ASSERT_NE(form.Edit(), nullptr);
    EXPECT_EQ(SizeOf(form.Place(form.Edit())).cy, 3 * 26);
    ASSERT_NE(form.Button(), nullptr);
    EXPECT_EQ(SizeOf(form.Place(form.Button())).cy, 3 * 26);
    const clScreenContext screen;
    clFont font;
    font.Create(nullptr, nullptr, 15);
    EXPECT_EQ(SizeOf(form.Place(form.Button())).cx, font.TextWidth(screen.Get(), L"Pick") + 20);
}

TEST_F(LargeText, EditorOfAListGrows) {
    ListForm form;
    form.Fill(3);
    form.list.Editor().Start(form.list, 1, 1);
    const HWND edit = FindWindowExW(form.Control(), nullptr, L"EDIT", nullptr);
    ASSERT_NE(edit, nullptr);
    LOGFONTW font = {};
    const auto handle = reinterpret_cast<HGDIOBJ>(SendMessageW(edit, WM_GETFONT, 0, 0));
    ASSERT_NE(GetObjectW(handle, sizeof(font), &font), 0);
    EXPECT_EQ(font.lfHeight, 16);
}

}  // namespace
