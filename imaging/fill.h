#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"

namespace imaging {

/// Makes the pixels all ink or all paper; what lies outside the bitmap is left out.
void fill(Bitmap& bitmap, const Rect& rect, bool ink);
void fill(Bitmap& bitmap, const Region& region, bool ink);

} // namespace imaging
