// The gathering against a bare walk of the same tree on the real file system:
//   walk_bench SMALL LARGE
// SMALL holds 10,000 files, LARGE 100,000. Prints ratios and fails beyond limits.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "decoders/audio_type.h"
#include "foundation/paths.h"
#include "selection/disk_walk.h"
#include "selection/gather.h"

// The import's own slot, so that every find sequence of the process is counted.
extern "C" decltype(&FindFirstFileW) __imp_FindFirstFileW;

namespace {

constexpr double walkLimit = 1.15;
constexpr double growthLimit = 11.0;
constexpr int rounds = 7;

decltype(&FindFirstFileW) realFindFirst = nullptr;
long findSequences = 0;

HANDLE WINAPI CountedFindFirst(LPCWSTR name, LPWIN32_FIND_DATAW record) {
    ++findSequences;
    return realFindFirst(name, record);
}

bool CountFindSequences() {
    DWORD old = 0;
    if (!VirtualProtect(&__imp_FindFirstFileW, sizeof(void*), PAGE_READWRITE, &old)) return false;
    realFindFirst = __imp_FindFirstFileW;
    __imp_FindFirstFileW = CountedFindFirst;
    return true;
}

struct Walk {
    double seconds = 0;
    long files = 0;
    long folders = 0;
    long sequences = 0;
};

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// What nobody can do without: one find sequence for each folder.
void WalkBare(wchar_t* path, std::size_t length, Walk& walk) {
    ++walk.folders;
    lstrcpyW(path + length, L"*.*");
    WIN32_FIND_DATAW record;
    const HANDLE find = FindFirstFileW(path, &record);
    if (find == INVALID_HANDLE_VALUE) return;
    do {
        if ((record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            ++walk.files;
        } else if (lstrcmpW(record.cFileName, L".") != 0 &&
                   lstrcmpW(record.cFileName, L"..") != 0) {
            const std::size_t added = static_cast<std::size_t>(lstrlenW(record.cFileName));
            lstrcpyW(path + length, record.cFileName);
            path[length + added] = L'\\';
            WalkBare(path, length + added + 1, walk);
        }
    } while (FindNextFileW(find, &record));
    FindClose(find);
}

Walk MeasureBare(const clString& root) {
    Walk walk;
    static wchar_t path[32768];
    lstrcpyW(path, root.Chars());
    const double start = Now();
    WalkBare(path, static_cast<std::size_t>(root.Length()), walk);
    walk.seconds = Now() - start;
    return walk;
}

Walk MeasureGathering(const clString& root) {
    SelectionLists lists;
    lists._FoldersRecursive.Add(root);
    clAudioTypes types;
    types.Add(L".flac", L"FLAC", false);
    AudioTypeFilter filter(types);
    clStringList files;
    Walk walk;
    findSequences = 0;
    const double start = Now();
    {
        DiskWalk disk;
        GatherFiles(lists, filter, disk, files);
    }
    walk.seconds = Now() - start;
    walk.files = static_cast<long>(files.Count());
    walk.sequences = findSequences;
    return walk;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

struct Measured {
    double ratio = 0;      // gathering over bare walk, median of the pairs
    double gathering = 0;  // seconds, median
    bool complete = true;  // same files, one find sequence for each folder
};

Measured MeasureTree(const clString& root) {
    Measured result;
    std::vector<double> ratios;
    std::vector<double> times;
    MeasureBare(root);  // warms the file system's cache
    for (int round = 0; round < rounds; ++round) {
        const Walk bare = MeasureBare(root);
        const Walk gathered = MeasureGathering(root);
        ratios.push_back(gathered.seconds / bare.seconds);
        times.push_back(gathered.seconds);
        result.complete = result.complete && gathered.files == bare.files && bare.files > 0 &&
                          gathered.sequences == bare.folders;
        std::printf("  %ld files, %ld folders, %ld find sequences: bare %.3f s, gathering %.3f s\n",
                    gathered.files, bare.folders, gathered.sequences, bare.seconds,
                    gathered.seconds);
    }
    result.ratio = Median(ratios);
    result.gathering = Median(times);
    return result;
}

bool Report(const char* what, double figure, double limit) {
    const bool held = figure <= limit;
    std::printf("%s: %.3f (limit %.2f)%s\n", what, figure, limit, held ? "" : "  EXCEEDED");
    return held;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc != 3 || !CountFindSequences()) {
        std::printf("usage: walk_bench SMALL LARGE\n");
        return 2;
    }
    clString small(argv[1]);
    clString large(argv[2]);
    EnsureBackslash(small);
    EnsureBackslash(large);
    const Measured few = MeasureTree(small);
    const Measured many = MeasureTree(large);
    bool held = Report("gathering over a bare walk, 10,000 files", few.ratio, walkLimit);
    held = Report("gathering over a bare walk, 100,000 files", many.ratio, walkLimit) && held;
    held = Report("growth from 10,000 to 100,000 files", many.gathering / few.gathering,
                  growthLimit) &&
           held;
    std::printf("same files and one find sequence per folder: %s\n",
                few.complete && many.complete ? "yes" : "NO");
    return held && few.complete && many.complete ? 0 : 1;
}
