#include <windows.h>

#include "decoders/meta_data_reader.h"
#include "decoders/meta_data_source.h"
#include "foundation/mutex.h"

namespace {

constexpr DWORD pollMs = 25;

}  // namespace

bool clMetaDataSource::IsReading() const {
    return worker.ThreadHandle() != nullptr &&
           WaitForSingleObject(worker.ThreadHandle(), 0) != WAIT_OBJECT_0;
}

void clMetaDataSource::StopReader() {
    // The user waits for it now. Left in the background it could outlast its grace on
    // a busy machine, and be frozen with a decoder that only needed its turn.
    SetThreadPriority(worker.ThreadHandle(), THREAD_PRIORITY_NORMAL);
    worker.Stop();
    // The queue and the rows are the thread's until it has ended.
    while (IsReading())
        Sleep(pollMs);
}

void clMetaDataSource::Refill(const ListedRows& rows) {
    // Before the lock: the reader needs it to come to its end.
    StopReader();
    {
        const clMutexLock lock(MetaDataMutex);
        queue.Refill(rows);
    }
    worker.Start(MetaDataReader, reinterpret_cast<std::int64_t>(&queue), graceMs);
    SetThreadPriority(worker.ThreadHandle(), THREAD_PRIORITY_LOWEST);
}

void clMetaDataSource::ForgetRows() {
    const clMutexLock lock(MetaDataMutex);
    queue.ForgetRows();
}

bool clMetaDataSource::TakeFinished(const std::function<void(const MetaDataItem& item)>& take) {
    const clMutexLock lock(MetaDataMutex);
    return queue.TakeFinished(take);
}

bool clMetaDataSource::TakeFinishedWhile(
    const std::function<bool(const MetaDataItem& item)>& take) {
    const clMutexLock lock(MetaDataMutex);
    return queue.TakeFinishedWhile(take);
}
