#pragma once

#include <array>
#include <cstdint>

#include "imaging/bitmap.h"

namespace imaging {

/// Gathers the pixels of a bitmap that lie at equal steps on a slanting line, eight at a time, with instructions that
/// not every processor has. Coordinates are fixed-point with 32 bits of fraction.
///
/// How many whole pixels the i-th step lies from the first depends on where in its pixel the line begins, but there are
/// only two answers, a and a + 1: the second if the fractions of both together reach a whole.
///
///   fraction of the first pixel  |...*....|     + i steps = a wholes and  |.......*|  ->  a + 1
///                                |*.......|     + i steps = a wholes and  |.......*|  ->  a
///
/// So a table of a and of the fraction that it takes, for 64 steps, serves all lines of one slant, and a comparison
/// takes the place of the product.
class SlantedLine
{
public:
    /// Steps of less than a pixel and a half either way. The bitmap must outlive this.
    SlantedLine(const Bitmap& bitmap, std::int64_t stepX, std::int64_t stepY);

    /// Whether this processor can.
    static bool possible();

    /// The pixels of steps `first` up to, without, first + 32 of the line from (x, y) on; the earliest is the most
    /// significant bit. All must lie in the bitmap or in the words of its rows.
    std::uint32_t pixels(std::int64_t x, std::int64_t y, int first) const;

private:
    static constexpr int steps = 64;
    using Table = std::array<std::int32_t, steps>;

    const Bitmap& m_bitmap;
    std::int32_t m_rowLength; // in halves of words
    // Of each step the wholes, y's as a distance in halves of words, and the largest fraction that does not add one
    // more, moved by half of the range as comparisons are signed. Each eight steps stand in the opposite order.
    Table m_wholeX;
    Table m_fractionX;
    Table m_wholeY;
    Table m_fractionY;
};

} // namespace imaging
