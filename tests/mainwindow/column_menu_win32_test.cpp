// The menu on the header of a list, as the user finds it.
#include "mainwindow/column_menu.h"

#include <gmock/gmock.h>

#include "decoders/decoder_registry.h"
#include "tests/mainwindow/file_list_form.h"
#include "tests/support/decoder_folder.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"
#include "tests/ui/pointer.h"

using testing::ElementsAre;
using Texts = std::vector<std::string>;

namespace {

constexpr int tagsPlace = 13;
constexpr int propertiesPlace = 15;

class BuiltMenu {
public:
    explicit BuiltMenu(const wchar_t* columns) : menu(BuildColumnMenu(columns)) {}
    BuiltMenu(const BuiltMenu&) = delete;
    BuiltMenu& operator=(const BuiltMenu&) = delete;
    ~BuiltMenu() { DestroyMenu(menu); }

    HMENU Root() const { return GetSubMenu(menu, 0); }
    HMENU Tags() const { return GetSubMenu(Root(), tagsPlace); }
    HMENU Properties() const { return GetSubMenu(Root(), propertiesPlace); }

private:
    HMENU menu;
};

std::string TextAt(HMENU menu, int place) {
    wchar_t text[300] = {};
    GetMenuStringW(menu, static_cast<UINT>(place), text, 300, MF_BYPOSITION);
    return Utf8(text);
}

// "10000 Name", with a "+" in front of a ticked one; "-" for a separator.
Texts ItemsOf(HMENU menu) {
    Texts items;
    for (int place = 0; place < GetMenuItemCount(menu); ++place) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU;
        GetMenuItemInfoW(menu, static_cast<UINT>(place), TRUE, &info);
        if (info.hSubMenu != nullptr) {
            items.push_back("> " + TextAt(menu, place));
        } else if ((info.fType & MFT_SEPARATOR) != 0) {
            items.emplace_back("-");
        } else {
            items.push_back(((info.fState & MFS_CHECKED) != 0 ? "+" : "") +
                            std::to_string(info.wID) + " " + TextAt(menu, place));
        }
    }
    return items;
}

class ColumnMenu : public testing::Test {
protected:
    clScriptedFolder decoders;
};

}  // namespace

TEST_F(ColumnMenu, HasFactsTagsAndTheDefaultColumns) {
    const BuiltMenu menu(L"Name\rArtist\rlength");
    EXPECT_THAT(
        ItemsOf(menu.Root()),
        ElementsAre("+10000 Name", "10001 Size", "10002 Type", "10003 Date Modified",
                    "10004 Date Created", "10005 Date Accessed", "10006 Bit Rate", "10007 Channels",
                    "+10008 Length", "10009 Sample Rate", "10010 Sample Size", "10011 Compression",
                    "-", "> Tags", "-", "> Extended Properties", "-", "40019 Default Columns"));
    EXPECT_THAT(
        ItemsOf(menu.Tags()),
        ElementsAre("+10012 Artist", "10013 Title", "10014 Album", "10015 Track", "10016 Year",
                    "10017 Genre", "10018 Album Artist",
                    "10019 Album Artist - Album - Disc - Track", "10020 Album - Disc - Track",
                    "10021 Band", "10022 Tempo", "10023 Comment", "10024 Compilation",
                    "10025 Composer", "10026 Conductor", "10027 Disc", "10028 Encoded by",
                    "10029 Label", "10030 Last Played", "10031 Mood", "10032 Playcount",
                    "10033 Rating", "10034 Style", "10035 TrueSpinResult",
                    "10036 Replaygain_Track_Gain", "10037 Replaygain_Track_Peak",
                    "10038 Replaygain_Album_Gain", "10039 Replaygain_Album_Peak"));
    EXPECT_EQ(GetMenuItemCount(menu.Properties()), 0);
}

TEST_F(ColumnMenu, ExtendedPropertiesAreSortedAndEachComesOnce) {
    decoders.Add("one", "elements=Zone|codec version|Encoder\n");
    decoders.Add("two", "elements=Encoder|Audio Quality\n");
    const BuiltMenu menu(L"Name\rencoder");
    EXPECT_THAT(
        ItemsOf(menu.Properties()),
        ElementsAre("10040 Audio Quality", "10041 codec version", "+10042 Encoder", "10043 Zone"));
}

TEST_F(ColumnMenu, PropertyOfTwoDecodersComesOnceAsTheFirstOneSpellsIt) {
    const clString one = decoders.Add("one", "elements=Codec|encoder|Zone\n");
    const clString two = decoders.Add("two", "elements=ENCODER|Codec|zone|Mood of two\n");
    clString first;
    WalkDecoderFolder([&first](const clString& library) {
        first.Assign(library);
        return false;
    });
    const bool isOne = first.CompareNoCase(one) == 0;
    ASSERT_TRUE(isOne || first.CompareNoCase(two) == 0);
    const BuiltMenu menu(L"Name\rEncoder");
    EXPECT_THAT(ItemsOf(menu.Properties()),
                ElementsAre("10040 Codec", isOne ? "+10041 encoder" : "+10041 ENCODER",
                            "10042 Mood of two", isOne ? "10043 Zone" : "10043 zone"));
}

TEST_F(ColumnMenu, PropertyOfTheCatalogueKeepsItsPlaceThere) {
    decoders.Add("one", "elements=artist|SIZE|Tags|Codec\n");
    const BuiltMenu menu(L"Artist\rSize");
    EXPECT_THAT(ItemsOf(menu.Properties()), ElementsAre("10040 Codec"));
    EXPECT_EQ(ItemsOf(menu.Root()).at(1), "+10001 Size");
    EXPECT_EQ(ItemsOf(menu.Tags()).at(0), "+10012 Artist");
}

TEST_F(ColumnMenu, LibraryThatCannotBeAskedAddsNothing) {
    decoders.Add("one", "create=0\nelements=Codec\n");
    decoders.AddFile("two.dll", "no library");
    decoders.AddSubfolder("three");
    const BuiltMenu menu(L"Name");
    EXPECT_EQ(GetMenuItemCount(menu.Properties()), 0);
}

// What it hands out counts, whatever it says of its success.
TEST_F(ColumnMenu, PropertyOfALibraryThatTellsOfNoSuccessIsOffered) {
    decoders.Add("one", "elements-result=0\nelements=Codec\n");
    const BuiltMenu menu(L"Name");
    EXPECT_THAT(ItemsOf(menu.Properties()), ElementsAre("10040 Codec"));
}

// The separators have its name, so that it is there already.
TEST_F(ColumnMenu, PropertyWithoutANameIsNotOffered) {
    decoders.Add("one", "elements=Codec|[Empty]|[empty]\n");
    const BuiltMenu menu(L"Name\r\rCodec");
    EXPECT_THAT(ItemsOf(menu.Properties()), ElementsAre("10040 [empty]", "+10041 Codec"));
    EXPECT_EQ(ItemsOf(menu.Root()).size(), 18u);
}

TEST_F(ColumnMenu, ColumnsThatNobodyKnowsAreMissing) {
    decoders.Add("one", "elements=Codec\n");
    const BuiltMenu menu(L"Gone\rName\rFolder\rcodec");
    const Texts items = ItemsOf(menu.Root());
    ASSERT_EQ(items.size(), 20u);
    // Ten thousand behind the last one of the others.
    EXPECT_THAT(Texts(items.begin() + 15, items.end()),
                ElementsAre("> Extended Properties", "+20041 Gone", "+20042 Folder", "-",
                            "40019 Default Columns"))
        << items.at(16);
    EXPECT_THAT(ItemsOf(menu.Properties()), ElementsAre("+10040 Codec"));
}

TEST_F(ColumnMenu, EachOpeningAsksTheDecodersAnew) {
    decoders.Add("one", "elements=Codec\n");
    EXPECT_EQ(GetMenuItemCount(BuiltMenu(L"Name").Properties()), 1);
    decoders.SetScript("one", "elements=Codec|Encoder\n");
    EXPECT_EQ(GetMenuItemCount(BuiltMenu(L"Name").Properties()), 2);
}

namespace {

// How the menu was shown, and what is chosen in it.
struct Tracking {
    int times = 0;
    UINT flags = 0;
    POINT place = {};
    HWND owner = nullptr;
    HMENU menu = nullptr;
    int items = 0;
    int choice = 0;
};

Tracking tracking;

BOOL WINAPI Track(HMENU menu, UINT flags, int x, int y, int, HWND owner, const RECT*) {
    ++tracking.times;
    tracking.flags = flags;
    tracking.place = {x, y};
    tracking.owner = owner;
    tracking.menu = menu;
    tracking.items = GetMenuItemCount(menu);
    return tracking.choice;
}

class SilentHost : public ColumnMenuHost {
public:
    void FillNewColumn() override {}
    void FillDefaultColumns() override {}
};

// The columns behind a menu in which that command was chosen; 0 for none.
Texts TitlesBehind(int choice) {
    FileListForm form(L"Name\rArtist");
    SilentHost host;
    tracking = {};
    tracking.choice = choice;
    const ImportStub stub("TrackPopupMenu", &Track);
    ShowColumnMenu(form.form.Window(), form.view, form.files, host);
    EXPECT_EQ(tracking.times, 1);
    EXPECT_EQ(tracking.owner, form.form.Window());
    EXPECT_FALSE(IsMenu(tracking.menu));
    return form.Titles();
}

}  // namespace

TEST_F(ColumnMenu, StandsAtThePointerForBothButtonsAndAnswersWithItsCommand) {
    for (const POINT& pointer : {POINT{123, 234}, POINT{345, 67}}) {
        MovePointer(pointer);
        TitlesBehind(0);
        EXPECT_EQ(tracking.place.x, pointer.x);
        EXPECT_EQ(tracking.place.y, pointer.y);
        EXPECT_EQ(tracking.flags, UINT{TPM_RIGHTBUTTON} | TPM_NONOTIFY | TPM_RETURNCMD);
        // The menu itself, and not what holds it in the resource.
        EXPECT_EQ(tracking.items, 18);
    }
}

TEST_F(ColumnMenu, NothingChosenChangesNothing) {
    EXPECT_THAT(TitlesBehind(0), ElementsAre("Name", "Artist"));
    EXPECT_THAT(TitlesBehind(10001), ElementsAre("Name", "Artist", "Size"));
    EXPECT_THAT(TitlesBehind(10012), ElementsAre("Name"));
    EXPECT_EQ(TitlesBehind(40019).size(), 10u);
}
