#include <windows.h>

#include "decoders/decoder_registry.h"
#include "decoders/meta_data_reader.h"
#include "decoders/units_setting.h"
#include "foundation/dir_enum.h"
#include "foundation/mutex.h"
#include "foundation/worker.h"

namespace {

clFileTime FileTimeOf(const FILETIME& time) {
    return {time.dwLowDateTime, time.dwHighDateTime};
}

// One thread's surroundings, its own decoder among them. Under Wine a call of the
// kernel takes as long as a tenth of a file, so that the lock is taken together
// with the look at the units, and given back together with the look for a stop.
class ThreadHost : public MetaDataReaderHost {
public:
    explicit ThreadHost(const clWorkerStopFlag& flag) : flag_(flag) {}

    bool StopRequested() override {
        if (!hasAskedForStop_) return ::StopRequested(flag_);
        hasAskedForStop_ = false;
        return stop_;
    }

    void Lock() override {
        hasAskedForStop_ = false;
        while (!MetaDataMutex.LockUnless(units_.ChangeEvent()))
            units_.Forget();
    }

    void Unlock() override {
        stop_ = MetaDataMutex.UnlockAndTest(flag_.handle);
        hasAskedForStop_ = true;
    }

    bool Open(const clString& path, DecoderOpenRecord& record) override {
        DecoderCreateRecord create{};
        return FindDecoderFor(path, decoder_, &create) && decoder_.OpenFile(path, record);
    }

    bool UnitsInHertz() override { return units_.InHertz(); }

    void FillFileFacts(FileRow& row) override {
        clDirEnum file(row.path);
        if (!file.Next()) return;
        row.sizeBytes = std::uint64_t{file.record.nFileSizeHigh} << 32 | file.record.nFileSizeLow;
        row.dateModified = FileTimeOf(file.record.ftLastWriteTime);
        row.dateAccessed = FileTimeOf(file.record.ftLastAccessTime);
        row.dateCreated = FileTimeOf(file.record.ftCreationTime);
    }

    void GiveWay() override {
        Sleep(0);
        hasAskedForStop_ = false;  // others have been at work since
    }

private:
    const clWorkerStopFlag& flag_;
    clTqDecoder decoder_;
    clUnitsWatch units_;
    bool hasAskedForStop_ = false;
    bool stop_ = false;  // the answer, if the last act was to give the lock back
};

}  // namespace

void MetaDataReader(clWorkerStopFlag* flag, std::int64_t queue) {
    ThreadHost host(*flag);
    ReadQueuedFiles(*reinterpret_cast<MetaDataQueue*>(queue), host);
}
