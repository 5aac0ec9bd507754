#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"
#include "imaging/small_groups.h"

namespace imaging {

/// The largest side of the square in which groups must fit for removeSpecks().
constexpr int largestSpeck = 31;

/// Turns every group that fits in a square of `side` pixels, and whose first row is one of those from top up to,
/// without, bottom, into its opposite. Reads from the row above to `side` rows below them.
void removeSpecks(Bitmap& bitmap, GroupsOf kind, int side, const Region* region, int top, int bottom);

} // namespace imaging
