#pragma once

#include "imaging/bitmap.h"

namespace imaging {

/// Swaps left and right.
void mirrorHorizontal(Bitmap& bitmap);

/// Swaps top and bottom.
void mirrorVertical(Bitmap& bitmap);

/// Both: a turn by 180 degrees.
void turnHalf(Bitmap& bitmap);

} // namespace imaging
