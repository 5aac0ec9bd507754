#include "imaging/stroke.h"

#include <utility>

namespace imaging {

namespace {

struct Segment
{
    Position from;
    Position to;
};

// Cuts a segment to low <= x <= high, or y in place of x: moves an end that lies beyond along the segment. False if
// nothing is left.
bool cutBetween(Segment& segment, double Position::*across, double Position::*along, double low, double high)
{
    const auto [from, to] = segment;
    if (std::max(from.*across, to.*across) < low || std::min(from.*across, to.*across) > high)
        return false;
    for (Position* end : {&segment.from, &segment.to}) {
        const double bound = std::clamp(end->*across, low, high);
        if (bound == end->*across)
            continue;
        const double share = (bound - from.*across) / (to.*across - from.*across);
        end->*across = bound;
        end->*along = from.*along + share * (to.*along - from.*along);
    }
    return true;
}

// Cuts the segment to the rectangle, grown by a margin. False if nothing is left, or if its length is no number.
bool cutTo(const Rect& rect, double margin, Segment& segment)
{
    return std::isfinite(segment.to.x - segment.from.x) && std::isfinite(segment.to.y - segment.from.y) &&
           cutBetween(segment, &Position::x, &Position::y, rect.left - margin, rect.right + margin) &&
           cutBetween(segment, &Position::y, &Position::x, rect.top - margin, rect.bottom + margin);
}

// Where a segment that runs down, or from left to right, meets a height.
class Crossing
{
public:
    explicit Crossing(const Segment& segment) : m_from(segment.from), m_left(segment.from.x), m_right(segment.to.x)
    {
        const double dx = segment.to.x - m_from.x;
        const double dy = segment.to.y - m_from.y;
        m_slope = dy > 0 ? dx / dy : 0;
        if (m_left > m_right)
            std::swap(m_left, m_right);
    }

    // Of an almost level line the slope is so large that rounding would carry it beyond its ends.
    double at(double y) const { return std::clamp(m_from.x + (y - m_from.y) * m_slope, m_left, m_right); }

private:
    Position m_from;
    double m_left;
    double m_right;
    double m_slope;
};

// The points within a radius of a segment that runs down, or from left to right. Each row cuts it in one run, whose
// ends lie on the upper disc, then on the straight sides, then on the lower disc.
class Capsule
{
public:
    Capsule(const Segment& segment, double radius)
        : m_crossing(segment), m_from(segment.from), m_to(segment.to), m_radius(radius)
    {
        const double dx = m_to.x - m_from.x;
        const double dy = m_to.y - m_from.y;
        const double length = std::hypot(dx, dy);
        // Both sides begin square to the segment, the left one as much below its end as the right one is above.
        m_drop = length > 0 ? dx / length * radius : radius;
        m_aside = length > 0 ? dy / length * radius : 0;
    }

    double top() const { return m_from.y - m_radius; }
    double bottom() const { return m_to.y + m_radius; }

    double left(double y) const
    {
        if (y <= m_from.y + m_drop)
            return m_from.x - halfChord(y - m_from.y);
        if (y < m_to.y + m_drop)
            return m_crossing.at(y - m_drop) - m_aside;
        return m_to.x - halfChord(y - m_to.y);
    }

    double right(double y) const
    {
        if (y < m_from.y - m_drop)
            return m_from.x + halfChord(y - m_from.y);
        if (y < m_to.y - m_drop)
            return m_crossing.at(y + m_drop) + m_aside;
        return m_to.x + halfChord(y - m_to.y);
    }

private:
    double halfChord(double y) const { return std::sqrt(std::max(0.0, m_radius * m_radius - y * y)); }

    Crossing m_crossing;
    Position m_from;
    Position m_to;
    double m_radius;
    double m_drop = 0;
    double m_aside = 0;
};

void thickLine(SpanPainter& painter, const Segment& segment, double radius)
{
    const Capsule capsule(segment, radius);
    const int end = painter.rowBehind(capsule.bottom());
    for (int y = painter.rowBehind(capsule.top()); y < end; ++y)
        painter.span(y, capsule.left(y + 0.5), capsule.right(y + 0.5));
}

// Row by row the columns that the line passes there: at least as wide as high.
void thinFlatLine(SpanPainter& painter, const Segment& segment)
{
    const Crossing crossing(segment);
    const int last = int(std::floor(segment.to.y));
    double enters = segment.from.x;
    for (int y = int(std::floor(segment.from.y)); y <= last; ++y) {
        const double leaves = y == last ? segment.to.x : crossing.at(y + 1);
        painter.span(y, std::min(enters, leaves), std::max(enters, leaves));
        enters = leaves;
    }
}

void thinSteepLine(SpanPainter& painter, const Segment& segment)
{
    const Crossing crossing(segment);
    const int end = painter.rowBehind(segment.to.y);
    for (int y = painter.rowBehind(segment.from.y); y < end; ++y)
        painter.pixel(crossing.at(y + 0.5), y);
}

void thinLine(SpanPainter& painter, const Segment& segment)
{
    painter.pixel(segment.from.x, segment.from.y);
    painter.pixel(segment.to.x, segment.to.y);
    if (std::abs(segment.to.x - segment.from.x) >= segment.to.y - segment.from.y) {
        thinFlatLine(painter, segment);
    } else {
        thinSteepLine(painter, segment);
    }
}

void line(SpanPainter& painter, Segment segment, int width)
{
    const double radius = width / 2.0;
    const double margin = radius + 1; // where the line is cut, its round end must not show
    if (!cutTo(painter.box(), margin, segment))
        return;
    const bool runsUp = segment.from.y != segment.to.y ? segment.from.y > segment.to.y : segment.from.x > segment.to.x;
    if (runsUp)
        std::swap(segment.from, segment.to);
    if (width == 1) {
        thinLine(painter, segment);
    } else {
        thickLine(painter, segment, radius);
    }
}

} // namespace

void stroke(SpanPainter& painter, std::span<const Position> points, bool closed, int width)
{
    if (points.empty() || painter.box().empty())
        return;
    if (points.size() == 1)
        line(painter, {points[0], points[0]}, width);
    for (std::size_t i = 1; i < points.size(); ++i)
        line(painter, {points[i - 1], points[i]}, width);
    if (closed && points.size() > 2)
        line(painter, {points.back(), points.front()}, width);
}

} // namespace imaging
