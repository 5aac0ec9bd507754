#include "imaging/fill.h"

#include "imaging/bits.h"

namespace imaging {

void fill(Bitmap& bitmap, const Rect& rect, bool ink)
{
    const Rect inside = rect.intersect(bitmap.bounds());
    for (int y = inside.top; y < inside.bottom; ++y)
        setSpan(bitmap.row(y), inside.left, inside.right, ink);
}

void fill(Bitmap& bitmap, const Region& region, bool ink)
{
    for (const Rect& rect : region.rects())
        fill(bitmap, rect, ink);
}

} // namespace imaging
