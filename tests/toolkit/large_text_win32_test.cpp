// Sizes of controls on a display that shows everything a quarter larger.
#include "tests/ui/large_text.h"

#include "tests/toolkit/list_form.h"
#include "tests/toolkit/value_form.h"
#include "toolkit/dpi.h"
#include "toolkit/font.h"
#include "toolkit/gdi_handle.h"

namespace {

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

TEST_F(LargeText, DisplayIsAskedOnceAndNeverAgain) {
    EXPECT_EQ(DisplayDpi(), 120);
    EXPECT_EQ(ScaleForDpi(21), 26);
    EXPECT_EQ(ScaleForDpi(-21), -26);
    largeScreen.dpi = 144;
    const int readsBefore = largeScreen.reads;
    EXPECT_EQ(DisplayDpi(), 120);
    EXPECT_EQ(ScaleForDpi(21), 26);
    EXPECT_EQ(largeScreen.reads, readsBefore);
    largeScreen.dpi = 120;
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
