#include "imaging/row_changes.h"

#include <algorithm>
#include <cstddef>

#include "imaging/bits.h"

namespace imaging {

// The word that is being laid down has the colour of its last pixel to its end. A change turns that around from its
// place on; the words between two changes are one colour.
//
//     changes       5    9              70
//     at first   00000000000 ... 0 |
//     at 5       00000111111 ... 1 |
//     at 9       00000111100 ... 0 |
//     at 70      is laid down      | 00000011111 ...
//
// So each word is written once, and nothing has to be cleared before.
void layRuns(std::uint64_t* row, int width, std::span<const int> changes, bool inverted)
{
    const std::ptrdiff_t words = (std::ptrdiff_t(width) + 63) / 64;
    std::uint64_t word = inverted ? allBits : 0;
    std::ptrdiff_t index = 0;
    for (const int change : changes) {
        const std::ptrdiff_t next = change >> 6;
        if (next != index) {
            row[index] = word;
            word = word & 1 ? allBits : 0;
            std::fill(row + index + 1, row + next, word);
            index = next;
        }
        word ^= maskFrom(change);
    }
    if (index < words)
        row[index] = word;
    row[words - 1] &= maskUpTo(width);
}

} // namespace imaging
