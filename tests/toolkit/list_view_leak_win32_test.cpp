#include <gtest/gtest.h>

#include "tests/toolkit/list_form.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"

namespace {

// A list as a program uses it, with an editor open on it when it goes.
void UseOneList(HWND parent) {
    XListView list;
    const HWND control =
        CreateWindowExW(0, WC_LISTVIEWW, nullptr, WS_CHILD | LVS_REPORT | LVS_OWNERDRAWFIXED, 0, 0,
                        200, 100, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(control, nullptr);
    list.SetListWindow(control);
    list.Attach(control);
    list.AddColumn(L"Name", 100, LVCFMT_LEFT, 50);
    list.SetColumnImage(0, -1);
    list.InsertRow(-1, 0, -1, 0);
    list.SetEditMode(XListView::EditMode::AllColumns);
    list.Editor().Start(list, 0, 0);
    ASSERT_EQ(list.Editor().Row(), 0);
    list.Detach();
    DestroyWindow(control);
}

void UseLists(HWND parent, int count) {
    for (int i = 0; i < count; ++i)
        UseOneList(parent);
    PumpMessages();
}

TEST(ListView, LeavesNothingBehindAfterAThousand) {
    HostForm form;
    form.Show(DialogTemplate(hiddenForm, 200, 100));
    // What the platform makes once and keeps.
    UseLists(form.Window(), 20);
    const ResourceCounts before = CountResources();
    UseLists(form.Window(), 1000);
    EXPECT_EQ(CountResources(), before);
}

}  // namespace
