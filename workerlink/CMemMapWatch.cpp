#include "workerlink/CMemMapWatch.h"

#include <memory>

#include "workerlink/MemMapNames.h"

CMemMapWatch::~CMemMapWatch()
{
    LetGo();
}

namespace {

// Set from WakeAll to the next block. Lives as long as the file that this code stands in, and so longer than its
// threads.
class WakeEvent
{
public:
    WakeEvent() : m_hEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
    ~WakeEvent() { CloseHandle(m_hEvent); }
    WakeEvent(const WakeEvent&) = delete;
    WakeEvent& operator=(const WakeEvent&) = delete;

    HANDLE Get() const { return m_hEvent; }

private:
    HANDLE m_hEvent;
};

HANDLE TheWakeEvent()
{
    static const WakeEvent event;
    return event.Get();
}

HMODULE HoldThisFile()
{
    HMODULE file = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&TheWakeEvent), &file);
    return file;
}

} // namespace

void CMemMapWatch::WakeAll()
{
    SetEvent(TheWakeEvent());
}

HANDLE CMemMapWatch::Start(CMemMapWatch* watch)
{
    ResetEvent(TheWakeEvent());
    watch->file = HoldThisFile();
    // Suspended, as the thread object is freed with the thread: its handle has to be read before the thread can end.
    CWinThread* thread = AfxBeginThread(ThreadProc, watch, THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED);
    if (thread == nullptr) {
        FreeLibrary(watch->file);
        delete watch;
        return nullptr;
    }
    const HANDLE handle = thread->m_hThread;
    thread->ResumeThread();
    return handle;
}

UINT CMemMapWatch::ThreadProc(LPVOID parameter)
{
    std::unique_ptr<CMemMapWatch> watch(static_cast<CMemMapWatch*>(parameter));
    watch->WaitForReader();
    watch->LetGo();
    watch->SignalDone();
    const HMODULE file = watch->file;
    watch.reset();
    // With its own reference this code may go: there is no way back into it, so the thread's object is freed here.
    AfxGetThread()->Delete();
    FreeLibraryAndExitThread(file, 0);
}

// Whether the reader came, the time ran out or the wait was called off is the same to what follows. A took-it semaphore
// that could not be made signals nothing; the block stays its whole time for a reader even then.
void CMemMapWatch::WaitForReader() const
{
    const HANDLE events[] = {TheWakeEvent(), semaphore->handle};
    WaitForMultipleObjects(semaphore->handle != nullptr ? 2 : 1, events, FALSE, waitMs);
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
