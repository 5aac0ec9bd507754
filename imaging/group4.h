#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "imaging/bitmap.h"

// CCITT group 4 streams, the form in which TIFF strips and CALS files hold their pixels: most significant bit first,
// rows relative to the row above, a white row above the first, an end-of-block mark behind the last.

namespace imaging {

std::vector<std::uint8_t> encodeGroup4(const Bitmap& bitmap, int firstRow, int rowCount);

/// Fills rowCount whole rows of the bitmap, padding included. With inverted, what the stream calls white is ink. Throws
/// ImagingError unless the stream holds that many rows without fault; bytes behind them don't matter. Rows of one
/// bitmap may be decoded from several threads at once.
void decodeGroup4(std::span<const std::uint8_t> stream, Bitmap& bitmap, int firstRow, int rowCount, bool inverted);

} // namespace imaging
