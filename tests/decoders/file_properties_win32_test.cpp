#include <gtest/gtest.h>
#include <windows.h>

#include "decoders/file_properties.h"
#include "tests/support/scratch_registry.h"

namespace {

const wchar_t unitsKey[] = L"Software\\Brindlefen\\Tonequarry\\Ref";

class UnitsInHertz : public testing::Test {
protected:
    static void Store(const wchar_t* name, DWORD type, const void* data, DWORD bytes) {
        ScratchRegistry::Set(HKEY_CURRENT_USER, unitsKey, name, type, data, bytes);
    }

    ScratchRegistry registry;
};

}  // namespace

TEST_F(UnitsInHertz, AreOffWithoutTheValueAndTheKeyIsMade) {
    EXPECT_FALSE(ScratchRegistry::HasKey(HKEY_CURRENT_USER, unitsKey));
    EXPECT_FALSE(ReadUnitsInHertz());
    EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_CURRENT_USER, unitsKey));
    EXPECT_FALSE(ReadUnitsInHertz());
}

TEST_F(UnitsInHertz, AreOnForAnyNumberButZero) {
    const struct {
        DWORD type;
        DWORD value;
        DWORD bytes;
        bool expected;
    } rows[] = {{REG_DWORD, 0, 4, false},         {REG_DWORD, 1, 4, true},
                {REG_DWORD, 0x80000000, 4, true}, {REG_DWORD_BIG_ENDIAN, 1, 4, false},
                {REG_BINARY, 1, 4, false},        {REG_SZ, L'1', 4, false},
                {REG_NONE, 1, 4, false}};
    for (const auto& row : rows) {
        Store(L"UnitsFreq", row.type, &row.value, row.bytes);
        EXPECT_EQ(ReadUnitsInHertz(), row.expected) << row.type << ' ' << row.value;
    }
    const DWORD one = 1;
    Store(L"UnitsFreq", REG_SZ, L"1", 4);
    Store(L"unitsfreq2", REG_DWORD, &one, 4);
    EXPECT_FALSE(ReadUnitsInHertz());
}

TEST_F(UnitsInHertz, AreReadAnewEachTime) {
    DWORD value = 1;
    Store(L"UnitsFreq", REG_DWORD, &value, 4);
    EXPECT_TRUE(ReadUnitsInHertz());
    value = 0;
    Store(L"UnitsFreq", REG_DWORD, &value, 4);
    EXPECT_FALSE(ReadUnitsInHertz());
}
