#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "tests/toolkit/recording_window.h"
#include "tests/ui/host_form.h"

// How each message reaches its operation, and what becomes of the flag. The
// procedures are called by hand, so that nothing else comes between.

namespace {

const HWND someWindow = reinterpret_cast<HWND>(0x1230456);
const auto someLong = reinterpret_cast<LPARAM>(someWindow);
const auto someWide = reinterpret_cast<WPARAM>(someWindow);

// A hidden dialog, its first messages behind it.
class Dialog : public RecordingWindow {
public:
    Dialog() {
        ShowDialog(*this, DialogTemplate(hiddenForm, 100, 50));
        Taken();
        seenMessages.clear();
    }
    // The dialog procedure's own result, which is the handled flag.
    INT_PTR Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        SetWindowLongPtrW(Window(), DWLP_MSGRESULT, untouched);
        return DialogProcedure(Window(), message, wParam, lParam);
    }
    LONG_PTR MessageResult() const { return GetWindowLongPtrW(Window(), DWLP_MSGRESULT); }

    static constexpr LONG_PTR untouched = 4711;
};

// A hidden window of its own class.
class Plain : public RecordingWindow {
public:
    Plain() {
        CreateWnd({10, 20, 110, 70}, WS_POPUP, 0, nullptr);
        Taken();
        seenMessages.clear();
    }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return WindowProcedure(Window(), message, wParam, lParam);
    }
};

enum class Base { Clears, Keeps, IsOverruledTo0, IsOverruledTo1 };

struct Row {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    std::string line;
    Base base;
};

const std::string shownWindow = "0x1230456";

std::vector<Row> AllMessages() {
    return {
        {WM_ACTIVATE, 1, someLong, "OnActivate " + shownWindow + " 0 1", Base::Clears},
        {WM_ACTIVATE, 0x10002, someLong, "OnActivate " + shownWindow + " 1 2", Base::Clears},
        {WM_CLOSE, 0, 0, "OnClose", Base::Clears},
        {WM_CONTEXTMENU, someWide, MAKELPARAM(10, 20), "OnContextMenu " + shownWindow + " 10 20",
         Base::Clears},
        {WM_CONTEXTMENU, someWide, -1, "OnContextMenu " + shownWindow + " 65535 65535",
         Base::Clears},
        {WM_COMMAND, MAKEWPARAM(1002, 5), someLong, "OnCommand 1002 " + shownWindow + " 5",
         Base::Keeps},
        {WM_CREATE, 0, 0, "OnCreate", Base::IsOverruledTo1},
        {WM_INITDIALOG, 0, 0, "OnCreate", Base::IsOverruledTo1},
        {WM_DESTROY, 0, 0, "OnDestroy", Base::Clears},
        {WM_ACTIVATE, 0, someLong, "OnDeactivate " + shownWindow + " 0", Base::Clears},
        {WM_ACTIVATE, 0x10000, someLong, "OnDeactivate " + shownWindow + " 1", Base::Clears},
        {WM_ERASEBKGND, someWide, 0, "OnEraseBackground " + shownWindow, Base::Clears},
        {WM_SHOWWINDOW, 0, SW_PARENTCLOSING, "OnHide 1", Base::Clears},
        {WM_KEYDOWN, VK_SPACE, 0x390001, "OnKeyDown 32 3735553", Base::Clears},
        {WM_KEYUP, VK_RETURN, 0x1C0001, "OnKeyUp 13 1835009", Base::Clears},
        {WM_CHAR, 0x120AC, 1, "OnChar 8364", Base::Clears},
        {WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(-3, 4), "OnMouseDown -3 4 513 1", Base::Clears},
        {WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(3, 4), "OnMouseDown 3 4 516 2", Base::Clears},
        {WM_MBUTTONDOWN, MK_MBUTTON, MAKELPARAM(3, 4), "OnMouseDown 3 4 519 16", Base::Clears},
        {WM_LBUTTONUP, MK_SHIFT, MAKELPARAM(3, -4), "OnMouseUp 3 -4 514 4", Base::Clears},
        {WM_RBUTTONUP, 0, MAKELPARAM(3, 4), "OnMouseUp 3 4 517 0", Base::Clears},
        {WM_MBUTTONUP, 0, MAKELPARAM(3, 4), "OnMouseUp 3 4 520 0", Base::Clears},
        {WM_MOUSEMOVE, MK_CONTROL, MAKELPARAM(-1, -2), "OnMouseMove -1 -2 8", Base::Clears},
        {WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -240), MAKELPARAM(-5, 6), "OnMouseWheel -5 6 -240 4",
         Base::Clears},
        {WM_MOVE, 0, MAKELPARAM(-7, 8), "OnMove -7 8", Base::Clears},
        {WM_NOTIFY, 0, someLong, "OnNotify " + shownWindow, Base::Clears},
        {WM_PAINT, 0, 0, "OnPaint", Base::IsOverruledTo0},
        {WM_SHOWWINDOW, 1, SW_PARENTOPENING, "OnShow 3", Base::Clears},
        {WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(40000, 50000), "OnSize 40000 50000 2", Base::Clears},
        {WM_SYSCOMMAND, SC_MAXIMIZE | 2, 0, "OnSysCommand 61488", Base::IsOverruledTo0},
        {WM_CTLCOLORSTATIC, someWide, someLong, "OnCtlColorStatic", Base::Clears},
        {WM_CTLCOLORDLG, someWide, someLong, "OnCtlColorDlg", Base::Clears},
        // No timer of this object, and none of the table's messages.
        {WM_TIMER, 7788, 0, "[]", Base::Keeps},
        {WM_LBUTTONDBLCLK, 0, 0, "[]", Base::IsOverruledTo0},
        {WM_CTLCOLOREDIT, someWide, someLong, "[]", Base::IsOverruledTo0},
        {WM_DEVICECHANGE, 0x8000, 0, "[]", Base::IsOverruledTo0},
        {WM_USER + 1, 1, 2, "[]", Base::IsOverruledTo0},
    };
}

TEST(WindowDispatch, BasesClearTheFlagOrKeepIt) {
    Dialog dialog;
    for (const Row& row : AllMessages()) {
        const bool isHandled = row.base == Base::Keeps || row.base == Base::IsOverruledTo1;
        EXPECT_EQ(dialog.Send(row.message, row.wParam, row.lParam), isHandled ? 1 : 0) << row.line;
        EXPECT_EQ(dialog.TakenLine(), row.line);
        EXPECT_EQ(dialog.MessageResult(), 0) << row.line;
    }
}

TEST(WindowDispatch, AnOverrideThatDoesNothingLeavesTheMessageHandled) {
    Dialog dialog;
    dialog.callBase = false;
    for (const Row& row : AllMessages()) {
        const bool isBrush = row.message == WM_CTLCOLORDLG || row.message == WM_CTLCOLORSTATIC;
        const INT_PTR expected = row.base == Base::IsOverruledTo0 || isBrush ? 0 : 1;
        EXPECT_EQ(dialog.Send(row.message, row.wParam, row.lParam), expected) << row.line;
        EXPECT_EQ(dialog.TakenLine(), row.line);
        EXPECT_EQ(dialog.MessageResult(), row.message == WM_ERASEBKGND ? 1
                                          : isBrush                    ? Dialog::untouched
                                                                       : 0)
            << row.line;
    }
}

TEST(WindowDispatch, TheFlagIsSetWhenAnOperationBegins) {
    Dialog dialog;
    for (const Row& row : AllMessages()) {
        dialog.flagSeen = 1;
        dialog.SetFlag(9);  // of an earlier message
        dialog.Send(row.message, row.wParam, row.lParam);
        EXPECT_EQ(dialog.flagSeen, 1u) << row.line;
    }
}

TEST(WindowDispatch, WindowModeHandsTheResultBackDirectly) {
    Plain window;
    window.callBase = false;
    for (const Row& row : AllMessages()) {
        if (row.base == Base::IsOverruledTo0) continue;  // the platform's business
        if (row.message == WM_CREATE) continue;          // has a structure there
        EXPECT_EQ(window.Send(row.message, row.wParam, row.lParam),
                  row.message == WM_ERASEBKGND ? 1 : 0)
            << row.line;
        EXPECT_EQ(window.TakenLine(), row.line);
    }
}

TEST(WindowDispatch, WindowModeGoesOnToThePlatformWhereTheFlagIsCleared) {
    Plain window;
    EXPECT_NE(window.Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"Quarry")), 0);
    wchar_t text[16] = {};
    EXPECT_EQ(window.Send(WM_GETTEXT, 16, reinterpret_cast<LPARAM>(text)), 6);
    EXPECT_STREQ(text, L"Quarry");
    window.Send(WM_CLOSE);  // destroys the window there
    EXPECT_FALSE(IsWindow(window.Window()));
    EXPECT_EQ(window.Taken().front(), "OnClose");
}

TEST(WindowDispatch, DrawItemTellsTheControlItsIdAndTheStructure) {
    Dialog dialog;
    DRAWITEMSTRUCT item = {};
    item.CtlID = 77;
    item.hwndItem = someWindow;
    const auto address = reinterpret_cast<LPARAM>(&item);
    const std::string line = "OnDrawItem " + shownWindow + " 77 " + AsText(&item);
    EXPECT_EQ(dialog.Send(WM_DRAWITEM, 77, address), 0);
    EXPECT_EQ(dialog.TakenLine(), line);
    dialog.callBase = false;
    EXPECT_EQ(dialog.Send(WM_DRAWITEM, 77, address), 1);
}

TEST(WindowDispatch, StandardIdsReachTheirOperationAndThenOnCommand) {
    struct Id {
        WORD id;
        const char* operation;
    };
    const Id rows[] = {
        {IDOK, "OnIdOk"},       {IDCANCEL, "OnIdCancel"}, {IDABORT, "OnIdAbort"},
        {IDRETRY, "OnIdRetry"}, {IDIGNORE, "OnIdIgnore"}, {IDYES, "OnIdYes"},
        {IDNO, "OnIdNo"},       {IDCLOSE, "OnIdClose"},   {IDHELP, "OnIdHelp"},
    };
    Dialog dialog;
    for (const Id& row : rows) {
        const std::string command = "OnCommand " + std::to_string(row.id) + " " + shownWindow;
        EXPECT_EQ(dialog.Send(WM_COMMAND, MAKEWPARAM(row.id, 0), someLong), 1);
        EXPECT_EQ(dialog.Taken(), (std::vector<std::string>{row.operation, command + " 0"}));
        EXPECT_EQ(dialog.Send(WM_COMMAND, MAKEWPARAM(row.id, 1), someLong), 1);
        EXPECT_EQ(dialog.TakenLine(), command + " 1") << "an accelerator";
    }
    for (const WORD id : {WORD{0}, WORD{10}, WORD{1001}}) {
        dialog.Send(WM_COMMAND, MAKEWPARAM(id, 0), 0);
        EXPECT_EQ(dialog.TakenLine(), "OnCommand " + std::to_string(id) + " 0x0 0");
    }
}

TEST(WindowDispatch, OnNotifyGivesTheResult) {
    Dialog dialog;
    dialog.callBase = false;
    dialog.notifyResult = -77;
    EXPECT_EQ(dialog.Send(WM_NOTIFY, 0, someLong), 1);
    EXPECT_EQ(dialog.MessageResult(), -77);
    Plain window;
    window.callBase = false;
    window.notifyResult = -77;
    EXPECT_EQ(window.Send(WM_NOTIFY, 0, someLong), -77);
}

TEST(WindowDispatch, ADialogHandsItsOwnFlagToThePlatform) {
    Dialog dialog;
    dialog.callBase = false;
    dialog.during = [&] { dialog.SetFlag(0x12345678); };
    EXPECT_EQ(dialog.Send(WM_CLOSE), 0x12345678);
    EXPECT_EQ(dialog.Send(WM_ERASEBKGND), 0x12345678);
    EXPECT_EQ(dialog.MessageResult(), 1);
    dialog.during = [&] { dialog.SetFlag(0); };
    EXPECT_EQ(dialog.Send(WM_ERASEBKGND), 0);
    EXPECT_EQ(dialog.MessageResult(), 0);
    // What no override has a say in.
    EXPECT_EQ(dialog.Send(WM_INITDIALOG), 1);
    dialog.during = [&] { dialog.SetFlag(5); };
    EXPECT_EQ(dialog.Send(WM_PAINT), 0);
    EXPECT_EQ(dialog.Send(WM_SYSCOMMAND, SC_CLOSE), 0);
}

TEST(WindowDispatch, BrushesAreHandedBackAsTheyAre) {
    const HBRUSH brush = GetSysColorBrush(COLOR_HIGHLIGHT);
    const auto asResult = reinterpret_cast<INT_PTR>(brush);
    for (const UINT message : std::vector<UINT>{WM_CTLCOLORDLG, WM_CTLCOLORSTATIC}) {
        Dialog dialog;
        dialog.callBase = false;
        dialog.brush = brush;
        EXPECT_EQ(dialog.Send(message), asResult);
        EXPECT_EQ(dialog.MessageResult(), Dialog::untouched);
        Plain window;
        window.callBase = false;
        window.brush = brush;
        EXPECT_EQ(window.Send(message), asResult);
        // A brush does not count without the flag.
        dialog.during = [&] { dialog.SetFlag(0); };
        EXPECT_EQ(dialog.Send(message), 0);
        EXPECT_EQ(dialog.MessageResult(), 0);
    }
}

TEST(PreDispatch, ComesFirstWithAClearedFlag) {
    Dialog dialog;
    std::uint32_t flagAtEntry = 99;
    std::size_t linesAtEntry = 99;
    dialog.before = [&](std::uint32_t* handled) -> LRESULT {
        flagAtEntry = *handled;
        linesAtEntry = dialog.Taken().size();
        return 55;  // no result while the flag stays cleared
    };
    dialog.SetFlag(3);
    EXPECT_EQ(dialog.Send(WM_COMMAND, 1002), 1);
    EXPECT_EQ(flagAtEntry, 0u);
    EXPECT_EQ(linesAtEntry, 0u);
    EXPECT_EQ(dialog.MessageResult(), 0);
    EXPECT_EQ(dialog.TakenLine(), "OnCommand 1002 0x0 0");
    EXPECT_EQ(dialog.seenMessages, std::vector<UINT>{WM_COMMAND});
}

TEST(PreDispatch, TakesAMessageInADialog) {
    Dialog dialog;
    dialog.before = [](std::uint32_t* handled) -> LRESULT {
        *handled = 5;
        return -12;
    };
    for (const UINT message :
         std::vector<UINT>{WM_COMMAND, WM_PAINT, WM_SYSCOMMAND, WM_CTLCOLORDLG, WM_USER}) {
        EXPECT_EQ(dialog.Send(message, IDOK), 5);
        EXPECT_EQ(dialog.MessageResult(), -12);
    }
    EXPECT_TRUE(dialog.Taken().empty());
}

TEST(PreDispatch, TakesAMessageInAWindow) {
    Plain window;
    window.before = [](std::uint32_t* handled) -> LRESULT {
        *handled = 5;
        return -12;
    };
    EXPECT_EQ(window.Send(WM_COMMAND, IDOK), -12);
    EXPECT_EQ(window.Send(WM_GETTEXTLENGTH), -12);
    EXPECT_TRUE(window.Taken().empty());
}

// A message sent from inside an operation leaves its own flag behind.
TEST(NestedMessages, ResetTheFlagOfTheOuterOne) {
    Dialog dialog;
    dialog.callBase = false;
    dialog.during = [&] { SendMessageW(dialog.Window(), WM_USER, 0, 0); };
    EXPECT_EQ(dialog.Send(WM_CLOSE), 0) << "WM_USER is handled by nobody";
}

TEST(NestedMessages, DoNotHarmAnOverrideThatSetsItsFlagLast) {
    Dialog dialog;
    dialog.callBase = false;
    int depth = 0;
    dialog.during = [&] {
        if (++depth == 1) {
            SendMessageW(dialog.Window(), WM_USER, 0, 0);
            SendMessageW(dialog.Window(), WM_KEYDOWN, VK_F5, 0);
            SendMessageW(dialog.Window(), WM_GETTEXTLENGTH, 0, 0);
        }
        --depth;
        dialog.SetFlag(1);
    };
    EXPECT_EQ(dialog.Send(WM_ERASEBKGND), 1);
    EXPECT_EQ(dialog.MessageResult(), 1);
    EXPECT_EQ(dialog.Taken(),
              (std::vector<std::string>{"OnEraseBackground 0x0", "OnKeyDown 116 0"}));
    // And one that wants the default to follow clears it last.
    dialog.during = [&] {
        SendMessageW(dialog.Window(), WM_TIMER, 1, 0);  // leaves 1
        dialog.SetFlag(0);
    };
    EXPECT_EQ(dialog.Send(WM_ERASEBKGND), 0);
}

TEST(NestedMessages, DoNotUndoWhatTheDispatcherForces) {
    Dialog dialog;
    dialog.callBase = false;
    dialog.during = [&] { SendMessageW(dialog.Window(), WM_TIMER, 999, 0); };
    EXPECT_EQ(dialog.Send(WM_PAINT), 0);
    dialog.during = [&] { SendMessageW(dialog.Window(), WM_USER, 0, 0); };
    EXPECT_EQ(dialog.Send(WM_INITDIALOG), 1);
}

}  // namespace
