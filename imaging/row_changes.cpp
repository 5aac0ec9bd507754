#include "imaging/row_changes.h"

#include <algorithm>
#include <cstddef>

#include "imaging/bits.h"

namespace imaging {

void layRuns(std::uint64_t* row, int width, std::span<const int> changes, bool inverted)
{
    const std::ptrdiff_t words = (std::ptrdiff_t(width) + 63) / 64;
    std::fill_n(row, words, inverted ? allBits : 0);
    // A change without a second one is the row's end. Most runs lie within one word.
    for (std::size_t i = 0; i + 1 < changes.size(); i += 2)
        forEachWord(changes[i], changes[i + 1], [row](std::ptrdiff_t k, std::uint64_t mask) { row[k] ^= mask; });
    row[words - 1] &= maskUpTo(width);
}

} // namespace imaging
