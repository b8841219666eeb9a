// The reader against a bare loop over the same decoders and files:
//   reader_bench FOLDER [OTHER]
// FOLDER holds 2,000 sound files such as people own, in sub-folders; OTHER as many
// that cost their decoders next to nothing. The decoders are those in the folder
// "decoder" beside this program. Prints ratios and fails beyond the limit, by which
// FOLDER alone is judged.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "bench/measure.h"
#include "decoders/decoder_registry.h"
#include "decoders/meta_data_cells.h"
#include "decoders/meta_data_source.h"
#include "foundation/settings.h"
#include "tests/decoders/row_list.h"

namespace {

constexpr double leastSpeed = 0.85;
constexpr int rounds = 7;
constexpr std::int64_t fileCount = 2000;
constexpr DWORD pumpMs = 250;

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// In the order of their paths, so that runs of one format come as in folders.
std::vector<std::filesystem::path> FilesBelow(const wchar_t* folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// What nobody can do without. The number of opened files goes to `opened`.
double ReadBare(const RowList& rows, std::int64_t& opened) {
    opened = 0;
    const double start = Now();
    {
        clTqDecoder decoder;
        for (const auto& row : rows.rows) {
            DecoderCreateRecord create{};
            DecoderOpenRecord record;
            if (FindDecoderFor(row->path, decoder, &create) && decoder.OpenFile(row->path, record))
                ++opened;
        }
    }
    return Now() - start;
}

// From the start of the thread to its end, with a pump as a form has it.
double ReadInBackground(const RowList& rows, std::int64_t& opened) {
    opened = 0;
    clStringList names;
    names.Split(L"Name\rSize\rArtist\rTitle\rGenre\rAlbum Artist - Album - Disc - Track\rLength");
    clMetaDataSource source;
    std::int64_t cells = 0;
    const auto pump = [&] {
        source.TakeFinished([&](const MetaDataItem& item) {
            if (item.tags.Count() > 0) ++opened;
            WriteTagCells(item.tags, names, [&](std::int64_t, const clString&) { ++cells; });
        });
    };
    const double start = Now();
    source.Refill(rows);
    while (WaitForSingleObject(source.Worker().ThreadHandle(), pumpMs) == WAIT_TIMEOUT)
        pump();
    const double seconds = Now() - start;
    pump();
    return seconds;
}

struct Library {
    explicit Library(const wchar_t* folder) {
        for (const auto& file : FilesBelow(folder)) {
            known.Add(file.c_str(), std::filesystem::file_size(file));
            unknown.Add(file.c_str());
        }
    }

    RowList known;    // as the main window lists files
    RowList unknown;  // as the conversion list does: the reader asks for their sizes
};

// The ratios of reader and bare loop, of `library`; 0 stands for what failed.
struct Speeds {
    double known = 0;
    double unknown = 0;
};

Speeds Measure(const Library& library, Judge& judge) {
    judge.Require("files", library.known.Count(), fileCount);
    std::int64_t opened[3] = {};
    const std::vector<double> seconds = MediansOf(
        rounds, [&] { return ReadBare(library.known, opened[0]); },
        [&] { return ReadInBackground(library.known, opened[1]); },
        [&] {
            for (const auto& row : library.unknown.rows)
                row->sizeBytes = 0;
            return ReadInBackground(library.unknown, opened[2]);
        });
    judge.Require("files read by the reader", opened[1], opened[0]);
    judge.Require("files read by the reader that looks for sizes", opened[2], opened[0]);
    std::printf("%lld of %lld files have a decoder that opens them\n",
                static_cast<long long>(opened[0]), static_cast<long long>(fileCount));
    std::printf("files per second: bare loop %.0f, reader %.0f, with sizes looked up %.0f\n",
                fileCount / seconds[0], fileCount / seconds[1], fileCount / seconds[2]);
    if (opened[0] == 0) return {};
    return {seconds[0] / seconds[1], seconds[0] / seconds[2]};
}

void Tell(const char* what, double figure) {
    std::printf("%-66s %6.3f\n", what, figure);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc != 2 && argc != 3) {
        std::printf("usage: reader_bench FOLDER [OTHER]\n");
        return 2;
    }
    InitSettings();
    Judge judge;
    const Speeds judged = Measure(Library(argv[1]), judge);
    judge.CheckAtLeast("speed of the reader over a bare loop", judged.known, leastSpeed);
    Tell("speed with sizes looked up over a bare loop", judged.unknown);
    if (argc == 3) {
        std::printf("the other files:\n");
        const Speeds told = Measure(Library(argv[2]), judge);
        Tell("speed of the reader over a bare loop, not judged", told.known);
        Tell("speed with sizes looked up, not judged", told.unknown);
    }
    return judge.Held() ? 0 : 1;
}
