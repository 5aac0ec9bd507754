#include "module/raster/AskWorker.h"

#include "platform/platform.h"
#include "workerlink/SendToWorker.h"

bool AskWorker(WorkerMessage& message)
{
    try {
        return SendToWorker(message);
    } catch (CException* exception) {
        exception->Delete();
        return false;
    }
}
