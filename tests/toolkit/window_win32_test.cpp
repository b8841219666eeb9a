#include "toolkit/window.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <thread>

#include "foundation/mutex.h"
#include "tests/support/text.h"
#include "tests/toolkit/recording_window.h"
#include "tests/toolkit/window_class.h"
#include "tests/ui/host_form.h"
#include "tests/ui/pixels.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"
#include "toolkit/window_table.h"

namespace {

// Taken before any test, and so the first of the process.
const clString firstClassName = NewWindowClassName();

constexpr RECT somewhere = {100, 120, 301, 223};

int NumberOf(const std::string& className) {
    return std::stoi(className.substr(4));
}

RECT PlaceOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

std::string Text(const RECT& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + " to " +
           std::to_string(rect.right) + "," + std::to_string(rect.bottom);
}

bool IsIcon(HICON icon) {
    ICONINFO parts = {};
    if (!GetIconInfo(icon, &parts)) return false;
    DeleteObject(parts.hbmMask);
    DeleteObject(parts.hbmColor);
    return true;
}

HICON NewIcon() {
    return CopyIcon(LoadIconW(nullptr, IDI_INFORMATION));
}

HICON ClassIcon(HWND window, int which) {
    return reinterpret_cast<HICON>(GetClassLongPtrW(window, which));
}

TEST(WindowClass, NumbersBeginAt0) {
    EXPECT_EQ(Utf8(firstClassName), "XWnd0");
}

TEST(CreateWnd, MakesAWindowOfAClassOfItsOwn) {
    RecordingWindow window;
    window.CreateWnd(somewhere, WS_POPUP | WS_BORDER, WS_EX_TOOLWINDOW, nullptr);
    const HWND handle = window.Window();
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(Text(PlaceOf(handle)), Text(somewhere));
    EXPECT_EQ(GetWindowTextLengthW(handle), 0);
    EXPECT_EQ(GetWindowLongPtrW(handle, GWL_STYLE) & (WS_POPUP | WS_BORDER), WS_POPUP | WS_BORDER);
    EXPECT_EQ(GetWindowLongPtrW(handle, GWL_EXSTYLE), WS_EX_TOOLWINDOW);
    EXPECT_EQ(GetClassLongPtrW(handle, GCL_STYLE), 0x20028u);
    EXPECT_EQ(ClassIcon(handle, GCLP_HICON), LoadIconW(nullptr, IDI_APPLICATION));
    EXPECT_EQ(GetClassLongPtrW(handle, GCLP_HCURSOR), 0u);
    EXPECT_EQ(GetClassLongPtrW(handle, GCLP_HBRBACKGROUND), 0u);
    EXPECT_EQ(GetClassLongPtrW(handle, GCLP_MENUNAME), 0u);
    EXPECT_EQ(window.seenMessages.front(), UINT{WM_CREATE}) << "the first after the binding";
    EXPECT_EQ(window.Taken().front(), "OnCreate");
}

TEST(CreateWnd, NeverUsesAClassTwice) {
    RecordingWindow first;
    first.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    const std::string firstClass = ClassOf(first.Window());
    RecordingWindow second;
    second.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    EXPECT_EQ(NumberOf(ClassOf(second.Window())), NumberOf(firstClass) + 1);
    const HWND old = first.Window();
    first.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    EXPECT_FALSE(IsWindow(old));
    EXPECT_FALSE(IsRegistered(firstClass));
    EXPECT_EQ(NumberOf(ClassOf(first.Window())), NumberOf(firstClass) + 2);
}

TEST(CreateWnd, MakesAChildInItsParentsCoordinates) {
    RecordingWindow parent;
    parent.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    RecordingWindow child;
    child.CreateWnd({5, 6, 25, 36}, WS_CHILD, 0, parent.Window());
    EXPECT_EQ(Text(PlaceOf(child.Window())), Text({105, 126, 125, 156}));
    EXPECT_EQ(GetParent(child.Window()), parent.Window());
}

TEST(CreateWnd, LeavesNoWindowIfTheClassIsRefused) {
    RecordingWindow window;
    window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    const int number = NumberOf(ClassOf(window.Window()));
    clString taken(L"XWnd");
    taken.Append(clString(number + 1));
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = taken.Chars();
    ASSERT_NE(RegisterClassExW(&description), 0);
    window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    EXPECT_EQ(window.Window(), nullptr);
    EXPECT_EQ(window.AddTimer(0), 0u);
    window.MoveTo(1, 2, 3, 4);
    window.CenterOnScreen();
    window.DestroyWnd();
    EXPECT_TRUE(IsRegistered(Utf8(taken))) << "not ours to give back";
    UnregisterClassW(taken.Chars(), description.hInstance);
    window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    EXPECT_EQ(NumberOf(ClassOf(window.Window())), number + 2) << "the number is spent";
}

TEST(CreateWnd, GivesTheClassBackIfTheWindowIsRefused) {
    RecordingWindow window;
    window.before = [](std::uint32_t* handled) -> LRESULT {
        *handled = 1;
        return -1;  // WM_CREATE says no
    };
    const int next = NumberOf(Utf8(NewWindowClassName())) + 1;
    const std::string name = "XWnd" + std::to_string(next);
    window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    EXPECT_EQ(window.Window(), nullptr);
    EXPECT_TRUE(IsRegistered(name));
    window.DestroyWnd();
    EXPECT_FALSE(IsRegistered(name));
}

TEST(DestroyWnd, EndsTheWindowAndIsSafeToRepeat) {
    RecordingWindow window;
    window.DestroyWnd();
    window.CreateWnd(somewhere, WS_POPUP | WS_VISIBLE, 0, nullptr);
    const HWND handle = window.Window();
    const std::string name = ClassOf(handle);
    window.Taken();
    window.DestroyWnd();
    EXPECT_EQ(window.Window(), nullptr);
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_FALSE(IsRegistered(name));
    EXPECT_EQ(FindInWindowTable(handle), nullptr);
    const std::vector<std::string> lines = window.Taken();
    EXPECT_EQ(lines.front(), "OnHide 0") << "hidden first";
    EXPECT_EQ(lines.back(), "OnDestroy");
    window.DestroyWnd();
    EXPECT_TRUE(window.Taken().empty());
}

TEST(DestroyWnd, RunsFromTheDestructor) {
    HWND handle = nullptr;
    {
        XWindow window;
        window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
        handle = window.Window();
        ASSERT_TRUE(IsWindow(handle));
    }
    EXPECT_FALSE(IsWindow(handle));
}

TEST(DestroyWnd, LeavesTheOtherWindowsInTheirPlaces) {
    RecordingWindow first;
    RecordingWindow second;
    RecordingWindow third;
    for (RecordingWindow* window : {&first, &second, &third})
        window->CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    second.DestroyWnd();
    EXPECT_EQ(FindInWindowTable(first.Window()), &first);
    EXPECT_EQ(FindInWindowTable(third.Window()), &third);
    EXPECT_EQ(FindInWindowTable(nullptr), nullptr);
}

TEST(WindowTable, AMessageForNobodyGoesToThePlatform) {
    const HWND stranger = CreateWindowExW(0, L"STATIC", L"four", WS_POPUP, 0, 0, 10, 10, nullptr,
                                          nullptr, nullptr, nullptr);
    EXPECT_EQ(XWindow::DialogProcedure(stranger, WM_GETTEXTLENGTH, 0, 0), 0);
    EXPECT_EQ(XWindow::DialogProcedure(stranger, WM_INITDIALOG, 0, 0), 0);
    EXPECT_EQ(XWindow::WindowProcedure(stranger, WM_GETTEXTLENGTH, 0, 0), 4);
    DestroyWindow(stranger);
}

TEST(WindowTable, IsNotLockedWhileAWindowHandlesAMessage) {
    RecordingWindow window;
    window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    bool taken = false;
    window.during = [&] {
        std::thread([&] {
            taken = WindowMutex.TryLock();
            if (taken) WindowMutex.Unlock();
        }).join();
    };
    SendMessageW(window.Window(), WM_KEYDOWN, VK_F5, 0);
    EXPECT_TRUE(taken);
}

TEST(WindowTable, AHandlerMayMakeAndEndOtherWindows) {
    RecordingWindow window;
    window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    RecordingWindow other;
    other.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    RecordingWindow third;
    window.during = [&] {
        window.during = nullptr;
        other.DestroyWnd();
        third.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    };
    SendMessageW(window.Window(), WM_KEYDOWN, VK_F5, 0);
    EXPECT_EQ(other.Window(), nullptr);
    EXPECT_EQ(FindInWindowTable(third.Window()), &third);
    EXPECT_EQ(FindInWindowTable(window.Window()), &window);
}

TEST(DialogMode, BindsAtInitDialogAndShowsItself) {
    RecordingWindow form;
    ShowDialog(form, DialogTemplate(visibleForm, 100, 50));
    EXPECT_EQ(form.seenMessages.front(), UINT{WM_INITDIALOG}) << "WM_SETFONT came too early";
    EXPECT_EQ(form.Taken().front(), "OnCreate");
    EXPECT_TRUE(IsWindowVisible(form.Window()));
    EXPECT_EQ(ClassOf(form.Window()), "#32770");
}

TEST(DialogMode, GetsTheDefaultFocusHoweverOnCreateLeavesTheFlag) {
    DialogTemplate dialog(visibleForm, 100, 50);
    dialog.Add({L"EDIT", WS_VISIBLE | WS_TABSTOP, 5, 5, 50, 12, 11});
    RecordingWindow form;
    form.during = [&] { form.SetFlag(0); };
    ShowDialog(form, dialog);
    EXPECT_TRUE(PumpUntil([&] { return GetFocus() == GetDlgItem(form.Window(), 11); }));
}

TEST(DialogMode, RunsModallyAndAgain) {
    RecordingWindow form;
    HWND before = nullptr;
    for (const INT_PTR answer : {INT_PTR{42}, INT_PTR{7}}) {
        form.during = [&] {
            form.during = nullptr;
            PostMessageW(form.Window(), WM_COMMAND, IDOK, 0);
        };
        form.before = [&](std::uint32_t*) -> LRESULT {
            if (form.seenMessages.back() == WM_COMMAND) EndDialog(form.Window(), answer);
            return 0;
        };
        EXPECT_EQ(RunDialog(form, DialogTemplate(visibleForm, 60, 30)), answer);
        EXPECT_FALSE(IsWindow(form.Window())) << "the dialog is gone, the handle stays";
        EXPECT_NE(form.Window(), nullptr);
        EXPECT_NE(form.Window(), before);
        EXPECT_EQ(FindInWindowTable(before), nullptr) << "the handle may be another's by now";
        before = form.Window();
        EXPECT_EQ(form.AddTimer(0), 0u);
        form.MoveTo(1, 2, keepCurrent, keepCurrent);
    }
    const HWND ended = form.Window();
    form.DestroyWnd();
    EXPECT_EQ(form.Window(), nullptr);
    EXPECT_EQ(FindInWindowTable(ended), nullptr) << "bound twice, gone altogether";
}

TEST(Painting, ABackgroundThatWasErasedStays) {
    class Green : public XWindow {
    public:
        ~Green() override { DestroyWnd(); }
        void OnEraseBackground(HDC dc) override {
            RECT client = {};
            GetClientRect(Window(), &client);
            const HBRUSH brush = CreateSolidBrush(RGB(0, 200, 0));
            FillRect(dc, &client, brush);
            DeleteObject(brush);
            handledFlag = 1;
        }
    };
    Green form;
    ShowDialog(form, DialogTemplate(visibleForm, 60, 30));
    ASSERT_TRUE(PumpUntil([&] { return PixelOf(form.Window(), 10, 10) == RGB(0, 200, 0); }))
        << std::hex << PixelOf(form.Window(), 10, 10);
}

TEST(Painting, ABrushColoursTheDialogAndItsStatics) {
    class Coloured : public XWindow {
    public:
        ~Coloured() override {
            DestroyWnd();
            DeleteObject(red);
            DeleteObject(blue);
        }
        HBRUSH OnCtlColorDlg() override { return red; }
        HBRUSH OnCtlColorStatic() override { return blue; }
        HBRUSH red = CreateSolidBrush(RGB(200, 0, 0));
        HBRUSH blue = CreateSolidBrush(RGB(0, 0, 200));
    };
    DialogTemplate dialog(visibleForm, 60, 30);
    dialog.Add({L"STATIC", WS_VISIBLE, 20, 10, 20, 10, 11});
    Coloured form;
    ShowDialog(form, dialog);
    const HWND label = GetDlgItem(form.Window(), 11);
    EXPECT_TRUE(PumpUntil([&] { return PixelOf(form.Window(), 2, 2) == RGB(200, 0, 0); }));
    EXPECT_TRUE(PumpUntil([&] { return PixelOf(label, 5, 5) == RGB(0, 0, 200); }));
}

TEST(Painting, AnOverrideThatForgetsToPaintIsNotAskedForEver) {
    RecordingWindow window;
    window.callBase = false;
    window.CreateWnd(somewhere, WS_POPUP | WS_VISIBLE, 0, nullptr);
    PumpFor(100);
    window.Taken();
    InvalidateRect(window.Window(), nullptr, FALSE);
    PumpFor(100);
    EXPECT_EQ(window.TakenLine(), "OnPaint");
    EXPECT_FALSE(GetUpdateRect(window.Window(), nullptr, FALSE));
}

TEST(SystemCommands, AlwaysReachThePlatform) {
    RecordingWindow window;
    window.callBase = false;
    window.CreateWnd(somewhere, WS_POPUP | WS_CAPTION | WS_MAXIMIZEBOX | WS_VISIBLE, 0, nullptr);
    SendMessageW(window.Window(), WM_SYSCOMMAND, SC_MAXIMIZE | 2, 0);
    EXPECT_TRUE(IsZoomed(window.Window()));
}

TEST(MoveTo, KeepsWhatIsNotGiven) {
    struct Row {
        std::int32_t x, y, width, height;
        RECT expected;
    };
    constexpr std::int32_t keep = -12345;
    const Row rows[] = {
        {keep, keep, keep, keep, {100, 120, 301, 223}},
        {5, keep, keep, keep, {5, 120, 206, 223}},
        {keep, 6, keep, keep, {100, 6, 301, 109}},
        {keep, keep, 70, keep, {100, 120, 170, 223}},
        {keep, keep, keep, 80, {100, 120, 301, 200}},
        {-30, -40, 50, 60, {-30, -40, 20, 20}},
    };
    for (const Row& row : rows) {
        RecordingWindow window;
        window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
        window.MoveTo(row.x, row.y, row.width, row.height);
        EXPECT_EQ(Text(PlaceOf(window.Window())), Text(row.expected));
    }
}

TEST(MoveTo, NeitherActivatesNorRaises) {
    RecordingWindow lower;
    lower.CreateWnd(somewhere, WS_POPUP | WS_VISIBLE, 0, nullptr);
    RecordingWindow upper;
    upper.CreateWnd(somewhere, WS_POPUP | WS_VISIBLE, 0, nullptr);
    ASSERT_TRUE(BringToFront(upper.Window()));
    lower.MoveTo(10, 10, keepCurrent, keepCurrent);
    PumpMessages();
    EXPECT_EQ(GetForegroundWindow(), upper.Window());
    EXPECT_EQ(GetWindow(upper.Window(), GW_HWNDNEXT), lower.Window());
}

TEST(CenterOnScreen, HalvesEachSizeByItself) {
    RECT desktop = {};
    GetClientRect(GetDesktopWindow(), &desktop);
    for (const LONG size : {100L, 101L, 203L}) {
        RecordingWindow window;
        window.CreateWnd({3, 4, 3 + size, 4 + size + 1}, WS_POPUP, 0, nullptr);
        window.CenterOnScreen();
        const LONG left = desktop.right / 2 - size / 2;
        const LONG top = desktop.bottom / 2 - (size + 1) / 2;
        EXPECT_EQ(Text(PlaceOf(window.Window())), Text({left, top, left + size, top + size + 1}));
    }
}

TEST(SetIcons, ShowsDuplicatesAndTakesTheIcons) {
    const HICON big = NewIcon();
    const HICON little = NewIcon();
    HICON shownBig = nullptr;
    HICON shownLittle = nullptr;
    {
        RecordingWindow window;
        window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
        window.SetIcons(big, little);
        shownBig = ClassIcon(window.Window(), GCLP_HICON);
        shownLittle = ClassIcon(window.Window(), GCLP_HICONSM);
        EXPECT_NE(shownBig, big);
        EXPECT_NE(shownBig, shownLittle);
        EXPECT_TRUE(IsIcon(shownBig));
        EXPECT_TRUE(IsIcon(shownLittle));
        EXPECT_FALSE(IsIcon(big));
        EXPECT_FALSE(IsIcon(little));
        window.SetIcons(nullptr, nullptr);
        EXPECT_EQ(ClassIcon(window.Window(), GCLP_HICON), nullptr);
        EXPECT_FALSE(IsIcon(shownBig)) << "replaced";
        window.SetIcons(NewIcon(), NewIcon());
        shownBig = ClassIcon(window.Window(), GCLP_HICON);
        shownLittle = ClassIcon(window.Window(), GCLP_HICONSM);
    }
    EXPECT_FALSE(IsIcon(shownBig)) << "the window owned it";
    EXPECT_FALSE(IsIcon(shownLittle));
}

TEST(Cursor, GoesWithItsWindow) {
    class Pointing : public RecordingWindow {
    public:
        explicit Pointing(HCURSOR owned) { cursor = owned; }
    };
    const HCURSOR owned = CopyCursor(LoadCursorW(nullptr, IDC_SIZEWE));
    ASSERT_TRUE(IsIcon(owned));
    {
        Pointing window(owned);
        window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
        window.DestroyWnd();
        EXPECT_TRUE(IsIcon(owned)) << "the window may be made again";
    }
    EXPECT_FALSE(IsIcon(owned));
}

TEST(SetIcons, LeavesTheIconsAloneWithoutAWindow) {
    RecordingWindow window;
    const HICON icon = NewIcon();
    window.SetIcons(icon, icon);
    EXPECT_TRUE(IsIcon(icon));
    DestroyIcon(icon);
}

}  // namespace
