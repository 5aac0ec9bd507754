#include "workerlink/CMemMapWatch.h"

#include <memory>

#include "workerlink/MemMapNames.h"

CMemMapWatch::~CMemMapWatch()
{
    LetGo();
}

HANDLE CMemMapWatch::Start(CMemMapWatch* watch)
{
    // Suspended, as the thread object is freed with the thread: its handle has to be read before the thread can end.
    CWinThread* thread = AfxBeginThread(ThreadProc, watch, THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED);
    if (thread == nullptr) {
        delete watch;
        return nullptr;
    }
    const HANDLE handle = thread->m_hThread;
    thread->ResumeThread();
    return handle;
}

UINT CMemMapWatch::ThreadProc(LPVOID parameter)
{
    const std::unique_ptr<CMemMapWatch> watch(static_cast<CMemMapWatch*>(parameter));
    watch->WaitForReader();
    watch->LetGo();
    watch->SignalDone();
    return 0;
}

// Whether the reader came or the time ran out is the same to what follows. A took-it semaphore that could not be made
// signals nothing; the block stays its whole time for a reader even then.
void CMemMapWatch::WaitForReader()
{
    if (semaphore->handle != nullptr)
        semaphore->Wait(waitMs);
    else
        Sleep(waitMs);
}

void CMemMapWatch::LetGo()
{
    if (mapping != nullptr)
        CloseHandle(mapping);
    mapping = nullptr;
    delete semaphore;
    semaphore = nullptr;
}

// Opened, not created: a reader that waits has made the semaphore before it took the block.
void CMemMapWatch::SignalDone()
{
    CMemMapSemaphore done;
    if (done.Open(DoneName(id, name, global), false))
        done.SignalLocked();
}
