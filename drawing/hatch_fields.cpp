// The fields of a hatch: nested lists, whose codes mean what the place in them says.

#include <algorithm>
#include <span>

#include "drawing/field_visitor.h"
#include "drawing/hatch.h"

namespace drawing {

namespace {

enum EdgeKind
{
    lineEdge = 1,
    circleEdge = 2,
    ellipseEdge = 3,
    splineEdge = 4,
};

// Goes through the groups of a hatch. Counts are never trusted: a list ends where its codes do.
class HatchReader
{
public:
    HatchReader(std::span<const PlacedGroup> groups, Hatch& hatch) : m_rest(groups), m_hatch(hatch) {}

    /// False if the groups are of another form.
    bool read()
    {
        static_cast<void>(integer(91));
        while (at(92)) {
            m_hatch.paths.push_back(path());
        }
        m_hatch.style = static_cast<Hatch::Style>(std::clamp(integer(75), 0, 2));
        m_hatch.patternType = integer(76, m_hatch.patternType);
        m_hatch.patternAngle = real(52);
        m_hatch.patternScale = real(41, m_hatch.patternScale);
        m_hatch.doubled = integer(77) != 0;
        static_cast<void>(integer(78));
        while (at(53)) {
            m_hatch.lines.push_back(patternLine());
        }
        if (at(47)) {
            m_hatch.pixelSize = real(47);
        }
        static_cast<void>(integer(98));
        m_hatch.seeds = points(10);
        return m_rest.empty() && m_understood;
    }

private:
    bool at(int code) const { return !m_rest.empty() && m_rest.front().code == code; }
    const PlacedGroup& take()
    {
        const PlacedGroup& group = m_rest.front();
        m_rest = m_rest.subspan(1);
        return group;
    }
    double real(int code, double otherwise = 0) { return at(code) ? take().real() : otherwise; }
    int integer(int code, int otherwise = 0) { return at(code) ? take().integer() : otherwise; }
    Vector2 point(int code)
    {
        const double x = real(code);
        return {x, real(code + 10)};
    }
    std::vector<Vector2> points(int code)
    {
        std::vector<Vector2> result;
        while (at(code)) {
            result.push_back(point(code));
        }
        return result;
    }
    std::vector<double> reals(int code)
    {
        std::vector<double> result;
        while (at(code)) {
            result.push_back(take().real());
        }
        return result;
    }

    HatchPath path()
    {
        HatchPath path;
        path.flags = integer(92);
        if (path.flags & HatchPath::polyline) {
            path.hasBulges = integer(72) != 0;
            path.closed = integer(73) != 0;
            static_cast<void>(integer(93));
            while (at(10)) {
                path.points.push_back({point(10), 0, 0, 0});
                path.points.back().bulge = real(42);
            }
        } else {
            static_cast<void>(integer(93));
            while (at(72)) {
                path.edges.push_back(edge());
            }
        }
        static_cast<void>(integer(97));
        while (at(330)) {
            path.sources.push_back(take().handleValue());
        }
        return path;
    }

    HatchEdge edge()
    {
        switch (integer(72)) {
        case lineEdge: {
            const Vector2 start = point(10);
            return HatchLine{start, point(11)};
        }
        case circleEdge:
            return arc(false);
        case ellipseEdge:
            return arc(true);
        case splineEdge:
            return spline();
        default:
            m_understood = false;
            return HatchLine();
        }
    }

    HatchArc arc(bool elliptic)
    {
        HatchArc arc;
        arc.elliptic = elliptic;
        arc.center = point(10);
        if (elliptic) {
            arc.majorAxis = point(11);
        }
        (elliptic ? arc.ratio : arc.radius) = real(40);
        arc.startAngle = real(50);
        arc.endAngle = real(51);
        arc.counterClockwise = integer(73) != 0;
        return arc;
    }

    HatchSpline spline()
    {
        HatchSpline spline;
        spline.degree = integer(94);
        spline.rational = integer(73) != 0;
        spline.periodic = integer(74) != 0;
        static_cast<void>(integer(95));
        static_cast<void>(integer(96));
        spline.knots = reals(40);
        while (at(10)) {
            spline.controlPoints.push_back(point(10));
            if (at(42)) {
                spline.weights.push_back(take().real());
            }
        }
        if (fitDataFollow()) {
            static_cast<void>(take());
        }
        spline.fitPoints = points(11);
        if (at(12)) {
            spline.startTangent = point(12);
        }
        if (at(13)) {
            spline.endTangent = point(13);
        }
        return spline;
    }

    // The count of fit points came with the release 2010; the count of the path's sources has the same code.
    bool fitDataFollow() const
    {
        constexpr int behindFitCount[] = {11, 12, 13, 72, 97};
        return at(97) && m_rest.size() > 1 &&
               std::find(std::begin(behindFitCount), std::end(behindFitCount), m_rest[1].code) !=
                   std::end(behindFitCount);
    }

    HatchPatternLine patternLine()
    {
        HatchPatternLine line;
        line.angle = real(53);
        line.base.x = real(43);
        line.base.y = real(44);
        line.offset.x = real(45);
        line.offset.y = real(46);
        static_cast<void>(integer(79));
        line.dashes = reals(49);
        return line;
    }

    std::span<const PlacedGroup> m_rest;
    Hatch& m_hatch;
    bool m_understood = true;
};

void putCount(FieldVisitor& v, int code, std::size_t count)
{
    v.putInteger(code, static_cast<int>(count));
}

void putPoint(FieldVisitor& v, int code, const Vector2& point)
{
    v.putReal(code, point.x);
    v.putReal(code + 10, point.y);
}

void putEdge(FieldVisitor& v, const HatchLine& line)
{
    v.putInteger(72, lineEdge);
    putPoint(v, 10, line.start);
    putPoint(v, 11, line.end);
}

void putEdge(FieldVisitor& v, const HatchArc& arc)
{
    v.putInteger(72, arc.elliptic ? ellipseEdge : circleEdge);
    putPoint(v, 10, arc.center);
    if (arc.elliptic) {
        putPoint(v, 11, arc.majorAxis);
    }
    v.putReal(40, arc.elliptic ? arc.ratio : arc.radius);
    v.putReal(50, arc.startAngle);
    v.putReal(51, arc.endAngle);
    v.putInteger(73, arc.counterClockwise ? 1 : 0);
}

void putEdge(FieldVisitor& v, const HatchSpline& spline)
{
    v.putInteger(72, splineEdge);
    v.putInteger(94, spline.degree);
    v.putInteger(73, spline.rational ? 1 : 0);
    v.putInteger(74, spline.periodic ? 1 : 0);
    putCount(v, 95, spline.knots.size());
    putCount(v, 96, spline.controlPoints.size());
    for (const double knot : spline.knots) {
        v.putReal(40, knot);
    }
    for (std::size_t i = 0; i < spline.controlPoints.size(); ++i) {
        putPoint(v, 10, spline.controlPoints[i]);
        if (i < spline.weights.size()) {
            v.putReal(42, spline.weights[i]);
        }
    }
    if (spline.fitPoints.empty() && !spline.startTangent && !spline.endTangent) {
        return;
    }
    putCount(v, 97, spline.fitPoints.size());
    for (const Vector2& point : spline.fitPoints) {
        putPoint(v, 11, point);
    }
    if (spline.startTangent) {
        putPoint(v, 12, *spline.startTangent);
    }
    if (spline.endTangent) {
        putPoint(v, 13, *spline.endTangent);
    }
}

void putPath(FieldVisitor& v, const HatchPath& path)
{
    v.putInteger(92, path.flags);
    if (path.flags & HatchPath::polyline) {
        v.putInteger(72, path.hasBulges ? 1 : 0);
        v.putInteger(73, path.closed ? 1 : 0);
        putCount(v, 93, path.points.size());
        for (const PolylinePoint& point : path.points) {
            putPoint(v, 10, point.position);
            if (path.hasBulges) {
                v.putReal(42, point.bulge);
            }
        }
    } else {
        putCount(v, 93, path.edges.size());
        for (const HatchEdge& edge : path.edges) {
            std::visit([&](const auto& each) { putEdge(v, each); }, edge);
        }
    }
    putCount(v, 97, path.sources.size());
    for (const Handle source : path.sources) {
        v.putHandle(330, source);
    }
}

void putPattern(FieldVisitor& v, const Hatch& hatch)
{
    v.putReal(52, hatch.patternAngle);
    v.putReal(41, hatch.patternScale);
    v.putInteger(77, hatch.doubled ? 1 : 0);
    putCount(v, 78, hatch.lines.size());
    for (const HatchPatternLine& line : hatch.lines) {
        v.putReal(53, line.angle);
        v.putReal(43, line.base.x);
        v.putReal(44, line.base.y);
        v.putReal(45, line.offset.x);
        v.putReal(46, line.offset.y);
        putCount(v, 79, line.dashes.size());
        for (const double dash : line.dashes) {
            v.putReal(49, dash);
        }
    }
}

void putContent(FieldVisitor& v, const Hatch& hatch)
{
    putCount(v, 91, hatch.paths.size());
    for (const HatchPath& path : hatch.paths) {
        putPath(v, path);
    }
    v.putInteger(75, static_cast<int>(hatch.style));
    v.putInteger(76, hatch.patternType);
    const bool hasPattern = !hatch.lines.empty() || hatch.patternAngle != 0 || hatch.patternScale != 1 || hatch.doubled;
    if (!hatch.solid || hasPattern) {
        putPattern(v, hatch);
    }
    if (hatch.pixelSize) {
        v.putReal(47, *hatch.pixelSize);
    }
    putCount(v, 98, hatch.seeds.size());
    for (const Vector2& seed : hatch.seeds) {
        putPoint(v, 10, seed);
    }
}

} // namespace

void Hatch::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbHatch");
    Vector3 base{0, 0, elevation};
    v.point(10, base, {});
    elevation = base.z;
    v.point(210, extrusion, {});
    v.string(2, pattern);
    v.boolean(70, solid);
    v.boolean(71, associative);
    if (!v.reading()) {
        for (const Group& group : unread) {
            v.put(group.code, group.value);
        }
        if (unread.empty()) {
            putContent(v, *this);
        }
        return;
    }
    const auto groups = v.take({91, 92, 72, 73, 74, 93, 94, 95, 96, 97, 10, 20, 11, 21, 12, 22, 13, 23, 330,
                                40, 42, 50, 51, 75, 76, 52, 41, 77, 78, 53, 43, 44, 45, 46, 79, 49, 47, 98});
    if (!HatchReader(groups, *this).read()) {
        std::transform(groups.begin(), groups.end(), std::back_inserter(unread),
                       [](const PlacedGroup& group) { return group.plain(); });
        paths.clear();
        lines.clear();
        seeds.clear();
    }
}

} // namespace drawing
