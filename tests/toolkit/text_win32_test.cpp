#include "toolkit/text.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "tests/support/text.h"
#include "tests/toolkit/painted_list.h"
#include "tests/ui/encoded_picture.h"
#include "tests/ui/icons.h"
#include "toolkit/draw.h"
#include "toolkit/font.h"
#include "toolkit/gdi_handle.h"

namespace {

constexpr COLORREF red = RGB(255, 0, 0);

void ExpectSize(const clText& list, std::int32_t width, std::int32_t height) {
    const clExtent size = list.Measure();
    EXPECT_EQ(size.width, width);
    EXPECT_EQ(size.height, height);
}

// The size of a text in the default font, as the font itself tells it.
clExtent TextExtent(const clString& text, std::int32_t startX = 0) {
    const clScreenContext screen;
    clFont font;
    font.Create(screen.Get());
    return {font.TextWidth(nullptr, text, true, startX), font.TextHeight(text, true)};
}

clTextString Plain(const wchar_t* text, std::int32_t x = 0, std::int32_t y = 0) {
    return {.at = {x, y}, .text = text};
}

// One of each kind.
void AddOneOfEach(clText& list, HICON icon, const XMemBitmap& image) {
    list.AddFill({.area = {0, 0, 1, 1}, .colour = 1, .condition = 1});
    list.AddBox({.area = {0, 0, 2, 2}, .brushColour = 2, .penColour = 3, .cornerRadius = 4});
    list.AddFrame({.area = {0, 0, 3, 3}, .colour = 5, .focus = true});
    list.AddGradient({.area = {0, 0, 4, 4}, .colours = {6, 7, 8, 9}, .dropCache = true});
    list.AddPicture({.at = {1, 1}, .rasterOp = SRCAND}, image);
    list.AddLine({.colour = 10, .from = {1, 2}, .to = {3, 4}});
    list.AddIcon({.icon = icon, .at = {5, 6}});
    list.AddText({.at = {7, 8},
                  .text = L"Text",
                  .face = L"Arial",
                  .colour = 11,
                  .bold = true,
                  .italic = true,
                  .underline = true,
                  .size = 20,
                  .maximumWidth = 99,
                  .condition = 12});
}

class TextList : public PaintedList {
protected:
    TextList() : icon(MakeIcon(16, 17, red)) {
        image.CreateEmpty(nullptr, 30, 20);
        image.FillColour(red);
    }
    ~TextList() override { DestroyIcon(icon); }

    HICON icon;
    XMemBitmap image;
};

}  // namespace

TEST_F(TextList, LayerZeroIsTheNextFreeOne) {
    clText list;
    EXPECT_EQ(list.layerCount, 0);
    EXPECT_TRUE(list.IsEmpty());
    list.AddFill({.colour = 1});
    EXPECT_EQ(list.fills.At(0)->layer, 0);
    EXPECT_EQ(list.layerCount, 1);
    EXPECT_FALSE(list.IsEmpty());
    list.AddLine({.colour = 1});
    EXPECT_EQ(list.lines.At(0)->layer, 1);
    // One that is given is used as it stands, and the next goes above it.
    list.AddFrame({.colour = 1}, 7);
    EXPECT_EQ(list.frames.At(0)->layer, 7);
    EXPECT_EQ(list.layerCount, 8);
    list.AddFrame({.colour = 1}, 3);
    EXPECT_EQ(list.frames.At(1)->layer, 3);
    EXPECT_EQ(list.layerCount, 8);
    list.AddText(Plain(L"x"));
    EXPECT_EQ(list.texts.At(0)->layer, 8);
    EXPECT_EQ(list.layerCount, 9);
    // The record's own layer doesn't count.
    list.AddBox({.layer = 77});
    EXPECT_EQ(list.boxes.At(0)->layer, 9);
    list.AddBox({}, std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(list.layerCount, 10);
}

TEST_F(TextList, EveryChangeMakesItDirty) {
    clText list;
    EXPECT_TRUE(list.dirty);
    const auto expectDirty = [&list] {
        EXPECT_TRUE(list.dirty);
        list.dirty = false;
    };
    list.AddFill({});
    expectDirty();
    list.AddBox({});
    expectDirty();
    list.AddFrame({});
    expectDirty();
    list.AddGradient({});
    expectDirty();
    list.AddPicture({}, image);
    expectDirty();
    list.AddLine({});
    expectDirty();
    list.AddIcon({});
    expectDirty();
    list.AddText({});
    expectDirty();
    list.Clear();
    expectDirty();
}

TEST_F(TextList, OwnsCopiesOfWhatItShows) {
    clText list;
    list.AddIcon({.icon = icon});
    list.AddIcon({});
    list.AddPicture({}, image);
    EXPECT_NE(list.icons.At(0)->icon, icon);
    EXPECT_EQ(IconHeight(list.icons.At(0)->icon), 17);
    EXPECT_EQ(list.icons.At(1)->icon, nullptr);
    image.FillColour(RGB(0, 0, 0));
    EXPECT_EQ(GetPixel(list.pictures.At(0)->source.image.Context(), 3, 3), red);
}

TEST_F(TextList, TakesAPictureInEachForm) {
    clText list;
    const HBITMAP bitmap = CreateBitmap(5, 6, 1, 1, nullptr);
    list.AddPicture({}, bitmap);
    DeleteObject(bitmap);
    EXPECT_EQ(list.pictures.At(0)->source.image.Width(), 5);
    const std::vector<std::uint8_t> bytes = {1, 2, 3};
    list.AddPicture({}, bytes.data(), 3);
    const clPictureSource& encoded = list.pictures.At(1)->source;
    EXPECT_NE(encoded.encoded.data, bytes.data());
    EXPECT_EQ(encoded.encoded.size, 3);
    EXPECT_EQ(encoded.encoded.data[2], 3);
    // A source that is given goes in the place of the record's own.
    list.AddPicture(*list.pictures.At(1), image);
    const clPictureSource& replaced = list.pictures.At(2)->source;
    EXPECT_EQ(replaced.encoded.size, 0);
    EXPECT_EQ(replaced.image.Width(), 30);
    list.AddPicture(*list.pictures.At(2), bytes.data(), 2);
    EXPECT_EQ(list.pictures.At(3)->source.image.Width(), 0);
    EXPECT_EQ(list.pictures.At(3)->source.encoded.size, 2);
    list.AddPicture({}, bytes.data(), 0);
    EXPECT_EQ(list.pictures.At(4)->source.encoded.size, 0);
}

TEST_F(TextList, ClearLeavesNothing) {
    clText list;
    AddOneOfEach(list, icon, image);
    list.paddingX = list.paddingY = 5;
    list.minimumWidth = list.minimumHeight = 6;
    list.stateFlags = 7;
    list.dirty = false;
    list.Clear();
    EXPECT_EQ(list.fills.Count() + list.boxes.Count() + list.frames.Count() +
                  list.gradients.Count() + list.pictures.Count() + list.lines.Count() +
                  list.icons.Count() + list.texts.Count(),
              0);
    EXPECT_TRUE(list.dirty);
    EXPECT_EQ(list.paddingX, 0);
    EXPECT_EQ(list.paddingY, 0);
    EXPECT_EQ(list.minimumWidth, 0);
    EXPECT_EQ(list.minimumHeight, 0);
    EXPECT_EQ(list.layerCount, 0);
    EXPECT_EQ(list.stateFlags, 0u);
    ExpectSize(list, 0, 0);
}

TEST_F(TextList, ACopyLiesOneLayerHigher) {
    clText list;
    AddOneOfEach(list, icon, image);
    clText copy;
    copy.AddFill({.colour = 99});
    copy.paddingX = 3;
    copy.CopyFrom(list);
    // The layers of the original in the order of adding are 0 to 7.
    EXPECT_EQ(copy.fills.At(0)->layer, 1);
    EXPECT_EQ(copy.boxes.At(0)->layer, 2);
    EXPECT_EQ(copy.frames.At(0)->layer, 3);
    EXPECT_EQ(copy.gradients.At(0)->layer, 4);
    EXPECT_EQ(copy.pictures.At(0)->layer, 5);
    EXPECT_EQ(copy.lines.At(0)->layer, 6);
    EXPECT_EQ(copy.icons.At(0)->layer, 7);
    EXPECT_EQ(copy.texts.At(0)->layer, 8);
    EXPECT_EQ(copy.layerCount, 9);
    EXPECT_EQ(copy.fills.Count(), 1);
    EXPECT_EQ(copy.paddingX, 0);
    EXPECT_TRUE(copy.dirty);
}

TEST_F(TextList, ACopyHasAllFields) {
    clText copy;
    {
        clText list;
        AddOneOfEach(list, icon, image);
        copy.CopyFrom(list);
    }
    EXPECT_EQ(copy.fills.At(0)->colour, 1u);
    EXPECT_EQ(copy.fills.At(0)->condition, 1u);
    EXPECT_EQ(copy.boxes.At(0)->brushColour, 2u);
    EXPECT_EQ(copy.boxes.At(0)->penColour, 3u);
    EXPECT_EQ(copy.boxes.At(0)->cornerRadius, 4);
    EXPECT_EQ(copy.frames.At(0)->colour, 5u);
    EXPECT_TRUE(copy.frames.At(0)->focus);
    EXPECT_EQ(copy.gradients.At(0)->colours.bottomRight, 9u);
    EXPECT_TRUE(copy.gradients.At(0)->dropCache);
    EXPECT_EQ(copy.pictures.At(0)->rasterOp, static_cast<DWORD>(SRCAND));
    EXPECT_EQ(copy.pictures.At(0)->source.image.Width(), 30);
    EXPECT_EQ(copy.lines.At(0)->to.y, 4);
    EXPECT_EQ(IconWidth(copy.icons.At(0)->icon), 16);
    const clTextString& text = *copy.texts.At(0);
    EXPECT_EQ(Utf8(text.text), "Text");
    EXPECT_EQ(Utf8(text.face), "Arial");
    EXPECT_EQ(text.colour, 11u);
    EXPECT_TRUE(text.bold && text.italic && text.underline);
    EXPECT_EQ(text.size, 20);
    EXPECT_EQ(text.maximumWidth, 99);
    EXPECT_EQ(text.condition, 12u);
    EXPECT_EQ(text.at.y, 8);
}

TEST_F(TextList, MeasuresWhatHasAFixedPlace) {
    clText list;
    ExpectSize(list, 0, 0);
    list.AddFill({.area = {5, 5, 40, 20}}, 3);
    ExpectSize(list, 40, 20);
    list.AddBox({.area = {0, 0, 41, 0x20000}, .condition = 4});
    ExpectSize(list, 41, 20);
    list.AddFrame({.area = {0, 0, 0x20000, 21}});
    ExpectSize(list, 41, 21);
    list.AddGradient({.area = {0, 0, 42, 22}});
    ExpectSize(list, 42, 22);
    list.AddLine({.from = {43, 1}, .to = {1, 23}});
    ExpectSize(list, 43, 23);
    list.AddPicture({.at = {14, 0x90000}}, image);
    ExpectSize(list, 44, 23);
    list.AddIcon({.icon = icon, .at = {0x90000, 7}});
    ExpectSize(list, 44, 24);
}

TEST_F(TextList, MeasuresAFullSizeGradientAsItsPadding) {
    clText list;
    list.AddGradient({.area = {0, 0, 0x20000, 0x20000}});
    list.width = 300;
    list.height = 200;
    ExpectSize(list, 0, 0);
    list.paddingX = 4;
    list.paddingY = 5;
    ExpectSize(list, 4, 5);
    // The size that anchors refer to is as it was.
    EXPECT_EQ(list.width, 300);
    EXPECT_EQ(list.height, 200);
}

TEST_F(TextList, TheMinimumCountsWithPadding) {
    clText list;
    list.AddFill({.area = {0, 0, 40, 20}});
    list.paddingX = 4;
    list.paddingY = 5;
    list.minimumWidth = 43;
    list.minimumHeight = 26;
    ExpectSize(list, 44, 26);
}

TEST_F(TextList, MeasuresATextWithSpaceBehindAndBelow) {
    const clExtent size = TextExtent(L"Album Artist");
    clText list;
    list.AddText(Plain(L"Album Artist", 5, 3));
    ExpectSize(list, 5 + size.width + 4, 3 + size.height + 1);
    // What is centred counts from 0.
    clText centred;
    centred.AddText(Plain(L"Album Artist", 0x90000, 0x90000));
    ExpectSize(centred, size.width + 4, size.height + 1);
    // An empty text has its place too.
    clText empty;
    empty.AddText(Plain(L"", 5, 3));
    ExpectSize(empty, 9, 4);
}

TEST_F(TextList, MeasuresLinesAndTabsOfAText) {
    clText list;
    list.AddText(Plain(L"One\r\nSecond line\rThird", 0, 0));
    const clExtent lines = TextExtent(L"One\r\nSecond line\rThird");
    ExpectSize(list, lines.width + 4, lines.height + 1);
    clText tabbed;
    tabbed.AddText(Plain(L"a\tb", 13, 0));
    ExpectSize(tabbed, 13 + TextExtent(L"a\tb", 13).width + 4, TextExtent(L"a").height + 1);
}

TEST_F(TextList, ATextIsMeasuredAsItIsShortened) {
    const std::int32_t whole = TextExtent(L"A rather long text").width;
    clText list;
    clTextString text = Plain(L"A rather long text");
    text.maximumWidth = whole / 2;
    list.AddText(text);
    EXPECT_LT(list.Measure().width, whole / 2 + 4);
    EXPECT_GT(list.Measure().width, whole / 4);
    EXPECT_EQ(Utf8(list.texts.At(0)->text), "A rather long text");
}

TEST_F(TextList, SizeZeroMeasuresAsThirteen) {
    clText unsized;
    unsized.AddText(Plain(L"Ay"));
    clText thirteen;
    clTextString text = Plain(L"Ay");
    text.size = 13;
    thirteen.AddText(text);
    const clExtent size = thirteen.Measure();
    ExpectSize(unsized, size.width, size.height);
    text.size = 30;
    clText larger;
    larger.AddText(text);
    EXPECT_GT(larger.Measure().height, size.height + 10);
}

TEST_F(TextList, MeasuresPicturesInEncodedForm) {
    const auto colourAt = [](int, int) { return red; };
    const std::vector<std::uint8_t> bytes = EncodedBmp(50, 40, colourAt);
    clText list;
    list.AddPicture({.at = {2, 3}}, bytes.data(), static_cast<std::int64_t>(bytes.size()));
    ExpectSize(list, 52, 43);
    clByteBuffer external;
    const std::vector<std::uint8_t> larger = EncodedBmp(60, 45, colourAt);
    ASSERT_TRUE(external.Resize(static_cast<std::int64_t>(larger.size()), false));
    std::copy(larger.begin(), larger.end(), external.data);
    list.pictures.At(0)->source.external = &external;
    ExpectSize(list, 62, 48);
    external.Free();
    ExpectSize(list, 52, 43);
    // What can't be decoded takes no room.
    clText broken;
    broken.AddPicture({.at = {2, 3}}, "not a picture", 13);
    ExpectSize(broken, 2, 3);
}

TEST_F(TextList, MeasuresAnExternalIcon) {
    HICON external = nullptr;
    clText list;
    list.AddIcon({.icon = icon, .at = {2, 3}, .external = &external});
    ExpectSize(list, 18, 20);
    external = MakeIcon(24, 32, red);
    ExpectSize(list, 26, 35);
    DestroyIcon(external);
}

TEST_F(TextList, MeasuringMakesOneFontForARunOfLikeStrings) {
    clText list;
    for (int i = 0; i < 5; ++i) {
        clTextString text = Plain(L"like");
        text.colour = static_cast<COLORREF>(i);  // no matter for the size
        list.AddText(text);
    }
    {
        const FontCount count;
        (void)list.Measure();
        EXPECT_EQ(FontCount::Made(), 1);
    }
    clTextString other = Plain(L"bold");
    other.bold = true;
    list.AddText(other);
    list.AddText(Plain(L"like"));
    const FontCount count;
    (void)list.Measure();
    EXPECT_EQ(FontCount::Made(), 3);
}
