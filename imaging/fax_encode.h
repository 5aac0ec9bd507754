#pragma once

#include "imaging/bitmap.h"
#include "imaging/byte_stream.h"

namespace imaging {

/// Appends the rows to the sink, as they are coded, as one stream of group 4: the row above the first one is paper, the
/// end-of-block mark behind the last. Throws ImagingError when it gets longer than what can be read again.
void encodeGroup4(const Bitmap& bitmap, int firstRow, int rowCount, ByteSink& sink);

} // namespace imaging
