#pragma once

#include "workerlink/CMemMapSemaphore.h"

/// The three semaphores by which the worker tells how far it is. The module makes them, the worker opens them; the
/// order of the signals stands in RunWorker.h.
class WorkerHandshake
{
public:
    /// `create` makes them, otherwise those are opened that are there.
    WorkerHandshake(DWORD transferNumber, bool create);
    virtual ~WorkerHandshake() = default;
    WorkerHandshake(const WorkerHandshake&) = delete;
    WorkerHandshake& operator=(const WorkerHandshake&) = delete;

    CMemMapSemaphore working;
    CMemMapSemaphore ready;
    CMemMapSemaphore ok;

    /// All three could be had. When the worker opens them and they can't, nobody waits for it.
    bool complete = true;
};
