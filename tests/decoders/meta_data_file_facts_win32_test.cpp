// What a reader learns of files whose size a list does not know.
#include <gmock/gmock.h>
#include <windows.h>

#include "tests/decoders/meta_data_source_stage.h"
#include "tests/support/import_stub.h"

using testing::ElementsAre;

namespace {

WIN32_FILE_ATTRIBUTE_DATA FactsOf(const clString& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    EXPECT_TRUE(GetFileAttributesExW(path.Chars(), GetFileExInfoStandard, &data));
    return data;
}

bool Same(const clFileTime& left, const FILETIME& right) {
    return left.low == right.dwLowDateTime && left.high == right.dwHighDateTime;
}

constexpr FILETIME modifiedThen = {11, 31000000};
constexpr FILETIME accessedThen = {12, 32000000};
constexpr FILETIME createdThen = {13, 30000000};
decltype(&FindFirstFileW) realFindFirst;

HANDLE WINAPI DatedFindFirst(const wchar_t* path, WIN32_FIND_DATAW* data) {
    const HANDLE found = realFindFirst(path, data);
    data->ftLastWriteTime = modifiedThen;
    data->ftLastAccessTime = accessedThen;
    data->ftCreationTime = createdThen;
    data->nFileSizeHigh = 3;
    data->nFileSizeLow = 1;
    return found;
}

void SetSize(const clString& path, std::int64_t bytes) {
    const clFileHandle file(
        CreateFileW(path.Chars(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    LARGE_INTEGER position;
    position.QuadPart = bytes;
    ASSERT_TRUE(SetFilePointerEx(file.Get(), position, nullptr, FILE_BEGIN));
    ASSERT_TRUE(SetEndOfFile(file.Get()));
}

}  // namespace

TEST_F(MetaDataSource, AFileThatHasVanishedEndsDoneWithWhatTheListKnew) {
    ScriptAll("needs-file=1\n");
    AddRows({L"a.abc", L"b.abc"});
    AddRow(L"gone.abc", 0);
    disk.AddFile(L"a.abc");
    disk.AddFile(L"b.abc");
    DeleteFileW(disk.Path(L"b.abc").Chars());
    clMetaDataSource source;
    source.Refill(rows);
    EXPECT_THAT(TakenAtEnd(source), ElementsAre("a.abc: a.abc", "b.abc: ", "gone.abc: "));
    EXPECT_EQ(rows.At(1).sizeBytes, 1u);
    EXPECT_EQ(rows.At(2).sizeBytes, 0u);
    EXPECT_EQ(rows.At(2).dateModified.high, 0u);
}

// Told by the platform's own answer with dates of three years: a file on the disk
// of the tests has no creation of its own under Wine.
TEST_F(MetaDataSource, EachDateOfAFileComesToItsOwnPlace) {
    disk.AddFile(L"a.nope");
    AddRow(L"a.nope", 0);
    const ImportStub stub("FindFirstFileW", DatedFindFirst);
    realFindFirst = stub.Original<decltype(FindFirstFileW)>();
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(Eventually([&] { return !source.IsReading(); }));
    const FileRow& row = rows.At(0);
    EXPECT_TRUE(Same(row.dateModified, modifiedThen));
    EXPECT_TRUE(Same(row.dateAccessed, accessedThen));
    EXPECT_TRUE(Same(row.dateCreated, createdThen));
    EXPECT_EQ(row.sizeBytes, 0x300000001u);
}

TEST_F(MetaDataSource, SizesAndDatesAreFilledWhereTheSizeIsNotKnown) {
    disk.AddFile(L"small.abc", "seventeen bytes..");
    disk.AddFile(L"large.nope");
    disk.AddFile(L"known.abc", "other");
    SetSize(disk.Path(L"large.nope"), 5'000'000'017);
    AddRow(L"small.abc", 0);
    AddRow(L"large.nope", 0);
    AddRow(L"known.abc", 99);
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(Eventually([&] { return !source.IsReading(); }));
    EXPECT_EQ(rows.At(0).sizeBytes, 17u);
    EXPECT_EQ(rows.At(1).sizeBytes, 5'000'000'017u);
    EXPECT_EQ(rows.At(2).sizeBytes, 99u);
    const WIN32_FILE_ATTRIBUTE_DATA known = FactsOf(rows.At(0).path);
    EXPECT_TRUE(Same(rows.At(0).dateModified, known.ftLastWriteTime));
    EXPECT_TRUE(Same(rows.At(0).dateAccessed, known.ftLastAccessTime));
    EXPECT_TRUE(Same(rows.At(0).dateCreated, known.ftCreationTime));
    EXPECT_EQ(rows.At(2).dateModified.high, 0u);
}
