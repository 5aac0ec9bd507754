#pragma once

#include <cstddef>
#include <vector>

#include "imaging/bitmap.h"

namespace imaging {

/// Tells fast that there is no ink near a place: one flag for each cell of 32 x 32 pixels and the neighbours in which a
/// line of up to 32 pixels that begins in the cell and runs to the right can end.
///
///   rising   # #    falling   0 #    0 is the cell itself
///            0 #              # #
class InkMap
{
public:
    static constexpr int cellShift = 5;
    static constexpr int cell = 1 << cellShift;

    /// For lines that fall or rise as they run to the right, by at most a pixel for each.
    InkMap(const Bitmap& bitmap, bool falling);

    /// Whether there may be ink on the next 32 pixels of such a line; the first must lie in the bitmap.
    bool mayHoldInk(int x, int y) const
    {
        return m_flags[std::size_t((y >> cellShift) * m_columns + (x >> cellShift))];
    }

private:
    std::ptrdiff_t m_columns;
    std::vector<char> m_flags;
};

} // namespace imaging
