#include "imaging/mirror.h"

#include "imaging/bits.h"
#include "imaging/parallel.h"

#include <algorithm>
#include <vector>

namespace imaging {

namespace {

/// Writes a row in the opposite order to another place. Reversing the words of the whole row brings the padding to its
/// left end, so the pixels move left by the width of the padding on the way.
void reverseRow(const std::uint64_t* from, std::uint64_t* to, std::ptrdiff_t words, int width)
{
    const int padding = -width & 63;
    if (padding == 0) {
        for (std::ptrdiff_t i = 0; i < words; ++i)
            to[i] = reverseBits(from[words - 1 - i]);
        return;
    }
    std::uint64_t current = reverseBits(from[words - 1]);
    for (std::ptrdiff_t i = 0; i + 1 < words; ++i) {
        const std::uint64_t next = reverseBits(from[words - 2 - i]);
        to[i] = current << padding | next >> (64 - padding);
        current = next;
    }
    to[words - 1] = current << padding;
}

} // namespace

void mirrorHorizontal(Bitmap& bitmap)
{
    const std::ptrdiff_t words = bitmap.wordsPerRow();
    inParallel(bitmap.height(), rowsWorthACore(words), [&](int begin, int end) {
        std::vector<std::uint64_t> copy(std::size_t(words), 0);
        for (int y = begin; y < end; ++y) {
            std::copy_n(bitmap.row(y), words, copy.data());
            reverseRow(copy.data(), bitmap.row(y), words, bitmap.width());
        }
    });
}

void mirrorVertical(Bitmap& bitmap)
{
    const std::ptrdiff_t words = bitmap.wordsPerRow();
    inParallel(bitmap.height() / 2, rowsWorthACore(words), [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            std::swap_ranges(bitmap.row(y), bitmap.row(y) + words, bitmap.row(bitmap.height() - 1 - y));
    });
}

void turnHalf(Bitmap& bitmap)
{
    const std::ptrdiff_t words = bitmap.wordsPerRow();
    const int height = bitmap.height();
    inParallel((height + 1) / 2, rowsWorthACore(words), [&](int begin, int end) {
        std::vector<std::uint64_t> copy(std::size_t(words), 0);
        for (int y = begin; y < end; ++y) {
            std::uint64_t* upper = bitmap.row(y);
            std::uint64_t* lower = bitmap.row(height - 1 - y);
            std::copy_n(upper, words, copy.data());
            if (upper != lower)
                reverseRow(lower, upper, words, bitmap.width());
            reverseRow(copy.data(), lower, words, bitmap.width());
        }
    });
}

} // namespace imaging
