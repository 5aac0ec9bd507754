#pragma once

#include "platform/platform.h"

/// How long each side of the link waits, in milliseconds. The values are the shipped ones; tests shorten them.
struct LinkLimits
{
    DWORD publishedBlock = 30000; // a published block waits for its reader
    DWORD blockLetGo = 10000;     // a reader waits for the publisher to let its block go
    DWORD signalLock = 100;       // one signaller waits for another
    DWORD workerStart = 30000;    // from the process's start to WORKING
    DWORD readyPoll = 100;        // one look at READY
    DWORD workerRun = 120000;     // from WORKING to READY
    DWORD workerLeave = 5000;     // from WM_QUIT to the process's end
    DWORD secondAttempt = 30000;  // a first attempt that took longer is not repeated
};

/// The limits in force in this process.
LinkLimits& CurrentLinkLimits();
