#include "decoders/units_setting.h"

#include <gtest/gtest.h>
#include <windows.h>

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
