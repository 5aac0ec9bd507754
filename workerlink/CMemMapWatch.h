#pragma once

#include "workerlink/CMemMapSemaphore.h"

/// What keeps a published block alive until its reader has it: the publisher's mapping, handed to a thread of its own.
/// The thread owns this object and everything in it, touches nothing else and frees it at its end. Its steps stand in
/// CMemMap.h. It can outlast whoever published the block, so it keeps the file that its code stands in loaded until it
/// ends.
class CMemMapWatch
{
public:
    CMemMapWatch() = default;
    virtual ~CMemMapWatch();
    CMemMapWatch(const CMemMapWatch&) = delete;
    CMemMapWatch& operator=(const CMemMapWatch&) = delete;

    /// Starts the thread, which takes the watch over. Null when no thread could be started: the block is then let go.
    /// The handle is valid as long as the thread runs, which is not before its reader has taken the block or
    /// `waitMs` has passed.
    static HANDLE Start(CMemMapWatch* watch);

    /// Lets every block go that still waits for its reader: nobody will come any more. Called when none is published.
    static void WakeAll();

    DWORD id = 0;
    CString name;
    HANDLE mapping = nullptr; // owned
    HMODULE file = nullptr;   // of this code, one reference of its own
    DWORD waitMs = 0;
    CMemMapSemaphore* semaphore = nullptr; // took-it, owned
    bool global = false;                   // nobody sets it: all names stay in the session's own namespace

private:
    static UINT ThreadProc(LPVOID parameter);
    void WaitForReader() const;
    void LetGo();
    void SignalDone();
};
