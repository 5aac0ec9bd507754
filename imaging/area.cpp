#include "imaging/area.h"

#include <limits>

namespace imaging {

namespace {

enum class Lines
{
    rows,
    columns
};

// The box around all points of the contours.
struct Bounds
{
    Position low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Position high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    void include(const Position& p)
    {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }

    bool meets(const Rect& box) const
    {
        return low.x <= box.right && high.x >= box.left && low.y <= box.bottom && high.y >= box.top;
    }

    // Whether no line through the centres of pixels passes through it.
    bool liesBetweenCentres() const
    {
        return std::floor(low.x + 0.5) == std::floor(high.x + 0.5) &&
               std::floor(low.y + 0.5) == std::floor(high.y + 0.5);
    }
};

// A side of a contour, where it crosses the lines from `first` up to, without, `end`. Seen along these lines, `start`
// is where it meets the middle of the line 0 and `slope` how far it moves from one to the next.
struct Side
{
    int first;
    int end;
    double origin; // across the lines
    double start;  // along the line, at the origin
    double slope;
    int winding; // 1 if the contour goes towards higher lines here, -1 if it comes back

    double at(int line) const { return start + (line + 0.5 - origin) * slope; }
};

struct Crossing
{
    double place;
    const Side* side;
};

bool isFinite(const std::vector<Position>& contour)
{
    return std::all_of(contour.begin(), contour.end(),
                       [](const Position& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

// Adds the side between two points if it crosses one of the lines that the painter may paint.
template <Lines lines>
void addSide(const SpanPainter& painter, const Position& a, const Position& b, std::vector<Side>& sides)
{
    const auto across = [](const Position& p) { return lines == Lines::rows ? p.y : p.x; };
    const auto along = [](const Position& p) { return lines == Lines::rows ? p.x : p.y; };
    const auto lineBehind = [&](double place) {
        return lines == Lines::rows ? std::max(painter.rowBehind(place), painter.box().top)
                                    : std::max(painter.columnBehind(place), painter.box().left);
    };
    const Position& low = across(a) < across(b) ? a : b;
    const Position& high = across(a) < across(b) ? b : a;
    const int first = lineBehind(across(low));
    const int end = lineBehind(across(high));
    const double slope = (along(high) - along(low)) / (across(high) - across(low));
    if (first < end && std::isfinite(slope))
        sides.push_back({first, end, across(low), along(low), slope, across(a) < across(b) ? 1 : -1});
}

template <Lines lines>
std::vector<Side> sidesOf(const SpanPainter& painter, std::span<const std::vector<Position>> contours)
{
    std::vector<Side> sides;
    for (const std::vector<Position>& contour : contours) {
        if (contour.empty() || !isFinite(contour))
            continue;
        const Position* from = &contour.back();
        for (const Position& to : contour) {
            addSide<lines>(painter, *from, to, sides);
            from = &to;
        }
    }
    std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) { return a.first < b.first; });
    return sides;
}

// Calls passage(line, begin, end) for each stretch of each line inside the area.
template <class Passage> void forEachPassage(const std::vector<Side>& sides, FillRule rule, Passage passage)
{
    std::vector<Crossing> crossings;
    std::size_t next = 0;
    int line = 0;
    while (next < sides.size() || !crossings.empty()) {
        if (crossings.empty())
            line = sides[next].first;
        for (; next < sides.size() && sides[next].first <= line; ++next)
            crossings.push_back({0, &sides[next]});
        for (Crossing& each : crossings)
            each.place = each.side->at(line);
        std::sort(crossings.begin(), crossings.end(),
                  [](const Crossing& a, const Crossing& b) { return a.place < b.place; });
        int winding = 0;
        double begin = 0;
        for (const Crossing& each : crossings) {
            const int before = winding;
            winding += rule == FillRule::evenOdd ? 1 - 2 * winding : each.side->winding;
            if (before == 0) {
                begin = each.place;
            } else if (winding == 0) {
                passage(line, begin, each.place);
            }
        }
        ++line;
        std::erase_if(crossings, [line](const Crossing& each) { return each.side->end <= line; });
    }
}

} // namespace

void fillArea(SpanPainter& painter, std::span<const std::vector<Position>> contours, FillRule rule)
{
    Bounds bounds;
    for (const std::vector<Position>& contour : contours) {
        if (isFinite(contour))
            std::for_each(contour.begin(), contour.end(), [&](const Position& p) { bounds.include(p); });
    }
    if (!bounds.meets(painter.box()))
        return;
    if (bounds.liesBetweenCentres()) {
        painter.pixel((bounds.low.x + bounds.high.x) / 2, (bounds.low.y + bounds.high.y) / 2);
        return;
    }
    forEachPassage(sidesOf<Lines::rows>(painter, contours), rule, [&](int y, double left, double right) {
        const int begin = painter.columnBehind(left);
        const int end = painter.columnBehind(right);
        if (begin < end) {
            painter.span(y, begin, end);
        } else {
            painter.pixel((left + right) / 2, y);
        }
    });
    forEachPassage(sidesOf<Lines::columns>(painter, contours), rule, [&](int x, double top, double bottom) {
        if (painter.rowBehind(top) >= painter.rowBehind(bottom))
            painter.pixel(x, (top + bottom) / 2);
    });
}

} // namespace imaging
