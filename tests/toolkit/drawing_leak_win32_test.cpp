#include <gtest/gtest.h>
#include <windows.h>

// objbase.h needs windows.h before it.
#include <objbase.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "tests/ui/encoded_picture.h"
#include "tests/ui/icons.h"
#include "tests/ui/pixels.h"
#include "tests/ui/resource_counts.h"
#include "toolkit/skin_menu.h"
#include "toolkit/text.h"

namespace {

constexpr COLORREF red = RGB(255, 0, 0);

void ExpectNothingLeft(const std::function<void()>& use) {
    // What the platform makes once and keeps.
    for (int i = 0; i < 20; ++i)
        use();
    const ResourceCounts before = CountResources();
    for (int i = 0; i < 1000; ++i)
        use();
    EXPECT_EQ(CountResources(), before);
}

void FillList(clText& list, HICON icon, const std::vector<std::uint8_t>& picture) {
    const clArea all = {0, 0, 0x20000, 0x20000};
    list.AddFill({.area = all, .colour = red});
    list.AddBox({.area = all, .brushColour = 1, .penColour = 2, .cornerRadius = 5});
    list.AddFrame({.area = all, .colour = 3});
    list.AddFrame({.area = all, .focus = true});
    list.AddGradient({.area = all, .colours = {0, red, 0, red}});
    list.AddGradient({.area = all, .colours = {0, red, 9, 8}, .dropCache = true});
    list.AddLine({.colour = 4, .from = {0, 0}, .to = {9, 9}});
    list.AddPicture({}, picture.data(), static_cast<std::int64_t>(picture.size()));
    list.AddIcon({.icon = icon});
    list.AddText({.text = L"One\rTwo", .maximumWidth = 20});
    list.AddText({.text = L"Three", .bold = true});
    list.minimumWidth = 50;
    list.minimumHeight = 30;
}

class DrawingLeak : public testing::Test {
protected:
    DrawingLeak() : icon(MakeIcon(16, 16, red)), canvas(60, 40) { CoInitialize(nullptr); }
    ~DrawingLeak() override {
        DestroyIcon(icon);
        CoUninitialize();
    }

    HICON icon;
    Canvas canvas;
};

}  // namespace

TEST_F(DrawingLeak, BitmapsLeaveNothing) {
    const std::vector<std::uint8_t> picture = EncodedBmp(9, 9, [](int, int) { return red; });
    const HBITMAP source = CreateBitmap(4, 4, 1, 32, nullptr);
    ExpectNothingLeft([&] {
        XMemBitmap bitmap;
        bitmap.CreateEmpty(canvas.Dc(), 8, 8);
        bitmap.FillColour(red);
        bitmap.MakeContext(nullptr);
        bitmap.LoadResource(200);
        bitmap.CopyFromBitmap(source);
        XMemBitmap copy;
        copy.CopyFrom(bitmap);
        copy.Blit(canvas.Dc(), 0, 0);
        EXPECT_TRUE(bitmap.LoadEncoded(picture.data(), static_cast<std::int64_t>(picture.size())));
        EXPECT_FALSE(bitmap.LoadEncoded("not a picture", 13));
    });
    DeleteObject(source);
}

TEST_F(DrawingLeak, ListsLeaveNothing) {
    const std::vector<std::uint8_t> picture = EncodedBmp(9, 9, [](int, int) { return red; });
    ExpectNothingLeft([&] {
        clText list;
        FillList(list, icon, picture);
        list.icons.At(0)->external = &icon;
        list.Paint(canvas.Dc(), 0, 0);
        list.icons.At(0)->external = nullptr;
        clText copy;
        copy.CopyFrom(list);
        list.Clear();
    });
}

TEST_F(DrawingLeak, MenusLeaveNothing) {
    ExpectNothingLeft([&] {
        XSkinMenu menu;
        EXPECT_TRUE(menu.LoadMenuAndPrepare());
        menu.SetItemIcon(40001, icon);
        for (const UINT id : {40001u, 40003u, 0u}) {
            DRAWITEMSTRUCT draw = {};
            draw.CtlType = ODT_MENU;
            draw.itemID = id;
            draw.hDC = canvas.Dc();
            draw.rcItem = {0, 0, 60, 20};
            std::uint32_t handled = 0;
            menu.Route(nullptr, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw), &handled);
            EXPECT_EQ(handled, 1u);
        }
    });
}
