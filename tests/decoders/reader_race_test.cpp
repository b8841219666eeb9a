// The protocol of reader, list and pump with real threads, to be run under
// ThreadSanitizer. Ends with 0 when every result was its own row's, none was
// lost, and no race was seen.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

#include "decoders/meta_data_reader.h"
#include "tests/decoders/row_list.h"

namespace {

constexpr int rebuilds = 10000;
constexpr int fileCount = 40;
constexpr int unreadable = 7;  // the number of the file that no decoder reads

[[noreturn]] void Fail(const char* what) {
    std::printf("FAILED: %s\n", what);
    std::exit(1);
}

void Require(bool condition, const char* what) {
    if (!condition) Fail(what);
}

clString PathOf(int number) {
    clString path;
    path.Format(L"C:\\Music\\%d", number);
    return path;
}

int NumberOf(const clString& path) {
    return static_cast<int>(path.Mid(path.FindLast(L'\\') + 1).ToInt());
}

// A block of one tag "Title" with the path.
std::vector<std::uint8_t> TitleBlock(const clString& path) {
    const clString name(L"Title");
    std::vector<std::uint8_t> block;
    const auto put = [&block](const void* data, std::size_t size) {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        block.insert(block.end(), bytes, bytes + size);
    };
    const std::int32_t head[2] = {1, 4 + 2 * (name.Length() + path.Length() + 2)};
    put(head, sizeof(head));
    put(name.Chars(), static_cast<std::size_t>(name.Length() + 1) * sizeof(wchar_t));
    put(path.Chars(), static_cast<std::size_t>(path.Length() + 1) * sizeof(wchar_t));
    return block;
}

// What guards the queues and rows of all lists.
std::mutex metaDataMutex;

class ThreadHost : public MetaDataReaderHost {
public:
    explicit ThreadHost(const std::atomic<bool>& stop) : stop_(stop) {}

    bool StopRequested() override { return stop_; }
    void Lock() override { metaDataMutex.lock(); }
    void Unlock() override { metaDataMutex.unlock(); }
    bool Open(const clString& path, DecoderOpenRecord& record) override {
        const int number = NumberOf(path);
        for (int i = 0; i < number % 5; ++i)
            std::this_thread::yield();
        if (number == unreadable) return false;
        record = {};
        block_ = TitleBlock(path);
        record.tags = block_.data();
        record.tagsSize = static_cast<std::uint32_t>(block_.size());
        record.lengthMs = number;
        return true;
    }
    bool UnitsInHertz() override { return false; }
    void FillFileFacts(FileRow& row) override {
        row.sizeBytes = static_cast<std::uint64_t>(NumberOf(row.path)) + 1;
    }
    void GiveWay() override { std::this_thread::yield(); }

private:
    const std::atomic<bool>& stop_;
    std::vector<std::uint8_t> block_;
};

// One form's list. All operations but the reader's are the main thread's.
class Form {
public:
    explicit Form(unsigned seed) : random_(seed) {}
    ~Form() { StopReader(); }

    // As the forms do it: the reader ends before the rows go.
    void RebuildStopped() {
        StopReader();
        {
            const std::lock_guard<std::mutex> lock(metaDataMutex);
            queue_.ForgetRows();
        }
        rows_ = RowList();
        Pump(false);
        MakeRows(rows_);
        {
            const std::lock_guard<std::mutex> lock(metaDataMutex);
            queue_.Refill(rows_);
        }
        taken_ = 0;
        StartReader();
    }

    // While the reader is at a file of the old list.
    void RebuildUnderItsHands() {
        RowList fresh;
        MakeRows(fresh);
        const std::lock_guard<std::mutex> lock(metaDataMutex);
        queue_.Refill(fresh);
        rows_ = std::move(fresh);
        taken_ = 0;
    }

    void Pump(bool rowsAreThere = true) {
        const std::lock_guard<std::mutex> lock(metaDataMutex);
        const bool drained = queue_.TakeFinished([&](const MetaDataItem& item) {
            if (rowsAreThere) {
                Check(item);
            } else {
                Require(item.row == nullptr, "an item kept its row");
            }
        });
        Require(!drained || !rowsAreThere || taken_ == rows_.Count(), "a result was lost");
    }

    // Waits until the list is complete. With a reader that ends by itself or not.
    void Settle() {
        while (taken_ < rows_.Count()) {
            Pump();
            std::this_thread::yield();
        }
    }

    void StartReader() {
        stop_ = false;
        reader_ = std::thread([this] {
            ThreadHost host(stop_);
            ReadQueuedFiles(queue_, host);
        });
    }
    // A reader that looks for new work until it is stopped.
    void StartRestlessReader() {
        stop_ = false;
        reader_ = std::thread([this] {
            ThreadHost host(stop_);
            while (!stop_) {
                ReadQueuedFiles(queue_, host);
                std::this_thread::yield();
            }
        });
    }
    void StopReader() {
        stop_ = true;
        if (reader_.joinable()) reader_.join();
    }
    long Taken() const { return allTaken_; }

private:
    void MakeRows(RowList& rows) {
        for (auto count = random_() % 15; count != 0; --count)
            rows.Add(PathOf(static_cast<int>(random_() % fileCount)), random_() % 2);
    }

    void Check(const MetaDataItem& item) {
        Require(taken_ < rows_.Count(), "more results than rows");
        Require(item.rowIndex == rows_.order[static_cast<std::size_t>(taken_)], "wrong order");
        Require(item.row == rows_.RowOf(item.rowIndex), "a result of another list");
        ++taken_;
        ++allTaken_;
        const int number = NumberOf(item.row->path);
        if (number == unreadable) {
            Require(item.tags.Count() == 0 && item.row->lengthMs == 0, "a result from nowhere");
        } else {
            Require(item.tags.Get(L"Title").Equals(item.row->path), "a foreign result");
            Require(item.row->lengthMs == number, "a foreign length");
        }
        Require(item.row->sizeBytes == 1 ||
                    item.row->sizeBytes == static_cast<std::uint64_t>(number) + 1,
                "a foreign size");
    }

    std::mt19937 random_;
    RowList rows_;
    MetaDataQueue queue_;
    std::atomic<bool> stop_{false};
    std::thread reader_;
    std::int32_t taken_ = 0;
    long allTaken_ = 0;
};

// Two forms, as a list dialog stands above the main window: one lock for both.
void RunStopped() {
    Form main(1);
    Form dialog(2);
    for (int i = 0; i < rebuilds; ++i) {
        Form& form = i % 3 == 0 ? dialog : main;
        form.RebuildStopped();
        for (int k = 0; k < i % 4; ++k) {
            main.Pump();
            dialog.Pump();
            std::this_thread::yield();
        }
        if (i % 5 == 4) form.Settle();
    }
    std::printf("stopped before each of %d rebuilds: %ld results\n", rebuilds,
                main.Taken() + dialog.Taken());
    Require(main.Taken() + dialog.Taken() > rebuilds / 2, "too little was read to mean anything");
}

void RunUnstopped() {
    Form form(3);
    form.StartRestlessReader();
    for (int i = 0; i < rebuilds; ++i) {
        form.RebuildUnderItsHands();
        for (int k = 0; k < i % 4; ++k) {
            form.Pump();
            std::this_thread::yield();
        }
        if (i % 5 == 4) form.Settle();
    }
    form.StopReader();
    std::printf("never stopped over %d rebuilds: %ld results\n", rebuilds, form.Taken());
    Require(form.Taken() > rebuilds / 2, "too little was read to mean anything");
}

}  // namespace

int main() {
    RunStopped();
    RunUnstopped();
    return 0;
}
