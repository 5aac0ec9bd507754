// What a program holds of the operating system's: hooks, timers, windows, graphics objects, handles.
#pragma once

#include <windows.h>
#include <ostream>

namespace test {

// While it lives, the calls of this program's own code (not of the libraries that it is linked to) that set and remove
// hooks and timers are noted on their way to the operating system, which has to agree to each removal. One at a time.
class HookAndTimerWatch
{
public:
    HookAndTimerWatch();
    ~HookAndTimerWatch();
    HookAndTimerWatch(const HookAndTimerWatch&) = delete;
    HookAndTimerWatch& operator=(const HookAndTimerWatch&) = delete;

    // That were set while this object lived, and not removed.
    static int hooks();
    static int threadTimers(); // those without a window
};

// While it lives, this program's own code gets its time from a clock that runs on by 25 ms each time that it is looked
// at, so that what waits for a time to pass does not wait long.
class HastyClock
{
public:
    HastyClock();
    ~HastyClock();
    HastyClock(const HastyClock&) = delete;
    HastyClock& operator=(const HastyClock&) = delete;
};

// How many there are now.
struct HeldObjects
{
    static HeldObjects now();

    int gdi = 0;     // bitmaps, brushes, regions, contexts ...
    int windows = 0; // top-level windows of this thread, tool tips among them
    int cursors = 0;
    int menus = 0;
    int handles = 0; // of the kernel: files, semaphores, processes ...

    bool operator==(const HeldObjects&) const = default;
};
std::ostream& operator<<(std::ostream& out, const HeldObjects& held);

// Tool tips of this thread, shown or not.
int toolTips();

} // namespace test
