#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"

namespace imaging {

/// A copy of the rectangle, which may reach beyond the bitmap: there is paper.
Bitmap extract(const Bitmap& bitmap, const Rect& rect);

/// A copy of the box around what of the region lies inside the bitmap, with paper outside the region; empty when
/// nothing of it does.
Bitmap crop(const Bitmap& bitmap, const Region& region);

} // namespace imaging
