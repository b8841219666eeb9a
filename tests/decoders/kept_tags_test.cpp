#include "decoders/kept_tags.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/decoders/tag_lines.h"
#include "tests/support/text.h"

namespace {

clString Repeated(wchar_t unit, std::int32_t count) {
    clString text;
    for (std::int32_t i = 0; i < count; ++i)
        text.Append(unit);
    return text;
}

std::string Copied(const KeptTags& kept) {
    TagList copy;
    kept.CopyTo(copy);
    return Lines(copy);
}

struct Song {
    explicit Song(KeptTagsPool& pool) { kept.UsePool(pool); }
    KeptTags kept;
};

}  // namespace

TEST(KeptTags, HoldNothingAtFirst) {
    KeptTagsPool pool;
    KeptTags kept;
    kept.UsePool(pool);
    EXPECT_EQ(kept.Count(), 0);
    EXPECT_EQ(Utf8(kept.Get(L"Title")), "");
    EXPECT_EQ(Copied(kept), "");
    kept.Keep(TagList());
    kept.Clear();
    EXPECT_EQ(kept.Count(), 0);
    EXPECT_EQ(pool.BlockCount(), 0);
}

TEST(KeptTags, AnswerAsTheListDid) {
    KeptTagsPool pool;
    KeptTags kept;
    kept.UsePool(pool);
    {
        TagList tags;
        tags.Add(L"Artist", L"A\rB");
        tags.Add(L"", L"nameless");
        tags.Add(L"Odd", L"x");
        tags.Add(L"TITLE", L"");
        tags.Add(L"Title", L"hidden");
        tags.Add(L"Lyrics", Repeated(L'l', 5000));
        tags.Add(L"\u00C4", L"\u00E4\U0001F3B5");
        EXPECT_TRUE(tags.Add(L"Cover", L"front").data.Resize(1000, true));
        kept.Keep(tags);
        EXPECT_EQ(Copied(kept), Lines(tags));
    }
    EXPECT_EQ(kept.Count(), 8);
    EXPECT_EQ(Utf8(kept.Get(L"aRTIST")), "A\rB");
    EXPECT_EQ(Utf8(kept.Get(L"")), "nameless");
    EXPECT_EQ(Utf8(kept.Get(L"title")), "");
    EXPECT_EQ(Utf8(kept.Get(L"Titl")), "");
    EXPECT_EQ(Utf8(kept.Get(L"Titles")), "");
    EXPECT_EQ(kept.Get(L"Lyrics").Length(), 5000);
    EXPECT_EQ(Utf8(kept.Get(L"\u00E4")), "");
    EXPECT_EQ(Utf8(kept.Get(L"Cover")), "front");
}

TEST(KeptTags, ASecondKeepingReplacesTheFirstAndACopyGoesBehind) {
    KeptTagsPool pool;
    KeptTags kept;
    kept.UsePool(pool);
    TagList tags;
    tags.Add(L"Title", L"old");
    tags.Add(L"Genre", L"Folk");
    kept.Keep(tags);
    TagList others;
    others.Add(L"Title", L"new");
    kept.Keep(others);
    EXPECT_EQ(Copied(kept), "Title=new\n");
    kept.CopyTo(tags);
    EXPECT_EQ(Lines(tags), "Title=old\nGenre=Folk\nTitle=new\n");
    kept.Keep(TagList());
    EXPECT_EQ(kept.Count(), 0);
    pool.Trim();
    EXPECT_EQ(pool.BlockCount(), 1);
}

// A reader and a pump that is some files behind.
TEST(KeptTags, MemoryIsUsedAgainWhileFilesComeAndGo) {
    KeptTagsPool pool;
    std::deque<std::unique_ptr<Song>> waiting;
    for (int number = 0; number < 5000; ++number) {
        TagList tags;
        tags.Add(L"Number", clString(number));
        tags.Add(L"Comment", Repeated(L'c', number % 700));
        waiting.push_back(std::make_unique<Song>(pool));
        waiting.back()->kept.Keep(tags);
        if (number < 200) continue;
        const std::unique_ptr<Song> oldest = std::move(waiting.front());
        waiting.pop_front();
        ASSERT_EQ(oldest->kept.Get(L"number").ToInt(), number - 200);
        ASSERT_EQ(oldest->kept.Get(L"comment").Length(), (number - 200) % 700);
    }
    EXPECT_LE(pool.BlockCount(), 6);  // 200 files of 700 bytes at an average
    waiting.clear();
    pool.Trim();
    EXPECT_EQ(pool.BlockCount(), 1);
}

TEST(KeptTags, TagsLargerThanABlockHaveOneThatGoesWithThem) {
    KeptTagsPool pool;
    KeptTags small;
    KeptTags large;
    small.UsePool(pool);
    large.UsePool(pool);
    TagList tags;
    tags.Add(L"Title", L"T");
    small.Keep(tags);
    EXPECT_EQ(pool.BlockCount(), 1);
    tags.Add(L"Lyrics", Repeated(L'l', 100000));
    large.Keep(tags);
    EXPECT_EQ(pool.BlockCount(), 2);
    EXPECT_EQ(large.Get(L"Lyrics").Length(), 100000);
    large.Clear();
    EXPECT_EQ(pool.BlockCount(), 1);
    EXPECT_EQ(Utf8(small.Get(L"Title")), "T");
}

TEST(KeptTagsPool, GivesEachItsOwnRoom) {
    KeptTagsPool pool;
    std::set<std::uint8_t*> rooms;
    for (std::size_t i = 0; i < 3000; ++i) {
        auto* const room = static_cast<std::uint8_t*>(pool.Take(i % 97 + 1));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(room) % alignof(std::int64_t), 0u);
        std::memset(room, 1, i % 97 + 1);
        const auto behind = rooms.upper_bound(room);
        ASSERT_TRUE(behind == rooms.end() || *behind >= room + i % 97 + 1);
        ASSERT_TRUE(rooms.insert(room).second);
    }
    for (std::uint8_t* room : rooms)
        pool.Give(room);
}

TEST(KeptTagsPool, TrimKeepsOneBlockOnceAllIsGivenBack) {
    KeptTagsPool pool;
    pool.Trim();
    EXPECT_EQ(pool.BlockCount(), 0);
    std::vector<void*> rooms;
    while (pool.BlockCount() < 4)
        rooms.push_back(pool.Take(1000));
    for (void* room : rooms) {
        pool.Trim();
        EXPECT_EQ(pool.BlockCount(), 4);
        pool.Give(room);
    }
    EXPECT_EQ(pool.BlockCount(), 4);
    pool.Trim();
    EXPECT_EQ(pool.BlockCount(), 1);
    std::set<void*> again;
    for (std::size_t i = 0; i < rooms.size(); ++i)
        EXPECT_TRUE(again.insert(pool.Take(1000)).second);
    EXPECT_EQ(pool.BlockCount(), 4);
    for (void* room : again)
        pool.Give(room);
}

TEST(KeptTagsPool, ABlockIsUsedAgainFromItsBeginningOnceAllOfItWasGivenBack) {
    KeptTagsPool pool;
    void* const first = pool.Take(100);
    void* const second = pool.Take(100);
    EXPECT_NE(first, second);
    pool.Give(first);
    void* const third = pool.Take(100);
    EXPECT_NE(third, first);  // the second is still there
    pool.Give(second);
    pool.Give(third);
    void* const again = pool.Take(100);
    EXPECT_EQ(again, first);
    EXPECT_EQ(pool.BlockCount(), 1);
    pool.Give(again);
}
