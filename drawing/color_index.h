#pragma once

#include <cstdint>

#include "drawing/document.h"

namespace drawing {

struct Rgb
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    bool operator==(const Rgb&) const = default;
};

/// The colour of an index 1 to 255 of the standard table; 7 is white here, and shown black on a white ground by whoever
/// draws it. Any other index gives what 7 gives.
Rgb rgbOfIndex(int index);

} // namespace drawing
