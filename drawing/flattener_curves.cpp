// Flattening of splines, hatches and faces, of points' symbols, of endless lines and of leaders.

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "drawing/flatten_curves.h"
#include "drawing/flatten_hatches.h"
#include "drawing/flatten_polylines.h"
#include "drawing/flatten_splines.h"
#include "drawing/flattener.h"
#include "drawing/numbers.h"

namespace drawing {

void Flattener::spline(const Spline& spline, const Place& place)
{
    const double stretch = largestStretch(place.map);
    const double tolerance = stretch > 0 ? m_options.tolerance / stretch : m_options.tolerance;
    const bool closed = (spline.flags & Spline::closedFlag) != 0;
    auto points = flattenedCurve({spline.degree, spline.knots, spline.weights, spline.controlPoints}, tolerance);
    if (!points) {
        points = flattenedFit(spline.fitPoints, closed, spline.startTangent, spline.endTangent, tolerance);
        m_complete = m_complete && points->size() > 1;
    }
    if (points->size() > 1) {
        emit(spline, projectedPath(*points, place.map, false), place);
    }
}

void Flattener::hatch(const Hatch& hatch, const Place& place)
{
    const Transform map =
        place.map * Transform::fromExtrusion(hatch.extrusion) * Transform::translation({0, 0, hatch.elevation});
    auto contours = contoursOf(hatch, largestStretch(map), m_options.tolerance);
    if (!contours) {
        m_complete = false;
        return;
    }
    if (contours->empty()) {
        return;
    }
    const auto seen = [&](const Vector2& point) {
        const Vector3 there = map.point({point.x, point.y, 0});
        return Vector2{there.x, there.y};
    };
    if (hatch.solid) {
        for (auto& contour : *contours) {
            std::transform(contour.begin(), contour.end(), contour.begin(), seen);
        }
        emit(hatch, FlatArea{std::move(*contours)}, place);
        return;
    }
    Dashes dashes;
    for (const HatchPatternLine& line : hatch.lines) {
        if (!addPatternDashes(line, *contours, m_options.hatchLimit, dashes)) {
            m_complete = false;
            return;
        }
    }
    for (const auto& [from, to] : dashes) {
        emit(hatch, FlatPath{{seen(from), seen(to)}}, place);
    }
}

void Flattener::face(const Face& face, const Place& place)
{
    for (std::size_t i = 0; i < face.corners.size(); ++i) {
        const Vector3& from = face.corners[i];
        const Vector3& to = face.corners[(i + 1) % face.corners.size()];
        if (!(face.invisibleEdges & 1 << i) && from != to) {
            emit(face, projectedPath({from, to}, place.map, false), place);
        }
    }
}

// The symbol that the header variable $PDMODE chooses, of the size $PDSIZE, seen without the scale of a block.
void Flattener::point(const Point& point, const Place& place)
{
    enum Mode
    {
        dotFigure = 0,
        none = 1,
        crossFigure = 2,
        diagonal = 3,
        tick = 4,
        figureBits = 7,
        circle = 32,
        square = 64,
    };
    const int mode = m_document.header.integer("$PDMODE");
    const double size = pointSize();
    const Vector3 seen = place.map.point(point.position);
    const Vector2 at{seen.x, seen.y};
    const double half = size / 2;
    const auto line = [&](const Vector2& from, const Vector2& to) {
        emit(point, FlatPath{{at + from, at + to}}, place, Linetype::Continuous);
    };
    const int figure = mode & figureBits;
    if (figure == dotFigure || !(size > 0)) {
        emit(point, FlatPath{{at}}, place);
    }
    if (!(size > 0)) {
        return;
    }
    if (figure == crossFigure) {
        line({-size, 0}, {size, 0});
        line({0, -size}, {0, size});
    } else if (figure == diagonal) {
        line({-size, -size}, {size, size});
        line({-size, size}, {size, -size});
    } else if (figure == tick) {
        line({0, 0}, {0, half});
    }
    if (mode & circle) {
        std::vector<Vector2> ring =
            arcPoints(at, half, 0, 2 * std::numbers::pi, arcSteps(half, 2 * std::numbers::pi, m_options.tolerance));
        ring.pop_back();
        emit(point, FlatPath{std::move(ring), true}, place, Linetype::Continuous);
    }
    if (mode & square) {
        emit(point,
             FlatPath{{at + Vector2{-half, -half}, at + Vector2{half, -half}, at + Vector2{half, half},
                       at + Vector2{-half, half}},
                      true},
             place, Linetype::Continuous);
    }
}

// In drawing units; 0 if it is a share of a view that isn't known.
double Flattener::pointSize() const
{
    constexpr double usualShare = -5; // percent of the view's height
    const double size = m_document.header.real("$PDSIZE");
    constexpr double percent = 100;
    return size > 0 ? size : m_options.viewHeight * -(size < 0 ? size : usualShare) / percent;
}

namespace {

// The part of a line, in multiples of its direction from its base, that lies in the window.
struct Reach
{
    double from;
    double to;
    void cut(double base, double direction, double low, double high)
    {
        if (direction == 0) {
            to = base < low || base > high ? from - 1 : to;
            return;
        }
        const double first = (low - base) / direction;
        const double second = (high - base) / direction;
        from = std::max(from, std::min(first, second));
        to = std::min(to, std::max(first, second));
    }
};

} // namespace

std::optional<Extents> Flattener::window() const
{
    if (!m_clip || !m_options.window) {
        return m_clip ? m_clip : m_options.window;
    }
    return Extents{
        {std::max(m_clip->low.x, m_options.window->low.x), std::max(m_clip->low.y, m_options.window->low.y)},
        {std::min(m_clip->high.x, m_options.window->high.x), std::min(m_clip->high.y, m_options.window->high.y)}};
}

void Flattener::endlessLine(const EndlessLine& line, const Place& place)
{
    const auto seen = window();
    const Vector3 base = place.map.point(line.base);
    const Vector3 direction = place.map.direction(line.direction);
    if (!seen || (direction.x == 0 && direction.y == 0)) {
        return;
    }
    constexpr double farthest = std::numeric_limits<double>::max();
    Reach reach{line.bothWays ? -farthest : 0, farthest};
    reach.cut(base.x, direction.x, seen->low.x, seen->high.x);
    reach.cut(base.y, direction.y, seen->low.y, seen->high.y);
    if (reach.from < reach.to) {
        FlatPath path{{{base.x + direction.x * reach.from, base.y + direction.y * reach.from},
                       {base.x + direction.x * reach.to, base.y + direction.y * reach.to}}};
        path.endless = true;
        emit(line, std::move(path), place);
    }
}

void Flattener::leader(const Leader& leader, const Place& place)
{
    if (leader.points.size() < 2) {
        return;
    }
    const double stretch = largestStretch(place.map);
    const double tolerance = stretch > 0 ? m_options.tolerance / stretch : m_options.tolerance;
    const auto points = leader.isSpline ? flattenedFit(leader.points, false, {}, {}, tolerance) : leader.points;
    if (points.size() < 2) {
        return;
    }
    emit(leader, projectedPath(points, place.map, false), place);
    const double size = arrowSize(leader);
    const Vector3 way = leader.points[1] - leader.points[0];
    constexpr double shortest = 2; // arrow heads in the first segment
    if (leader.hasArrow && size > 0 && length(way) >= shortest * size) {
        arrowHead(leader, leader.points[0], normalized(points[1] - points[0]), size, place);
    }
}

namespace {

// A value of a dimension style that an entity carries as its own, in its extended data.
std::optional<double> overridden(const Entity& entity, int code)
{
    bool ofStyle = false;
    for (std::size_t i = 0; i + 1 < entity.extendedData.size(); ++i) {
        const Group& group = entity.extendedData[i];
        ofStyle = ofStyle || (group.code == 1000 && group.value == "DSTYLE");
        if (ofStyle && group.code == 1070 && parseInteger(group.value) == code &&
            entity.extendedData[i + 1].code == 1040) {
            return parseReal(entity.extendedData[i + 1].value);
        }
    }
    return std::nullopt;
}

} // namespace

// What the leader itself says, its dimension style, or the drawing.
double Flattener::dimensionValue(const Leader& leader, int code, std::string_view variable, double usual) const
{
    if (const auto own = overridden(leader, code)) {
        return *own;
    }
    if (const auto* style = m_document.findRecord("DIMSTYLE", leader.dimensionStyle)) {
        for (const KeptGroups& part : style->kept) {
            for (const Group& group : part.groups) {
                if (group.code == code) {
                    return parseReal(group.value).value_or(usual);
                }
            }
        }
    }
    return m_document.header.real(variable, usual);
}

double Flattener::arrowSize(const Leader& leader) const
{
    constexpr int sizeCode = 41;
    constexpr int scaleCode = 40;
    constexpr double usualSize = 2.5;
    const double scale = dimensionValue(leader, scaleCode, "$DIMSCALE", 1);
    return dimensionValue(leader, sizeCode, "$DIMASZ", usualSize) * (scale > 0 ? scale : 1);
}

// A triangle, a third as wide as it is long.
void Flattener::arrowHead(const Leader& leader, const Vector3& tip, const Vector3& back, double size,
                          const Place& place)
{
    const Vector3 across = normalized(cross(leader.normal, back)) * (size / 6);
    const Vector3 end = tip + back * size;
    emit(leader, FlatArea{{projected({tip, end + across, end - across}, place.map)}}, place);
}

} // namespace drawing
