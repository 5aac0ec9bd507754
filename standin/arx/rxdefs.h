// Messages between the host and a module's entry point.
#pragma once

#include "standin/arx/adesk.h"

struct AcRx
{
    enum AppMsgCode
    {
        kNullMsg = 0,
        kInitAppMsg = 1,
        kUnloadAppMsg = 2,
        kLoadDwgMsg = 3,
        kUnloadDwgMsg = 4,
        kInvkSubrMsg = 5,
        kCfgMsg = 6,
        kEndMsg = 7,
        kQuitMsg = 8,
        kSaveMsg = 9
    };

    enum AppRetCode
    {
        kRetOK = 0,
        kRetError = 3
    };
};

/// The module defines and exports this one; the argument is the application id in kInitAppMsg and kUnloadAppMsg.
extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* applicationId);
