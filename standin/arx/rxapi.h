// The version handshake between the host and a module.
#pragma once

#include "standin/arx/adesk.h"

namespace standin {
inline constexpr unsigned long apiVersionMajor = 19;
inline constexpr unsigned long apiVersionMinor = 0;
} // namespace standin

/// The host's link library supplies this function to every module, which exports it. The stand-in supplies
/// rx_api_version.cpp, which a module compiles in.
extern "C" int acrxGetApiVersion(unsigned long* major, unsigned long* minor);
