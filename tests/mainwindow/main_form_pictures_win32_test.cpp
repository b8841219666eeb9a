// Which pictures the main form has in its panes, its header and its buttons.
#include <windows.h>
// These need windows.h before them.
#include <commctrl.h>
#include <shellapi.h>

#include <atomic>
#include <memory>

#include "tests/mainwindow/main_form_stage.h"
#include "tests/support/eventually.h"
#include "tests/support/scratch_folder.h"
#include "tests/ui/loaded_bitmap.h"

namespace {

HIMAGELIST ShellImages(UINT size) {
    SHFILEINFOW file = {};
    return reinterpret_cast<HIMAGELIST>(
        SHGetFileInfoW(L"C:\\", 0, &file, sizeof file, SHGFI_SYSICONINDEX | size));
}

HIMAGELIST ImagesOf(HWND window, UINT message, WPARAM which) {
    return reinterpret_cast<HIMAGELIST>(SendMessageW(window, message, which, 0));
}

}  // namespace

TEST_F(MainForm, PanesShowTheShellsPictures) {
    const clCommandLine line;
    const HIMAGELIST small = ShellImages(SHGFI_SMALLICON);
    const HIMAGELIST large = ShellImages(SHGFI_LARGEICON);
    ASSERT_NE(small, nullptr);
    ASSERT_NE(large, nullptr);
    ASSERT_NE(small, large);
    RunForm([&](HWND form) {
        EXPECT_EQ(ImagesOf(TreeOf(form), TVM_GETIMAGELIST, TVSIL_NORMAL), small);
        EXPECT_EQ(ImagesOf(ListOf(form), LVM_GETIMAGELIST, LVSIL_SMALL), small);
        EXPECT_EQ(ImagesOf(ListOf(form), LVM_GETIMAGELIST, LVSIL_NORMAL), large);
    });
}

namespace {

std::unique_ptr<Canvas> DrawnImage(HIMAGELIST images, int index) {
    auto canvas = std::make_unique<Canvas>(16, 16);
    EXPECT_TRUE(ImageList_Draw(images, index, canvas->Dc(), 0, 0, ILD_NORMAL));
    return canvas;
}

// As a list of 24 bits and mask shows it.
std::unique_ptr<Canvas> DrawnIcon(int id) {
    const auto icon = static_cast<HICON>(
        LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_ICON, 16, 16, 0));
    EXPECT_NE(icon, nullptr);
    const HIMAGELIST images = ImageList_Create(16, 16, ILC_COLOR24 | ILC_MASK, 1, 1);
    ImageList_ReplaceIcon(images, -1, icon);
    auto canvas = DrawnImage(images, 0);
    ImageList_Destroy(images);
    DestroyIcon(icon);
    return canvas;
}

}  // namespace

TEST_F(MainForm, HeaderHasTheTwoArrowsAscendingFirst) {
    const clCommandLine line;
    const auto ascending = DrawnIcon(104);
    const auto descending = DrawnIcon(103);
    ASSERT_NE(Differences(*ascending, *descending, 16, 16), 0);
    RunForm([&](HWND form) {
        const HIMAGELIST images = ImagesOf(HeaderOf(form), HDM_GETIMAGELIST, HDSIL_NORMAL);
        ASSERT_EQ(ImageList_GetImageCount(images), 2);
        EXPECT_EQ(Differences(*DrawnImage(images, 0), *ascending, 16, 16), 0);
        EXPECT_EQ(Differences(*DrawnImage(images, 1), *descending, 16, 16), 0);
    });
}

namespace {

// A strip of four frames over their masks.
class PictureStrip {
public:
    explicit PictureStrip(int id) : bitmap(id) {
        const BITMAP parts = bitmap.Description();
        EXPECT_NE(parts.bmWidth, 0) << id;
        size = {parts.bmWidth / 4, parts.bmHeight / 2};
    }

    SIZE FrameSize() const { return size; }
    // The first frame, where its mask lets it through.
    void DrawOn(const Canvas& canvas) const {
        BitBlt(canvas.Dc(), 0, 0, size.cx, size.cy, bitmap.Dc(), 0, size.cy, SRCAND);
        BitBlt(canvas.Dc(), 0, 0, size.cx, size.cy, bitmap.Dc(), 0, 0, SRCPAINT);
    }

private:
    LoadedBitmap bitmap;
    SIZE size = {};
};

constexpr int bandWidth = 600;
constexpr int bandHeight = 60;

struct PictureButton {
    const wchar_t* caption;
    int picture;
    bool standsOnTheBackground;
};

constexpr PictureButton pictureButtons[] = {{L"Convert", 115, true}, {L"List", 123, true},
                                            {L"Refresh", 116, true}, {L"Reset", 117, true},
                                            {L"Filter", 118, true},  {L"Help", 119, false}};

// What the button has to show, in front of that band of the form.
std::unique_ptr<Canvas> ExpectedLook(const PictureButton& button, POINT place, const Canvas& band) {
    const PictureStrip strip(button.picture);
    const SIZE size = strip.FrameSize();
    auto look = std::make_unique<Canvas>(size.cx, size.cy, GetSysColor(COLOR_BTNFACE));
    if (button.standsOnTheBackground)
        BitBlt(look->Dc(), 0, 0, size.cx, size.cy, band.Dc(), place.x, place.y, SRCCOPY);
    strip.DrawOn(*look);
    return look;
}

}  // namespace

TEST_F(MainForm, ButtonsShowTheirPicturesOnTheBackgroundAndHelpOnNone) {
    const clCommandLine line;
    MovePointerAway();
    RunForm([](HWND form) {
        const Canvas band(bandWidth, bandHeight);
        SendMessageW(form, WM_ERASEBKGND, reinterpret_cast<WPARAM>(band.Dc()), 0);
        // Else the five and the sixth would look the same.
        ASSERT_NE(Colour{band.At(220, 20)}, Colour{GetSysColor(COLOR_BTNFACE)});
        for (const PictureButton& button : pictureButtons) {
            SCOPED_TRACE(button.picture);
            const HWND window = FindWindowExW(form, nullptr, L"Static", button.caption);
            ASSERT_NE(window, nullptr);
            POINT place = {0, 0};
            MapWindowPoints(window, form, &place, 1);
            const auto look = ExpectedLook(button, place, band);
            RECT client = {};
            GetClientRect(window, &client);
            EXPECT_EQ(client.right, look->Size().cx);
            EXPECT_EQ(client.bottom, look->Size().cy);
            EXPECT_TRUE(Eventually([&] { return ShowsCanvas(window, {0, 0}, *look); }));
        }
    });
}

namespace {

std::atomic<int> picturesRefused;

HANDLE WINAPI LoadNoImage(HINSTANCE, LPCWSTR, UINT, int, int, UINT) {
    ++picturesRefused;
    return nullptr;
}

HICON WINAPI LoadNoIcon(HINSTANCE, LPCWSTR) {
    return nullptr;
}

}  // namespace

TEST_F(MainForm, OpensListsAndClosesWithoutAnyPicture) {
    decoders.Add("one", "type=.abc|Some sound\n");
    const ScratchFolder folder;
    folder.AddFile(L"a.abc");
    const clCommandLine line(folder.Path().Chars());
    picturesRefused = 0;
    const ImportStub images("LoadImageW", &LoadNoImage);
    const ImportStub icons("LoadIconW", &LoadNoIcon);
    RunForm([](HWND form) {
        EXPECT_TRUE(Eventually([form] { return ListView_GetItemCount(ListOf(form)) == 1; }));
        EXPECT_GE(picturesRefused, 6);
        RedrawWindow(form, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        for (const PictureButton& button : pictureButtons) {
            const HWND window = FindWindowExW(form, nullptr, L"Static", button.caption);
            EXPECT_NE(window, nullptr) << button.picture;
        }
        EXPECT_NE(TreeView_GetSelection(TreeOf(form)), nullptr);
    });
}
