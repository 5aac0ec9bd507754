#include "workerlink/CMemMapSemaphore.h"

#include "workerlink/LinkLimits.h"
#include "workerlink/OpenToAll.h"

CMemMapSemaphore::~CMemMapSemaphore()
{
    Close();
}

bool CMemMapSemaphore::Open(LPCWSTR semaphoreName, bool create)
{
    lstrcpynW(name, semaphoreName, ARRAYSIZE(name));
    Close();
    if (create)
        return Create();
    handle = OpenSemaphoreW(SEMAPHORE_ALL_ACCESS, FALSE, name);
    existed = handle != nullptr;
    return handle != nullptr;
}

bool CMemMapSemaphore::Create()
{
    handle = CreateSemaphoreW(nullptr, 0, 1, name);
    existed = GetLastError() == ERROR_ALREADY_EXISTS;
    if (handle == nullptr)
        return false;
    while (!existed && Wait(0)) {
    }
    if (OpenToAll(handle) != ERROR_SUCCESS) {
        Close();
        return false;
    }
    return true;
}

void CMemMapSemaphore::Lock()
{
    Unlock();
    const CString lockName = CString(name) + L"_LOCK";
    lock = OpenSemaphoreW(SEMAPHORE_ALL_ACCESS, FALSE, lockName);
    if (lock != nullptr) {
        // Whether the lock came or the time ran out: a signal that is late is worse than two signallers that meet.
        WaitForSingleObject(lock, CurrentLinkLimits().signalLock);
        return;
    }
    // A count of 0 means held: the lock's creator has it from the start.
    lock = CreateSemaphoreW(nullptr, 0, 1, lockName);
}

void CMemMapSemaphore::Unlock()
{
    if (lock == nullptr)
        return;
    ReleaseSemaphore(lock, 1, nullptr);
    CloseHandle(lock);
    lock = nullptr;
}

void CMemMapSemaphore::Signal()
{
    ReleaseSemaphore(handle, 1, nullptr);
}

void CMemMapSemaphore::SignalLocked()
{
    Lock();
    Signal();
    Unlock();
}

bool CMemMapSemaphore::Wait(DWORD milliseconds)
{
    return WaitForSingleObject(handle, milliseconds) == WAIT_OBJECT_0;
}

void CMemMapSemaphore::Close()
{
    if (lock != nullptr)
        CloseHandle(lock);
    lock = nullptr;
    if (handle != nullptr)
        CloseHandle(handle);
    handle = nullptr;
}
