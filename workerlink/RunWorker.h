#pragma once

#include "workerlink/WorkerRunResult.h"

// One request, one worker process. The request and the reply are blocks of the channel in CMemMap.h under one number;
// three more semaphores, made by the module (count 0 or 1, beginning at 0), say how far the worker has come:
//
//   WORKING_<id>   it has the request               waited for, up to 30 s from the start
//   OK_<id>        the operation succeeded          tested once, right after READY
//   READY_<id>     the reply is published           looked at every 100 ms, up to 120 s from WORKING
//
//      Module                                             Worker: HVV6.exe <id>
//   1  publishes the request, its number chosen
//   2  makes WORKING, READY, OK
//   3  starts the worker, waits for WORKING
//   4  (its watch thread lets the request go)             reads the block <id>: no object of it is left after that
//   5                                                     opens the three semaphores, signals WORKING
//   6  polls READY, looks whether the worker lives        works on the files that the record names
//   7                                                     publishes the reply under the name "<id>"; on success
//                                                         signals OK; then READY
//   8  tests OK, reads the block <id>                     (its watch thread lets the reply go)
//   9  closes the semaphores                              leaves when that thread has ended
//
// The run's states:
//
//   Launching   no process                -> Failed  "Can't start '%s'"
//               process started           -> Starting
//   Starting    WORKING within 30 s       -> Working
//               30 s pass                 -> Failed  "The process '%s' never started up correctly", process left alone
//   Working     READY                     -> Reading
//               the process has ended     -> Failed  "The process '%s' ended premature"
//               120 s pass                -> Failed  "The process '%s' timed out", process stopped
//   Reading     OK, and a block came      -> Done
//               otherwise                 -> Failed, without a text
//
// A worker that can't do what it is asked signals READY without OK. One that is no longer wanted gets WM_QUIT with
// wParam 1 at its main thread and has 5 s to leave.

/// Blocks until the outcome is known: at most 30 s and 120 s and the 10 s of reading the reply. Pumps no messages.
WorkerRunResult RunWorker(const CString& workerPath, const BYTE* requestBytes, DWORD requestSize);
