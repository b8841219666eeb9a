// The main form's icons, pointer shapes, menus, settings and background.
#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "resources/ids.h"
#include "tests/mainwindow/main_form_stage.h"
#include "tests/support/eventually.h"
#include "tests/support/import_stub.h"
#include "tests/support/registry_number.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_registry.h"
#include "tests/ui/pixels.h"
#include "tests/ui/pointer.h"
#include "toolkit/skin_menu.h"

namespace {

constexpr const wchar_t* settingsKey = MainForm::settingsKey;
constexpr LONG divider = MainForm::divider;

// An icon on white, in its own size.
std::unique_ptr<Canvas> Drawn(HICON icon, int size) {
    auto canvas = std::make_unique<Canvas>(size, size);
    DrawIconEx(canvas->Dc(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL);
    return canvas;
}

int WidthOf(HICON icon) {
    ICONINFO parts = {};
    BITMAP bitmap = {};
    if (GetIconInfo(icon, &parts) == FALSE) return 0;
    GetObjectW(parts.hbmMask, sizeof bitmap, &bitmap);
    DeleteObject(parts.hbmMask);
    DeleteObject(parts.hbmColor);
    return bitmap.bmWidth;
}

}  // namespace

TEST_F(MainForm, HasTheProgramsIconInTwoSizes) {
    const struct {
        int place;
        int size;
    } icons[] = {{GCLP_HICON, 32}, {GCLP_HICONSM, 16}};
    RunForm([&](HWND form) {
        for (const auto& [place, size] : icons) {
            SCOPED_TRACE(size);
            const auto shown = reinterpret_cast<HICON>(GetClassLongPtrW(form, place));
            const auto expected = static_cast<HICON>(LoadImageW(
                GetModuleHandleW(nullptr), MAKEINTRESOURCEW(102), IMAGE_ICON, size, size, 0));
            ASSERT_NE(expected, nullptr);
            EXPECT_EQ(WidthOf(shown), size);
            const auto picture = Drawn(expected, size);
            EXPECT_LT(picture->Count(RGB(255, 255, 255)), size * size);
            EXPECT_EQ(Differences(*Drawn(shown, size), *picture, size, size), 0);
            DestroyIcon(expected);
        }
    });
}

namespace {

bool PointerIs(const wchar_t* shape) {
    CURSORINFO info = {};
    info.cbSize = sizeof info;
    return GetCursorInfo(&info) != FALSE && info.hCursor == LoadCursorW(nullptr, shape);
}

}  // namespace

TEST_F(MainForm, PointerTellsWhereTheDividerCanBeTaken) {
    RunForm([](HWND form) {
        RECT tree = {};
        GetWindowRect(GetDlgItem(form, IDC_FOLDER_TREE), &tree);
        POINT below = {0, tree.bottom};
        ScreenToClient(form, &below);
        // Each another one than the one before.
        const struct {
            LONG x, y;
            const wchar_t* shape;
        } places[] = {
            {divider, 200, IDC_SIZEWE},
            {divider + 2, 55, IDC_ARROW},
            {divider + 3, 200, IDC_SIZEWE},
            {divider - 1, 56, IDC_ARROW},
            {divider + 2, 56, IDC_SIZEWE},
            {divider + 5, 56, IDC_ARROW},
            {divider + 4, 56, IDC_SIZEWE},
            {divider + 2, below.y, IDC_ARROW},
            {divider + 2, below.y - 1, IDC_SIZEWE},
        };
        for (const auto& place : places) {
            MovePointer(ScreenPoint(form, place.x, place.y));
            EXPECT_TRUE(Eventually([&] { return PointerIs(place.shape); }))
                << place.x << ',' << place.y;
        }
    });
}

TEST_F(MainForm, PointerKeepsItsShapeWhileTheDividerIsDragged) {
    RunForm([](HWND form) {
        MovePointer(ScreenPoint(form, divider + 2, 200));
        PressButton();
        for (const POINT place : {POINT{500, 30}, POINT{700, 200}}) {
            MovePointer(ScreenPoint(form, place.x, place.y));
            EXPECT_TRUE(Eventually([&] { return TreeWidth(form) == place.x - 2; })) << place.x;
            // Answered once the form is through with the move.
            SendMessageW(form, WM_NULL, 0, 0);
            EXPECT_TRUE(PointerIs(IDC_SIZEWE)) << place.x;
        }
        ReleaseButton();
        MovePointer(ScreenPoint(form, 500, 30));
        EXPECT_TRUE(Eventually([] { return PointerIs(IDC_ARROW); }));
    });
}

namespace {

// An item of the row menu as `draw` draws it.
std::unique_ptr<Canvas> DrawnItem(UINT id, const std::function<void(LPARAM)>& draw) {
    constexpr LONG width = 140;
    constexpr LONG height = 20;
    auto canvas = std::make_unique<Canvas>(width, height);
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_MENU;
    item.itemID = id;
    item.hDC = canvas->Dc();
    item.rcItem = {0, 0, width, height};
    draw(reinterpret_cast<LPARAM>(&item));
    return canvas;
}

}  // namespace

TEST_F(MainForm, RowMenuHasTheTwoBoxesAsPictures) {
    XSkinMenu expected;
    ASSERT_TRUE(expected.LoadMenuAndPrepare());
    for (const auto& [id, picture] : {std::pair{40001, 113}, std::pair{40002, 110}}) {
        const auto icon = static_cast<HICON>(LoadImageW(
            GetModuleHandleW(nullptr), MAKEINTRESOURCEW(picture), IMAGE_ICON, 16, 16, 0));
        ASSERT_NE(icon, nullptr);
        expected.SetItemIcon(id, icon);
        DestroyIcon(icon);
    }
    RunForm([&](HWND form) {
        for (const UINT id : {40001u, 40002u, 40003u}) {
            const auto drawn =
                DrawnItem(id, [form](LPARAM item) { SendMessageW(form, WM_DRAWITEM, 0, item); });
            const auto wanted = DrawnItem(id, [&expected](LPARAM item) {
                std::uint32_t handled = 0;
                expected.Route(nullptr, WM_DRAWITEM, 0, item, &handled);
            });
            EXPECT_EQ(Differences(*drawn, *wanted, 140, 20), 0) << id;
            EXPECT_LT(wanted->Count(RGB(255, 255, 255)), 140 * 20) << id;
        }
    });
}

namespace {

// The settings can neither be read nor written while this is there, by nobody.
class RefusedSettings {
public:
    RefusedSettings() {
        RegCreateKeyExW(HKEY_CURRENT_USER, settingsKey, 0, nullptr, 0, READ_CONTROL | WRITE_DAC,
                        nullptr, &key, nullptr);
        DWORD size = sizeof before;
        EXPECT_EQ(RegGetKeySecurity(key, DACL_SECURITY_INFORMATION, before, &size), ERROR_SUCCESS);
        ACL nobody = {};
        InitializeAcl(&nobody, sizeof nobody, ACL_REVISION);
        SECURITY_DESCRIPTOR refusal = {};
        InitializeSecurityDescriptor(&refusal, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&refusal, TRUE, &nobody, FALSE);
        EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &refusal), ERROR_SUCCESS);
    }
    RefusedSettings(const RefusedSettings&) = delete;
    RefusedSettings& operator=(const RefusedSettings&) = delete;
    ~RefusedSettings() {
        EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, before), ERROR_SUCCESS);
        RegCloseKey(key);
    }

private:
    HKEY key = nullptr;
    BYTE before[1024] = {};
};

std::optional<DWORD> Number(const wchar_t* name) {
    return RegistryNumber(settingsKey, name);
}

int ColumnsOf(HWND form) {
    return static_cast<int>(SendMessageW(HeaderOf(form), HDM_GETITEMCOUNT, 0, 0));
}

}  // namespace

TEST_F(MainForm, RegistryThatRefusesCountsAsEmptyAndIsNotSpokenOf) {
    ScratchRegistry::SetText(HKEY_CURRENT_USER, settingsKey, L"zKR-FileSelector-Cols", L"Artist");
    {
        const RefusedSettings refused;
        ASSERT_EQ(Number(L"zKR-FileSelector-Devider"), std::nullopt);
        RunForm([](HWND form) {
            EXPECT_TRUE(Eventually([form] { return IsZoomed(form) != FALSE; }));
            EXPECT_EQ(TreeWidth(form), GetSystemMetrics(SM_CXSCREEN) / 3);
            EXPECT_EQ(ColumnsOf(form), 10);
            EXPECT_EQ(GetLastActivePopup(form), form);
        });
    }
    EXPECT_EQ(Number(L"zKR-FileSelector-Devider"), static_cast<DWORD>(divider));
    EXPECT_EQ(Number(L"zKR-FileSelector-NotMax"), 1u);
    RunForm([](HWND form) {
        EXPECT_EQ(TreeWidth(form), divider);
        EXPECT_EQ(ColumnsOf(form), 1);
    });
}

namespace {

constexpr COLORREF white = RGB(255, 255, 255);
constexpr LONG wide = 3000;

decltype(&GetClientRect) realClientRect;
std::atomic<LONG> desktopWidth;

BOOL WINAPI TellDesktop(HWND window, RECT* rect) {
    if (window != GetDesktopWindow()) return realClientRect(window, rect);
    *rect = {0, 0, desktopWidth, 300};
    return TRUE;
}

decltype(&GetDeviceCaps) realDeviceCaps;

int WINAPI TellFewColours(HDC context, int index) {
    return index == BITSPIXEL ? 16 : realDeviceCaps(context, index);
}

std::unique_ptr<Canvas> ErasedBackground(HWND form) {
    auto canvas = std::make_unique<Canvas>(wide, 60);
    SendMessageW(form, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas->Dc()), 0);
    return canvas;
}

}  // namespace

TEST_F(MainForm, BackgroundGrowsWithTheDesktopAndDoesNotShrinkWithIt) {
    RunForm([](HWND form) {
        EXPECT_EQ(Colour{ErasedBackground(form)->At(wide - 10, 20)}, Colour{white});
        realClientRect = &GetClientRect;
        desktopWidth = wide;
        const ImportStub desktop("GetClientRect", &TellDesktop);
        for (const LONG width : {wide, LONG{800}}) {
            desktopWidth = width;
            const auto background = ErasedBackground(form);
            EXPECT_EQ(Colour{background->At(0, 20)}, Colour{RGB(0xF0, 0xF0, 0xF0)}) << width;
            EXPECT_GE(GetRValue(background->At(wide - 1, 20)), 0xFA) << width;
            EXPECT_NE(Colour{background->At(wide - 1, 20)}, Colour{white}) << width;
            EXPECT_EQ(Colour{background->At(wide - 1, 53)}, Colour{RGB(0x80, 0x80, 0x80)}) << width;
        }
    });
}

TEST_F(MainForm, BackgroundIsPlainWithFewColours) {
    RunForm([](HWND form) {
        realClientRect = &GetClientRect;
        realDeviceCaps = &GetDeviceCaps;
        desktopWidth = wide;
        const ImportStub desktop("GetClientRect", &TellDesktop);
        const ImportStub colours("GetDeviceCaps", &TellFewColours);
        const auto background = ErasedBackground(form);
        for (const int x : {0, 1500, 2999})
            EXPECT_EQ(Colour{background->At(x, 20)}, Colour{RGB(0xF0, 0xF0, 0xF0)}) << x;
    });
}

namespace {

decltype(&InvalidateRect) realInvalidate;
std::atomic<HWND> countedForm;
std::atomic<int> invalidations;

BOOL WINAPI CountInvalidations(HWND window, const RECT* rect, BOOL erase) {
    if (window == countedForm) ++invalidations;
    return realInvalidate(window, rect, erase);
}

}  // namespace

// Each flip of a row would have all of them counted anew.
TEST_F(MainForm, BothClicksOnACheckBoxTellTheStatusOnceForTheWholeSelection) {
    constexpr int files = 30;
    decoders.Add("one", "type=.abc|Some sound\n");
    const ScratchFolder folder;
    for (int number = 0; number < files; ++number)
        folder.AddFile((L"song" + std::to_wstring(number) + L".abc").c_str());
    const clCommandLine line(folder.Path().Chars());
    RunForm([](HWND form) {
        const HWND list = GetDlgItem(form, IDC_FILE_LIST);
        ASSERT_TRUE(Eventually([list] { return ListView_GetItemCount(list) == files; }));
        ListView_SetItemState(list, -1, LVIS_SELECTED, LVIS_SELECTED);
        const UINT before = ListView_GetItemState(list, files - 1, LVIS_STATEIMAGEMASK);
        RECT row = {};
        ListView_GetItemRect(list, 0, &row, LVIR_BOUNDS);
        countedForm = form;
        invalidations = 0;
        realInvalidate = &InvalidateRect;
        const ImportStub counter("InvalidateRect", &CountInvalidations);
        DoubleClick(ScreenPoint(list, row.left + 8, (row.top + row.bottom) / 2));
        EXPECT_TRUE(Eventually([] { return invalidations >= 2; }));
        // Answered once the form is through with both.
        SendMessageW(form, WM_NULL, 0, 0);
        EXPECT_LT(invalidations, files / 2);
        EXPECT_EQ(ListView_GetItemState(list, files - 1, LVIS_STATEIMAGEMASK), before);
        EXPECT_EQ(ListView_GetSelectedCount(list), static_cast<UINT>(files));
    });
}
