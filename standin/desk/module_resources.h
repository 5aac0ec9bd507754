#pragma once

#include <windows.h>
#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/geometry.h"

namespace desk::script {

/// A picture of one of the loaded modules' resources, 0x00RRGGBB, rows from the top.
struct ResourcePicture
{
    imaging::Size size;
    std::vector<std::uint32_t> pixels;
};

/// Of the first loaded module that has a bitmap of that number; nothing if none has.
std::optional<ResourcePicture> moduleBitmap(int number);

/// Shared: it is not to be destroyed, and goes with its module. Null if no loaded module has a cursor of that number.
HCURSOR moduleCursor(int number);

} // namespace desk::script
