#include "imaging/paste.h"

#include "imaging/bits.h"
#include "imaging/parallel.h"

namespace imaging {

void paste(Bitmap& target, const Bitmap& source, Point at, PasteMode mode)
{
    const Rect place = Rect::of(at, source.size()).intersect(target.bounds());
    if (place.empty())
        return;
    const std::ptrdiff_t sourceWords = source.wordsPerRow();
    inParallel(place.height(), rowsWorthACore(place.width() / 64), [&](int begin, int end) {
        for (int y = place.top + begin; y < place.top + end; ++y) {
            std::uint64_t* to = target.row(y);
            const std::uint64_t* from = source.row(y - at.y);
            forEachWord(place.left, place.right, [&](std::ptrdiff_t i, std::uint64_t mask) {
                const std::uint64_t pixels = pixelsAt(from, sourceWords, i * 64 - at.x) & mask;
                to[i] = mode == PasteMode::transparent ? to[i] | pixels : (to[i] & ~mask) | pixels;
            });
        }
    });
}

} // namespace imaging
