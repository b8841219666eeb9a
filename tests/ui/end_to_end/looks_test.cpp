// What the main window paints by itself, read from the screen.
#include <gmock/gmock.h>
#include <windows.h>
// winioctl.h needs windows.h before it.
#include <winioctl.h>

#include <string_view>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/extra_drive.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/pixels.h"

namespace {

constexpr COLORREF black = RGB(0, 0, 0);
constexpr COLORREF grey = RGB(0x80, 0x80, 0x80);
constexpr COLORREF bandLeft = RGB(0xF0, 0xF0, 0xF0);
constexpr COLORREF bandRight = RGB(0xFB, 0xFB, 0xFB);

// A part of a window's client area, as it stands on the screen.
std::unique_ptr<Canvas> Screen(HWND window, RECT area) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    auto shot = std::make_unique<Canvas>(width, height);
    POINT origin = {area.left, area.top};
    ClientToScreen(window, &origin);
    const HDC screen = GetDC(nullptr);
    BitBlt(shot->Dc(), 0, 0, width, height, screen, origin.x, origin.y, SRCCOPY);
    ReleaseDC(nullptr, screen);
    return shot;
}

// The font of the form, selected into a canvas.
class FormFont {
public:
    explicit FormFont(const Canvas& canvas)
        : dc(canvas.Dc()),
          font(CreateFontW(13, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0,
                           L"Tahoma")),
          before(SelectObject(dc, font)) {}
    FormFont(const FormFont&) = delete;
    FormFont& operator=(const FormFont&) = delete;
    ~FormFont() {
        SelectObject(dc, before);
        DeleteObject(font);
    }

private:
    HDC dc;
    HFONT font;
    HGDIOBJ before;
};

void Write(const Canvas& canvas, int x, int y, std::wstring_view text, COLORREF colour) {
    const FormFont font(canvas);
    SetBkMode(canvas.Dc(), TRANSPARENT);
    SetTextColor(canvas.Dc(), colour);
    ExtTextOutW(canvas.Dc(), x, y, 0, nullptr, text.data(), static_cast<UINT>(text.size()),
                nullptr);
}

int WidthOf(std::wstring_view text) {
    const Canvas canvas(1, 1);
    const FormFont font(canvas);
    SIZE size = {};
    GetTextExtentPoint32W(canvas.Dc(), text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

class LooksTest : public testing::Test {
protected:
    LooksTest() {
        stage.SetNumber(L"zKR-FileSelector-X", 60);
        stage.SetNumber(L"zKR-FileSelector-Y", 40);
        stage.SetNumber(L"zKR-FileSelector-W", 1000);
        stage.SetNumber(L"zKR-FileSelector-H", 600);
        stage.SetNumber(L"zKR-FileSelector-NotMax", 1);
    }
    SIZE Client() const {
        RECT client = {};
        GetClientRect(stage.Program().Form(), &client);
        return {client.right, client.bottom};
    }
    // A canvas with the form's background, of which each column has one colour,
    // taken from the lowest line of the form.
    std::unique_ptr<Canvas> Background(RECT area) const {
        const int width = area.right - area.left;
        const int height = area.bottom - area.top;
        const LONG lowest = Client().cy - 1;
        EXPECT_TRUE(WaitUntil([&] {
            return Screen(stage.Program().Form(), {0, lowest, 1, lowest + 1})->At(0, 0) == bandLeft;
        }));
        const auto line =
            Screen(stage.Program().Form(), {area.left, lowest, area.right, lowest + 1});
        auto canvas = std::make_unique<Canvas>(width, height);
        for (int y = 0; y < height; ++y)
            BitBlt(canvas->Dc(), 0, y, width, 1, line->Dc(), 0, 0, SRCCOPY);
        return canvas;
    }
    // How many pixels of an area of the form are not those of a canvas.
    int Differences(RECT area, const Canvas& expected) const {
        const auto shot = Screen(stage.Program().Form(), area);
        int different = 0;
        for (int y = 0; y < area.bottom - area.top; ++y) {
            for (int x = 0; x < area.right - area.left; ++x)
                different += shot->At(x, y) != expected.At(x, y) ? 1 : 0;
        }
        return different;
    }
    // The strip below the panes, from x on.
    RECT Strip(LONG from, LONG to) const { return {from, Client().cy - 20, to, Client().cy}; }
    bool StripBecomes(std::wstring_view text) const {
        const RECT area = Strip(0, 700);
        const auto expected = Background(area);
        Write(*expected, 4, 0, text, black);
        return WaitUntil([&] { return Differences(area, *expected) == 0; }, 5000);
    }
    RECT NoticeArea() const {
        return Strip(Client().cx - WidthOf(L"Reading Meta Data...") - 30, Client().cx);
    }
    bool NoticeIs(bool shown) const {
        const RECT area = NoticeArea();
        const auto expected = Background(area);
        if (shown) Write(*expected, 14, 0, L"Reading Meta Data...", black);
        return WaitUntil([&] { return Differences(area, *expected) == 0; }, 5000);
    }

    ProgramStage stage;
};

TEST_F(LooksTest, StatusTellsTheShownAndTheTickedFiles) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\n");
    stage.AddFile(L"a.abc", 1500);
    stage.AddFile(L"b.abc", 700);
    stage.AddFile(L"none.txt", 5000);
    RunningProgram& program = stage.Start(stage.Music());
    EXPECT_TRUE(StripBecomes(L"2 Audio Files Shown (3 KB), 2 Files Selected (3 KB) in Folder: " +
                             stage.Music()));
    ClickSettled(program.List().TickPoint(0));
    EXPECT_TRUE(
        StripBecomes(L"2 Audio Files Shown (3 KB), 1 Files Selected (700 bytes) in "
                     L"Folder: " +
                     stage.Music()));
}

TEST_F(LooksTest, StatusOfAnEmptyFolderHasNoBrackets) {
    stage.Start(stage.Music());
    EXPECT_TRUE(StripBecomes(L"0 Audio Files Shown in Folder: " + stage.Music()));
    const RemoteTree tree = stage.Program().Tree();
    ClickSettled(tree.LabelPoint(tree.Find(0, L"Network")));
    EXPECT_TRUE(StripBecomes(L"0 Audio Files Shown in Folder: { Network }"));
    Ask(tree.Window(), TVM_SELECTITEM, TVGN_CARET, 0);
    EXPECT_TRUE(StripBecomes(L""));
}

// A file without content, which takes no room on the disk.
void Lengthen(const std::wstring& path, LONGLONG bytes) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    // Where this cannot be told the length alone takes no room either, or it does.
    DWORD ignored = 0;
    DeviceIoControl(file, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &ignored, nullptr);
    LARGE_INTEGER end = {};
    end.QuadPart = bytes;
    EXPECT_TRUE(SetFilePointerEx(file, end, nullptr, FILE_BEGIN));
    EXPECT_TRUE(SetEndOfFile(file));
    CloseHandle(file);
}

TEST_F(LooksTest, SizesAboveFourGigabytesAreTold) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\n");
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rSize");
    Lengthen(stage.AddFile(L"a.abc"), 5LL << 30);
    stage.AddFile(L"b.abc", 2048);
    const RemoteList list = stage.Start(stage.Music()).List();
    EXPECT_THAT(list.Column(L"Size"), testing::ElementsAre(L"5,242,880 KB", L"2 KB"));
    EXPECT_TRUE(StripBecomes(L"2 Audio Files Shown (5 GB), 2 Files Selected (5 GB) in Folder: " +
                             stage.Music()));
    // It counts by itself, and by more than what four gigabytes leave of it.
    ClickSettled(list.HeaderPoint(list.ColumnTitled(L"Size")));
    EXPECT_TRUE(WaitUntil([&] { return list.RowOf(L"b.abc") == 0; }));
    ClickSettled(list.TickPoint(0));
    EXPECT_TRUE(StripBecomes(L"2 Audio Files Shown (5 GB), 1 Files Selected (5 GB) in Folder: " +
                             stage.Music()));
}

TEST_F(LooksTest, FolderThatIsGoneIsAnEmptyOne) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\n");
    stage.AddFile(L"a.abc", 10);
    const std::wstring gone = stage.AddFolder(L"gone");
    RunningProgram& program = stage.Start(stage.Music());
    const RemoteTree tree = program.Tree();
    const RemoteItem music = tree.Selected();
    ClickSettled(tree.ExpanderPoint(music));
    ASSERT_TRUE(WaitUntil([&] { return tree.Find(music, L"gone") != 0; }));
    ASSERT_EQ(program.List().RowCount(), 1);
    ASSERT_TRUE(RemoveDirectoryW(gone.c_str()));
    Ask(tree.Window(), TVM_SELECTITEM, TVGN_CARET, tree.Find(music, L"gone"));
    EXPECT_EQ(program.List().RowCount(), 0);
    EXPECT_TRUE(StripBecomes(L"0 Audio Files Shown in Folder: " + gone));
    EXPECT_FALSE(WaitUntil([&] { return program.HasDialog(); }, 500));
}

// As one whose disc has been taken out.
TEST_F(LooksTest, DriveThatIsNotReadyIsAnEmptyFolder) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\n");
    stage.AddFile(L"a.abc", 10);
    const std::wstring disc = stage.AddFolder(L"disc");
    const clExtraDrive drive(disc);
    RunningProgram& program = stage.Start(stage.Music());
    const RemoteTree tree = program.Tree();
    RemoteItem item = tree.Root();
    while (item != 0 && !drive.IsRootText(tree.Text(item)))
        item = tree.Next(item);
    ASSERT_NE(item, 0);
    ASSERT_EQ(program.List().RowCount(), 1);
    ASSERT_TRUE(RemoveDirectoryW(disc.c_str()));
    Ask(tree.Window(), TVM_SELECTITEM, TVGN_CARET, item);
    EXPECT_EQ(program.List().RowCount(), 0);
    EXPECT_TRUE(StripBecomes(L"0 Audio Files Shown in Folder: " + drive.Root()));
    EXPECT_FALSE(WaitUntil([&] { return program.HasDialog(); }, 500));
}

TEST_F(LooksTest, NoticeDoesNotStayOverAnEmptyFolder) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\n");
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rArtist");
    RunningProgram& program = stage.Start(stage.Music());
    for (int listing = 0; listing < 5; ++listing) {
        EXPECT_TRUE(NoticeIs(false)) << listing;
        program.PressButton(BarButton::Refresh);
        Ask(program.Form(), WM_NULL);
    }
    EXPECT_TRUE(NoticeIs(false));
    EXPECT_EQ(stage.DecoderLog(L"one").find("open "), std::string::npos);
}

// No hidden folder is among the nodes that lead to it.
TEST_F(LooksTest, HiddenStartFolderIsARootOfItsOwnWithItsWholePath) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\n");
    stage.AddFile(L"a.abc", 1500);
    ASSERT_TRUE(SetFileAttributesW(stage.Music().c_str(), FILE_ATTRIBUTE_HIDDEN));
    RunningProgram& program = stage.Start(stage.Music());
    const RemoteTree tree = program.Tree();
    EXPECT_EQ(tree.Texts(0).back(), stage.Music());
    EXPECT_EQ(tree.Text(tree.Selected()), stage.Music());
    EXPECT_EQ(tree.Parent(tree.Selected()), 0);
    EXPECT_EQ(program.List().Column(L"Name"), std::vector<std::wstring>{L"a.abc"});
    EXPECT_TRUE(StripBecomes(L"1 Audio Files Shown (2 KB) in Folder: " + stage.Music()));
}

TEST_F(LooksTest, NoticeStandsWhileFilesAreRead) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\nsleep=700\n");
    stage.AddFile(L"a.abc", 10);
    stage.AddFile(L"b.abc", 10);
    stage.Start(stage.Music());
    EXPECT_TRUE(NoticeIs(true));
    EXPECT_TRUE(NoticeIs(false));
}

// Its last file is in the list by then, and nothing is pumped any more.
TEST_F(LooksTest, NoticeGoesForAReaderThatEndsBehindItsLastFile) {
    const HANDLE hold = CreateEventW(nullptr, TRUE, FALSE, L"Tonequarry tests: the last file");
    stage.AddDecoder(L"one",
                     "type=.abc|Some sound\ntag=Artist|Somebody\n"
                     "destroy-wait=Tonequarry tests: the last file\n");
    stage.AddFile(L"a.abc", 10);
    const RemoteList list = stage.Start(stage.Music()).List();
    ASSERT_TRUE(WaitUntil(
        [&] { return list.Column(L"Artist") == std::vector<std::wstring>{L"Somebody"}; }));
    EXPECT_TRUE(NoticeIs(true));
    SetEvent(hold);
    EXPECT_TRUE(NoticeIs(false));
    CloseHandle(hold);
}

TEST_F(LooksTest, PressOnABoxOfTheSelectionTellsAllItsTicks) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\n");
    for (const wchar_t* name : {L"inner\\a.abc", L"inner\\b.abc", L"inner\\c.abc"})
        stage.AddFile(name, 1024);
    RunningProgram& program = stage.Start(stage.Music());
    const RemoteTree tree = program.Tree();
    const RemoteItem music = tree.Selected();
    ClickSettled(tree.ExpanderPoint(music));
    ASSERT_TRUE(WaitUntil([&] { return tree.Child(music) != 0; }));
    const RemoteItem inner = tree.Child(music);
    for (const int state : {5, 1}) {
        ClickSettled(tree.PicturePoint(inner));
        ASSERT_TRUE(WaitUntil([&] { return tree.State(inner) == state; }));
    }
    const RemoteList list = program.List();
    ASSERT_EQ(list.Ticks(), std::vector<bool>(3, false));
    for (const int row : {0, 1})
        list.Select(row);
    // Held: all is told by the press.
    SettlePointer(list.TickPoint(1));
    PressButton();
    EXPECT_TRUE(WaitUntil([&] { return list.Ticks() == std::vector<bool>{true, true, false}; }));
    EXPECT_EQ(tree.State(inner), 3);
    EXPECT_TRUE(StripBecomes(L"3 Audio Files Shown (3 KB), 2 Files Selected (2 KB) in Folder: " +
                             stage.Music() + L"inner\\"));
    ReleaseButton();
}

TEST_F(LooksTest, LegendExplainsThePictures) {
    RunningProgram& program = stage.Start();
    const RECT area = {260, 0, 505, 53};
    const auto expected = Background(area);
    const HMODULE pictures = LoadLibraryExW((stage.ProgramFolder() + L"Tonequarry.exe").c_str(),
                                            nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(pictures, nullptr);
    Write(*expected, 270 - 260, 4, L"Key: ", black);
    const struct {
        int y;
        const wchar_t* text;
        int icon;
    } rows[] = {{4, L"Convert Folder & Sub-Folders", 105},
                {20, L"Convert Folder, no Sub-Folders", 106},
                {36, L"Contains Individual Conversion Files", 108}};
    for (const auto& row : rows) {
        Write(*expected, 320 - 260, row.y, row.text, grey);
        const auto icon = static_cast<HICON>(
            LoadImageW(pictures, MAKEINTRESOURCEW(row.icon), IMAGE_ICON, 16, 16, 0));
        ASSERT_NE(icon, nullptr) << row.icon;
        DrawIconEx(expected->Dc(), 301 - 260, row.y - 2, icon, 16, 16, 0, nullptr, DI_NORMAL);
        DestroyIcon(icon);
    }
    FreeLibrary(pictures);
    EXPECT_TRUE(WaitUntil([&] { return Differences(area, *expected) == 0; }, 5000))
        << Differences(area, *expected);
    EXPECT_EQ(program.Close(), 0u);
}

// Whether some 16 by 16 pixels around a node's picture are those of a state's icon.
bool ShowsPicture(const RemoteTree& tree, RemoteItem item, HICON icon) {
    const HIMAGELIST images = ImageList_Create(16, 16, ILC_COLOR24 | ILC_MASK, 1, 1);
    ImageList_ReplaceIcon(images, -1, icon);
    const Canvas expected(16, 16);
    ImageList_Draw(images, 0, expected.Dc(), 0, 0, ILD_NORMAL);
    ImageList_Destroy(images);
    POINT middle = tree.PicturePoint(item);
    ScreenToClient(tree.Window(), &middle);
    const auto shot =
        Screen(tree.Window(), {middle.x - 16, middle.y - 12, middle.x + 16, middle.y + 12});
    const auto isAt = [&](int left, int top) {
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 16; ++x) {
                if (shot->At(left + x, top + y) != expected.At(x, y)) return false;
            }
        }
        return true;
    };
    for (int top = 0; top <= 8; ++top) {
        for (int left = 0; left <= 16; ++left) {
            if (isAt(left, top)) return true;
        }
    }
    return false;
}

TEST_F(LooksTest, EachStateOfAFolderHasItsPicture) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\n");
    for (const wchar_t* name : {L"alone\\a.abc", L"files\\b.abc"})
        stage.AddFile(name, 10);
    RunningProgram& program = stage.Start(stage.Music());
    const RemoteTree tree = program.Tree();
    const RemoteItem music = tree.Selected();
    ClickSettled(tree.ExpanderPoint(music));
    ASSERT_TRUE(WaitUntil([&] { return tree.Child(music) != 0; }));
    const RemoteItem alone = tree.Find(music, L"alone");
    const RemoteItem files = tree.Find(music, L"files");
    const auto step = [&](RemoteItem item, int state) {
        ClickSettled(tree.PicturePoint(item));
        return WaitUntil([&] { return tree.State(item) == state; });
    };
    ASSERT_TRUE(step(alone, 5));
    ASSERT_TRUE(step(files, 5));
    ASSERT_TRUE(step(files, 1));
    ClickSettled(program.List().TickPoint(0));
    ASSERT_TRUE(WaitUntil([&] { return tree.State(files) == 3; }));
    const HMODULE pictures = LoadLibraryExW((stage.ProgramFolder() + L"Tonequarry.exe").c_str(),
                                            nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(pictures, nullptr);
    const struct {
        RemoteItem item;
        int state;
        int icon;
    } rows[] = {{tree.Find(0, L"Network"), 1, 110},
                {tree.Parent(music), 2, 107},
                {files, 3, 108},
                {music, 4, 105},
                {alone, 5, 106}};
    for (const auto& row : rows) {
        const auto icon = static_cast<HICON>(
            LoadImageW(pictures, MAKEINTRESOURCEW(row.icon), IMAGE_ICON, 16, 16, 0));
        ASSERT_NE(icon, nullptr) << row.icon;
        EXPECT_EQ(tree.State(row.item), row.state);
        EXPECT_TRUE(WaitUntil([&] { return ShowsPicture(tree, row.item, icon); }, 3000))
            << row.state;
        DestroyIcon(icon);
    }
    FreeLibrary(pictures);
}

TEST_F(LooksTest, BackgroundGrowsLighterToTheRightOverAGreyRule) {
    stage.SetNumber(L"zKR-FileSelector-X", 0);
    stage.SetNumber(L"zKR-FileSelector-W", static_cast<DWORD>(GetSystemMetrics(SM_CXSCREEN)));
    RunningProgram& program = stage.Start();
    const LONG width = Client().cx;
    const RECT band = {0, 52, width, 56};
    ASSERT_TRUE(WaitUntil([&] { return Screen(program.Form(), band)->At(0, 0) == bandLeft; }));
    const auto shot = Screen(program.Form(), band);
    // The window ends some pixels of its frame before the desktop does.
    EXPECT_GE(GetRValue(shot->At(width - 1, 0)), GetRValue(bandRight) - 1);
    for (int x = 0; x < width; ++x) {
        ASSERT_EQ(Colour{shot->At(x, 1)}, Colour{grey}) << x;
        ASSERT_EQ(Colour{shot->At(x, 2)}, Colour{shot->At(x, 0)}) << x;
        if (x == 0) continue;
        ASSERT_GE(GetRValue(shot->At(x, 0)), GetRValue(shot->At(x - 1, 0))) << x;
    }
}

}  // namespace
