// How the program begins, what it finds on its command line, and what it leaves.
#include <gmock/gmock.h>

#include <cstring>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"

namespace {

using testing::ElementsAre;

constexpr const wchar_t* defaultColumns =
    L"Name\rSize\rType\rDate Modified\rArtist\rTitle\rGenre\r"
    L"Album Artist - Album - Disc - Track\rLength\rBit Rate";

class StartTest : public testing::Test {
protected:
    StartTest() {
        stage.AddDecoder(L"one", "type=.abc|Some sound\n");
        stage.AddFile(L"first.abc", 1500);
        stage.AddFile(L"second.abc", 700);
        stage.AddFile(L"notes.txt", 10);
    }
    // The music folder without its last backslash, as somebody types it.
    std::wstring TypedFolder() const { return stage.Music().substr(0, stage.Music().size() - 1); }

    ProgramStage stage;
};

RECT ScreenRect(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

TEST_F(StartTest, FirstStartIsMaximisedWithDefaultColumns) {
    RunningProgram& program = stage.Start();
    EXPECT_EQ(TextOfWindow(program.Form()), L"Tonequarry Batch Converter");
    EXPECT_TRUE(WaitUntil([&] { return IsZoomed(program.Form()) != FALSE; }));
    EXPECT_THAT(
        program.List().Titles(),
        ElementsAre(L"Name", L"Size", L"Type", L"Date Modified", L"Artist", L"Title", L"Genre",
                    L"Album Artist - Album - Disc - Track", L"Length", L"Bit Rate"));
    EXPECT_EQ(program.List().ColumnWidth(0), 250);
    const RECT tree = ScreenRect(program.Tree().Window());
    const RECT list = ScreenRect(program.List().Window());
    EXPECT_EQ(tree.right - tree.left, GetSystemMetrics(SM_CXSCREEN) / 3);
    EXPECT_EQ(list.left - tree.right, 4);
    EXPECT_EQ(tree.top, list.top);
    EXPECT_EQ(program.Close(), 0u);

    for (const wchar_t* name : {L"zKR-FileSelector-X", L"zKR-FileSelector-Y", L"zKR-FileSelector-W",
                                L"zKR-FileSelector-H", L"zKR-FileSelector-NotMax"}) {
        EXPECT_EQ(stage.Number(name), std::nullopt) << NarrowUtf8(name);
    }
    EXPECT_EQ(stage.Number(L"zKR-FileSelector-Devider"),
              static_cast<DWORD>(GetSystemMetrics(SM_CXSCREEN) / 3));
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Cols"), defaultColumns);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-ColWidths"),
              L"250\r75\r150\r150\r150\r150\r150\r150\r75\r90");
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Exclusion"), L"");
}

TEST_F(StartTest, StaysMaximisedBehindItsFirstTimers) {
    RunningProgram& program = stage.Start();
    ASSERT_TRUE(WaitUntil([&] { return IsZoomed(program.Form()) != FALSE; }));
    EXPECT_FALSE(WaitUntil([&] { return IsZoomed(program.Form()) == FALSE; }, 1500));
    ShowWindow(program.Form(), SW_RESTORE);
    EXPECT_TRUE(WaitUntil([&] { return IsZoomed(program.Form()) == FALSE; }));
    const LONG fifthX = GetSystemMetrics(SM_CXSCREEN) / 5;
    const LONG fifthY = GetSystemMetrics(SM_CYSCREEN) / 5;
    const RECT restored = ScreenRect(program.Form());
    EXPECT_EQ(restored.left, fifthX);
    EXPECT_EQ(restored.top, fifthY);
    EXPECT_EQ(restored.right, 4 * fifthX);
    EXPECT_EQ(restored.bottom, 4 * fifthY);
    EXPECT_FALSE(WaitUntil([&] { return IsZoomed(program.Form()) != FALSE; }, 700));
}

TEST_F(StartTest, ButtonsStandInTheBandInTheirOrder) {
    const HWND form = stage.Start().Form();
    std::vector<std::wstring> captions;
    std::vector<POINT> places;
    for (HWND child = GetWindow(form, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t name[16] = {};
        GetClassNameW(child, name, 16);
        if (std::wstring(name) != L"Static") continue;
        captions.push_back(TextOfWindow(child));
        POINT corner = {0, 0};
        ClientToScreen(child, &corner);
        ScreenToClient(form, &corner);
        places.push_back(corner);
        EXPECT_NE(GetWindowLongPtrW(child, GWL_STYLE) & WS_TABSTOP, 0);
    }
    EXPECT_THAT(captions,
                ElementsAre(L"Convert", L"List", L"Refresh", L"Reset", L"Filter", L"Help"));
    // The last one is placed in dialog units, of which four are six pixels.
    const LONG lefts[] = {4, 52, 100, 148, 196, 510};
    ASSERT_EQ(places.size(), 6u);
    for (std::size_t i = 0; i < places.size(); ++i) {
        EXPECT_EQ(places[i].x, lefts[i]);
        EXPECT_EQ(places[i].y, 2);
    }
}

TEST_F(StartTest, PanesHaveTheirStyles) {
    RunningProgram& program = stage.Start();
    EXPECT_EQ(Ask(program.Tree().Window(), TVM_GETITEMHEIGHT), 18);
    EXPECT_EQ(Ask(program.List().Window(), LVM_GETEXTENDEDLISTVIEWSTYLE),
              LVS_EX_CHECKBOXES | LVS_EX_HEADERDRAGDROP | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
}

TEST_F(StartTest, StartFolderIsTickedAndListed) {
    RunningProgram& program = stage.Start(TypedFolder());
    const RemoteTree tree = program.Tree();
    const RemoteItem selected = tree.Selected();
    EXPECT_EQ(tree.Text(selected), L"music");
    EXPECT_EQ(tree.State(selected), 4);
    EXPECT_THAT(program.List().Column(L"Name"), ElementsAre(L"first.abc", L"second.abc"));
    EXPECT_THAT(program.List().Ticks(), ElementsAre(true, true));
    for (RemoteItem item = tree.Parent(selected); item != 0; item = tree.Parent(item))
        EXPECT_EQ(tree.State(item), 2) << NarrowUtf8(tree.Text(item));
}

TEST_F(StartTest, DriveIsAStartFolder) {
    RunningProgram& program = stage.Start(L"  c:\\ ");
    const RemoteTree tree = program.Tree();
    EXPECT_EQ(tree.Parent(tree.Selected()), 0);
    EXPECT_NE(tree.Text(tree.Selected()).find(L"(C:)"), std::wstring::npos);
    EXPECT_EQ(tree.State(tree.Selected()), 4);
}

TEST_F(StartTest, TwoCharactersAreNoStartFolder) {
    RunningProgram& program = stage.Start(L"C:");
    const RemoteTree tree = program.Tree();
    EXPECT_EQ(tree.Find(0, L"C:"), 0);
    for (const RemoteItem root : tree.Children(0))
        EXPECT_EQ(tree.State(root), 1) << NarrowUtf8(tree.Text(root));
}

TEST_F(StartTest, UnknownFolderBecomesARoot) {
    const std::wstring unknown = L"C:\\no such folder\\with blanks";
    RunningProgram& program = stage.Start(unknown);
    const RemoteTree tree = program.Tree();
    EXPECT_EQ(tree.Text(tree.Selected()), unknown);
    EXPECT_EQ(tree.Texts(0).back(), unknown);
    EXPECT_EQ(tree.State(tree.Selected()), 1);
    EXPECT_FALSE(tree.HasExpander(tree.Selected()));
    EXPECT_EQ(program.List().RowCount(), 0);
}

TEST_F(StartTest, QuotedFolderBecomesARoot) {
    RunningProgram& program = stage.Start(L"\"" + TypedFolder() + L"\"");
    const RemoteTree tree = program.Tree();
    EXPECT_EQ(tree.Texts(0).back(), L"\"" + TypedFolder() + L"\"");
    EXPECT_EQ(tree.State(tree.Selected()), 1);
}

TEST_F(StartTest, UnquotedProgramNameBecomesARoot) {
    RunningProgram& program = stage.StartUnquoted();
    EXPECT_EQ(program.Tree().Texts(0).back(), stage.ProgramFolder() + L"Tonequarry.exe");
}

// A program of the console would open one of its own beside the form.
TEST_F(StartTest, ProgramIsOneOfTheWindowedKind) {
    const std::string bytes = ReadBytes(stage.ProgramFolder() + L"Tonequarry.exe").value_or("");
    ASSERT_GE(bytes.size(), sizeof(IMAGE_DOS_HEADER));
    IMAGE_DOS_HEADER stub = {};
    std::memcpy(&stub, bytes.data(), sizeof stub);
    const auto at = static_cast<std::size_t>(stub.e_lfanew);
    ASSERT_GE(bytes.size(), at + sizeof(IMAGE_NT_HEADERS64));
    IMAGE_NT_HEADERS64 headers = {};
    std::memcpy(&headers, bytes.data() + at, sizeof headers);
    ASSERT_EQ(headers.Signature, DWORD{IMAGE_NT_SIGNATURE});
    EXPECT_EQ(headers.OptionalHeader.Subsystem, 2);
}

struct OemText {
    const char* name;
    std::wstring content;
    std::wstring title;
};

class OemTitleTest : public testing::TestWithParam<OemText> {};

TEST_P(OemTitleTest, FirstLineJoinsTheTitle) {
    ProgramStage stage;
    const std::wstring& content = GetParam().content;
    ASSERT_TRUE(WriteBytes(stage.ProgramFolder() + L"OEM.txt",
                           std::string(reinterpret_cast<const char*>(content.data()),
                                       content.size() * sizeof(wchar_t))));
    RunningProgram& program = stage.Start();
    EXPECT_EQ(TextOfWindow(program.Form()), L"Tonequarry Batch Converter" + GetParam().title);
    EXPECT_EQ(program.Close(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Forms, OemTitleTest,
                         testing::Values(OemText{"Empty", L"", L": "},
                                         OemText{"Line", L"Acme\r\nmore", L": Acme"},
                                         OemText{"ByteOrderMark",
                                                 L"\xFEFF"
                                                 L"Acme\nmore",
                                                 L": Acme"},
                                         OemText{"EmptyLine", L"\r\nAcme", L": "}),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
