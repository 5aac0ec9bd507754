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
    Bitmap result = extract(bitmap, region.box());
    Region outside = subtract(Region(region.box()), region);
    outside.offset(-region.box().left, -region.box().top);
    fill(result, outside, false);
    return result;
}

} // namespace imaging
