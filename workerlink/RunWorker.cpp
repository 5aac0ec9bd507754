#include "workerlink/RunWorker.h"

#include "workerlink/CMemMap.h"
#include "workerlink/LinkLimits.h"
#include "workerlink/WorkerHandshake.h"
#include "workerlink/WorkerProcess.h"

namespace {

// How a run that began to work came to its end.
enum class WorkEnd
{
    Ready,
    ProcessEnded,
    TimedOut,
};

WorkEnd FollowWork(CMemMapSemaphore& ready, const WorkerProcess& process)
{
    const LinkLimits& limits = CurrentLinkLimits();
    const DWORD begun = GetTickCount();
    for (;;) {
        if (ready.Wait(limits.readyPoll))
            return WorkEnd::Ready;
        if (!process.IsAlive())
            return WorkEnd::ProcessEnded;
        if (GetTickCount() - begun > limits.workerRun)
            return WorkEnd::TimedOut;
    }
}

void TakeReply(WorkerRunResult& result, DWORD transferNumber)
{
    CMemMap reply(transferNumber, L"");
    if (reply.data == nullptr)
        return;
    result.reply = reply.data;
    result.replySize = reply.size;
    reply.data = nullptr;
}

} // namespace

WorkerRunResult RunWorker(const CString& workerPath, const BYTE* requestBytes, DWORD requestSize)
{
    WorkerRunResult result;
    // A request that can't be published has the number 0; the worker then finds no block and says so.
    const CMemMap request(requestBytes, requestSize, L"");
    WorkerHandshake handshake(request.id, true);
    WorkerProcess process(result);
    if (!process.Start(workerPath, request.id)) {
        result.errorText.Format(L"Can't start '%s'", static_cast<LPCWSTR>(workerPath));
        return result;
    }
    const bool working = handshake.working.Wait(CurrentLinkLimits().workerStart);
    const WorkEnd end = working ? FollowWork(handshake.ready, process) : WorkEnd::TimedOut;
    if (working && end != WorkEnd::Ready)
        process.ShutDown();

    // Tested once: a worker that signals OK after READY has failed. One that signalled OK and then died has not, though
    // there is no reply to show for it.
    result.ok = handshake.ok.Wait(0);
    if (end == WorkEnd::Ready)
        TakeReply(result, request.id);
    if (result.ok || end == WorkEnd::Ready)
        return result;

    LPCWSTR text = L"The process '%s' never started up correctly";
    if (end == WorkEnd::ProcessEnded) {
        text = L"The process '%s' ended premature";
    } else if (working) {
        text = L"The process '%s' timed out";
    }
    result.errorText.Format(text, static_cast<LPCWSTR>(workerPath));
    return result;
}
