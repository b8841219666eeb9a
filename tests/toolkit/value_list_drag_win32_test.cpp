#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/text.h"
#include "tests/toolkit/value_form.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

namespace {

constexpr UINT_PTR someId = 5;

// A list whose rows can be dragged: "row 0" to "row 5".
class DragForm : public ValueForm {
public:
    explicit DragForm(bool firstIsBand = false) {
        message = RegisterWindowMessageW(DRAGLISTMSGSTRING);
        list.SetDragMessage(message);
        if (firstIsBand) {
            Add(ValueKind::Band, L"row 0", L"");
            for (const wchar_t* name : {L"row 1", L"row 2", L"row 3", L"row 4", L"row 5"})
                Add(ValueKind::Text, name, L"");
        } else {
            Fill(6);
        }
    }

    LRESULT Notify(UINT code, std::int32_t row, int below = 0) {
        DRAGLISTINFO drag = {};
        drag.uNotification = code;
        drag.hWnd = Box();
        drag.ptCursor = InRow(row, 60);
        drag.ptCursor.y += below;
        return Send(message, someId, reinterpret_cast<LPARAM>(&drag));
    }
    // The digits of the names, as the rows and as the list box has them.
    std::string Order() const {
        std::string order;
        for (std::int32_t row = 0; row < list.RowCount(); ++row) {
            wchar_t text[50] = {};
            Ask(LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text));
            EXPECT_EQ(Utf8(text), Utf8(list.Row(row)->name));
            order += Utf8(text).back();
        }
        return order;
    }

    UINT message = 0;
};

TEST(ValueDrag, MovesARowInFrontOfAnother) {
    DragForm form;
    EXPECT_EQ(form.Notify(DL_BEGINDRAG, 1), TRUE);
    EXPECT_EQ(form.handled, 1U);
    EXPECT_EQ(form.Notify(DL_DRAGGING, 4), DL_MOVECURSOR);
    EXPECT_EQ(form.Notify(DL_DROPPED, 4), 0);
    EXPECT_EQ(form.Order(), "023145");
    EXPECT_EQ(form.list.CurrentRow(), 3);
    form.Notify(DL_BEGINDRAG, 4);
    form.Notify(DL_DRAGGING, 0);
    form.Notify(DL_DROPPED, 0);
    EXPECT_EQ(form.Order(), "402315");
    EXPECT_EQ(form.list.CurrentRow(), 0);
}

TEST(ValueDrag, LeavesTheRowsAloneWithoutAMove) {
    DragForm form;
    form.Notify(DL_BEGINDRAG, 1);
    form.Notify(DL_DROPPED, 4);
    EXPECT_EQ(form.Order(), "012345");
    form.Notify(DL_BEGINDRAG, 1);
    form.Notify(DL_DRAGGING, 4);
    form.Notify(DL_CANCELDRAG, 4);
    form.Notify(DL_DROPPED, 4);
    EXPECT_EQ(form.Order(), "012345");
    EXPECT_EQ(form.Notify(DL_BEGINDRAG, 5, 60), FALSE);  // below the rows
    EXPECT_EQ(form.handled, 1U);
    EXPECT_EQ(form.Notify(DL_DRAGGING, 5, 60), DL_STOPCURSOR);
}

TEST(ValueDrag, WithoutAMoveAfterOneThatWasLeavesTheRowsAlone) {
    DragForm form;
    form.Notify(DL_BEGINDRAG, 1);
    form.Notify(DL_DRAGGING, 4);
    form.Notify(DL_CANCELDRAG, 4);
    form.Notify(DL_BEGINDRAG, 1);
    form.Notify(DL_DROPPED, 4);
    EXPECT_EQ(form.Order(), "012345");
}

TEST(ValueDrag, KeepsAFirstBandFirst) {
    DragForm form(true);
    form.Notify(DL_BEGINDRAG, 3);
    form.Notify(DL_DRAGGING, 0);
    form.Notify(DL_DROPPED, 0);
    EXPECT_EQ(form.Order(), "031245");
}

TEST(ValueDrag, SleepsWithoutItsMessage) {
    DragForm form;
    form.list.SetDragMessage(0);
    EXPECT_EQ(form.Notify(DL_BEGINDRAG, 1), 0);
    EXPECT_EQ(form.handled, 0U);
    form.message = 0;
    EXPECT_EQ(form.Notify(DL_BEGINDRAG, 1), 0);
    EXPECT_EQ(form.handled, 0U);
}

TEST(ValueDrag, FollowsTheRealPointer) {
    DragForm form;
    MakeDragList(form.Box());
    const POINT to = form.InRow(4, 60);
    MovePointer(form.InRow(1, 60));
    PressButton();
    PumpMessages();
    for (const int row : {2, 3, 4}) {
        MovePointer(form.InRow(row, 60));
        PumpMessages();
    }
    MovePointer(to);
    ReleaseButton();
    PumpMessages();
    EXPECT_EQ(form.Order(), "023145");
}

}  // namespace
