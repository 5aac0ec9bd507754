#include "imaging/crop.h"

#include "imaging/fill.h"
#include "imaging/paste.h"

namespace imaging {

Bitmap extract(const Bitmap& bitmap, const Rect& rect)
{
    if (rect.empty())
        return Bitmap();
    Bitmap result(rect.size());
    paste(result, bitmap, {-rect.left, -rect.top}, PasteMode::opaque);
    return result;
}

Bitmap crop(const Bitmap& bitmap, const Region& region)
{
    const Region inside = intersect(region, Region(bitmap.bounds()));
    Bitmap result = extract(bitmap, inside.box());
    Region outside = subtract(Region(inside.box()), inside);
    outside.offset(-inside.box().left, -inside.box().top);
    fill(result, outside, false);
    return result;
}

} // namespace imaging
