#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

// This needs windows.h before it.
#include <commctrl.h>

#include "tests/resources/dialog_reader.h"

using testing::ElementsAre;

namespace {

constexpr DWORD pushButton = 0x50010000;
constexpr DWORD defaultButton = 0x50010001;
constexpr DWORD fileList = 0x50810C41;

INT_PTR CALLBACK TakeFocus(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG;
}

class ShownDialog {
public:
    explicit ShownDialog(int number) {
        const INITCOMMONCONTROLSEX all = {sizeof(all), 0xFF};
        InitCommonControlsEx(&all);
        window = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(number), nullptr,
                                    TakeFocus, 0);
    }
    ShownDialog(const ShownDialog&) = delete;
    ShownDialog& operator=(const ShownDialog&) = delete;
    ~ShownDialog() { DestroyWindow(window); }

    HWND Window() const { return window; }
    HWND Child(int id) const { return GetDlgItem(window, id); }

private:
    HWND window;
};

}  // namespace

TEST(Dialogs, MainHasTreeListAndHiddenButton) {
    const auto dialog = ReadDialogResource(101);
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->style, DWORD{WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME |
                                   WS_MINIMIZEBOX | WS_MAXIMIZEBOX | DS_SETFONT});
    EXPECT_EQ(dialog->width, 486);
    EXPECT_EQ(dialog->height, 330);
    EXPECT_EQ(dialog->title, "Dialog");
    EXPECT_EQ(dialog->fontSize, 8);
    EXPECT_EQ(dialog->fontFace, "MS Shell Dlg");
    ASSERT_EQ(dialog->controls.size(), 3u);
    EXPECT_EQ(dialog->controls[0].id, 1001);
    EXPECT_EQ(dialog->controls[0].className, "SYSTREEVIEW32");
    EXPECT_EQ(dialog->controls[0].style, 0x50810125u);
    EXPECT_EQ(dialog->controls[1].id, 1002);
    EXPECT_EQ(dialog->controls[1].className, "SYSLISTVIEW32");
    EXPECT_EQ(dialog->controls[1].style, fileList);
    EXPECT_EQ(dialog->controls[2].id, 1003);
    EXPECT_EQ(dialog->controls[2].className, "BUTTON");
    EXPECT_EQ(dialog->controls[2].text, "Debug Dump Selections");
    EXPECT_EQ(dialog->controls[2].style & (WS_VISIBLE | WS_DISABLED | WS_CHILD),
              DWORD{WS_DISABLED | WS_CHILD});
}

TEST(Dialogs, FilterHasItsButtonsInPlace) {
    const auto dialog = ReadDialogResource(114);
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->width, 350);
    EXPECT_EQ(dialog->height, 302);
    EXPECT_EQ(dialog->title, "Tonequarry: Filter Audio Types");
    EXPECT_EQ(dialog->fontSize, 8);
    EXPECT_EQ(dialog->fontFace, "MS Shell Dlg");
    EXPECT_THAT(
        dialog->controls,
        ElementsAre(ReadControl{1, "BUTTON", "OK", defaultButton, 120, 281, 50, 14},
                    ReadControl{2, "BUTTON", "Cancel", pushButton, 179, 281, 50, 14},
                    ReadControl{1004, "BUTTON", "Exclude All", pushButton, 242, 262, 50, 14},
                    ReadControl{1005, "BUTTON", "Include All", pushButton, 293, 262, 50, 14}));
}

TEST(Dialogs, ConversionListHasThreeButtonsAndList) {
    const auto dialog = ReadDialogResource(124);
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->style & (WS_THICKFRAME | WS_MAXIMIZEBOX | WS_VISIBLE),
              DWORD{WS_THICKFRAME | WS_MAXIMIZEBOX});
    EXPECT_EQ(dialog->width, 425);
    EXPECT_EQ(dialog->height, 338);
    EXPECT_EQ(dialog->fontSize, 8);
    EXPECT_EQ(dialog->fontFace, "MS Shell Dlg");
    EXPECT_THAT(dialog->controls,
                ElementsAre(ReadControl{3, "BUTTON", "Convert", pushButton, 187, 319, 50, 14},
                            ReadControl{1, "BUTTON", "OK", defaultButton, 131, 319, 50, 14},
                            ReadControl{2, "BUTTON", "Cancel", pushButton, 243, 319, 50, 14},
                            ReadControl{1002, "SYSLISTVIEW32", "", fileList, 7, 17, 411, 296}));
}

TEST(Dialogs, EachCanBeMade) {
    for (const int number : {101, 114, 124}) {
        const ShownDialog dialog(number);
        ASSERT_NE(dialog.Window(), nullptr) << number;
        EXPECT_FALSE(IsWindowVisible(dialog.Window())) << number;
        const auto read = ReadDialogResource(number);
        ASSERT_TRUE(read) << number;
        for (const ReadControl& control : read->controls)
            EXPECT_NE(dialog.Child(control.id), nullptr) << number << ": " << control.id;
    }
}

TEST(Dialogs, DebugButtonIsNeitherVisibleNorEnabled) {
    const ShownDialog dialog(101);
    ShowWindow(dialog.Window(), SW_SHOW);
    EXPECT_TRUE(IsWindowVisible(dialog.Child(1001)));
    EXPECT_TRUE(IsWindowEnabled(dialog.Child(1001)));
    EXPECT_FALSE(IsWindowVisible(dialog.Child(1003)));
    EXPECT_FALSE(IsWindowEnabled(dialog.Child(1003)));
}
