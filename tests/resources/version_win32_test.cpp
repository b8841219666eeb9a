#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

using testing::HasSubstr;

namespace {

std::vector<BYTE> OwnVersion() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::vector<BYTE> block(GetFileVersionInfoSizeW(path, nullptr));
    if (!block.empty())
        GetFileVersionInfoW(path, 0, static_cast<DWORD>(block.size()), block.data());
    return block;
}

std::string VersionText(const std::vector<BYTE>& block, const char* name) {
    void* text = nullptr;
    UINT length = 0;
    VerQueryValueA(block.data(), (std::string("\\StringFileInfo\\040904B0\\") + name).c_str(),
                   &text, &length);
    return text != nullptr ? static_cast<const char*>(text) : "";
}

std::string Manifest() {
    HRSRC const found = FindResourceW(nullptr, MAKEINTRESOURCEW(1), RT_MANIFEST);
    if (found == nullptr) return {};
    return {static_cast<const char*>(LockResource(LoadResource(nullptr, found))),
            SizeofResource(nullptr, found)};
}

}  // namespace

TEST(Version, IsTheProjects) {
    const std::vector<BYTE> block = OwnVersion();
    ASSERT_FALSE(block.empty());
    void* found = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", &found, &length));
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    const std::string text = std::to_string(HIWORD(fixed->dwFileVersionMS)) + "." +
                             std::to_string(LOWORD(fixed->dwFileVersionMS)) + "." +
                             std::to_string(HIWORD(fixed->dwFileVersionLS));
    EXPECT_EQ(text, TONEQUARRY_VERSION);
    EXPECT_EQ(fixed->dwProductVersionMS, fixed->dwFileVersionMS);
    EXPECT_EQ(VersionText(block, "FileVersion"), TONEQUARRY_VERSION);
    EXPECT_EQ(VersionText(block, "ProductVersion"), TONEQUARRY_VERSION);
    EXPECT_EQ(VersionText(block, "FileDescription"), "Tonequarry Batch Converter");
}

TEST(Manifest, NamesTheProgramAndWhatItNeeds) {
    const std::string manifest = Manifest();
    EXPECT_THAT(manifest, HasSubstr("name=\"Brindlefen.Tonequarry.BatchConverter\" version=\"" +
                                    std::string(TONEQUARRY_VERSION) + ".0\""));
    EXPECT_THAT(manifest, HasSubstr("<description>Tonequarry Batch Converter</description>"));
    EXPECT_THAT(manifest,
                HasSubstr("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
    // A system that is named there tells its own version, which is none with a library.
    EXPECT_THAT(manifest, testing::Not(HasSubstr("supportedOS")));
    EXPECT_THAT(manifest, HasSubstr("level=\"asInvoker\" uiAccess=\"false\""));
}
