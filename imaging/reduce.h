#pragma once

#include "imaging/bitmap.h"

namespace imaging {

/// Whether both sides of the source are the same power of two, from 2 to 8, times those of the target.
bool reducesByPowerOfTwo(Size source, Size target);

/// Fills the target, which has such a size, with the source reduced: ink where at least half of a block is ink.
void reduceByPowerOfTwo(const Bitmap& source, Bitmap& target);

} // namespace imaging
