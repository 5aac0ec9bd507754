#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "imaging/bitmap.h"
#include "imaging/raster_file.h"

// Device-independent bitmaps in memory: a BMP file without its file header, the form that the clipboard carries.

namespace imaging {

/// Any uncompressed depth; ink where darker than half, in a 1-bit image the darker of its two colours. Throws
/// ImagingError when the bytes are not a whole DIB.
Bitmap readDib(std::span<const std::byte> dib);

/// 1 bit per pixel, bottom row first, black ink on white paper.
std::vector<std::byte> writeDib(const Bitmap& bitmap, Resolution resolution);

} // namespace imaging
