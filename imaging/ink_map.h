#pragma once

#include <cstddef>
#include <vector>

#include "imaging/strips.h"

namespace imaging {

/// Tells fast that there is no ink near a place: one flag for each cell of 32 x 32 pixels and the neighbours that a
/// line of 64 pixels can touch that begins in the cell and runs to the right.
///
///   rising   # # #    falling   0 # #    0 is the cell itself
///            # # #              # # #
///            0 # #              # # #
class InkMap
{
public:
    static constexpr int cellShift = 5;
    static constexpr int cell = 1 << cellShift;

    /// For lines that fall or rise as they run to the right, by at most a pixel for each.
    InkMap(const Strips& strips, bool falling);

    /// Whether there may be ink on the next 64 pixels of such a line; the first must lie in the strips.
    bool mayHoldInk(std::ptrdiff_t x, std::ptrdiff_t y) const
    {
        return m_flags[std::size_t((x >> cellShift) * m_rows + (y >> cellShift))];
    }

private:
    std::ptrdiff_t m_rows;
    std::vector<char> m_flags;
};

} // namespace imaging
