// HVV6.exe NUMBER: serves one request of the module and ends. The main thread only listens for WM_QUIT; the work runs
// on a thread of its own.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <memory>

#include "worker/exchange.h"

namespace {

struct Work
{
    DWORD transferNumber = 0;
    worker::CommitGate gate;
    int exitCode = worker::ExitRefused;
};

UINT serve(LPVOID parameter)
{
    Work& work = *static_cast<Work*>(parameter);
    work.exitCode = worker::serveExchange(work.transferNumber, work.gate);
    return 0;
}

bool readNumber(const wchar_t* text, DWORD& number)
{
    wchar_t* end = nullptr;
    errno = 0;
    const unsigned long long value = std::wcstoull(text, &end, 10);
    if (text[0] < L'0' || text[0] > L'9' || *end != L'\0' || errno != 0 || value > std::numeric_limits<DWORD>::max())
        return false;
    number = static_cast<DWORD>(value);
    return true;
}

bool toldToQuit()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT)
            return true;
    }
    return false;
}

// At once, in the middle of whatever the working thread does, but for the writing of a file. Not by way of the exit
// handlers: they would meet locks that the working thread holds.
[[noreturn]] void leave(worker::CommitGate& gate)
{
    gate.close();
    TerminateProcess(GetCurrentProcess(), worker::ExitToldToLeave);
    std::abort();
}

} // namespace

int wmain(int argumentCount, wchar_t** arguments)
{
    Work work;
    if (argumentCount != 2 || !readNumber(arguments[1], work.transferNumber)) {
        std::fputs("HVV6 serves one request of the drawing module, whose number is its only argument.\n", stderr);
        return worker::ExitBadCommand;
    }
    const std::unique_ptr<CWinThread> thread(AfxBeginThread(serve, &work, THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED));
    if (!thread) {
        std::fputs("The worker could not start its thread.\n", stderr);
        return worker::ExitRefused;
    }
    thread->m_bAutoDelete = FALSE; // the handle is waited for
    thread->ResumeThread();
    // The first look makes this thread's message queue, which takes longer than all before it: the work does not wait
    // for it. A module that wants the worker to leave before that is refused its message, and ends the process itself.
    if (toldToQuit())
        leave(work.gate);
    while (MsgWaitForMultipleObjects(1, &thread->m_hThread, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        if (toldToQuit())
            leave(work.gate);
    }
    return work.exitCode;
}
