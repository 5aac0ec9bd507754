#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"

namespace imaging {

enum class GroupsOf
{
    ink,  // joined at edges and corners
    paper // joined at edges; a group that reaches the bitmap's border is never removed
};

/// Turns every group that fits in a square of `side` pixels into its opposite. See despeckle.h for the region.
void removeSmallGroups(Bitmap& bitmap, GroupsOf kind, int side, const Region* region);

} // namespace imaging
