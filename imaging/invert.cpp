#include "imaging/invert.h"

#include "imaging/bits.h"
#include "imaging/parallel.h"

namespace imaging {

namespace {

void invert(Bitmap& bitmap, const Rect& rect)
{
    const Rect inside = rect.intersect(bitmap.bounds());
    if (inside.empty())
        return;
    inParallel(inside.height(), rowsWorthACore(inside.width() / 64), [&](int begin, int end) {
        for (int y = inside.top + begin; y < inside.top + end; ++y) {
            std::uint64_t* row = bitmap.row(y);
            forEachWord(inside.left, inside.right, [row](std::ptrdiff_t i, std::uint64_t mask) { row[i] ^= mask; });
        }
    });
}

} // namespace

void invert(Bitmap& bitmap, const Region* region)
{
    if (!region) {
        invert(bitmap, bitmap.bounds());
        return;
    }
    for (const Rect& rect : region->rects())
        invert(bitmap, rect);
}

} // namespace imaging
