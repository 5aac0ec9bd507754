// What the system still has to call in a module's file: timers, hooks, threads, window classes. The system has no list
// of them to look through, so a module that is loaded has its imports bent to functions that take notes and call the
// real ones. What a module starts while its file is being loaded, or through a pointer from GetProcAddress, is not
// seen.
#pragma once

#include <windows.h>

namespace standin {

/// From now on the file's own calls are noted; once is enough for as long as the file stays in memory.
void watchCalls(HMODULE file);

/// Whether the address is that of code or data of the file.
bool liesIn(const void* address, HMODULE file);

struct LeftInSystem
{
    int timers = 0;
    int hooks = 0;
    int windowClasses = 0;
};
/// All that is noted of the files that are watched, window classes left out.
LeftInSystem presentCalls();
/// Ends what calls into the file, and how much of it there was.
LeftInSystem endCallsInto(HMODULE file);

struct StillRunning
{
    int threads = 0;    // that run the file's code
    int references = 0; // to the file that its own code took and has not given back, so that it stays in memory
};
/// As of one moment: a thread's end takes one of both.
StillRunning stillRunningIn(HMODULE file);

} // namespace standin
