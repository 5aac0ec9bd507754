#pragma once

#include "imaging/bitmap.h"
#include "imaging/raster_file.h"

namespace imaging {

/// Where a file's first row and first column lie in the image as seen. The values are those of the TIFF orientation
/// tag.
enum class Orientation
{
    TopLeft = 1,
    TopRight = 2,
    BottomRight = 3,
    BottomLeft = 4,
    LeftTop = 5, // the first row is the image's left edge, the first column its top edge
    RightTop = 6,
    RightBottom = 7,
    LeftBottom = 8,
};

/// Whether rows of the file are columns of the image as seen.
bool swapsAxes(Orientation orientation);

/// A stored image's size and resolution as seen.
void makeUpright(RasterInfo& info, Orientation orientation);

Bitmap upright(Bitmap stored, Orientation orientation);

} // namespace imaging
