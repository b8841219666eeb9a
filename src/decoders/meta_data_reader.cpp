#include "decoders/meta_data_reader.h"

#include "decoders/file_properties.h"
#include "decoders/tag_entry_pool.h"
#include "decoders/tag_list.h"

namespace {

// Every so many files the reader lets the others run.
constexpr std::int64_t filesBetweenBreaks = 10;

class HostLock {
public:
    explicit HostLock(MetaDataReaderHost& host) : host_(host) { host_.Lock(); }
    HostLock(const HostLock&) = delete;
    HostLock& operator=(const HostLock&) = delete;
    ~HostLock() { host_.Unlock(); }

private:
    MetaDataReaderHost& host_;
};

// Copies the path of the next file; false if nothing is left to do. A copy, since
// the row may go, with its list, while the file is read. With the lock held.
bool NextPath(MetaDataQueue& queue, clString& path) {
    const MetaDataItem* const item = queue.FirstUndone();
    if (item == nullptr) return false;
    path.Assign(item->row->path);
    return true;
}

// Makes the tags of a file out of `record`. Where it has none, those of an earlier
// reading of the same file stay.
void TakeRecord(const DecoderOpenRecord& record, MetaDataItem& item, bool unitsInHertz,
                TagEntryPool& pool) {
    TagList tags;
    tags.UsePool(pool);
    item.tags.CopyTo(tags);
    TakeOpenRecord(record, *item.row, tags, unitsInHertz);
    item.tags.Keep(tags);
}

// Ends one file: `record` is what Open told, or null where it failed. With the
// lock held, which is not given back between storing and marking as done: the
// pump could take the first of two items of one path there, and the other would
// end done with nothing in it.
void Finish(MetaDataQueue& queue, MetaDataReaderHost& host, const clString& path,
            const DecoderOpenRecord* record, TagEntryPool& pool) {
    MetaDataItem* const item = queue.FirstWithPath(path);
    if (item == nullptr) return;
    if (record != nullptr) TakeRecord(*record, *item, host.UnitsInHertz(), pool);
    item->done = true;
    // Rows that were made of bare paths learn here how large their files are.
    if (item->row->sizeBytes == 0) host.FillFileFacts(*item->row);
}

bool FirstPath(MetaDataQueue& queue, MetaDataReaderHost& host, clString& path) {
    const HostLock lock(host);
    return NextPath(queue, path);
}

// One lock for the end of a file and the choice of the next: of what is done for
// each file beside the decoder's own work a lock of the platform is the dearest.
bool FinishAndChooseNext(MetaDataQueue& queue, MetaDataReaderHost& host, clString& path,
                         const DecoderOpenRecord* record, TagEntryPool& pool) {
    const HostLock lock(host);
    Finish(queue, host, path, record, pool);
    return NextPath(queue, path);
}

}  // namespace

void ReadQueuedFiles(MetaDataQueue& queue, MetaDataReaderHost& host) {
    clString path;
    DecoderOpenRecord record;
    TagEntryPool pool;
    if (host.StopRequested()) return;
    bool goesOn = FirstPath(queue, host, path);
    for (std::int64_t file = 0; goesOn; ++file) {
        const bool opened = host.Open(path, record);
        goesOn = FinishAndChooseNext(queue, host, path, opened ? &record : nullptr, pool);
        if (file % filesBetweenBreaks == 0) host.GiveWay();
        if (host.StopRequested()) return;
    }
}
