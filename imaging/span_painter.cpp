#include "imaging/span_painter.h"

namespace imaging {

SpanPainter::SpanPainter(Bitmap& bitmap, const Region* region) : m_bitmap(bitmap), m_region(bitmap.bounds())
{
    if (region)
        m_region = intersect(*region, m_region);
    m_box = m_region.box();
}

void SpanPainter::spanInBand(int y, int left, int right)
{
    for (const Rect& rect : m_region.band(y)) {
        const int from = std::max(left, rect.left);
        const int to = std::min(right, rect.right);
        if (from >= to)
            continue;
        setSpan(m_bitmap.row(y), from, to, true);
        m_touched = true;
    }
}

} // namespace imaging
