// The services of the desk that the stand-in was given.
#pragma once

#include "standin/host.h"

namespace standin {
/// Null while there is no desk.
DeskServices* deskServices();
} // namespace standin
