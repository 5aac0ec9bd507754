#include "workerlink/WorkerRunResult.h"

#include <utility>

WorkerRunResult::~WorkerRunResult()
{
    CloseHandles();
    operator delete(reply);
}

WorkerRunResult::WorkerRunResult(WorkerRunResult&& other) noexcept
    : reply(std::exchange(other.reply, nullptr)), replySize(other.replySize), errorText(std::move(other.errorText)),
      ok(other.ok), process(std::exchange(other.process, INVALID_HANDLE_VALUE)),
      thread(std::exchange(other.thread, INVALID_HANDLE_VALUE)), processId(other.processId), threadId(other.threadId)
{}

void WorkerRunResult::CloseHandles()
{
    for (HANDLE* handle : {&process, &thread}) {
        if (*handle != INVALID_HANDLE_VALUE)
            CloseHandle(*handle);
        *handle = INVALID_HANDLE_VALUE;
    }
}
