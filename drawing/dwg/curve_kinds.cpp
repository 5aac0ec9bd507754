// Splines and leaders.

#include "drawing/dwg/kinds.h"

namespace drawing::dwg {

namespace {

constexpr unsigned leastPointBits = 6; // of three reals of two bits each

std::vector<Vector3> takePoints(ObjectFields& f, int code)
{
    std::vector<Vector3> points;
    for (const PlacedGroup& group : f.takeAll({code, code + 10, code + 20})) {
        if (group.code == code) {
            points.push_back({group.real(), 0, 0});
        } else if (!points.empty()) {
            (group.code == code + 10 ? points.back().y : points.back().z) = group.real();
        }
    }
    return points;
}

std::vector<double> takeReals(ObjectFields& f, int code)
{
    std::vector<double> values;
    for (const PlacedGroup& group : f.takeAll({code})) {
        values.push_back(group.real());
    }
    return values;
}

template <class Value> void resize(ObjectFields& f, std::vector<Value>& values, int count)
{
    if (f.reading()) {
        values.resize(static_cast<std::size_t>(count));
    }
}

enum SplineForm
{
    byControlPoints = 1,
    byFitPoints = 2,
};

enum SplineFlag
{
    closedFlag = 1,
    periodicFlag = 2,
    rationalFlag = 4,
    planarFlag = 8,
};

struct SplineFields
{
    int degree = 3;
    int flags = 0;
    double knotTolerance = 1e-7;
    double controlTolerance = 1e-7;
    double fitTolerance = 1e-10;
    Vector3 startTangent;
    Vector3 endTangent;
    std::vector<double> knots;
    std::vector<double> weights;
    std::vector<Vector3> controlPoints;
    std::vector<Vector3> fitPoints;
};

void controlFields(ObjectFields& f, SplineFields& s)
{
    bool rational = (s.flags & rationalFlag) != 0;
    bool closed = (s.flags & closedFlag) != 0;
    bool periodic = (s.flags & periodicFlag) != 0;
    f.bits.bit(rational);
    f.bits.bit(closed);
    f.bits.bit(periodic);
    s.flags = planarFlag | (rational ? rationalFlag : 0) | (closed ? closedFlag : 0) | (periodic ? periodicFlag : 0);
    f.bits.real(s.knotTolerance);
    f.bits.real(s.controlTolerance);
    auto knotCount = static_cast<int>(s.knots.size());
    auto pointCount = static_cast<int>(s.controlPoints.size());
    f.bits.count(knotCount, 2);
    f.bits.count(pointCount, leastPointBits);
    bool weighted = !s.weights.empty() && s.weights.size() == s.controlPoints.size();
    f.bits.bit(weighted);
    resize(f, s.knots, knotCount);
    resize(f, s.controlPoints, pointCount);
    resize(f, s.weights, weighted ? pointCount : 0);
    for (double& knot : s.knots) {
        f.bits.real(knot);
    }
    for (std::size_t i = 0; i < s.controlPoints.size(); ++i) {
        f.bits.point(s.controlPoints[i]);
        if (weighted) {
            f.bits.real(s.weights[i]);
        }
    }
}

void fitFields(ObjectFields& f, SplineFields& s)
{
    f.bits.real(s.fitTolerance);
    f.bits.point(s.startTangent);
    f.bits.point(s.endTangent);
    auto count = static_cast<int>(s.fitPoints.size());
    f.bits.count(count, leastPointBits);
    resize(f, s.fitPoints, count);
    for (Vector3& point : s.fitPoints) {
        f.bits.point(point);
    }
}

void takeSpline(ObjectFields& f, SplineFields& s)
{
    f.take(70, s.flags);
    f.take(71, s.degree);
    f.take(42, s.knotTolerance);
    f.take(43, s.controlTolerance);
    f.take(44, s.fitTolerance);
    f.take(12, s.startTangent);
    f.take(13, s.endTangent);
    s.knots = takeReals(f, 40);
    s.weights = takeReals(f, 41);
    s.controlPoints = takePoints(f, 10);
    s.fitPoints = takePoints(f, 11);
}

void giveSpline(ObjectFields& f, const SplineFields& s, int form)
{
    f.give(70, s.flags);
    f.give(71, s.degree);
    f.give(72, static_cast<int>(s.knots.size()));
    f.give(73, static_cast<int>(s.controlPoints.size()));
    f.give(74, static_cast<int>(s.fitPoints.size()));
    f.give(42, s.knotTolerance);
    f.give(43, s.controlTolerance);
    f.give(44, s.fitTolerance);
    if (form == byFitPoints) {
        if (s.startTangent != Vector3{}) {
            f.give(12, s.startTangent);
        }
        if (s.endTangent != Vector3{}) {
            f.give(13, s.endTangent);
        }
    }
    f.expect(s.knots.size() + s.weights.size() + 3 * (s.controlPoints.size() + s.fitPoints.size()));
    for (const double knot : s.knots) {
        f.give(40, knot);
    }
    for (const double weight : s.weights) {
        f.give(41, weight);
    }
    for (const Vector3& point : s.controlPoints) {
        f.give(10, point);
    }
    for (const Vector3& point : s.fitPoints) {
        f.give(11, point);
    }
}

// A spline is told by its control points, or, where it has none, by the points that it goes through.
void spline(ObjectFields& f)
{
    f.marker("AcDbSpline");
    SplineFields fields;
    if (!f.reading()) {
        takeSpline(f, fields);
    }
    int form = fields.controlPoints.empty() && !f.reading() ? byFitPoints : byControlPoints;
    f.bits.longNumber(form);
    f.bits.longNumber(fields.degree);
    if (form == byFitPoints) {
        fitFields(f, fields);
    } else {
        controlFields(f, fields);
    }
    giveSpline(f, fields, form);
}

void leader(ObjectFields& f)
{
    f.marker("AcDbLeader");
    bool reserved = false;
    f.bits.bit(reserved);
    f.shortNumber(73, 3); // the kind of annotation: 3 is none
    f.shortNumber(72);
    std::vector<Vector3> points = takePoints(f, 10);
    auto count = static_cast<int>(points.size());
    f.bits.count(count, leastPointBits);
    resize(f, points, count);
    for (Vector3& point : points) {
        f.bits.point(point);
    }
    f.give(76, count);
    for (const Vector3& point : points) {
        f.give(10, point);
    }
    // The origin of the plane in which the leader was drawn; DXF has no place for it.
    Vector3 origin = points.empty() ? Vector3{} : points.back();
    f.bits.point(origin);
    f.plainExtrusion();
    f.point3(211, Vector3{1, 0, 0});
    f.point3(212, Vector3{});
    f.point3(213, Vector3{});
    f.real(40, 0.0);
    f.real(41, 0.0);
    int hookAlong = 1;
    f.take(74, hookAlong);
    bool along = hookAlong != 0;
    f.bits.bit(along);
    f.give(74, along ? 1 : 0);
    f.bit(71);
    int color = 0;
    f.bits.shortNumber(color);
    f.bits.bit(reserved);
    f.bits.bit(reserved);
    f.handle(340, Reference::SoftOwner);
    f.name(3, "DIMSTYLE");
}

} // namespace

std::span<const Kind> curveKinds()
{
    static constexpr Kind kinds[] = {
        {0x24, true, "SPLINE", spline},
        {0x2D, true, "LEADER", leader},
    };
    return kinds;
}

} // namespace drawing::dwg
