#pragma once

#include <algorithm>
#include <vector>

#include "imaging/bitmap.h"

namespace imaging {

/// Tells fast that there is no ink near a place: one flag for each cell of 32 x 32 pixels.
class InkMap
{
public:
    static constexpr int cellShift = 5;
    static constexpr int cell = 1 << cellShift;

    explicit InkMap(const Bitmap& bitmap);

    /// Whether there may be ink in the rectangle between two pixels, the corners included; it is at most a cell wide
    /// and high. Pixels may lie outside.
    bool mayHoldInk(int x0, int y0, int x1, int y1) const
    {
        const char* upper = row(y0);
        const char* lower = row(y1);
        const std::ptrdiff_t left = column(x0);
        const std::ptrdiff_t right = column(x1);
        return upper[left] | upper[right] | lower[left] | lower[right];
    }

private:
    std::ptrdiff_t column(int x) const { return std::clamp<std::ptrdiff_t>(x >> cellShift, 0, m_columns - 1); }
    const char* row(int y) const
    {
        return m_flags.data() + std::clamp<std::ptrdiff_t>(y >> cellShift, 0, m_rows - 1) * m_columns;
    }

    void markRow(const Bitmap& bitmap, int cellRow);

    std::ptrdiff_t m_columns;
    std::ptrdiff_t m_rows;
    std::vector<char> m_flags;
};

} // namespace imaging
