#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"

namespace imaging {

/// Removes every group of ink that fits in a square of `side` pixels. Pixels that touch at an edge or a corner belong
/// to one group. With a region a group goes only if all of it lies inside; it counts whole, also where the region's
/// edge cuts it. A side below 1 removes nothing.
void despeckle(Bitmap& bitmap, int side, const Region* region = nullptr);

/// Makes ink of every group of paper that ink encloses and that fits in a square of `side` pixels. Paper pixels that
/// touch at an edge belong to one group; paper at the bitmap's border is not enclosed. The region counts as above.
void fillHoles(Bitmap& bitmap, int side, const Region* region = nullptr);

} // namespace imaging
