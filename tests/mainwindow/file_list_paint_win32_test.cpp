// Rows as they are painted, against the same pictures and texts put there by hand.
#include <gtest/gtest.h>

#include "tests/mainwindow/file_list_form.h"
#include "tests/support/text.h"
#include "tests/ui/pixels.h"
#include "toolkit/font.h"

namespace {

constexpr int rowWidth = 400;
constexpr int rowHeight = 17;
constexpr COLORREF white = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF selectedColour = RGB(0xE3, 0xF1, 0xF6);
constexpr COLORREF tickedText = RGB(0, 0, 0);
constexpr COLORREF untickedText = RGB(0x80, 0x80, 0x80);
constexpr COLORREF notRatedText = RGB(0xA0, 0xA0, 0xA0);
constexpr int tickedIcon = 113;
constexpr int untickedIcon = 110;

// A row put together by hand.
class ByHand {
public:
    explicit ByHand(COLORREF background = white) : canvas(rowWidth, rowHeight, background) {}

    void Icon(int number, int x) {
        const auto icon = static_cast<HICON>(
            LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(number), IMAGE_ICON, 16, 16, 0));
        ASSERT_NE(icon, nullptr) << number;
        DrawIconEx(canvas.Dc(), x, 0, icon, 16, 16, 0, nullptr, DI_NORMAL);
        DestroyIcon(icon);
    }
    void PictureOf(const FileListForm& form, int row, int x) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        SendMessageW(form.Control(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        const auto images = reinterpret_cast<HIMAGELIST>(
            SendMessageW(form.Control(), LVM_GETIMAGELIST, LVSIL_SMALL, 0));
        ImageList_Draw(images, item.iImage, canvas.Dc(), x, 0, ILD_NORMAL);
    }
    void Text(const wchar_t* text, int x, int y, COLORREF colour, int size = 13) {
        clFont font;
        font.Create(canvas.Dc(), nullptr, size, colour);
        font.DrawString(x, y, text);
    }
    // Pixels of the star strip, masked, and no further than `limit`.
    void Stars(int x, int y, int sourceX, int band, int width, int limit) {
        const int shown = std::min(width, limit - x);
        const int height = rowHeight - y;
        for (const auto& [id, raster] : {std::pair{122, SRCAND}, std::pair{121, SRCPAINT}}) {
            const auto bitmap = static_cast<HBITMAP>(
                LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, 0));
            const HDC dc = CreateCompatibleDC(canvas.Dc());
            const HGDIOBJ before = SelectObject(dc, bitmap);
            BitBlt(canvas.Dc(), x, y, shown, std::min(height, 16), dc, sourceX, band, raster);
            SelectObject(dc, before);
            DeleteDC(dc);
            DeleteObject(bitmap);
        }
    }

    Canvas canvas;
};

// The row as the list paints it, at (0, 0) of a canvas.
void PaintRow(FileListForm& form, const Canvas& canvas, UINT row, UINT state = 0,
              RECT area = {0, 0, rowWidth, rowHeight}) {
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_LISTVIEW;
    item.itemID = row;
    item.itemState = state;
    item.hwndItem = form.Control();
    item.hDC = canvas.Dc();
    item.rcItem = area;
    form.files.DrawRow(item);
}

void ExpectSame(const Canvas& painted, const Canvas& expected) {
    int different = 0;
    for (int y = 0; y < rowHeight; ++y) {
        for (int x = 0; x < rowWidth; ++x) {
            if (painted.At(x, y) == expected.At(x, y)) continue;
            if (++different > 3) continue;
            EXPECT_EQ(Colour{painted.At(x, y)}, Colour{expected.At(x, y)}) << x << ',' << y;
        }
    }
    EXPECT_EQ(different, 0);
}

void ExpectPainted(FileListForm& form, const ByHand& expected, UINT row = 0, UINT state = 0) {
    const Canvas painted(rowWidth, rowHeight, RGB(1, 2, 3));
    PaintRow(form, painted, row, state);
    ExpectSame(painted, expected.canvas);
}

int WidthOf(const wchar_t* text, int size = 13) {
    const Canvas canvas(1, 1);
    clFont font;
    font.Create(canvas.Dc(), nullptr, size);
    return font.TextWidth(nullptr, text);
}

}  // namespace

TEST(PaintedRow, TickedRowHasItsBoxItsPictureAndBlackText) {
    FileListForm form(L"Name\rArtist", L"200\r150");
    form.AddRow(L"C:\\a.mp3", {L"a.mp3", L"Somebody"}, true);
    ByHand expected;
    expected.Icon(tickedIcon, 2);
    expected.PictureOf(form, 0, 20);
    expected.Text(L"a.mp3", 42, 2, tickedText);
    expected.Text(L"Somebody", 206, 2, tickedText);
    ExpectPainted(form, expected);
}

TEST(PaintedRow, UntickedRowIsGrey) {
    FileListForm form(L"Name\rArtist", L"200\r150");
    form.AddRow(L"C:\\a.mp3", {L"a.mp3", L"Somebody"}, true);
    form.AddRow(L"C:\\b.mp3", {L"b.mp3", L"Nobody"}, false);
    ByHand expected;
    expected.Icon(untickedIcon, 2);
    expected.PictureOf(form, 1, 20);
    expected.Text(L"b.mp3", 42, 2, untickedText);
    expected.Text(L"Nobody", 206, 2, untickedText);
    ExpectPainted(form, expected, 1);
}

TEST(PaintedRow, SelectedRowHasItsBackgroundTickedOrNot) {
    FileListForm form(L"Name", L"200");
    form.AddRow(L"C:\\a.mp3", {L"a.mp3"}, true);
    form.AddRow(L"C:\\b.mp3", {L"b.mp3"}, false);
    for (const UINT row : {0u, 1u}) {
        ByHand expected(selectedColour);
        expected.Icon(row == 0 ? tickedIcon : untickedIcon, 2);
        expected.PictureOf(form, static_cast<int>(row), 20);
        expected.Text(row == 0 ? L"a.mp3" : L"b.mp3", 42, 2, row == 0 ? tickedText : untickedText);
        ExpectPainted(form, expected, row, ODS_SELECTED | ODS_FOCUS);
    }
}

// Behind stars and words as well, which are drawn on a bitmap of their own.
TEST(PaintedRow, RatingOfASelectedRowHasItsBackground) {
    FileListForm form(L"Name\rRating", L"60\r100");
    form.AddRow(L"C:\\a.mp3", {L"", L"7"}, true);
    form.AddRow(L"C:\\b.mp3", {L"", L""}, true);
    for (const UINT row : {0u, 1u}) {
        ByHand expected(selectedColour);
        expected.Icon(tickedIcon, 2);
        expected.PictureOf(form, static_cast<int>(row), 20);
        if (row == 0) {
            expected.Stars(62, 1, 0, 0, 56, 159);
            expected.Stars(62 + 56, 1, 56, 18, 80 - 56, 159);
        } else {
            expected.Text(L"Not Rated", 60 + 40 - WidthOf(L"Not Rated", 12) / 2, 3, notRatedText,
                          12);
        }
        SCOPED_TRACE(row);
        ExpectPainted(form, expected, row, ODS_SELECTED);
    }
}

TEST(PaintedRow, NumbersStandAtTheRightAndTitlesInTheMiddleWhereTheyAreTold) {
    FileListForm form(L"Name\rSize\rArtist", L"100\r90\r110");
    LVCOLUMNW parts = {};
    parts.mask = LVCF_FMT;
    parts.fmt = LVCFMT_CENTER;
    SendMessageW(form.Control(), LVM_SETCOLUMNW, 2, reinterpret_cast<LPARAM>(&parts));
    form.AddRow(L"C:\\a.mp3", {L"", L"1,234 KB", L"Middle"}, true);
    ByHand expected;
    expected.Icon(tickedIcon, 2);
    expected.PictureOf(form, 0, 20);
    expected.Text(L"1,234 KB", 100 + 90 - WidthOf(L"1,234 KB") - 6, 2, tickedText);
    expected.Text(L"Middle", 190 + 110 / 2 - WidthOf(L"Middle") / 2, 2, tickedText);
    ExpectPainted(form, expected);
}

TEST(PaintedRow, WideTextsAreShortenedFirstAndThenAligned) {
    const wchar_t* const longText = L"1,234,567,890,123,456 KB and more";
    FileListForm form(L"Name\rSize", L"120\r90");
    form.AddRow(L"C:\\a.mp3", {L"A name that is much too long for this", longText}, true);
    const Canvas measure(1, 1);
    clFont font;
    font.Create(measure.Dc());
    clString name(L"A name that is much too long for this");
    clString size(longText);
    ASSERT_TRUE(font.FitWithEllipsis(120 - 42, name));
    ASSERT_TRUE(font.FitWithEllipsis(90 - 6, size));
    ASSERT_TRUE(name.Right(3).Equals(L"...")) << Utf8(name);
    ByHand expected;
    expected.Icon(tickedIcon, 2);
    expected.PictureOf(form, 0, 20);
    expected.Text(name.Chars(), 42, 2, tickedText);
    expected.Text(size.Chars(), 120 + 90 - WidthOf(size.Chars()) - 6, 2, tickedText);
    ExpectPainted(form, expected);
}

TEST(PaintedRow, StarsShowTheRatingInHalvesAndDarkOnesBehind) {
    for (int rating = 1; rating <= 10; ++rating) {
        FileListForm form(L"Name\rRating", L"60\r100");
        const clString text(rating);
        form.AddRow(L"C:\\a.mp3", {L"", text.Chars()}, true);
        ByHand expected;
        expected.Icon(tickedIcon, 2);
        expected.PictureOf(form, 0, 20);
        expected.Stars(62, 1, 0, 0, 8 * rating, 159);
        if (rating < 10) expected.Stars(62 + 8 * rating, 1, 8 * rating, 18, 80 - 8 * rating, 159);
        SCOPED_TRACE(rating);
        ExpectPainted(form, expected);
    }
}

TEST(PaintedRow, UntickedRowShowsDarkStarsAndNothingBehind) {
    FileListForm form(L"Name\rRating\rrating", L"60\r100\r60");
    form.AddRow(L"C:\\a.mp3", {L"", L"7", L"7"}, false);
    ByHand expected;
    expected.Icon(untickedIcon, 2);
    expected.PictureOf(form, 0, 20);
    expected.Stars(62, 1, 0, 18, 56, 159);
    // Another spelling is a column like any other.
    expected.Text(L"7", 166, 2, untickedText);
    ExpectPainted(form, expected);
}

TEST(PaintedRow, WhatIsNoRatingSaysSo) {
    for (const wchar_t* text : {L"", L"0", L"11", L"-1", L"none"}) {
        FileListForm form(L"Name\rRating", L"60\r100");
        form.AddRow(L"C:\\a.mp3", {L"", text}, true);
        ByHand expected;
        expected.Icon(tickedIcon, 2);
        expected.PictureOf(form, 0, 20);
        expected.Text(L"Not Rated", 60 + 40 - WidthOf(L"Not Rated", 12) / 2, 3, notRatedText, 12);
        SCOPED_TRACE(Utf8(text));
        ExpectPainted(form, expected);
    }
}

TEST(PaintedRow, NarrowColumnCutsItsStars) {
    FileListForm form(L"Name\rRating\rArtist", L"60\r30\r100");
    form.AddRow(L"C:\\a.mp3", {L"", L"10", L""}, true);
    ByHand expected;
    expected.Icon(tickedIcon, 2);
    expected.PictureOf(form, 0, 20);
    expected.Stars(62, 1, 0, 0, 80, 60 + 29);
    ExpectPainted(form, expected);
}

TEST(PaintedRow, CellsStayInTheOrderOfCreation) {
    FileListForm form(L"Name\rArtist", L"100\r100");
    form.AddRow(L"C:\\a.mp3", {L"a.mp3", L"Somebody"}, true);
    int order[] = {1, 0};
    SendMessageW(form.Control(), LVM_SETCOLUMNORDERARRAY, 2, reinterpret_cast<LPARAM>(order));
    ByHand expected;
    expected.Icon(tickedIcon, 2);
    expected.PictureOf(form, 0, 20);
    expected.Text(L"a.mp3", 42, 2, tickedText);
    expected.Text(L"Somebody", 106, 2, tickedText);
    ExpectPainted(form, expected);
}

namespace {

// Pictures for the types of files, all of one colour.
class TypePictures {
public:
    TypePictures() : images(ImageList_Create(16, 16, ILC_COLOR24, 100, 1)) {}
    TypePictures(const TypePictures&) = delete;
    TypePictures& operator=(const TypePictures&) = delete;
    ~TypePictures() { ImageList_Destroy(images); }

    HIMAGELIST Images() const { return images; }
    void Fill(COLORREF colour) {
        ImageList_RemoveAll(images);
        const Canvas picture(16, 16, colour);
        const HDC dc = GetDC(nullptr);
        const HBITMAP bitmap = CreateCompatibleBitmap(dc, 16, 16);
        const HDC memory = CreateCompatibleDC(dc);
        const HGDIOBJ before = SelectObject(memory, bitmap);
        BitBlt(memory, 0, 0, 16, 16, picture.Dc(), 0, 0, SRCCOPY);
        SelectObject(memory, before);
        DeleteDC(memory);
        ReleaseDC(nullptr, dc);
        for (int i = 0; i < 100; ++i)
            ImageList_Add(images, bitmap, nullptr);
        DeleteObject(bitmap);
    }

private:
    HIMAGELIST images;
};

COLORREF PictureColour(FileListForm& form) {
    const Canvas painted(rowWidth, rowHeight);
    PaintRow(form, painted, 0);
    return painted.At(28, 8);
}

}  // namespace

// The system may have drawn another picture at the same number meanwhile.
TEST(PaintedRow, NewListingShowsWhatAPictureHasBecome) {
    constexpr COLORREF red = RGB(255, 0, 0);
    constexpr COLORREF blue = RGB(0, 0, 255);
    TypePictures pictures;
    FileListForm form(L"Name", L"200");
    SendMessageW(form.Control(), LVM_SETIMAGELIST, LVSIL_SMALL,
                 reinterpret_cast<LPARAM>(pictures.Images()));
    for (const COLORREF colour : {red, blue}) {
        pictures.Fill(colour);
        form.files.Clear();
        form.AddRow(L"C:\\a.mp3", {L"a.mp3"}, true);
        EXPECT_EQ(Colour{PictureColour(form)}, Colour{colour});
    }
}

TEST(PaintedRow, FillsItsRectangleAndNoPixelBeside) {
    FileListForm form(L"Name", L"100");
    form.AddRow(L"C:\\a.mp3", {L"a.mp3"}, true);
    const COLORREF paper = RGB(1, 2, 3);
    const Canvas canvas(rowWidth, 60, paper);
    PaintRow(form, canvas, 0, 0, {30, 20, 130, 37});
    EXPECT_EQ(canvas.Count(paper), rowWidth * 60 - 100 * rowHeight);
    EXPECT_EQ(Colour{canvas.At(30, 20)}, Colour{white});
    EXPECT_EQ(Colour{canvas.At(129, 36)}, Colour{white});
    EXPECT_LT(canvas.Count(white, {32, 20, 48, 36}), 16 * 16);  // the box begins there
    const Canvas untouched(rowWidth, rowHeight, paper);
    PaintRow(form, untouched, 0, 0, {10, 0, 10, 17});
    PaintRow(form, untouched, 0, 0, {10, 5, 50, 5});
    EXPECT_EQ(untouched.Count(paper), rowWidth * rowHeight);
}

TEST(PaintedRow, ListWithoutAWindowPaintsNothing) {
    FileListForm form(L"Name", L"100");
    form.AddRow(L"C:\\a.mp3", {L"a.mp3"}, true);
    const HWND control = form.Control();
    form.view.SetListWindow(nullptr);
    const COLORREF paper = RGB(1, 2, 3);
    const Canvas untouched(rowWidth, rowHeight, paper);
    PaintRow(form, untouched, 0);
    EXPECT_EQ(untouched.Count(paper), rowWidth * rowHeight);
    form.view.SetListWindow(control);
}

// The place of the picture is left to what comes behind it.
TEST(PaintedRow, RowThatIsNotThereHasNoPicture) {
    TypePictures pictures;
    pictures.Fill(RGB(255, 0, 0));
    FileListForm form(L"Name", L"200");
    SendMessageW(form.Control(), LVM_SETIMAGELIST, LVSIL_SMALL,
                 reinterpret_cast<LPARAM>(pictures.Images()));
    form.AddRow(L"C:\\a.mp3", {L"a.mp3"}, true);
    ByHand expected;
    expected.Icon(tickedIcon, 2);
    for (const UINT row : {1u, 1000u})
        ExpectPainted(form, expected, row);
}

// Nothing but the number of a box that is not ticked makes a row grey.
TEST(PaintedRow, RowWithoutANumberOfItsBoxLooksTicked) {
    FileListForm form(L"Name\rRating", L"100\r100");
    form.AddRow(L"C:\\a.mp3", {L"a.mp3", L"7"}, false);
    ListView_SetItemState(form.Control(), 0, 0, LVIS_STATEIMAGEMASK);
    ASSERT_EQ(ListView_GetItemState(form.Control(), 0, LVIS_STATEIMAGEMASK), 0u);
    ByHand expected;
    expected.Icon(tickedIcon, 2);
    expected.PictureOf(form, 0, 20);
    expected.Text(L"a.mp3", 42, 2, tickedText);
    expected.Stars(102, 1, 0, 0, 56, 199);
    expected.Stars(102 + 56, 1, 56, 18, 80 - 56, 199);
    ExpectPainted(form, expected);
}
