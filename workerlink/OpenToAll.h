#pragma once

#include "platform/platform.h"

/// Lets any process open the kernel object, whichever user it runs as: gives it a null DACL. Returns 0 or the system's
/// error code.
DWORD OpenToAll(HANDLE object);
