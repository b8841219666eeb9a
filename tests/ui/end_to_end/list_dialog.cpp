#include "tests/ui/end_to_end/list_dialog.h"

#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

constexpr const wchar_t* dialogTitle = L"Tonequarry Batch Converter: Audio Files Converting";

}  // namespace

ListDialogTest::ListDialogTest() {
    stage.AddDecoder(L"one", "type=.abc|Some sound\nlength-ms=1000\ntag=Artist|Somebody\n");
    for (const wchar_t* name : {L"a.abc", L"b.abc", L"inner\\c.abc"})
        stage.AddFile(name, 3000);
    stage.AddFolder(L"empty");
}

HWND ListDialogTest::DialogThatShows() const {
    return stage.Program().Dialog(dialogTitle);
}

HWND ListDialogTest::OpenUnread() const {
    stage.Program().PressButton(BarButton::List);
    return DialogThatShows();
}

HWND ListDialogTest::Open() {
    const HWND dialog = OpenUnread();
    const RemoteList list = ListOf(dialog);
    EXPECT_TRUE(WaitUntil([&] {
        return list.RowCount() > 0 &&
               list.Cell(list.RowCount() - 1, list.ColumnTitled(L"Artist")) == L"Somebody";
    }));
    return dialog;
}

bool ListDialogTest::Goes(HWND dialog) {
    return WaitUntil([dialog] { return IsWindow(dialog) == FALSE; });
}

void ListDialogTest::Untick(const RemoteList& list, const std::wstring& name) {
    const int row = list.RowOf(name);
    ASSERT_GE(row, 0);
    ClickSettled(list.TickPoint(row));
    ASSERT_TRUE(WaitUntil([&] { return !list.IsTicked(row); }));
}

void ListDialogTest::UntickSelectedFolder(RunningProgram& program) {
    const RemoteTree tree = program.Tree();
    const RemoteItem folder = tree.Selected();
    for (const int state : {5, 1}) {
        ClickSettled(tree.PicturePoint(folder));
        ASSERT_TRUE(WaitUntil([&] { return tree.State(folder) == state; }));
    }
}

void ListDialogTest::ClickControl(HWND dialog, int id) {
    ClickSettled(ScreenMiddle(GetDlgItem(dialog, id)));
}

void ListDialogTest::ClickCloseBox(HWND dialog) {
    // Maximised, the frame lies beyond the screen on every side.
    RECT frame = {};
    GetWindowRect(dialog, &frame);
    const int width = GetSystemMetrics(SM_CXFRAME);
    ClickSettled({frame.right - width - GetSystemMetrics(SM_CXSIZE) / 2,
                  frame.top + width + GetSystemMetrics(SM_CYSIZE) / 2});
}

void ListDialogTest::DragEdge(const RemoteList& list, int column, int pixels) {
    const int width = list.ColumnWidth(column);
    const POINT edge = list.HeaderEdge(column);
    // Longer ago than the first half of a double click.
    Sleep(GetDoubleClickTime() + 50);
    SettlePointer(edge);
    PressButton(PointerButton::Left);
    for (const int part : {pixels / 2, pixels}) {
        SettlePointer({edge.x + part, edge.y});
        Sleep(100);  // seen as a move of its own
    }
    ReleaseButton(PointerButton::Left);
    EXPECT_TRUE(WaitUntil([&] { return list.ColumnWidth(column) == width + pixels; }))
        << list.ColumnWidth(column) << " from " << width;
}

void ListDialogTest::ChooseFromRowMenu(const RemoteList& list, int place) {
    ClickSettled(list.RowPoint(0), PointerButton::Right);
    ASSERT_TRUE(WaitUntil([] { return FindWindowW(L"#32768", nullptr) != nullptr; }));
    for (int i = 0; i < place; ++i)
        PressKey(VK_DOWN);
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitUntil([] { return FindWindowW(L"#32768", nullptr) == nullptr; }));
}

std::optional<std::string> ListDialogTest::Convert() const {
    stage.Program().PressButton(BarButton::Convert);
    EXPECT_TRUE(converter.WaitFor(L"signalled"));
    Ask(stage.Program().Form(), WM_NULL);
    return converter.List();
}
