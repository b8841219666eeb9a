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

// One thread's surroundings, its own decoder among them.
class ThreadHost : public MetaDataReaderHost {
public:
    explicit ThreadHost(const clWorkerStopFlag& flag) : flag_(flag) {}

    bool StopRequested() override { return ::StopRequested(flag_); }
    void Lock() override { MetaDataMutex.Lock(); }
    void Unlock() override { MetaDataMutex.Unlock(); }

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

    void GiveWay() override { Sleep(0); }

private:
    const clWorkerStopFlag& flag_;
    clTqDecoder decoder_;
    clUnitsSetting units_;
};

}  // namespace

void MetaDataReader(clWorkerStopFlag* flag, std::int64_t queue) {
    ThreadHost host(*flag);
    ReadQueuedFiles(*reinterpret_cast<MetaDataQueue*>(queue), host);
}
