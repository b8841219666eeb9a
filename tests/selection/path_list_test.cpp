#include "selection/path_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

#include "foundation/arrays.h"
#include "foundation/paths.h"
#include "tests/support/text.h"

namespace {

std::vector<std::string> Entries(const PathList& list) {
    std::vector<std::string> entries;
    list.ForEach([&](const clString& path) { entries.push_back(Utf8(path)); });
    return entries;
}

using Texts = std::vector<std::string>;

// The same list in its plain form: every operation walks all entries.
class PlainList {
public:
    void Add(const clString& path) { paths_.Add(path); }
    bool Contains(const clString& path) const { return paths_.IndexOf(path, true) >= 0; }
    void Remove(const clString& path) {
        for (std::int64_t i = paths_.Count() - 1; i >= 0; --i) {
            if (paths_.At(i)->CompareNoCase(path) == 0) paths_.RemoveAt(i);
        }
    }
    void RemoveBeneath(const clString& prefix) {
        for (std::int64_t i = paths_.Count() - 1; i >= 0; --i) {
            if (paths_.At(i)->CompareNoCase(prefix, prefix.Length()) == 0) paths_.RemoveAt(i);
        }
    }
    void Clear() { paths_.Clear(); }
    bool HasEntryDirectlyIn(const clString& folder) const {
        for (std::int64_t i = 0; i < paths_.Count(); ++i) {
            if (DirectoryOf(*paths_.At(i)).CompareNoCase(folder) == 0) return true;
        }
        return false;
    }
    Texts Entries() const {
        Texts entries;
        for (std::int64_t i = 0; i < paths_.Count(); ++i)
            entries.push_back(Utf8(*paths_.At(i)));
        return entries;
    }

private:
    clStringList paths_;
};

using Random = std::mt19937;

std::uint32_t Below(Random& random, std::uint32_t limit) {
    return static_cast<std::uint32_t>(random() % limit);
}

// Folders and files that often meet, differ by case only or begin alike.
clString RandomPath(Random& random) {
    static constexpr const wchar_t* parts[] = {L"a", L"A",      L"ab",    L"aB",
                                               L"b", L"\u00e4", L"\u00c4"};
    clString path(L"C:\\");
    const std::uint32_t depth = Below(random, 3);
    for (std::uint32_t i = 0; i < depth; ++i) {
        path.Append(parts[Below(random, 7)]);
        path.Append(L"\\");
    }
    if (Below(random, 3) != 0) path.Append(parts[Below(random, 7)]);
    if (Below(random, 40) == 0) path.Assign(parts[Below(random, 7)]);
    if (Below(random, 80) == 0) path.Assign(L"");
    return path;
}

void StepBoth(Random& random, PathList& list, PlainList& plain) {
    const clString path = RandomPath(random);
    const std::uint32_t action = Below(random, 1000);
    if (action < 550) {
        list.Add(path);
        plain.Add(path);
    } else if (action < 850) {
        list.Remove(path);
        plain.Remove(path);
    } else if (action < 865) {
        list.RemoveBeneath(path);
        plain.RemoveBeneath(path);
    } else if (action < 867) {
        list.Clear();
        plain.Clear();
    }
}

void ExpectAlike(Random& random, const PathList& list, const PlainList& plain) {
    const Texts entries = plain.Entries();
    ASSERT_EQ(Entries(list), entries);
    ASSERT_EQ(list.Count(), static_cast<std::int64_t>(entries.size()));
    ASSERT_EQ(list.IsEmpty(), entries.empty());
    const clString path = RandomPath(random);
    ASSERT_EQ(list.Contains(path), plain.Contains(path)) << Utf8(path);
    const PathPrefix prefix(path.Left(static_cast<std::int32_t>(Below(random, 12))));
    ASSERT_EQ(list.Contains(prefix, path), plain.Contains(path)) << Utf8(path);
    ASSERT_EQ(list.HasEntryDirectlyIn(path), plain.HasEntryDirectlyIn(path)) << Utf8(path);
}

clString Numbered(const wchar_t* folder, std::int32_t number) {
    clString path(folder);
    path.Append(clString(number));
    path.Append(L".flac");
    return path;
}

// Long enough below each other that only the last digits tell two paths apart.
constexpr const wchar_t* longFolder =
    L"D:\\Music\\Somebody with a rather long name\\The complete recordings, remastered\\Disc 01\\";

double SecondsOf(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

TEST(PathList, KeepsTheOrderOfAdding) {
    PathList list;
    list.Add(L"C:\\b");
    list.Add(L"C:\\a");
    list.Add(L"C:\\c");
    EXPECT_EQ(Entries(list), (Texts{"C:\\b", "C:\\a", "C:\\c"}));
    list.Remove(L"C:\\a");
    list.Add(L"C:\\a");
    EXPECT_EQ(Entries(list), (Texts{"C:\\b", "C:\\c", "C:\\a"}));
}

TEST(PathList, ComparesWithoutTheCaseOfAToZOnly) {
    PathList list;
    list.Add(L"C:\\AZaz@[`{\u00c4");
    EXPECT_TRUE(list.Contains(L"c:\\azAZ@[`{\u00c4"));
    EXPECT_FALSE(list.Contains(L"c:\\azAZ@[`{\u00e4"));
    EXPECT_FALSE(list.Contains(L"C:\\AZaz`[`{\u00c4"));
    EXPECT_FALSE(list.Contains(L"C:\\AZaz@{`{\u00c4"));
    list.Remove(L"c:\\azAZ@[`{\u00e4");
    EXPECT_EQ(list.Count(), 1);
    list.Remove(L"C:\\azaz@[`{\u00c4");
    EXPECT_TRUE(list.IsEmpty());
}

TEST(PathList, RemovesEveryEqualEntry) {
    PathList list;
    list.Add(L"C:\\a");
    list.Add(L"C:\\b");
    list.Add(L"C:\\A");
    list.Add(L"C:\\a");
    EXPECT_EQ(list.Count(), 4);
    EXPECT_EQ(Entries(list), (Texts{"C:\\a", "C:\\b", "C:\\A", "C:\\a"}));
    list.Remove(L"c:\\a");
    EXPECT_EQ(Entries(list), (Texts{"C:\\b"}));
    EXPECT_FALSE(list.Contains(L"C:\\a"));
    list.Remove(L"C:\\a");
    EXPECT_EQ(list.Count(), 1);
}

TEST(PathList, RemovesBeneathAPrefixWithoutTouchingASibling) {
    PathList list;
    for (const wchar_t* path : {L"C:\\Rock\\", L"C:\\Rock and Roll\\", L"C:\\rock\\a\\", L"C:\\Roc",
                                L"C:\\ROCK\\x.mp3", L"D:\\Rock\\"})
        list.Add(path);
    list.RemoveBeneath(L"C:\\Rock\\");
    EXPECT_EQ(Entries(list), (Texts{"C:\\Rock and Roll\\", "C:\\Roc", "D:\\Rock\\"}));
    EXPECT_FALSE(list.Contains(L"C:\\rock\\a\\"));
}

TEST(PathList, AnEmptyPrefixRemovesEmptyEntriesOnly) {
    PathList list;
    list.Add(L"C:\\a");
    list.Add(L"");
    list.RemoveBeneath(L"");
    EXPECT_EQ(Entries(list), (Texts{"C:\\a"}));
}

TEST(PathList, ClearLeavesAnEmptyUsableList) {
    PathList list(PathList::FolderIndex::Kept);
    list.Add(L"C:\\a\\b");
    list.Clear();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.Count(), 0);
    EXPECT_FALSE(list.Contains(L"C:\\a\\b"));
    EXPECT_FALSE(list.HasEntryDirectlyIn(L"C:\\a\\"));
    list.Add(L"C:\\a\\b");
    EXPECT_EQ(Entries(list), (Texts{"C:\\a\\b"}));
    EXPECT_TRUE(list.HasEntryDirectlyIn(L"C:\\a\\"));
}

TEST(PathList, KnowsTheFoldersOfItsEntries) {
    for (const auto folders : {PathList::FolderIndex::None, PathList::FolderIndex::Kept}) {
        PathList list(folders);
        list.Add(L"C:\\a\\one.mp3");
        list.Add(L"C:\\a\\two.mp3");
        list.Add(L"C:\\b\\deeper\\three.mp3");
        EXPECT_TRUE(list.HasEntryDirectlyIn(L"c:\\A\\"));
        EXPECT_FALSE(list.HasEntryDirectlyIn(L"C:\\a"));
        EXPECT_FALSE(list.HasEntryDirectlyIn(L"C:\\b\\"));
        EXPECT_TRUE(list.HasEntryDirectlyIn(L"C:\\b\\deeper\\"));
        list.Remove(L"C:\\a\\one.mp3");
        EXPECT_TRUE(list.HasEntryDirectlyIn(L"C:\\a\\"));
        list.Remove(L"C:\\a\\two.mp3");
        EXPECT_FALSE(list.HasEntryDirectlyIn(L"C:\\a\\"));
        EXPECT_TRUE(list.HasEntryDirectlyIn(L"C:\\b\\deeper\\"));
    }
}

TEST(PathList, APrefixHashedOnceFindsWhatTheWholePathFinds) {
    PathList list;
    list.Add(L"C:\\Music\\Album\\Track.mp3");
    PathPrefix prefix(L"c:\\music\\");
    EXPECT_TRUE(list.Contains(prefix, L"c:\\music\\album\\track.mp3"));
    EXPECT_FALSE(list.Contains(prefix, L"c:\\music\\album\\track.mp"));
    prefix.Extend(L"c:\\music\\album\\");
    EXPECT_TRUE(list.Contains(prefix, L"c:\\music\\album\\track.mp3"));
    EXPECT_FALSE(list.Contains(prefix, L"c:\\music\\album\\"));
}

TEST(PathList, DiffersInNothingFromThePlainForm) {
    for (std::uint32_t seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        PathList list(seed % 2 == 0 ? PathList::FolderIndex::Kept : PathList::FolderIndex::None);
        PlainList plain;
        for (int step = 0; step < 3000; ++step) {
            StepBoth(random, list, plain);
            ExpectAlike(random, list, plain);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(PathList, StaysRightThroughGrowthAndRemovalFromTheHead) {
    PathList list(PathList::FolderIndex::Kept);
    constexpr std::int32_t total = 5000;
    for (std::int32_t i = 0; i < total; ++i)
        list.Add(Numbered(longFolder, i));
    for (std::int32_t i = 0; i < total; ++i) {
        ASSERT_TRUE(list.Contains(Numbered(longFolder, i)));
        list.Remove(Numbered(longFolder, i));
        ASSERT_FALSE(list.Contains(Numbered(longFolder, i)));
        ASSERT_EQ(list.Count(), total - 1 - i);
        if (i % 500 == 0) {
            std::int32_t next = i + 1;
            list.ForEach([&](const clString& path) {
                ASSERT_TRUE(path.Equals(Numbered(longFolder, next))) << Utf8(path);
                ++next;
            });
            ASSERT_EQ(next, total);
        }
    }
    EXPECT_FALSE(list.HasEntryDirectlyIn(longFolder));
}

// With a walk for each of them this takes minutes.
TEST(PathList, AddsFindsAndRemovesAHundredThousandInOneSweep) {
    constexpr std::int32_t total = 100000;
    const double seconds = SecondsOf([] {
        PathList list(PathList::FolderIndex::Kept);
        for (std::int32_t i = 0; i < total; ++i)
            list.Add(Numbered(longFolder, i));
        for (std::int32_t i = 0; i < total; ++i)
            ASSERT_TRUE(list.Contains(Numbered(longFolder, i)));
        for (std::int32_t i = 0; i < total; ++i)
            list.Remove(Numbered(longFolder, i));
        ASSERT_TRUE(list.IsEmpty());
    });
    EXPECT_LT(seconds, 20.0);
}

TEST(PathList, AHundredThousandEqualEntriesAreOneGroup) {
    const double seconds = SecondsOf([] {
        PathList list(PathList::FolderIndex::Kept);
        for (std::int32_t i = 0; i < 100000; ++i)
            list.Add(L"C:\\a\\one.mp3");
        EXPECT_EQ(list.Count(), 100000);
        list.Remove(L"C:\\a\\ONE.mp3");
        EXPECT_TRUE(list.IsEmpty());
    });
    EXPECT_LT(seconds, 20.0);
}

TEST(PathHash, SpreadsPathsThatDifferInADigit) {
    std::vector<int> low(1024);
    std::vector<std::uint32_t> hashes;
    for (std::int32_t i = 0; i < 100000; ++i) {
        hashes.push_back(PathHash::Of(Numbered(longFolder, i)));
        ++low[hashes.back() % 1024];
    }
    // 98 are to be expected in each; the deviation of chance is about 10.
    for (const int count : low) {
        ASSERT_GT(count, 45);
        ASSERT_LT(count, 160);
    }
    std::sort(hashes.begin(), hashes.end());
    const auto last = std::unique(hashes.begin(), hashes.end());
    EXPECT_LT(hashes.end() - last, 10);
}

TEST(PathHash, IsTheSameHoweverThePathIsCut) {
    const clString path(L"C:\\Music\\ALBUM\\01 Track.flac");
    const clString folded = path.Lower();
    for (std::int32_t cut = 0; cut <= path.Length(); ++cut) {
        PathHash hash;
        hash.Extend(path.Chars(), cut);
        hash.Extend(path.Chars() + cut, path.Length() - cut);
        EXPECT_EQ(hash.Value(), PathHash::Of(folded)) << cut;
    }
}
