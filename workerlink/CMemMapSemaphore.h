#pragma once

#include "platform/platform.h"

/// One named semaphore with a count of 0 or 1, and the lock that keeps two signallers of it apart.
class CMemMapSemaphore
{
public:
    CMemMapSemaphore() = default;
    /// Closes; signals nothing and does not release a lock.
    virtual ~CMemMapSemaphore();
    CMemMapSemaphore(const CMemMapSemaphore&) = delete;
    CMemMapSemaphore& operator=(const CMemMapSemaphore&) = delete;

    /// Makes the semaphore, with no signal pending when it is new and open to every user, or opens one that is there.
    /// False when it can't be had; `handle` is then null.
    bool Open(LPCWSTR semaphoreName, bool create);

    /// Takes the semaphore's signal lock, waiting for it for a moment only: a courtesy between signallers, not a
    /// guarantee.
    void Lock();
    void Unlock();

    /// Adds the one signal that the semaphore holds.
    void Signal();

    /// Lock, Signal, Unlock.
    void SignalLocked();

    /// True when a signal came within the time; it is then used up.
    bool Wait(DWORD milliseconds);

    void Close();

    HANDLE handle = nullptr;
    HANDLE lock = nullptr; // while it is held
    WCHAR name[260] = {};
    bool existed = false; // it was there before it was created, or it was opened

private:
    bool Create();
};
