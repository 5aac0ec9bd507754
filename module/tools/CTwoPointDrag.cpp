#include "module/tools/CTwoPointDrag.h"

#include <cstdlib>

namespace {

// In view pixels: a drag of less counts as none.
constexpr int shortestDrag = 4;

bool Reaches(int from, int to)
{
    return std::abs(to - from) >= shortestDrag;
}

} // namespace

bool CTwoPointDrag::IsShort() const
{
    return !Reaches(m_start.x, m_end.x) && !Reaches(m_start.y, m_end.y);
}

bool CTwoPointDrag::IsThin() const
{
    return !Reaches(m_start.x, m_end.x) || !Reaches(m_start.y, m_end.y);
}

CPoint CTwoPointDrag::SnapToAxis(CPoint point) const
{
    if (std::abs(point.x - m_start.x) > std::abs(point.y - m_start.y)) {
        point.y = m_start.y;
    } else {
        point.x = m_start.x;
    }
    return point;
}
