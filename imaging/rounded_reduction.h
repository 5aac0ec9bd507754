#pragma once

#include "imaging/bitmap.h"
#include "imaging/resample_axis.h"

namespace imaging {

/// Whether both directions shrink to a half or both to a fourth, rounded up or down where two or four do not divide
/// them, and this processor has the means to do so quickly.
bool reducesToRoundedPart(const ResampleAxis& columns, const ResampleAxis& rows);

/// Fills the target, which has such a size, with the source reduced: ink where at least half of the area is ink that a
/// pixel covers, parts of source pixels counted as such.
void reduceToRoundedPart(const Bitmap& source, Bitmap& target, const ResampleAxis& columns, const ResampleAxis& rows);

} // namespace imaging
