// What each form with a list of files has of its own to learn their properties:
// the queue of files, the reader's thread, and the taking of its results.
#pragma once

#include <cstdint>
#include <functional>

#include "decoders/list_rows.h"
#include "decoders/meta_data_queue.h"
#include "foundation/worker.h"

// Milliseconds that a stop waits for the file that the reader is at.
inline constexpr std::uint32_t readerGraceMs = 20000;

// All operations belong to the thread of the form. The rows that a queue was
// filled with stay the form's: before it frees them it stops the reader, then
// either refills or calls ForgetRows.
class clMetaDataSource {
public:
    explicit clMetaDataSource(std::uint32_t stopGraceMs = readerGraceMs) : graceMs(stopGraceMs) {}
    clMetaDataSource(const clMetaDataSource&) = delete;
    clMetaDataSource& operator=(const clMetaDataSource&) = delete;
    // Stops the reader, as StopReader does.
    ~clMetaDataSource() { StopReader(); }

    // Asks the reader to stop and waits for its end, that is, for the file that
    // it is at. A decoder that does not come back within the grace is frozen,
    // and this call then never returns. Not with the meta-data mutex held.
    void StopReader();
    // Stops the reader, fills the queue with the rows in display order, and
    // starts the reader anew at the lowest priority. A failure to start it is
    // silent: the columns stay empty. Not with the meta-data mutex held.
    void Refill(const ListedRows& rows);
    // Parts the queue from rows that are about to be freed without a refill.
    // The reader must have been stopped.
    void ForgetRows();
    // Calls `take` for each finished item at the head of the queue, with the
    // meta-data mutex held, and removes it. True if this emptied the queue: the
    // list is then complete.
    bool TakeFinished(const std::function<void(const MetaDataItem& item)>& take);
    // The same, but it ends early, behind the removal, once `take` answers false.
    bool TakeFinishedWhile(const std::function<bool(const MetaDataItem& item)>& take);

    // The reader has been started and has not ended.
    bool IsReading() const;
    // For looking at; started and stopped through the operations above.
    const clWorkerThread& Worker() const { return worker; }

private:
    // In this order: the thread goes before the queue that it works on.
    MetaDataQueue queue;
    clWorkerThread worker;
    std::uint32_t graceMs;
};
