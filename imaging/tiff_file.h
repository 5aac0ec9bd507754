#pragma once

#include "imaging/byte_stream.h"
#include "imaging/raster_file.h"

namespace imaging {

/// The first page of a TIFF file.
RasterInfo inspectTiff(ByteSource& source);
RasterFile readTiff(ByteSource& source);

/// 1 bit per pixel, white is zero, upright, resolution in dots per inch.
void writeTiff(ByteSink& sink, const Bitmap& bitmap, Resolution resolution, Format format);

} // namespace imaging
