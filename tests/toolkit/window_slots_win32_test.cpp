#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "toolkit/button.h"
#include "toolkit/list_view.h"
#include "toolkit/sub_class_ctrl.h"
#include "toolkit/tree_view.h"
#include "toolkit/value_list.h"
#include "toolkit/window.h"

// The operations stand in their tables in a settled order.

namespace {

// A pointer to a virtual member holds the offset of its slot, plus one.
template <class Member>
std::uintptr_t SlotOf(Member member) {
    std::uintptr_t words[2] = {};
    static_assert(sizeof(member) == sizeof(words));
    std::memcpy(words, &member, sizeof(words));
    return (words[0] - 1) / sizeof(void*);
}

// A virtual destructor takes the first two slots.
constexpr std::uintptr_t behindDestructor = 2;
// And the hook of a control the third.
constexpr std::uintptr_t behindHook = behindDestructor + 1;

TEST(WindowSlots, StandInTheirOrder) {
    const std::uintptr_t slots[] = {
        SlotOf(&XWindow::OnActivate),
        SlotOf(&XWindow::OnClose),
        SlotOf(&XWindow::OnContextMenu),
        SlotOf(&XWindow::OnCommand),
        SlotOf(&XWindow::OnCreate),
        SlotOf(&XWindow::OnDestroy),
        SlotOf(&XWindow::OnDeactivate),
        SlotOf(&XWindow::OnDrawItem),
        SlotOf(&XWindow::OnEraseBackground),
        SlotOf(&XWindow::OnHide),
        SlotOf(&XWindow::OnKeyDown),
        SlotOf(&XWindow::OnKeyUp),
        SlotOf(&XWindow::OnChar),
        SlotOf(&XWindow::OnMouseDown),
        SlotOf(&XWindow::OnMouseUp),
        SlotOf(&XWindow::OnMouseMove),
        SlotOf(&XWindow::OnMouseWheel),
        SlotOf(&XWindow::OnMove),
        SlotOf(&XWindow::OnNotify),
        SlotOf(&XWindow::OnPaint),
        SlotOf(&XWindow::OnShow),
        SlotOf(&XWindow::OnSize),
        SlotOf(&XWindow::OnSysCommand),
        SlotOf(&XWindow::OnTimer),
        SlotOf(&XWindow::OnCtlColorStatic),
        SlotOf(&XWindow::OnCtlColorDlg),
        SlotOf(&XWindow::PreDispatch),
        SlotOf(&XWindow::OnIdOk),
        SlotOf(&XWindow::OnIdCancel),
        SlotOf(&XWindow::OnIdAbort),
        SlotOf(&XWindow::OnIdClose),
        SlotOf(&XWindow::OnIdHelp),
        SlotOf(&XWindow::OnIdIgnore),
        SlotOf(&XWindow::OnIdNo),
        SlotOf(&XWindow::OnIdRetry),
        SlotOf(&XWindow::OnIdYes),
    };
    std::uintptr_t expected = behindDestructor;
    for (const std::uintptr_t slot : slots)
        EXPECT_EQ(slot, expected++);
}

TEST(SubClassSlots, TheHookFollowsTheDestructor) {
    EXPECT_EQ(SlotOf(&XSubClassCtrl::WndHook), behindDestructor);
}

TEST(TreeViewSlots, StandInTheirOrderWithoutADestructor) {
    const std::uintptr_t slots[] = {
        SlotOf(&XTreeView::OnItemExpanded),    SlotOf(&XTreeView::OnItemExpanding),
        SlotOf(&XTreeView::OnSelChanged),      SlotOf(&XTreeView::OnSelChanging),
        SlotOf(&XTreeView::OnTreeClick),       SlotOf(&XTreeView::OnTreeDoubleClick),
        SlotOf(&XTreeView::OnTreeRightClick),  SlotOf(&XTreeView::OnTreeRightDoubleClick),
        SlotOf(&XTreeView::OnTreeContextMenu), SlotOf(&XTreeView::OnTreeSpace),
    };
    std::uintptr_t expected = 0;
    for (const std::uintptr_t slot : slots)
        EXPECT_EQ(slot, expected++);
}

TEST(ListViewSlots, StandInTheirOrder) {
    const std::uintptr_t slots[] = {
        SlotOf(&XListView::CanEditCell),        SlotOf(&XListView::OnItemChanged),
        SlotOf(&XListView::OnRowSelected),      SlotOf(&XListView::OnRowChecked),
        SlotOf(&XListView::OnLabelEditBegin),   SlotOf(&XListView::OnLabelEditEnd),
        SlotOf(&XListView::OnCellEdited),       SlotOf(&XListView::OnLabelEditCancelled),
        SlotOf(&XListView::OnBeginDrag),        SlotOf(&XListView::OnListKey),
        SlotOf(&XListView::CanEditByKey),       SlotOf(&XListView::CanSelectAll),
        SlotOf(&XListView::GetInfoTip),         SlotOf(&XListView::OnMarqueeBegin),
        SlotOf(&XListView::OnColumnClick),      SlotOf(&XListView::OnRowClick),
        SlotOf(&XListView::OnLeftDown),         SlotOf(&XListView::OnRowDoubleClick),
        SlotOf(&XListView::OnRowRightClick),    SlotOf(&XListView::OnRowRightDoubleClick),
        SlotOf(&XListView::OnListContextMenu),  SlotOf(&XListView::OnColumnResized),
        SlotOf(&XListView::OnColumnsReordered), SlotOf(&XListView::OnDrawRow),
        SlotOf(&XListView::OnVScroll),
    };
    std::uintptr_t expected = behindHook;
    for (const std::uintptr_t slot : slots)
        EXPECT_EQ(slot, expected++);
}

TEST(ValueListSlots, StandInTheirOrder) {
    const std::uintptr_t slots[] = {
        SlotOf(&XValueList::OnSelChange),
        SlotOf(&XValueList::OnValueChanged),
        SlotOf(&XValueList::OnRowContextMenu),
        SlotOf(&XValueList::OnRowDoubleClick),
    };
    std::uintptr_t expected = behindHook;
    for (const std::uintptr_t slot : slots)
        EXPECT_EQ(slot, expected++);
}

TEST(ButtonSlots, StandInTheirOrder) {
    const std::uintptr_t slots[] = {
        SlotOf(&XButton::OnClick),
        SlotOf(&XButton::OnRepeat),
        SlotOf(&XButton::OnPressed),
        SlotOf(&XButton::OnCancelled),
    };
    std::uintptr_t expected = behindHook;
    for (const std::uintptr_t slot : slots)
        EXPECT_EQ(slot, expected++);
}

}  // namespace
