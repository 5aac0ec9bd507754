#include "workerlink/WorkerProcess.h"

#include <string>

#include "workerlink/LinkLimits.h"

bool WorkerProcess::Start(const CString& workerPath, DWORD transferNumber)
{
    lastError = 0;
    CString text;
    text.Format(L"\"%s\" %lu", static_cast<LPCWSTR>(workerPath), transferNumber);
    std::wstring commandLine(text); // the system writes into it while it looks for the program
    WCHAR desktop[] = L"winsta0\\default";
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.lpDesktop = desktop;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NEW_CONSOLE | NORMAL_PRIORITY_CLASS,
                        nullptr, nullptr, &startup, &started)) {
        lastError = GetLastError();
        return false;
    }
    m_result.process = started.hProcess;
    m_result.thread = started.hThread;
    m_result.processId = started.dwProcessId;
    m_result.threadId = started.dwThreadId;
    return true;
}

bool WorkerProcess::IsAlive() const
{
    DWORD exitCode = 0;
    return m_result.process != INVALID_HANDLE_VALUE && GetExitCodeProcess(m_result.process, &exitCode) &&
           exitCode == STILL_ACTIVE;
}

void WorkerProcess::ShutDown()
{
    if (m_result.process == INVALID_HANDLE_VALUE)
        return;
    if (IsAlive()) {
        PostThreadMessageW(m_result.threadId, WM_QUIT, 1, 0);
        if (WaitForSingleObject(m_result.process, CurrentLinkLimits().workerLeave) == WAIT_TIMEOUT)
            TerminateProcess(m_result.process, 1);
    }
    m_result.CloseHandles();
}
