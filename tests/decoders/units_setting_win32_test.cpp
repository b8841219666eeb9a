#include "decoders/units_setting.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/support/import_stub.h"
#include "tests/support/open_handles.h"
#include "tests/support/scratch_registry.h"

namespace {

const wchar_t keyPath[] = L"Software\\Brindlefen\\Tonequarry\\Ref";

void Store(DWORD value, DWORD type = REG_DWORD) {
    ScratchRegistry::Set(HKEY_CURRENT_USER, keyPath, L"UnitsFreq", type, &value, sizeof(value));
}

}  // namespace

TEST(UnitsSetting, IsReadAnewByOneObject) {
    const ScratchRegistry registry;
    clUnitsSetting setting;
    EXPECT_FALSE(setting.InHertz());
    EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_CURRENT_USER, keyPath));
    Store(1);
    EXPECT_TRUE(setting.InHertz());
    Store(0);
    EXPECT_FALSE(setting.InHertz());
    Store(2);
    EXPECT_TRUE(setting.InHertz());
    Store(1, REG_BINARY);
    EXPECT_FALSE(setting.InHertz());
    Store(1);
    EXPECT_TRUE(setting.InHertz());
    RegDeleteKeyValueW(HKEY_CURRENT_USER, keyPath, L"UnitsFreq");
    EXPECT_FALSE(setting.InHertz());
}

TEST(UnitsSetting, AnyNumberButZeroMeansHertzFromTheFirstReadingOn) {
    const ScratchRegistry registry;
    for (const DWORD value : {2u, 0x80000000u, 1u, 0u}) {
        Store(value);
        EXPECT_EQ(clUnitsSetting().InHertz(), value != 0) << value;
    }
}

TEST(UnitsSetting, SurvivesThatItsKeyIsTakenAwayAndMadeAnew) {
    const ScratchRegistry registry;
    clUnitsSetting setting;
    Store(1);
    EXPECT_TRUE(setting.InHertz());
    EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, keyPath), ERROR_SUCCESS);
    EXPECT_FALSE(setting.InHertz());
    EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_CURRENT_USER, keyPath));
    Store(1);
    EXPECT_TRUE(setting.InHertz());
    EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, keyPath), ERROR_SUCCESS);
    Store(1);
    EXPECT_TRUE(setting.InHertz());
}

TEST(UnitsSetting, HoldsOneKeyAndGivesItBack) {
    const ScratchRegistry registry;
    Store(1);
    EXPECT_TRUE(clUnitsSetting().InHertz());  // what the platform makes once is made
    const int before = OpenHandles();
    {
        clUnitsSetting setting;
        for (int i = 0; i < 5; ++i)
            EXPECT_TRUE(setting.InHertz());
        EXPECT_EQ(OpenHandles(), before + 1);
    }
    EXPECT_EQ(OpenHandles(), before);
}

namespace {

bool IsSignalled(const clUnitsWatch& watch) {
    return WaitForSingleObject(watch.ChangeEvent(), 0) == WAIT_OBJECT_0;
}

// As the reader asks: first whether something has changed.
bool Answer(clUnitsWatch& watch) {
    if (IsSignalled(watch)) watch.Forget();
    return watch.InHertz();
}

}  // namespace

TEST(UnitsWatch, TellsEveryChangeOnce) {
    const ScratchRegistry registry;
    clUnitsWatch watch;
    EXPECT_FALSE(watch.InHertz());
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(IsSignalled(watch));
        Store(1);
        EXPECT_TRUE(IsSignalled(watch));
        EXPECT_FALSE(IsSignalled(watch));  // it resets itself
        EXPECT_FALSE(watch.InHertz());     // nobody has told this object
        watch.Forget();
        EXPECT_TRUE(watch.InHertz());
        Store(0);
        EXPECT_FALSE(Answer(watch));
    }
}

TEST(UnitsWatch, SeesTheValueAndItsKeyComeAndGo) {
    const ScratchRegistry registry;
    clUnitsWatch watch;
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(Answer(watch));
        Store(2);
        EXPECT_TRUE(Answer(watch));
        RegDeleteKeyValueW(HKEY_CURRENT_USER, keyPath, L"UnitsFreq");
        EXPECT_FALSE(Answer(watch));
        Store(1);
        EXPECT_TRUE(Answer(watch));
        EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, keyPath), ERROR_SUCCESS);
        EXPECT_FALSE(Answer(watch));
        EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_CURRENT_USER, keyPath));
        Store(1);
        EXPECT_TRUE(Answer(watch));
        RegDeleteKeyW(HKEY_CURRENT_USER, keyPath);
        Store(1);
        EXPECT_TRUE(Answer(watch));
        EXPECT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Brindlefen\\Tonequarry"),
                  ERROR_SUCCESS);
    }
}

TEST(UnitsWatch, ReadsEachTimeWhereChangesCannotBeWatched) {
    const ScratchRegistry registry;
    const ImportStub stub(
        "RegNotifyChangeKeyValue",
        +[](HKEY, BOOL, DWORD, HANDLE, BOOL) -> LSTATUS { return ERROR_NOT_SUPPORTED; });
    clUnitsWatch watch;
    EXPECT_FALSE(watch.InHertz());
    Store(1);
    EXPECT_TRUE(watch.InHertz());
}

TEST(UnitsWatch, GivesItsHandlesBack) {
    const ScratchRegistry registry;
    EXPECT_FALSE(clUnitsWatch().InHertz());
    const int before = OpenHandles();
    {
        clUnitsWatch watch;
        for (int i = 0; i < 5; ++i) {
            watch.Forget();
            EXPECT_FALSE(watch.InHertz());
        }
        EXPECT_EQ(OpenHandles(), before + 4);
    }
    EXPECT_EQ(OpenHandles(), before);
}
