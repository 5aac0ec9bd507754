#include "imaging/despeckle.h"

#include "imaging/small_groups.h"

namespace imaging {

void despeckle(Bitmap& bitmap, int side, const Region* region)
{
    removeSmallGroups(bitmap, GroupsOf::ink, side, region);
}

void fillHoles(Bitmap& bitmap, int side, const Region* region)
{
    removeSmallGroups(bitmap, GroupsOf::paper, side, region);
}

} // namespace imaging
