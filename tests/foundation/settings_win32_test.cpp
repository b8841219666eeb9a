#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "foundation/handle.h"
#include "foundation/settings.h"
#include "tests/support/import_stub.h"
#include "tests/support/scratch_registry.h"
#include "tests/support/text.h"

namespace {

const wchar_t settingsKey[] = L"Software\\Brindlefen\\Tonequarry";
const wchar_t otherKey[] = L"Some\\Other Key";

struct CreateCall {
    HKEY root;
    std::string path;
    std::string className;
    DWORD options;
    REGSAM access;
    const void* security;
};

std::vector<CreateCall> opened;
int closedCount;
LSTATUS openStatus;
decltype(RegCreateKeyExW)* platformCreate;
decltype(RegCloseKey)* platformClose;

LSTATUS WINAPI WatchedCreate(HKEY root, LPCWSTR path, DWORD reserved, LPWSTR className,
                             DWORD options, REGSAM access, const LPSECURITY_ATTRIBUTES security,
                             PHKEY key, LPDWORD existed) {
    opened.push_back({root, Utf8(path), Utf8(className), options, access, security});
    if (openStatus != ERROR_SUCCESS) return openStatus;
    return platformCreate(root, path, reserved, className, options, access, security, key, existed);
}

LSTATUS WINAPI WatchedClose(HKEY key) {
    ++closedCount;
    return platformClose(key);
}

class Settings : public testing::Test {
protected:
    Settings() : create("RegCreateKeyExW", WatchedCreate), close("RegCloseKey", WatchedClose) {
        platformCreate = create.Original<decltype(RegCreateKeyExW)>();
        platformClose = close.Original<decltype(RegCloseKey)>();
        openStatus = ERROR_SUCCESS;
        InitSettings();
        opened.clear();
        closedCount = 0;
    }

    static void Store(const wchar_t* name, DWORD type, const std::string& bytes) {
        ScratchRegistry::Set(HKEY_CURRENT_USER, settingsKey, name, type, bytes.data(),
                             static_cast<DWORD>(bytes.size()));
        opened.clear();
        closedCount = 0;
    }

    template <std::size_t size>
    static std::string Bytes(const wchar_t (&text)[size]) {
        return std::string(reinterpret_cast<const char*>(text), sizeof(text));
    }

    ScratchRegistry registry;
    ImportStub create;
    ImportStub close;
};

}  // namespace

TEST_F(Settings, TheSettingsKeyIsTheCurrentUsers) {
    EXPECT_EQ(Utf8(SettingsKeyPath()), Utf8(settingsKey));
    EXPECT_EQ(SettingsRoot(), HKEY_CURRENT_USER);
}

TEST_F(Settings, TheKeyIsOpenedByCreatingIt) {
    EXPECT_FALSE(ScratchRegistry::HasKey(HKEY_CURRENT_USER, settingsKey));
    {
        const clRegistryKey key(OpenSettingsKey(KEY_QUERY_VALUE));
        EXPECT_TRUE(key.IsValid());
    }
    ASSERT_EQ(opened.size(), 1u);
    EXPECT_EQ(opened[0].root, HKEY_CURRENT_USER);
    EXPECT_EQ(opened[0].path, Utf8(settingsKey));
    EXPECT_EQ(opened[0].className, "");
    EXPECT_EQ(opened[0].options, 0u);
    EXPECT_EQ(opened[0].access, REGSAM{1});
    EXPECT_EQ(opened[0].security, nullptr);
    EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_CURRENT_USER, settingsKey));
}

TEST_F(Settings, ASubKeyReplacesThePathWhole) {
    const clRegistryKey key(OpenSettingsKey(KEY_WRITE, HKEY_LOCAL_MACHINE, otherKey));
    EXPECT_TRUE(key.IsValid());
    ASSERT_EQ(opened.size(), 1u);
    EXPECT_EQ(opened[0].root, HKEY_LOCAL_MACHINE);
    EXPECT_EQ(opened[0].path, Utf8(otherKey));
    EXPECT_EQ(opened[0].access, REGSAM{0x20006});
    EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_LOCAL_MACHINE, otherKey));
    const clRegistryKey user(OpenSettingsKey(KEY_QUERY_VALUE, nullptr, otherKey));
    EXPECT_EQ(opened.back().root, HKEY_CURRENT_USER);
}

TEST_F(Settings, AnEmptySubKeyIsNoKeyAtAll) {
    ScratchRegistry::SetText(HKEY_CURRENT_USER, L"child", L"", L"");
    HKEY root = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, nullptr, 0, KEY_WRITE, &root);
    RegSetValueExW(root, L"name", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"x"), 4);
    RegCloseKey(root);
    opened.clear();
    EXPECT_EQ(OpenSettingsKey(KEY_QUERY_VALUE, HKEY_CURRENT_USER, L""), nullptr);
    EXPECT_EQ(Utf8(ReadSettingString(L"name", HKEY_CURRENT_USER, L"")), "");
    EXPECT_EQ(ReadSettingDword(L"name", HKEY_CURRENT_USER, L""), 0u);
    EXPECT_FALSE(WriteSettingValue("", 1, REG_BINARY, L"name", HKEY_CURRENT_USER, L""));
    EXPECT_TRUE(opened.empty());
}

TEST_F(Settings, ARefusedKeyGivesNothing) {
    openStatus = ERROR_ACCESS_DENIED;
    EXPECT_EQ(OpenSettingsKey(KEY_QUERY_VALUE), nullptr);
    std::uint32_t block = 0x12345678;
    bool failed = false;
    ReadSettingValue(&block, sizeof(block), REG_DWORD, L"name", nullptr, nullptr, &failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(block, 0u);
    EXPECT_EQ(ReadSettingDword(L"name"), 0u);
    EXPECT_EQ(Utf8(ReadSettingString(L"name")), "");
    EXPECT_FALSE(WriteSettingDword(1, L"name"));
    EXPECT_FALSE(WriteSettingString(L"text", L"name"));
    EXPECT_EQ(closedCount, 0);
}

TEST_F(Settings, WhatIsWrittenIsRead) {
    EXPECT_TRUE(WriteSettingDword(0x80000001, L"zKR-FileSelector-X"));
    EXPECT_EQ(ReadSettingDword(L"zKR-FileSelector-X"), 0x80000001u);
    EXPECT_TRUE(WriteSettingString(L"Name\rTitle \xE4", L"zKR-FileSelector-Cols"));
    EXPECT_EQ(Utf8(ReadSettingString(L"zKR-FileSelector-Cols")), "Name\rTitle \xC3\xA4");
    EXPECT_TRUE(WriteSettingString(L"elsewhere", L"name", HKEY_LOCAL_MACHINE, otherKey));
    EXPECT_EQ(Utf8(ReadSettingString(L"name", HKEY_LOCAL_MACHINE, otherKey)), "elsewhere");
    EXPECT_EQ(Utf8(ReadSettingString(L"name")), "");
    const unsigned char bytes[] = {1, 2, 3};
    EXPECT_TRUE(WriteSettingValue(bytes, 3, REG_BINARY, L"bytes"));
    unsigned char block[4] = {9, 9, 9, 9};
    bool failed = true;
    ReadSettingValue(block, 4, REG_BINARY, L"bytes", nullptr, nullptr, &failed);
    EXPECT_FALSE(failed);
    EXPECT_EQ(std::memcmp(block, bytes, 3), 0);
    EXPECT_EQ(closedCount, static_cast<int>(opened.size()));
}

TEST_F(Settings, KeysAreOpenedForWhatIsDoneOnly) {
    EXPECT_TRUE(WriteSettingDword(1, L"number"));
    EXPECT_TRUE(WriteSettingString(L"abc", L"text"));
    for (const CreateCall& call : opened)
        EXPECT_EQ(call.access, REGSAM{0x20006});
    EXPECT_EQ(opened.size(), 2u);
    opened.clear();
    EXPECT_EQ(ReadSettingDword(L"number"), 1u);
    EXPECT_EQ(Utf8(ReadSettingString(L"text")), "abc");
    for (const CreateCall& call : opened)
        EXPECT_EQ(call.access, REGSAM{1});
    EXPECT_EQ(opened.size(), 3u);
}

TEST_F(Settings, TextIsStoredWithItsTerminator) {
    EXPECT_TRUE(WriteSettingString(L"abc", L"name"));
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, settingsKey, 0, KEY_READ, &key), ERROR_SUCCESS);
    DWORD type = 0;
    DWORD bytes = 0;
    EXPECT_EQ(RegQueryValueExW(key, L"name", nullptr, &type, nullptr, &bytes), ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(bytes, 8u);
}

TEST_F(Settings, ReadingLeavesAnEmptyKeyBehind) {
    EXPECT_EQ(Utf8(ReadSettingString(L"name")), "");
    EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_CURRENT_USER, settingsKey));
    EXPECT_EQ(ReadSettingDword(L"", HKEY_CLASSES_ROOT, L".unknown"), 0u);
    EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_CLASSES_ROOT, L".unknown"));
}

TEST_F(Settings, PercentSignsAreNotExpanded) {
    Store(L"name", REG_EXPAND_SZ, Bytes(L"%ProgramFiles%\\x"));
    EXPECT_EQ(Utf8(ReadSettingString(L"name")), "%ProgramFiles%\\x");
}

TEST_F(Settings, AValueOfAnotherTypeIsNone) {
    Store(L"number", REG_DWORD, std::string("\1\0\0\0", 4));
    EXPECT_EQ(ReadSettingDword(L"number"), 1u);
    EXPECT_EQ(Utf8(ReadSettingString(L"number")), "");
    Store(L"text", REG_SZ, Bytes(L"1"));
    EXPECT_EQ(ReadSettingDword(L"text"), 0u);
    Store(L"bytes", REG_BINARY, std::string("\1\0\0\0", 4));
    EXPECT_EQ(ReadSettingDword(L"bytes"), 0u);
    EXPECT_EQ(Utf8(ReadSettingString(L"bytes")), "");
    Store(L"large", REG_QWORD, std::string(8, '\1'));
    EXPECT_EQ(ReadSettingDword(L"large"), 0u);
    EXPECT_EQ(ReadSettingDword(L"missing"), 0u);
}

TEST_F(Settings, AMismatchLeavesNoPartialData) {
    const struct {
        DWORD type;
        std::string bytes;
        DWORD expected;
        bool failed;
    } rows[] = {{REG_DWORD, "abcd", REG_DWORD, false},
                {REG_BINARY, "abcd", REG_DWORD, true},
                {REG_DWORD, "ab", REG_DWORD, false},
                {REG_DWORD, "abcde", REG_DWORD, true},
                {REG_SZ, "a", REG_SZ, false},
                {REG_EXPAND_SZ, "ab", REG_SZ, false},
                {REG_SZ, "ab", REG_EXPAND_SZ, true},
                {REG_MULTI_SZ, "ab", REG_SZ, true},
                {REG_EXPAND_SZ, "ab", REG_EXPAND_SZ, false}};
    for (const auto& row : rows) {
        Store(L"name", row.type, row.bytes);
        char block[4] = {'x', 'x', 'x', 'x'};
        bool failed = !row.failed;
        ReadSettingValue(block, 4, row.expected, L"name", nullptr, nullptr, &failed);
        EXPECT_EQ(failed, row.failed) << row.type << ' ' << row.bytes;
        if (row.failed) {
            EXPECT_EQ(std::string(block, 4), std::string(4, '\0')) << row.type << ' ' << row.bytes;
        } else {
            EXPECT_EQ(std::string(block, row.bytes.size()), row.bytes);
        }
    }
    char block[4] = {'x', 'x', 'x', 'x'};
    ReadSettingValue(block, 4, REG_DWORD, L"missing");  // the flag is not asked for
    EXPECT_EQ(std::string(block, 4), std::string(4, '\0'));
}

TEST_F(Settings, TextWithoutTerminatorStillEnds) {
    const std::string whole = Bytes(L"abc");
    Store(L"name", REG_SZ, whole.substr(0, 6));
    EXPECT_EQ(Utf8(ReadSettingString(L"name")), "abc");
    Store(L"name", REG_SZ, whole.substr(0, 5));  // half a character at the end
    EXPECT_EQ(Utf8(ReadSettingString(L"name")), "abc");
    Store(L"name", REG_SZ, std::string(1, 'a'));
    EXPECT_EQ(Utf8(ReadSettingString(L"name")), "a");
    // Of any length: what stands behind a block of the heap is never the same.
    for (std::size_t length = 1; length < 100; ++length) {
        std::string bytes;
        for (std::size_t i = 0; i < length; ++i)
            bytes += std::string("a\0", 2);
        Store(L"name", REG_SZ, bytes);
        EXPECT_EQ(Utf8(ReadSettingString(L"name")), std::string(length, 'a'));
    }
}

TEST_F(Settings, LongTextIsReadWhole) {
    clString text;
    for (int i = 0; i < 5000; ++i)
        text.Append(L'a');
    EXPECT_TRUE(WriteSettingString(text, L"name"));
    EXPECT_TRUE(ReadSettingString(L"name").Equals(text));
}

TEST_F(Settings, TextIsReadByTwoOpensAndNothingByOne) {
    Store(L"text", REG_SZ, Bytes(L"abc"));
    EXPECT_EQ(Utf8(ReadSettingString(L"text")), "abc");
    EXPECT_EQ(opened.size(), 2u);
    Store(L"none", REG_SZ, "");
    EXPECT_EQ(Utf8(ReadSettingString(L"none")), "");
    EXPECT_EQ(opened.size(), 1u);
    opened.clear();
    EXPECT_EQ(Utf8(ReadSettingString(L"missing")), "");
    EXPECT_EQ(opened.size(), 1u);
    Store(L"empty", REG_SZ, Bytes(L""));
    EXPECT_EQ(Utf8(ReadSettingString(L"empty")), "");
    EXPECT_EQ(opened.size(), 2u);
    EXPECT_EQ(closedCount, 2);
}

TEST_F(Settings, TheEmptyNameIsTheDefaultValue) {
    ScratchRegistry::SetText(HKEY_CLASSES_ROOT, L".mp3", L"", L"mp3file");
    EXPECT_EQ(Utf8(ReadSettingString(L"", HKEY_CLASSES_ROOT, L".mp3")), "mp3file");
}
