#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "imaging/bitmap.h"
#include "imaging/bits.h"
#include "imaging/region.h"

namespace imaging {

/// Makes pixels of a bitmap ink, run by run: those of a region that lie in the bitmap, and no others. The bitmap
/// outlives the painter.
class SpanPainter
{
public:
    /// Without a region the whole bitmap may be painted.
    explicit SpanPainter(Bitmap& bitmap, const Region* region = nullptr);

    /// Around all that may be painted; empty if nothing may.
    const Rect& box() const { return m_box; }

    /// Of row y the pixels from left up to, without, right. Any values will do.
    void span(int y, int left, int right)
    {
        left = std::max(left, m_box.left);
        right = std::min(right, m_box.right);
        ++m_work;
        if (y < m_box.top || y >= m_box.bottom || left >= right)
            return;
        m_work += std::uint64_t(right - left) / 64;
        if (m_region.rects().size() > 1) {
            spanInBand(y, left, right);
            return;
        }
        setSpan(m_bitmap.row(y), left, right, true);
        m_touched = true;
    }

    /// Of row y the pixels whose centres lie from left, without, up to and with right.
    void span(int y, double left, double right) { span(y, columnBehind(left), columnBehind(right)); }

    /// The pixel that holds the position.
    void pixel(double x, double y)
    {
        const int column = nearBox(std::floor(x), m_box.left, m_box.right);
        span(nearBox(std::floor(y), m_box.top, m_box.bottom), column, column + 1);
    }

    /// The first row, within the box or one beside it, whose centre lies below y.
    int rowBehind(double y) const { return nearBox(std::floor(y + 0.5), m_box.top, m_box.bottom); }

    /// The first column, within the box or one beside it, whose centre lies to the right of x.
    int columnBehind(double x) const { return nearBox(std::floor(x + 0.5), m_box.left, m_box.right); }

    /// Whether a pixel was painted, whatever it was before.
    bool touched() const { return m_touched; }

    /// How much it was asked for so far, in runs and in words of 64 pixels, for whoever sets a limit.
    std::uint64_t work() const { return m_work; }

private:
    // What lies beyond the box comes to lie just beyond it, so that it fits in an int.
    static int nearBox(double value, int low, int high) { return int(std::clamp(value, low - 1.0, double(high))); }

    void spanInBand(int y, int left, int right);

    Bitmap& m_bitmap;
    Region m_region;
    Rect m_box;
    std::uint64_t m_work = 0;
    bool m_touched = false;
};

} // namespace imaging
