#include "workerlink/WorkerHandshake.h"

#include "workerlink/protocol.h"

WorkerHandshake::WorkerHandshake(DWORD transferNumber, bool create)
{
    struct Named
    {
        CMemMapSemaphore& semaphore;
        LPCWSTR name;
    };
    for (const Named& each : {Named{working, WorkingSemaphore}, Named{ready, ReadySemaphore}, Named{ok, OkSemaphore}}) {
        CString name;
        name.Format(each.name, transferNumber);
        complete = each.semaphore.Open(name, create) && complete;
    }
}
