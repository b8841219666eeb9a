// The reader: opens the files of a list one after the other, in the background,
// and stores what their decoders tell.
#pragma once

#include <cstdint>

#include "decoders/meta_data_queue.h"
#include "decoders/records.h"
#include "foundation/string.h"

struct clWorkerStopFlag;

// What the reader's loop asks of its surroundings; all on the reader's thread.
class MetaDataReaderHost {
public:
    virtual ~MetaDataReaderHost() = default;

    // The owner wants the loop to end. Asked once for each file.
    virtual bool StopRequested() = 0;
    // The lock that guards the queue and its rows. Never nested.
    virtual void Lock() = 0;
    virtual void Unlock() = 0;
    // Opens the file with a decoder for it; slow, called without the lock. False:
    // no decoder, or it refuses. The blocks of `record` last until the next call.
    virtual bool Open(const clString& path, DecoderOpenRecord& record) = 0;
    // The user's unit of sample rates. Called with the lock held.
    virtual bool UnitsInHertz() = 0;
    // Fills size and dates of the row from the file that its path names; leaves
    // them when there is no such file. Called with the lock held.
    virtual void FillFileFacts(FileRow& row) = 0;
    // Lets other threads run.
    virtual void GiveWay() = 0;
};

// Works through the queue until no item is undone or a stop is requested. An
// item is looked for by its path again after each Open, since the pump takes
// items away meanwhile: of two items with one path the first is filled, so that
// the file of the second is read again until the pump has taken the first. A
// file that cannot be opened ends done, with an empty tag list; results of a
// file whose item is gone are dropped.
void ReadQueuedFiles(MetaDataQueue& queue, MetaDataReaderHost& host);

// The thread procedure for a clWorkerThread: ReadQueuedFiles with the decoders
// of the program, under MetaDataMutex. `queue` is the address of the
// MetaDataQueue, which must outlive the thread, a frozen one too.
void MetaDataReader(clWorkerStopFlag* flag, std::int64_t queue);
