#pragma once

#include "imaging/bitmap.h"
#include "imaging/fax_stream.h"

namespace imaging {

/// How the rows of a stream are coded.
enum class FaxCoding
{
    Group4,
    Group3OneDimensional,
    Group3TwoDimensional
};

/// Fills rowCount whole rows of the bitmap, padding included. With inverted, what the stream calls white is ink. Throws
/// ImagingError unless the stream holds that many rows without fault; bytes behind them don't matter. Rows of one
/// bitmap may be decoded from several threads at once.
void decodeFax(const FaxStream& stream, FaxCoding coding, Bitmap& bitmap, int firstRow, int rowCount, bool inverted);

} // namespace imaging
