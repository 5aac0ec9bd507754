// What the host's link library puts into every module: the version of the API that the module was built against.
// A module compiles this file in; it is no part of the stand-in's library.
#include "standin/arx/rxapi.h"

extern "C" int acrxGetApiVersion(unsigned long* major, unsigned long* minor)
{
    *major = standin::apiVersionMajor;
    *minor = standin::apiVersionMinor;
    return 1;
}
