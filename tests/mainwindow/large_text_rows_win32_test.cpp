// Rows of a list of files on a display that shows everything a quarter larger.
#include "tests/mainwindow/file_list_form.h"
#include "tests/ui/large_text.h"
#include "tests/ui/pixels.h"
#include "toolkit/font.h"

namespace {

constexpr LONG rowWidth = 380;
constexpr LONG rowHeight = 24;

void Write(const Canvas& canvas, const wchar_t* text, std::int32_t x, std::int32_t y,
           std::int32_t size, COLORREF colour) {
    clFont font;
    font.Create(canvas.Dc(), nullptr, size, colour);
    font.DrawString(x, y, text);
}

int WidthOf(const wchar_t* text, std::int32_t size) {
    const Canvas canvas(1, 1);
    clFont font;
    font.Create(canvas.Dc(), nullptr, size);
    return font.TextWidth(nullptr, text);
}

}  // namespace

// Places and pictures stay as they are.
TEST_F(LargeText, TextsOfAFileListGrow) {
    FileListForm form(L"Name\rArtist\rRating", L"60\r200\r120");
    form.AddRow(L"C:\\a.mp3", {L"", L"Somebody", L""}, true);
    const Canvas painted(rowWidth, rowHeight, RGB(1, 2, 3));
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_LISTVIEW;
    item.hwndItem = form.Control();
    item.hDC = painted.Dc();
    item.rcItem = {0, 0, rowWidth, rowHeight};
    form.files.DrawRow(item);

    const Canvas expected(rowWidth, rowHeight);
    Write(expected, L"Somebody", 66, 2, 16, RGB(0, 0, 0));
    Write(expected, L"Not Rated", 260 + 40 - WidthOf(L"Not Rated", 15) / 2, 3, 15,
          RGB(0xA0, 0xA0, 0xA0));
    for (const auto& [left, right] : {std::pair{60, 260}, std::pair{260, 380}}) {
        int different = 0;
        for (int y = 0; y < rowHeight; ++y) {
            for (int x = left; x < right; ++x)
                different += painted.At(x, y) != expected.At(x, y) ? 1 : 0;
        }
        EXPECT_EQ(different, 0) << left;
    }
}
