#include "drawing/flatten_hatches.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "drawing/flatten_curves.h"
#include "drawing/flatten_splines.h"

namespace drawing {

namespace {

constexpr double radiansPerDegree = std::numbers::pi / 180;

using Run = std::vector<Vector2>;

// How fine curves become: see largestStretch.
struct Fineness
{
    double stretch = 1;
    double tolerance = 0;
    double inPlane() const { return stretch > 0 ? tolerance / stretch : tolerance; }
};

Run pointsOf(const HatchLine& line, const Fineness&)
{
    return {line.start, line.end};
}

// The parameter of an ellipse's point that lies in a direction, both from the major axis.
double parameterAt(double angle, double ratio)
{
    // Both lie in the same quarter, so that whole turns are kept.
    return angle + std::atan2(std::sin(angle), std::cos(angle) * ratio) - std::atan2(std::sin(angle), std::cos(angle));
}

Run pointsOf(const HatchArc& arc, const Fineness& fineness)
{
    double start = arc.startAngle * radiansPerDegree;
    double sweep = sweepBetween(start, arc.endAngle * radiansPerDegree);
    Vector2 major{arc.radius, 0};
    double ratio = 1;
    if (arc.elliptic) {
        major = arc.majorAxis;
        ratio = arc.ratio;
        const double end = parameterAt(start + sweep, ratio);
        start = parameterAt(start, ratio);
        sweep = end - start;
    }
    const double side = arc.counterClockwise ? 1 : -1;
    const Vector2 minor{-major.y * ratio * side, major.x * ratio * side};
    const int steps =
        arcSteps(length(major) * std::max(1.0, std::abs(ratio)) * fineness.stretch, sweep, fineness.tolerance);
    Run points;
    for (const Vector2& p : arcPoints({0, 0}, 1, start, sweep, steps)) {
        points.push_back(arc.center + major * p.x + minor * p.y);
    }
    return points;
}

std::vector<Vector3> inSpace(const Run& points)
{
    std::vector<Vector3> result;
    for (const Vector2& point : points) {
        result.push_back({point.x, point.y, 0});
    }
    return result;
}

std::optional<Vector3> inSpace(const std::optional<Vector2>& direction)
{
    return direction ? std::optional<Vector3>({direction->x, direction->y, 0}) : std::nullopt;
}

Run pointsOf(const HatchSpline& spline, const Fineness& fineness)
{
    const auto curve = flattenedCurve({spline.degree, spline.knots, spline.weights, inSpace(spline.controlPoints)},
                                      fineness.inPlane());
    Run points;
    for (const Vector3& point :
         curve ? *curve
               : flattenedFit(inSpace(spline.fitPoints), spline.periodic, inSpace(spline.startTangent),
                              inSpace(spline.endTangent), fineness.inPlane())) {
        points.push_back({point.x, point.y});
    }
    return points;
}

double distance(const Vector2& a, const Vector2& b)
{
    return length(a - b);
}

// The smaller of the distances from a point to the ends of a run.
double distanceToEnds(const Vector2& point, const Run& run)
{
    return std::min(distance(point, run.front()), distance(point, run.back()));
}

// Joins edges to closed contours. An edge may stand the other way round than the path goes.
class ContourJoiner
{
public:
    void add(const std::vector<Run>& edges)
    {
        for (std::size_t i = 0; i < edges.size(); ++i) {
            Run edge = edges[i];
            if (!m_contour.empty() && isClosed() && !touches(edge)) {
                finish();
            }
            const bool begins = m_contour.empty() && i + 1 < edges.size();
            const bool reversed =
                begins ? distanceToEnds(edge.front(), edges[i + 1]) < distanceToEnds(edge.back(), edges[i + 1])
                       : !m_contour.empty() &&
                             distance(edge.back(), m_contour.back()) < distance(edge.front(), m_contour.back());
            if (reversed) {
                std::reverse(edge.begin(), edge.end());
            }
            const bool repeats = !m_contour.empty() && edge.front() == m_contour.back();
            m_contour.insert(m_contour.end(), edge.begin() + (repeats ? 1 : 0), edge.end());
        }
        finish();
    }
    Contours take() { return std::move(m_contours); }

private:
    // Files round their digits.
    double rounding() const
    {
        constexpr double share = 1e-6;
        const Vector2& p = m_contour.front();
        return share * std::max({distance(m_contour.front(), m_contour[m_contour.size() / 2]), 1e-3 * std::abs(p.x),
                                 1e-3 * std::abs(p.y)});
    }
    bool isClosed() const
    {
        return m_contour.size() > 2 && distance(m_contour.front(), m_contour.back()) <= rounding();
    }
    bool touches(const Run& edge) const { return distanceToEnds(m_contour.back(), edge) <= rounding(); }
    void finish()
    {
        if (m_contour.size() > 1 && m_contour.front() == m_contour.back()) {
            m_contour.pop_back();
        }
        if (m_contour.size() > 2) {
            m_contours.push_back(std::move(m_contour));
        }
        m_contour.clear();
    }

    Run m_contour;
    Contours m_contours;
};

Run polylineContour(const HatchPath& path, const Fineness& fineness)
{
    Run contour;
    for (std::size_t i = 0; i < path.points.size(); ++i) {
        const PolylinePoint& from = path.points[i];
        const PolylinePoint& to = path.points[(i + 1) % path.points.size()];
        const Run run = bulgePoints(from.position, to.position, from.bulge, fineness.stretch, fineness.tolerance);
        contour.insert(contour.end(), run.begin(), run.end());
    }
    return contour;
}

Contours contoursOf(const HatchPath& path, const Fineness& fineness)
{
    if (path.flags & HatchPath::polyline) {
        return {polylineContour(path, fineness)};
    }
    std::vector<Run> edges;
    for (const HatchEdge& edge : path.edges) {
        Run run = std::visit([&](const auto& each) { return pointsOf(each, fineness); }, edge);
        if (!run.empty()) {
            edges.push_back(std::move(run));
        }
    }
    ContourJoiner joiner;
    joiner.add(edges);
    return joiner.take();
}

bool encloses(const Run& contour, const Vector2& at)
{
    bool inside = false;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Vector2& a = contour[i];
        const Vector2& b = contour[(i + 1) % contour.size()];
        if ((a.y > at.y) != (b.y > at.y) && at.x < a.x + (b.x - a.x) * (at.y - a.y) / (b.y - a.y)) {
            inside = !inside;
        }
    }
    return inside;
}

// Keeps the contours that lie in `deepest` others at most. False if there are too many to tell.
bool dropIslands(Contours& contours, std::size_t deepest)
{
    constexpr std::size_t mostSteps = 100'000'000;
    std::size_t points = 0;
    for (const Run& contour : contours) {
        points += contour.size();
    }
    if (points > mostSteps / std::max<std::size_t>(1, contours.size())) {
        return false;
    }
    Contours kept;
    for (const Run& contour : contours) {
        const Vector2 inIt = (contour[0] + contour[1]) * 0.5;
        const auto around = std::count_if(contours.begin(), contours.end(), [&](const Run& other) {
            return &other != &contour && encloses(other, inIt);
        });
        if (static_cast<std::size_t>(around) <= deepest) {
            kept.push_back(contour);
        }
    }
    contours = std::move(kept);
    return true;
}

// Where a line of a pattern crosses the boundary.
struct Crossing
{
    double line = 0;  // its number, whole
    double along = 0; // from the line's own base
    bool operator<(const Crossing& other) const
    {
        return line < other.line || (line == other.line && along < other.along);
    }
};

// The lines of a pattern as a frame: the number of the line through a point, and how far along it the point lies.
class PatternFrame
{
public:
    explicit PatternFrame(const HatchPatternLine& line)
        : m_line(line), m_along{std::cos(line.angle * radiansPerDegree), std::sin(line.angle * radiansPerDegree)},
          m_spacing(m_along.x * line.offset.y - m_along.y * line.offset.x),
          m_shift(m_along.x * line.offset.x + m_along.y * line.offset.y)
    {}

    bool usable() const { return m_spacing != 0 && std::isfinite(m_shift / m_spacing); }
    Crossing at(const Vector2& point) const
    {
        const Vector2 way = point - m_line.base;
        const double number = (m_along.x * way.y - m_along.y * way.x) / m_spacing;
        return {number, m_along.x * way.x + m_along.y * way.y - number * m_shift};
    }
    Vector2 point(double number, double along) const { return m_line.base + m_line.offset * number + m_along * along; }

private:
    const HatchPatternLine& m_line;
    Vector2 m_along;
    double m_spacing;
    double m_shift;
};

// False if there are too many.
bool addCrossings(const PatternFrame& frame, const Run& contour, std::size_t most, std::vector<Crossing>& crossings)
{
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Crossing a = frame.at(contour[i]);
        const Crossing b = frame.at(contour[(i + 1) % contour.size()]);
        const double low = std::min(a.line, b.line);
        const double high = std::max(a.line, b.line);
        if (!(high - low < static_cast<double>(most - crossings.size()))) {
            return false;
        }
        // Each line that has one end below or on it, and one above.
        constexpr double mostNumber = 1e15; // above, not every whole number is one of its own
        for (double line = std::ceil(low); line < high && std::abs(line) < mostNumber; ++line) {
            crossings.push_back({line, a.along + (b.along - a.along) * (line - a.line) / (b.line - a.line)});
        }
    }
    return true;
}

// The dashes of one line from `begin` to `end`; `steps` is what may still be looked at. False if that isn't enough.
bool addDashes(const PatternFrame& frame, const std::vector<double>& pattern, double period, const Crossing& begin,
               double end, std::size_t& steps, Dashes& dashes)
{
    const auto draw = [&](double from, double to) {
        dashes.emplace_back(frame.point(begin.line, from), frame.point(begin.line, to));
    };
    if (period == 0) {
        draw(begin.along, end);
        return steps-- > 1;
    }
    double here = std::floor(begin.along / period) * period;
    for (std::size_t element = 0; here <= end; element = (element + 1) % pattern.size()) {
        if (steps-- <= 1) {
            return false;
        }
        const double next = here + std::abs(pattern[element]);
        const double from = std::max(here, begin.along);
        const double to = std::min(next, end);
        if (pattern[element] > 0 ? from < to : pattern[element] == 0 && here >= begin.along) {
            draw(from, to);
        }
        here = next;
    }
    return true;
}

} // namespace

std::optional<Contours> contoursOf(const Hatch& hatch, double stretch, double tolerance)
{
    Contours contours;
    for (const HatchPath& path : hatch.paths) {
        for (Run& contour : contoursOf(path, {stretch, tolerance})) {
            if (contour.size() > 2) {
                contours.push_back(std::move(contour));
            }
        }
    }
    const bool told =
        hatch.style == Hatch::Style::Normal || dropIslands(contours, hatch.style == Hatch::Style::Outer ? 1 : 0);
    return told ? std::optional(std::move(contours)) : std::nullopt;
}

bool addPatternDashes(const HatchPatternLine& line, const Contours& contours, std::size_t most, Dashes& dashes)
{
    const PatternFrame frame(line);
    double period = 0;
    for (const double dash : line.dashes) {
        period += std::abs(dash);
    }
    std::vector<Crossing> crossings;
    for (const Run& contour : contours) {
        if (!frame.usable() || !addCrossings(frame, contour, 2 * most, crossings)) {
            return false;
        }
    }
    std::sort(crossings.begin(), crossings.end());
    constexpr std::size_t gapsPerDash = 4;
    std::size_t steps = most * gapsPerDash;
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
        if (!addDashes(frame, line.dashes, period, crossings[i], crossings[i + 1].along, steps, dashes) ||
            dashes.size() > most) {
            return false;
        }
    }
    return true;
}

} // namespace drawing
