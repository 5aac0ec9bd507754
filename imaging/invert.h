#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"

namespace imaging {

/// Makes ink paper and paper ink: everywhere, or inside the region.
void invert(Bitmap& bitmap, const Region* region = nullptr);

} // namespace imaging
