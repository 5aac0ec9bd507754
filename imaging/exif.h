#pragma once

#include <cstdint>
#include <span>

#include "imaging/orientation.h"
#include "imaging/raster_file.h"

namespace imaging {

/// What a camera or a scanner says in an EXIF block about the picture that it comes with.
struct Exif
{
    Orientation orientation = Orientation::TopLeft;
    Resolution resolution;
};

/// Takes the block from its TIFF header on. What is missing or makes no sense is left as it is in a fresh Exif: such a
/// block is an extra, without which the picture is still whole.
Exif parseExif(std::span<const std::uint8_t> block);

} // namespace imaging
