#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

// This needs windows.h before it.
#include <commctrl.h>

#include <vector>

#include "tests/ui/loaded_bitmap.h"
#include "tests/ui/pixels.h"

using testing::ElementsAre;

namespace {

constexpr COLORREF magenta = RGB(255, 0, 255);
constexpr int iconNumbers[] = {102, 103, 104, 105, 106, 107, 108, 110, 113};

// The widths of the images in an icon, in the order of the file.
std::vector<int> WidthsOf(int number) {
    HRSRC const found = FindResourceW(nullptr, MAKEINTRESOURCEW(number), RT_GROUP_ICON);
    if (found == nullptr) return {};
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(nullptr, found)));
    std::vector<int> widths;
    const int count = bytes[4];
    for (int i = 0; i < count; ++i)
        widths.push_back(bytes[6 + i * 14]);
    return widths;
}

class LoadedIcon {
public:
    explicit LoadedIcon(int number)
        : icon(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(number),
                                             IMAGE_ICON, 16, 16, 0))) {}
    LoadedIcon(const LoadedIcon&) = delete;
    LoadedIcon& operator=(const LoadedIcon&) = delete;
    ~LoadedIcon() { DestroyIcon(icon); }

    HICON Get() const { return icon; }

private:
    HICON icon;
};

struct Strip {
    int number;
    int width;
    int height;
};

constexpr Strip buttonStrips[] = {{115, 180, 98}, {116, 180, 98}, {117, 180, 98},
                                  {118, 180, 98}, {119, 68, 34},  {123, 180, 98}};

// Lays frame `index` of a button strip on a canvas of its size, as a button does.
void LayFrame(const Canvas& canvas, const LoadedBitmap& strip, int index) {
    const BITMAP size = strip.Description();
    const int width = size.bmWidth / 4;
    const int height = size.bmHeight / 2;
    BitBlt(canvas.Dc(), 0, 0, width, height, strip.Dc(), index * width, height, SRCAND);
    BitBlt(canvas.Dc(), 0, 0, width, height, strip.Dc(), index * width, 0, SRCPAINT);
}

}  // namespace

TEST(Icons, HaveTheirSizes) {
    EXPECT_THAT(WidthsOf(102), ElementsAre(16, 32, 48));
    for (const int number : iconNumbers) {
        if (number != 102) {
            EXPECT_THAT(WidthsOf(number), ElementsAre(16)) << number;
        }
    }
}

TEST(Icons, ShowOnAnyRow) {
    for (const int number : iconNumbers) {
        for (const COLORREF row : {RGB(255, 255, 255), RGB(0xE3, 0xF1, 0xF6), magenta}) {
            const Canvas canvas(16, 16, row);
            const LoadedIcon icon(number);
            DrawIconEx(canvas.Dc(), 0, 0, icon.Get(), 16, 16, 0, nullptr, DI_NORMAL);
            EXPECT_GT(256 - canvas.Count(row), 15) << number << " on " << row;
        }
    }
}

TEST(Icons, TickedAndUntickedBoxesCoverTheSamePixels) {
    const LoadedIcon ticked(113);
    const LoadedIcon unticked(110);
    const Canvas first(16, 16, magenta);
    const Canvas second(16, 16, magenta);
    DrawIconEx(first.Dc(), 0, 0, ticked.Get(), 16, 16, 0, nullptr, DI_NORMAL);
    DrawIconEx(second.Dc(), 0, 0, unticked.Get(), 16, 16, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(first.Count(magenta), second.Count(magenta));
    const RECT a = first.BoundsOfOthers(magenta);
    const RECT b = second.BoundsOfOthers(magenta);
    EXPECT_TRUE(EqualRect(&a, &b));
    EXPECT_EQ(b.left + b.right, 16);
    EXPECT_EQ(b.top + b.bottom, 16);
}

// The tree and the header take their pictures from lists of 24 bits with a mask.
TEST(Icons, KeepTheirShapeInAnImageListWithoutAlpha) {
    HIMAGELIST const list = ImageList_Create(16, 16, ILC_COLOR24 | ILC_MASK, 0, 16);
    for (const int number : iconNumbers) {
        const LoadedIcon icon(number);
        const int index = ImageList_ReplaceIcon(list, -1, icon.Get());
        const Canvas drawn(16, 16, magenta);
        const Canvas listed(16, 16, magenta);
        DrawIconEx(drawn.Dc(), 0, 0, icon.Get(), 16, 16, 0, nullptr, DI_NORMAL);
        ImageList_Draw(list, index, listed.Dc(), 0, 0, ILD_NORMAL);
        const RECT a = drawn.BoundsOfOthers(magenta);
        const RECT b = listed.BoundsOfOthers(magenta);
        EXPECT_TRUE(EqualRect(&a, &b)) << number;
        EXPECT_EQ(listed.Count(RGB(0, 0, 0)), 0) << number << ": see-through pixels in black";
    }
    ImageList_Destroy(list);
}

TEST(Strips, HaveTheirSizesAndDepth) {
    for (const Strip& strip :
         {buttonStrips[0], buttonStrips[1], buttonStrips[2], buttonStrips[3], buttonStrips[4],
          buttonStrips[5], Strip{121, 80, 33}, Strip{122, 80, 33}}) {
        const BITMAP loaded = LoadedBitmap(strip.number).Description();
        EXPECT_EQ(loaded.bmWidth, strip.width) << strip.number;
        EXPECT_EQ(loaded.bmHeight, strip.height) << strip.number;
        EXPECT_EQ(loaded.bmBitsPixel, 8) << strip.number;
    }
}

TEST(Strips, NormalFrameLetsTheFormThroughAndTilesCoverIt) {
    constexpr COLORREF form = RGB(0xF1, 0xF1, 0xF1);
    for (const Strip& strip : buttonStrips) {
        const LoadedBitmap loaded(strip.number);
        const int pixels = strip.width / 4 * (strip.height / 2);
        int covered[4];
        for (int frame = 0; frame < 4; ++frame) {
            const Canvas canvas(strip.width / 4, strip.height / 2, form);
            LayFrame(canvas, loaded, frame);
            covered[frame] = pixels - canvas.Count(form);
        }
        EXPECT_GT(covered[0], pixels / 10) << strip.number;
        EXPECT_LT(covered[0], pixels * 3 / 4) << strip.number;
        EXPECT_GE(covered[1], covered[0]) << strip.number;
        EXPECT_GE(covered[2], covered[0]) << strip.number;
        // A ring: it lies over whatever frame shows.
        EXPECT_GT(covered[3], pixels / 20) << strip.number;
        EXPECT_LT(covered[3], pixels / 3) << strip.number;
    }
}

TEST(Strips, StarsDrawInBothBandsAndLeaveTheRestOfTheRow) {
    constexpr COLORREF row = RGB(0xE3, 0xF1, 0xF6);
    const LoadedBitmap picture(121);
    const LoadedBitmap mask(122);
    const int band = picture.Description().bmHeight / 2;
    for (const int top : {0, band + 2}) {
        const Canvas canvas(80, 17, row);
        BitBlt(canvas.Dc(), 0, 0, 80, band, mask.Dc(), 0, top, SRCAND);
        BitBlt(canvas.Dc(), 0, 0, 80, band, picture.Dc(), 0, top, SRCPAINT);
        const RECT bounds = canvas.BoundsOfOthers(row);
        EXPECT_GE(bounds.top, 0) << top;
        EXPECT_LE(bounds.bottom, 15) << top;
        EXPECT_GT(80 * 17 - canvas.Count(row), 5 * 60) << top;
        EXPECT_EQ(canvas.Count(RGB(0, 0, 0)), 0) << top;
    }
}
