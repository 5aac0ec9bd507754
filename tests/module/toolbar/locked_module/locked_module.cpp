// A module by the name of ours that does not ask to be unlocked.
#include "standin/arx/arx.h"

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode, void*)
{
    return AcRx::kRetOK;
}
