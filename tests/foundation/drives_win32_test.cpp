#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <thread>

#include "foundation/drives.h"
#include "tests/support/text.h"

// The drives are those that scripts/prefix-drives.sh makes.
namespace {

struct Drive {
    const wchar_t* root;
    std::uint32_t type;
    const char* label;  // as VolumeLabel must tell it
    const char* name;
};

const Drive drives[] = {
    {L"A:\\", DRIVE_REMOVABLE, "", "Removable Disk (A:)"},
    {L"B:\\", DRIVE_REMOVABLE, "", "Removable Disk (B:)"},
    {L"E:\\", DRIVE_REMOVABLE, "STICK", "STICK (E:)"},
    {L"F:\\", DRIVE_CDROM, "", "CD-ROM Drive (F:)"},
    {L"G:\\", DRIVE_REMOTE, "", "Network Drive (G:)"},
    {L"H:\\", DRIVE_RAMDISK, "", "RAM Disk (H:)"},
    {L"I:\\", DRIVE_FIXED, "", "Hard Disk (I:)"},
    {L"K:\\", DRIVE_FIXED, "Archive", "Archive (K:)"},
    {L"L:\\", DRIVE_REMOVABLE, "", "Removable Disk (L:)"},
};

constexpr const wchar_t* noSuchDrive = L"Q:\\";

// What the platform itself answers.
std::string PlatformLabel(const wchar_t* root) {
    wchar_t label[MAX_PATH] = {};
    GetVolumeInformationW(root, label, MAX_PATH, nullptr, nullptr, nullptr, nullptr, 0);
    return Utf8(label);
}

// Puts the process's error mode back at its end.
class KeptErrorMode {
public:
    explicit KeptErrorMode(UINT mode) : before(SetErrorMode(mode)) {}
    KeptErrorMode(const KeptErrorMode&) = delete;
    KeptErrorMode& operator=(const KeptErrorMode&) = delete;
    ~KeptErrorMode() { SetErrorMode(before); }

private:
    UINT before;
};

class DrivesOfThePrefix : public testing::Test {
protected:
    void SetUp() override {
        for (const Drive& drive : drives) {
            ASSERT_EQ(GetDriveTypeW(drive.root), drive.type)
                << Utf8(drive.root) << " is missing: run scripts/prefix-drives.sh on the prefix "
                << "and restart its server";
        }
        ASSERT_EQ(GetDriveTypeW(noSuchDrive), static_cast<UINT>(DRIVE_NO_ROOT_DIR));
    }
};

}  // namespace

TEST_F(DrivesOfThePrefix, AreListedInTheOrderOfTheirLetters) {
    const clStringList list = ListDrives();
    const DWORD mask = GetLogicalDrives();
    std::int64_t next = 0;
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        if ((mask >> (letter - L'A') & 1) == 0) continue;
        const wchar_t root[] = {letter, L':', L'\\', 0};
        EXPECT_EQ(Utf8(list.ItemCopy(next++)), Utf8(root));
    }
    EXPECT_EQ(list.Count(), next);
    for (const Drive& drive : drives) {
        EXPECT_NE(list.IndexOf(drive.root, false), -1) << Utf8(drive.root);
    }
    EXPECT_EQ(list.IndexOf(noSuchDrive, false), -1);
}

TEST_F(DrivesOfThePrefix, AreShownByLabelElseByType) {
    const clStringList list = ListDrives();
    for (const Drive& drive : drives) {
        EXPECT_EQ(Utf8(VolumeLabel(drive.root)), drive.label) << Utf8(drive.root);
        const std::int64_t index = list.IndexOf(drive.root, false);
        EXPECT_EQ(Utf8(DriveDisplayName(list, index)), drive.name);
    }
}

TEST_F(DrivesOfThePrefix, TypesAreKnownWithAndWithoutTheBackslash) {
    for (const Drive& drive : drives) {
        const clString root = drive.root;
        EXPECT_EQ(DriveType(root), drive.type);
        EXPECT_EQ(DriveType(root.Left(2)), drive.type);
        EXPECT_EQ(Utf8(DriveTypeName(root)), Utf8(DriveTypeName(drive.type))) << Utf8(root);
        EXPECT_FALSE(DriveTypeName(root.Left(2)).IsEmpty());
    }
    EXPECT_EQ(Utf8(DriveTypeName(clString(noSuchDrive))), "");
}

TEST_F(DrivesOfThePrefix, LabelsOfRemovableAAndBAreNeverAsked) {
    // They have labels, which only the platform's own call may tell.
    ASSERT_EQ(PlatformLabel(L"A:\\"), "SYSTEMDISK");
    ASSERT_EQ(PlatformLabel(L"B:\\"), "DATADISK");
    for (const wchar_t* path : {L"A:\\", L"a:\\", L"A:", L"b:", L"B:\\", L"b:\\"}) {
        EXPECT_EQ(Utf8(VolumeLabel(path)), "") << Utf8(path);
    }
}

TEST_F(DrivesOfThePrefix, LabelIsReadWithAndWithoutTheBackslash) {
    for (const wchar_t* path : {L"E:\\", L"E:", L"e:\\", L"e:"}) {
        EXPECT_EQ(Utf8(VolumeLabel(path)), "STICK") << Utf8(path);
    }
    EXPECT_EQ(Utf8(VolumeLabel(noSuchDrive)), "");
}

TEST_F(DrivesOfThePrefix, DriveThatIsNotThereShowsItsRoot) {
    clStringList list;
    list.Add(noSuchDrive);
    EXPECT_EQ(Utf8(DriveDisplayName(list, 0)), "Q:\\");
}

TEST(DriveNames, OutsideTheListAreEmpty) {
    const clStringList empty;
    EXPECT_EQ(Utf8(DriveDisplayName(empty, 0)), "");
    EXPECT_EQ(Utf8(DriveDisplayName(empty, -1)), "");
    const clStringList list = ListDrives();
    EXPECT_EQ(Utf8(DriveDisplayName(list, list.Count())), "");
}

TEST_F(DrivesOfThePrefix, ErrorModeIsQuietDuringTheQueryAndPutBackAfterIt) {
    const KeptErrorMode kept(SEM_NOOPENFILEERRORBOX);
    std::atomic<bool> sawQuiet{false};
    std::atomic<bool> sawOther{false};
    std::atomic<bool> done{false};
    std::thread watcher([&] {
        while (!done) {
            const UINT mode = GetErrorMode();
            if (mode == SEM_FAILCRITICALERRORS)
                sawQuiet = true;
            else if (mode != SEM_NOOPENFILEERRORBOX)
                sawOther = true;
        }
    });
    const DWORD begin = GetTickCount();
    while (!sawQuiet && GetTickCount() - begin < 10000) {
        VolumeLabel(L"E:\\");
        EXPECT_EQ(GetErrorMode(), static_cast<UINT>(SEM_NOOPENFILEERRORBOX));
        VolumeLabel(noSuchDrive);
        EXPECT_EQ(GetErrorMode(), static_cast<UINT>(SEM_NOOPENFILEERRORBOX));
    }
    done = true;
    watcher.join();
    EXPECT_TRUE(sawQuiet);
    EXPECT_FALSE(sawOther);
}
