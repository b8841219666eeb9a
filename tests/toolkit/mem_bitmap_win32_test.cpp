#include "toolkit/mem_bitmap.h"

#include <gtest/gtest.h>
#include <windows.h>

// These need windows.h before them.
#include <objbase.h>
#include <ocidl.h>
#include <olectl.h>

#include <cstdint>
#include <vector>

#include "tests/support/import_stub.h"
#include "tests/ui/encoded_picture.h"
#include "tests/ui/pixels.h"

namespace {

constexpr COLORREF red = RGB(255, 0, 0);
constexpr COLORREF green = RGB(0, 255, 0);
constexpr COLORREF blue = RGB(0, 0, 255);
constexpr COLORREF white = RGB(255, 255, 255);
constexpr COLORREF grey = RGB(120, 120, 120);

constexpr std::uint32_t bitmapResource = 200;

COLORREF Pixel(const XMemBitmap& bitmap, int x, int y) {
    return GetPixel(bitmap.Context(), x, y);
}

void ExpectNone(const XMemBitmap& bitmap) {
    EXPECT_EQ(bitmap.Bitmap(), nullptr);
    EXPECT_EQ(bitmap.Context(), nullptr);
    EXPECT_EQ(bitmap.Width(), 0);
    EXPECT_EQ(bitmap.Height(), 0);
}

// The picture loader needs COM on its thread.
class EncodedPicture : public testing::Test {
protected:
    EncodedPicture() { CoInitialize(nullptr); }
    ~EncodedPicture() override { CoUninitialize(); }
};

int loaderCalls;

HRESULT WINAPI CountStreams(HGLOBAL, WINBOOL, LPSTREAM*) {
    ++loaderCalls;
    return E_FAIL;
}

// Of a screen whose pixels are half as high as they are wide.
int WINAPI TallScreen(HDC, int index) {
    return index == LOGPIXELSY ? 192 : 96;
}

HRESULT WINAPI FailToLoad(LPSTREAM, LONG, WINBOOL, REFIID, LPVOID*) {
    ++loaderCalls;
    return E_FAIL;
}

}  // namespace

TEST(MemBitmap, IsEmptyAtFirst) {
    XMemBitmap bitmap;
    ExpectNone(bitmap);
    bitmap.Release();
    bitmap.MakeContext(nullptr);
    bitmap.FillColour(red);
    ExpectNone(bitmap);
}

TEST(MemBitmap, AnEmptyOneHasItsSizeAndIsSelected) {
    XMemBitmap bitmap;
    bitmap.CreateEmpty(nullptr, 7, 5);
    EXPECT_EQ(bitmap.Width(), 7);
    EXPECT_EQ(bitmap.Height(), 5);
    EXPECT_EQ(GetCurrentObject(bitmap.Context(), OBJ_BITMAP), bitmap.Bitmap());
    bitmap.FillColour(red);
    EXPECT_EQ(Pixel(bitmap, 0, 0), red);
    EXPECT_EQ(Pixel(bitmap, 6, 4), red);
}

TEST(MemBitmap, IsCompatibleWithTheContextGiven) {
    const HBITMAP twoColours = CreateBitmap(4, 4, 1, 1, nullptr);
    const HDC model = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(model, twoColours);
    XMemBitmap bitmap;
    bitmap.CreateEmpty(model, 3, 3);
    BITMAP description = {};
    GetObjectW(bitmap.Bitmap(), sizeof(description), &description);
    EXPECT_EQ(description.bmBitsPixel, 1);
    bitmap.CreateEmpty(nullptr, 3, 3);
    GetObjectW(bitmap.Bitmap(), sizeof(description), &description);
    const HDC screen = GetDC(nullptr);
    EXPECT_EQ(description.bmBitsPixel, GetDeviceCaps(screen, BITSPIXEL));
    ReleaseDC(nullptr, screen);
    SelectObject(model, before);
    DeleteDC(model);
    DeleteObject(twoColours);
}

TEST(MemBitmap, WithoutWidthOrHeightThereIsNone) {
    const struct {
        std::int32_t width;
        std::int32_t height;
    } rows[] = {{0, 5}, {5, 0}, {0, 0}, {-5, 5}, {5, -5}, {-5, -5}};
    for (const auto& row : rows) {
        XMemBitmap bitmap;
        bitmap.CreateEmpty(nullptr, 3, 3);
        bitmap.CreateEmpty(nullptr, row.width, row.height);
        ExpectNone(bitmap);
    }
}

TEST(MemBitmap, ReleaseGivesTheHandlesUp) {
    XMemBitmap bitmap;
    bitmap.CreateEmpty(nullptr, 7, 5);
    const HBITMAP handle = bitmap.Bitmap();
    const HDC context = bitmap.Context();
    bitmap.Release();
    ExpectNone(bitmap);
    EXPECT_EQ(GetObjectType(handle), 0u);
    EXPECT_EQ(GetObjectType(context), 0u);
    bitmap.Release();
    ExpectNone(bitmap);
}

TEST(MemBitmap, ANewContextReplacesTheOldOne) {
    XMemBitmap bitmap;
    bitmap.CreateEmpty(nullptr, 2, 2);
    bitmap.FillColour(green);
    const HDC old = bitmap.Context();
    bitmap.MakeContext(nullptr);
    EXPECT_EQ(GetCurrentObject(bitmap.Context(), OBJ_BITMAP), bitmap.Bitmap());
    EXPECT_EQ(Pixel(bitmap, 1, 1), green);
    EXPECT_TRUE(bitmap.Context() == old || GetObjectType(old) == 0);
}

TEST(MemBitmap, LoadsAResourceInItsOwnSize) {
    XMemBitmap bitmap;
    bitmap.LoadResource(bitmapResource);
    EXPECT_EQ(bitmap.Width(), 2);
    EXPECT_EQ(bitmap.Height(), 2);
    EXPECT_EQ(Pixel(bitmap, 0, 0), red);
    EXPECT_EQ(Pixel(bitmap, 1, 0), green);
    EXPECT_EQ(Pixel(bitmap, 0, 1), blue);
    EXPECT_EQ(Pixel(bitmap, 1, 1), white);
    // Higher bits don't count.
    bitmap.LoadResource(0x12340000 + bitmapResource);
    EXPECT_EQ(bitmap.Width(), 2);
    bitmap.LoadResource(9999);
    ExpectNone(bitmap);
}

TEST(MemBitmap, CopiesABitmap) {
    XMemBitmap source;
    source.LoadResource(bitmapResource);
    XMemBitmap copy;
    copy.CreateEmpty(nullptr, 9, 9);
    const HBITMAP free = CreateBitmap(3, 1, 1, 1, nullptr);
    copy.CopyFromBitmap(free);
    EXPECT_EQ(copy.Width(), 3);
    EXPECT_EQ(copy.Height(), 1);
    EXPECT_NE(copy.Bitmap(), free);
    EXPECT_EQ(GetObjectType(free), static_cast<DWORD>(OBJ_BITMAP));
    DeleteObject(free);
    copy.CopyFromBitmap(nullptr);
    ExpectNone(copy);
}

TEST(MemBitmap, CopiesTheColoursOfABitmap) {
    Canvas canvas(2, 1, red);
    SetPixelV(canvas.Dc(), 1, 0, green);
    const auto free = static_cast<HBITMAP>(
        CopyImage(GetCurrentObject(canvas.Dc(), OBJ_BITMAP), IMAGE_BITMAP, 0, 0, 0));
    XMemBitmap copy;
    copy.CopyFromBitmap(free);
    DeleteObject(free);
    EXPECT_EQ(Pixel(copy, 0, 0), red);
    EXPECT_EQ(Pixel(copy, 1, 0), green);
}

TEST(MemBitmap, CopiesAnotherOne) {
    XMemBitmap source;
    source.LoadResource(bitmapResource);
    XMemBitmap copy;
    copy.CreateEmpty(nullptr, 9, 9);
    copy.CopyFrom(source);
    EXPECT_EQ(copy.Width(), 2);
    EXPECT_EQ(copy.Height(), 2);
    EXPECT_EQ(Pixel(copy, 0, 0), red);
    EXPECT_EQ(Pixel(copy, 1, 1), white);
    source.FillColour(grey);
    EXPECT_EQ(Pixel(copy, 0, 0), red);
    copy.CopyFrom(copy);
    EXPECT_EQ(Pixel(copy, 1, 0), green);
    copy.CopyFrom(XMemBitmap());
    ExpectNone(copy);
}

TEST(MemBitmap, BlitsAPartOrTheWhole) {
    XMemBitmap source;
    source.LoadResource(bitmapResource);
    const struct {
        std::int32_t width;
        std::int32_t height;
        std::int32_t sourceX;
        std::int32_t sourceY;
        COLORREF expected[4];  // (3, 4), (4, 4), (3, 5), (4, 5)
    } rows[] = {
        {-1, -1, 0, 0, {red, green, blue, white}}, {2, 2, 0, 0, {red, green, blue, white}},
        {-1, 1, 0, 0, {red, green, grey, grey}},   {1, -1, 0, 0, {red, grey, blue, grey}},
        {1, 1, 1, 1, {white, grey, grey, grey}},   {0, -1, 0, 0, {grey, grey, grey, grey}},
    };
    for (const auto& row : rows) {
        const Canvas canvas(8, 8, grey);
        source.Blit(canvas.Dc(), 3, 4, row.width, row.height, row.sourceX, row.sourceY);
        EXPECT_EQ(Colour{canvas.At(3, 4)}, Colour{row.expected[0]});
        EXPECT_EQ(Colour{canvas.At(4, 4)}, Colour{row.expected[1]});
        EXPECT_EQ(Colour{canvas.At(3, 5)}, Colour{row.expected[2]});
        EXPECT_EQ(Colour{canvas.At(4, 5)}, Colour{row.expected[3]});
        EXPECT_GE(canvas.Count(grey), 60);
    }
}

TEST(MemBitmap, BlitsByItsRasterOperation) {
    XMemBitmap source;
    source.CreateEmpty(nullptr, 2, 2);
    source.FillColour(RGB(0xF0, 0x0F, 0xFF));
    const Canvas canvas(2, 2, RGB(0x33, 0x33, 0x33));
    source.Blit(canvas.Dc(), 0, 0, 1, 2, 0, 0, SRCAND);
    source.Blit(canvas.Dc(), 1, 0, 1, 2, 0, 0, SRCPAINT);
    EXPECT_EQ(Colour{canvas.At(0, 1)}, Colour{RGB(0x30, 0x03, 0x33)});
    EXPECT_EQ(Colour{canvas.At(1, 1)}, Colour{RGB(0xF3, 0x3F, 0xFF)});
}

TEST(MemBitmap, BlitsNothingWithoutTargetOrBitmap) {
    const Canvas canvas(4, 4, grey);
    const XMemBitmap none;
    none.Blit(canvas.Dc(), 0, 0, 4, 4);
    EXPECT_EQ(canvas.Count(grey), 16);
    XMemBitmap source;
    source.CreateEmpty(nullptr, 2, 2);
    SetLastError(ERROR_SUCCESS);
    source.Blit(nullptr, 0, 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS));
}

TEST_F(EncodedPicture, IsDecodedPixelByPixel) {
    const auto colourAt = [](int x, int y) { return RGB(10 * x, 20 * y, 200); };
    const std::vector<std::uint8_t> bytes = EncodedBmp(13, 9, colourAt);
    XMemBitmap bitmap;
    ASSERT_TRUE(bitmap.LoadEncoded(bytes.data(), static_cast<std::int64_t>(bytes.size())));
    EXPECT_EQ(bitmap.Context(), nullptr);
    EXPECT_EQ(bitmap.Width(), 13);
    EXPECT_EQ(bitmap.Height(), 9);
    bitmap.MakeContext(nullptr);
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 13; ++x)
            ASSERT_EQ(Colour{Pixel(bitmap, x, y)}, Colour{colourAt(x, y)}) << x << ", " << y;
    }
}

TEST_F(EncodedPicture, IsAsLargeOnAScreenThatDiffersInItsAxes) {
    const std::vector<std::uint8_t> bytes = EncodedBmp(13, 9, [](int, int) { return red; });
    const ImportStub screen("GetDeviceCaps", &TallScreen);
    XMemBitmap bitmap;
    ASSERT_TRUE(bitmap.LoadEncoded(bytes.data(), static_cast<std::int64_t>(bytes.size())));
    EXPECT_EQ(bitmap.Width(), 13);
    EXPECT_EQ(bitmap.Height(), 18);
}

TEST_F(EncodedPicture, ReplacesTheBitmapBeforeEvenIfItFails) {
    const std::vector<std::uint8_t> bytes = EncodedBmp(3, 3, [](int, int) { return red; });
    XMemBitmap bitmap;
    bitmap.CreateEmpty(nullptr, 9, 9);
    ASSERT_TRUE(bitmap.LoadEncoded(bytes.data(), static_cast<std::int64_t>(bytes.size())));
    EXPECT_EQ(bitmap.Width(), 3);
    const char rubbish[] = "this is no picture of any kind at all";
    EXPECT_FALSE(bitmap.LoadEncoded(rubbish, sizeof(rubbish)));
    ExpectNone(bitmap);
    bitmap.CreateEmpty(nullptr, 9, 9);
    EXPECT_FALSE(bitmap.LoadEncoded(nullptr, 100));
    ExpectNone(bitmap);
}

TEST_F(EncodedPicture, BelowEightBytesTheLoaderIsNotAsked) {
    const ImportStub stream("CreateStreamOnHGlobal", CountStreams);
    const char bytes[8] = {'B', 'M'};
    XMemBitmap bitmap;
    loaderCalls = 0;
    for (const std::int64_t size : {-1, 0, 1, 7})
        EXPECT_FALSE(bitmap.LoadEncoded(bytes, size)) << size;
    EXPECT_EQ(loaderCalls, 0);
    EXPECT_FALSE(bitmap.LoadEncoded(bytes, 8));
    EXPECT_EQ(loaderCalls, 1);
    ExpectNone(bitmap);
}

TEST_F(EncodedPicture, AFailedLoadLeavesNoBitmap) {
    const ImportStub loader("OleLoadPicture", FailToLoad);
    const std::vector<std::uint8_t> bytes = EncodedBmp(3, 3, [](int, int) { return red; });
    XMemBitmap bitmap;
    loaderCalls = 0;
    EXPECT_FALSE(bitmap.LoadEncoded(bytes.data(), static_cast<std::int64_t>(bytes.size())));
    EXPECT_EQ(loaderCalls, 1);
    ExpectNone(bitmap);
}
