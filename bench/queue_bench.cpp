// What the reader's queue costs for each file as lists grow: filling it, the
// reader's searches, and the taking of results with the search for their display
// rows. Prints ratios and fails beyond limits.
#include <cstdio>
#include <memory>
#include <vector>

#include "bench/measure.h"
#include "decoders/meta_data_cells.h"
#include "decoders/meta_data_reader.h"
#include "tests/decoders/row_list.h"

namespace {

// Of the time for each file, at ten or a hundred times as many.
constexpr double growthLimit = 2.5;
constexpr int rounds = 9;
constexpr int sizes[] = {1000, 10000, 100000};

// A list, its queue and its reader on one thread: the pump takes results each
// time the reader gives way, so that it never has an empty or a full queue.
class Form : public MetaDataReaderHost {
public:
    // Without a decoder nothing but the queue is measured.
    Form(int rows, bool hasDecoder) : hasDecoder_(hasDecoder) {
        for (int i = 0; i < rows; ++i) {
            clString path;
            path.Format(L"D:\\Users\\Listener\\Music\\Orchestra\\Album %d (Remastered)\\%d.flac",
                        i / 14, i);
            rows_.Add(path, 1000);
        }
        names_.Split(L"Name\rSize\rArtist\rTitle\rLength\rBit Rate");
    }

    // Seconds for the whole list, once.
    double Run() {
        taken_ = 0;
        return SecondsOf([&] {
            queue_.Refill(rows_);
            ReadQueuedFiles(queue_, *this);
            Pump();
        });
    }
    std::int64_t Taken() const { return taken_; }
    std::int32_t Rows() const { return rows_.Count(); }

    bool StopRequested() override { return false; }
    void Lock() override {}
    void Unlock() override {}
    bool Open(const clString&, DecoderOpenRecord& record) override {
        record = {};
        record.lengthMs = 200000;
        record.bitRate = 900000;
        record.waveFormat.nSamplesPerSec = 44100;
        return hasDecoder_;
    }
    bool UnitsInHertz() override { return false; }
    void FillFileFacts(FileRow&) override {}
    void GiveWay() override { Pump(); }

private:
    void Pump() {
        places_.BeginPass();
        queue_.TakeFinished([this](const MetaDataItem& item) {
            if (places_.Find(rows_, item.rowIndex) >= 0) ++taken_;
            WriteTagCells(item.tags, names_,
                          [this](std::int64_t, const clString& text) { units_ += text.Length(); });
        });
    }

    bool hasDecoder_;
    RowList rows_;
    MetaDataQueue queue_;
    DisplayRowIndex places_;
    clStringList names_;
    std::int64_t taken_ = 0;
    std::int64_t units_ = 0;
};

void Measure(Judge& judge, const char* what, bool hasDecoder) {
    std::vector<std::unique_ptr<Form>> forms;
    for (const int size : sizes)
        forms.push_back(std::make_unique<Form>(size, hasDecoder));
    // The small ones as often as makes them long enough for the clock.
    const auto repeated = [&](std::size_t i) {
        const int times = sizes[2] / sizes[i];
        double seconds = 0;
        for (int k = 0; k < times; ++k)
            seconds += forms[i]->Run();
        return seconds / times;
    };
    const std::vector<double> seconds = MediansOf(
        rounds, [&] { return repeated(0); }, [&] { return repeated(1); },
        [&] { return repeated(2); });
    std::printf("%s\n", what);
    for (std::size_t i = 0; i < 3; ++i) {
        judge.Require("results taken", forms[i]->Taken(), forms[i]->Rows());
        std::printf("  %6d files: %.0f ns each\n", sizes[i], seconds[i] * 1e9 / sizes[i]);
    }
    judge.Check("time for each file, 10,000 over 1,000", seconds[1] / seconds[0] / 10, growthLimit);
    judge.Check("time for each file, 100,000 over 10,000", seconds[2] / seconds[1] / 10,
                growthLimit);
    judge.Check("time for each file, 100,000 over 1,000", seconds[2] / seconds[0] / 100,
                growthLimit);
}

}  // namespace

int main() {
    Judge judge;
    Measure(judge, "queue, formatting and cells:", true);
    Measure(judge, "queue alone:", false);
    return judge.Held() ? 0 : 1;
}
