#pragma once

#include "module/base/CTempMFC.h"

/// Calls `Work` once, a while from now, from the main thread's message loop and with the module's resources current. A
/// thread timer without a window; one for each function.
template <void (*Work)()> class COneShotTimer
{
public:
    COneShotTimer() = delete;

    /// Begins anew if it runs already.
    static void Start(UINT milliseconds)
    {
        Stop();
        s_timer = SetTimer(nullptr, 0, milliseconds, TimerProc);
    }

    static void Stop()
    {
        if (s_timer)
            KillTimer(nullptr, s_timer);
        s_timer = 0;
    }

    static bool IsRunning() { return s_timer != 0; }

private:
    static void CALLBACK TimerProc(HWND, UINT, UINT_PTR timer, DWORD)
    {
        // It may have been stopped when its message was under way already.
        if (timer != s_timer)
            return;
        Stop();
        const CTempMFC resources;
        Work();
    }

    static inline UINT_PTR s_timer = 0;
};
