#pragma once

#include "platform/platform.h"

// A channel for one block of bytes between two processes of one machine. A transfer has a number, or a name in its
// place. The block goes one way, once; then both sides take their objects down, so that the same number can serve again
// for a block in the other direction.
//
// The mapping, exactly n + 4 bytes:      0   u32 n, little endian
//                                        4   the n bytes
//
// The objects (<id> is the number in decimal or the name; semaphores count 0 or 1 and begin at 0):
//
//   CMemMap_M_<id>       mapping          made by the publisher
//   CMemMap_M_<id>S      claim            made by the reader; a second reader sees that it existed and leaves
//   CMemMap_S_<id>       took-it          made by the publisher, signalled by the reader
//   CMemMap_SEnd_<id>    done             made by the reader, signalled by the publisher
//   <semaphore>_LOCK     signal lock      made by whoever signals that semaphore first
//
//      Publisher                           its watch thread                     Reader
//   1  makes and fills the mapping,
//      unmaps it, makes took-it,
//      starts the thread, goes on           waits for took-it, 30 s
//   2                                                                           claims; opens the mapping, copies
//                                                                               the block, closes the mapping
//   3                                                                           makes done
//   4                                                                           signals took-it
//   5                                       wakes, closes mapping and           waits for done, 10 s
//                                           took-it, opens and signals done
//   6                                       ends                                wakes, closes done and claim
//
// Step 3 comes before step 4 so that the watch thread finds something to open. Done tells the reader that the
// publisher's mapping has gone: a block published under the same number after that gets a mapping of its own size. The
// claim has to be closed before the same number is read again, or the second reader would take it for a rival.
// Whichever wait runs out, its side carries on: the publisher takes the block away, the reader has its copy all the
// same.

/// One end of one transfer.
class CMemMap
{
public:
    /// The publisher: returns at once. A null or empty name lets the number be chosen and put into `id`; a name keeps
    /// `id` at 0. `thread` is null when nothing was published, which is also so for a size of 0.
    CMemMap(const void* bytes, DWORD byteCount, LPCWSTR transferName);

    /// The reader: returns when the transfer is over. `data` is null and `id` is 0 when nothing came.
    CMemMap(DWORD transferId, LPCWSTR transferName);

    virtual ~CMemMap();
    CMemMap(const CMemMap&) = delete;
    CMemMap& operator=(const CMemMap&) = delete;

    DWORD id = 0;            // 0 when the transfer goes by name, or when it failed
    CString name;            // empty when the number serves
    BYTE* data = nullptr;    // the reader's copy, from operator new, owned; null in a publisher
    DWORD size = 0;          // of data
    HANDLE thread = nullptr; // the publisher's watch thread, not owned; see CMemMapWatch::Start

private:
    HANDLE MakeMapping(const void* bytes, DWORD byteCount);
    bool TakeCopy(DWORD transferId, const CString& transferName);
};
