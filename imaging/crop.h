#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"

namespace imaging {

/// A copy of the rectangle, which may reach beyond the bitmap: there is paper.
Bitmap extract(const Bitmap& bitmap, const Rect& rect);

/// A copy of the region's box in which the pixels outside the region are paper.
Bitmap crop(const Bitmap& bitmap, const Region& region);

} // namespace imaging
