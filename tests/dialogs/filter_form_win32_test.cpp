// The filter over types of a test's own, seen from within its own loop.
#include <gmock/gmock.h>
#include <shellapi.h>

#include <array>
#include <string>
#include <vector>

#include "foundation/folders.h"
#include "resources/ids.h"
#include "tests/dialogs/dialog_loop.h"
#include "tests/dialogs/open_filter.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"
#include "tests/ui/icons.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"

using testing::ElementsAre;

namespace {

constexpr INT_PTR nothingChanged = 0;
constexpr INT_PTR stored = 1;

// Stands for the shell, which has a picture for two of the types, and none for others.
class ShellPictures {
public:
    ShellPictures() : stub("SHGetFileInfoW", &Answer) {
        asked.clear();
        flagsAsked = 0;
        for (std::size_t i = 0; i < pictures.size(); ++i)
            pictures[i] = MakeIcon(16, 16, colours[i]);
    }
    ShellPictures(const ShellPictures&) = delete;
    ShellPictures& operator=(const ShellPictures&) = delete;
    ~ShellPictures() {
        for (const HICON picture : pictures)
            DestroyIcon(picture);
    }

    static HICON Wave() { return pictures[0]; }
    static HICON Flac() { return pictures[1]; }
    static const std::vector<std::string>& Asked() { return asked; }
    static UINT Flags() { return flagsAsked; }

private:
    static DWORD_PTR WINAPI Answer(LPCWSTR path, DWORD, SHFILEINFOW* info, UINT, UINT flags) {
        const std::string name = Utf8(path);
        asked.push_back(name);
        flagsAsked |= flags;
        if (name.ends_with(".wav")) info->hIcon = CopyIcon(pictures[0]);
        if (name.ends_with(".flac")) info->hIcon = CopyIcon(pictures[1]);
        return info->hIcon != nullptr ? 1 : 0;
    }

    static constexpr std::array<COLORREF, 2> colours = {RGB(200, 0, 0), RGB(0, 0, 200)};
    static std::array<HICON, 2> pictures;
    static std::vector<std::string> asked;
    static UINT flagsAsked;

    ImportStub stub;
};

std::array<HICON, 2> ShellPictures::pictures = {};
std::vector<std::string> ShellPictures::asked;
UINT ShellPictures::flagsAsked = 0;

class FilterForm : public testing::Test {
protected:
    FilterForm() {
        // Shown as 1, 2, 0: neither in this order nor backwards.
        types.Add(L".wav", L"Wave", false);
        types.Add(L".flac", L"free Lossless Codec", true);
        types.Add(L".mp3", L"Layer III", false);
    }
    std::vector<bool> Excluded() const {
        std::vector<bool> excluded;
        for (std::int64_t i = 0; i < types.Count(); ++i)
            excluded.push_back(types.At(i).excluded);
        return excluded;
    }
    static void ExpectRows(const ShownFilter& shown, bool flac, bool layer, bool wave) {
        EXPECT_TRUE(shown.Shows(0, flac, ShellPictures::Flac(), L"free Lossless Codec   (.flac)"));
        EXPECT_TRUE(shown.Shows(1, layer, nullptr, L"Layer III   (.mp3)"));
        EXPECT_TRUE(shown.Shows(2, wave, ShellPictures::Wave(), L"Wave   (.wav)"));
    }

    clAudioTypes types;
};

TEST_F(FilterForm, RowsAreInTheOrderOfTheirLabels) {
    RunFilter(types, [](const ShownFilter& shown) {
        ASSERT_EQ(shown.RowCount(), 3);
        EXPECT_EQ(shown.RowText(0), "free Lossless Codec   (.flac): 0");
        EXPECT_EQ(shown.RowText(1), "Layer III   (.mp3): 1");
        EXPECT_EQ(shown.RowText(2), "Wave   (.wav): 1");
    });
}

TEST_F(FilterForm, RowShowsItsBoxThePictureOfItsTypeAndItsLabel) {
    const ShellPictures shell;
    RunFilter(types, [](const ShownFilter& shown) {
        ExpectRows(shown, false, true, true);
        shown.Turn(0);
        shown.Turn(2);
        ExpectRows(shown, true, true, false);
    });
}

TEST_F(FilterForm, PicturesAreThoseOfFilesThatNeedNotExist) {
    const ShellPictures shell;
    RunFilter(types, [](const ShownFilter&) {});
    const std::string start = Utf8(FolderPath(SHELL_APPLICATION_DATA)) + "a";
    EXPECT_THAT(ShellPictures::Asked(),
                ElementsAre(start + ".flac", start + ".mp3", start + ".wav"));
    EXPECT_EQ(ShellPictures::Flags(), UINT{SHGFI_ICON | SHGFI_USEFILEATTRIBUTES | SHGFI_SMALLICON});
}

TEST_F(FilterForm, OkWritesEachBoxIntoItsOwnType) {
    const auto result = RunFilter(types, [this](const ShownFilter& shown) {
        shown.Turn(0);
        shown.Turn(1);
        EXPECT_THAT(Excluded(), ElementsAre(false, true, false));
        shown.Press(IDOK);
    });
    EXPECT_EQ(result, stored);
    EXPECT_THAT(Excluded(), ElementsAre(false, false, true));
}

TEST_F(FilterForm, TwoTypesOfOneLabelAreWrittenEachByItself) {
    types.Add(L".wav", L"Wave", true);
    std::vector<std::string> texts;
    RunFilter(types, [&](const ShownFilter& shown) {
        ASSERT_EQ(shown.RowCount(), 4);
        texts = {shown.RowText(2), shown.RowText(3)};
        shown.Turn(2);
        shown.Press(IDOK);
    });
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_THAT(texts, testing::UnorderedElementsAre("Wave   (.wav): 0", "Wave   (.wav): 1"));
    // The row that was turned is now as the other one.
    const bool otherIsExcluded = texts[1].ends_with('0');
    EXPECT_THAT(Excluded(), ElementsAre(otherIsExcluded, true, false, otherIsExcluded));
}

TEST_F(FilterForm, NothingIsWrittenButByOk) {
    const std::function<void(const ShownFilter&)> waysOut[] = {
        [](const ShownFilter& shown) { shown.Press(IDCANCEL); },
        [](const ShownFilter& shown) { shown.CloseByItsBox(); },
    };
    for (const auto& leave : waysOut) {
        for (const int button : {IDC_EXCLUDE_ALL, IDC_INCLUDE_ALL}) {
            const auto result = RunFilter(types, [&](const ShownFilter& shown) {
                shown.Turn(1);
                shown.Press(button);
                EXPECT_THAT(Excluded(), ElementsAre(false, true, false));
                leave(shown);
            });
            EXPECT_EQ(result, nothingChanged) << button;
            EXPECT_THAT(Excluded(), ElementsAre(false, true, false)) << button;
        }
    }
}

TEST_F(FilterForm, ButtonsTurnAllBoxesAndShowThem) {
    const ShellPictures shell;
    for (const bool include : {false, true}) {
        RunFilter(types, [include](const ShownFilter& shown) {
            PumpMessages();
            shown.Press(include ? IDC_INCLUDE_ALL : IDC_EXCLUDE_ALL);
            ExpectRows(shown, include, include, include);
            shown.Press(IDOK);
        });
        EXPECT_EQ(Excluded(), std::vector<bool>(3, !include));
    }
}

TEST_F(FilterForm, StandsInTheMiddleWithItsListInAThinFrame) {
    RunFilter(types, [](const ShownFilter& shown) {
        RECT frame = {};
        GetWindowRect(shown.Dialog(), &frame);
        EXPECT_EQ(frame.left, GetSystemMetrics(SM_CXSCREEN) / 2 - (frame.right - frame.left) / 2);
        EXPECT_EQ(frame.top, GetSystemMetrics(SM_CYSCREEN) / 2 - (frame.bottom - frame.top) / 2);
        RECT client = {};
        GetClientRect(shown.Dialog(), &client);
        EXPECT_EQ(client.right, shown.Units(350, 302).x);
        EXPECT_EQ(client.bottom, shown.Units(350, 302).y);

        RECT box = {};
        GetWindowRect(shown.Box(), &box);
        MapWindowPoints(nullptr, shown.Dialog(), reinterpret_cast<POINT*>(&box), 2);
        EXPECT_EQ(box.left, shown.Units(7, 7).x);
        EXPECT_EQ(box.top, shown.Units(7, 7).y);
        const SIZE size = {box.right - box.left, box.bottom - box.top};
        EXPECT_EQ(size.cx, shown.Units(336, 254).x);
        EXPECT_EQ(size.cy, shown.Units(336, 254).y);
        // One pixel on each side, and that not only in its styles.
        GetClientRect(shown.Box(), &client);
        EXPECT_EQ(size.cx - client.right, 2 * GetSystemMetrics(SM_CXBORDER));
        EXPECT_EQ(size.cy - client.bottom, 2 * GetSystemMetrics(SM_CYBORDER));
        EXPECT_NE(GetWindowLongPtrW(shown.Box(), GWL_STYLE) & WS_BORDER, 0);
        EXPECT_EQ(GetWindowLongPtrW(shown.Box(), GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
    });
}

TEST_F(FilterForm, ShownAnewItHasItsRowsOnceAndAsTheyStood) {
    RunFilter(types, [](const ShownFilter& shown) {
        shown.Turn(2);
        ShowWindow(shown.Dialog(), SW_HIDE);
        ShowWindow(shown.Dialog(), SW_SHOW);
        EXPECT_EQ(shown.RowCount(), 3);
        shown.Press(IDOK);
    });
    EXPECT_THAT(Excluded(), ElementsAre(true, true, false));
}

TEST_F(FilterForm, ItsOwnerWaits) {
    const OwnerWindow owner;
    RunFilter(
        types,
        [&owner](const ShownFilter& shown) {
            EXPECT_EQ(GetWindow(shown.Dialog(), GW_OWNER), owner.Window());
            EXPECT_FALSE(owner.IsEnabled());
        },
        owner.Window());
    EXPECT_TRUE(owner.IsEnabled());
}

TEST_F(FilterForm, LeavesNothingBehind) {
    const ShellPictures shell;
    const auto run = [this] { RunFilter(types, [](const ShownFilter&) {}); };
    run();
    run();
    const ResourceCounts before = CountResources();
    run();
    run();
    const ResourceCounts after = CountResources();
    EXPECT_EQ(after.userObjects, before.userObjects);
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
}

}  // namespace
