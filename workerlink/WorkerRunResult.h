#pragma once

#include "platform/platform.h"

/// What one run of the worker gave. Owns the reply and the handles of the process; movable, not copyable.
class WorkerRunResult
{
public:
    WorkerRunResult() = default;
    virtual ~WorkerRunResult();
    WorkerRunResult(WorkerRunResult&& other) noexcept;
    WorkerRunResult& operator=(WorkerRunResult&&) = delete;
    WorkerRunResult(const WorkerRunResult&) = delete;
    WorkerRunResult& operator=(const WorkerRunResult&) = delete;

    /// Closes what is open of the process's handles and sets them to -1.
    void CloseHandles();

    BYTE* reply = nullptr; // from operator new, or null
    DWORD replySize = 0;
    CString errorText; // why the run failed, for whoever debugs it; may be empty on failure too
    bool ok = false;   // the worker signalled success

    // The process that was started; -1 for handles that are not open.
    HANDLE process = INVALID_HANDLE_VALUE;
    HANDLE thread = INVALID_HANDLE_VALUE;
    DWORD processId = 0;
    DWORD threadId = 0;
};
