#pragma once

#include "platform/platform.h"
#include "worker/engine/commit_gate.h"

namespace worker {

/// What the process tells its caller by its exit code.
enum ExitCode
{
    ExitDone = 0,        // the request was done and the reply was taken
    ExitToldToLeave = 1, // WM_QUIT with 1 is the usual way to say so
    ExitRefused = 2,     // the request came, and could not be done
    ExitNoModule = 3,    // nobody waits under the number
    ExitBadCommand = 4,
};

/// The worker's side of one exchange under the number, from reading the request to the end of the reply's transfer. The
/// order of its steps is told in workerlink/RunWorker.h. Returns the process's exit code.
int serveExchange(DWORD transferNumber, CommitGate& gate);

} // namespace worker
