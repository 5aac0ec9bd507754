#pragma once

#include "workerlink/WorkerRunResult.h"

/// Starts one worker process and ends it if it has to be ended. The process's handles lie in the run's result, which
/// owns them.
class WorkerProcess
{
public:
    explicit WorkerProcess(WorkerRunResult& result) : m_result(result) {}
    virtual ~WorkerProcess() = default;
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// With a console and no visible window, on the user's desktop. False, with `lastError` set, when it did not start.
    bool Start(const CString& workerPath, DWORD transferNumber);

    bool IsAlive() const;

    /// Asks a process that still runs to leave, kills it (exit code 1) when it does not, and closes its handles.
    void ShutDown();

    DWORD lastError = 0;

private:
    WorkerRunResult& m_result;
};
