// The fields of entities that are lists of points: splines and leaders.

#include "drawing/entities.h"
#include "drawing/field_visitor.h"

namespace drawing {

namespace {

std::vector<Vector3> takePoints(FieldVisitor& v, int code)
{
    std::vector<Vector3> points;
    for (const PlacedGroup& group : v.take({code, code + 10, code + 20})) {
        if (group.code == code) {
            points.push_back({group.real(), 0, 0});
        } else if (!points.empty()) {
            (group.code == code + 10 ? points.back().y : points.back().z) = group.real();
        }
    }
    return points;
}

void pointsField(FieldVisitor& v, int code, std::vector<Vector3>& points)
{
    if (v.reading()) {
        points = takePoints(v, code);
        return;
    }
    for (const Vector3& point : points) {
        v.putReal(code, point.x);
        v.putReal(code + 10, point.y);
        v.putReal(code + 20, point.z);
    }
}

void realsField(FieldVisitor& v, int code, std::vector<double>& values)
{
    for (const PlacedGroup& group : v.take({code})) {
        values.push_back(group.real());
    }
    for (const double value : values) {
        v.putReal(code, value);
    }
}

void countField(FieldVisitor& v, int code, std::size_t count)
{
    v.take({code});
    v.putInteger(code, static_cast<int>(count));
}

} // namespace

void Spline::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbSpline");
    v.maybe(210, normal);
    v.integer(70, flags);
    v.integer(71, degree);
    countField(v, 72, knots.size());
    countField(v, 73, controlPoints.size());
    countField(v, 74, fitPoints.size());
    v.real(42, knotTolerance);
    v.real(43, controlTolerance);
    v.real(44, fitTolerance);
    v.maybe(12, startTangent);
    v.maybe(13, endTangent);
    realsField(v, 40, knots);
    realsField(v, 41, weights);
    pointsField(v, 10, controlPoints);
    pointsField(v, 11, fitPoints);
}

void Leader::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbLeader");
    v.string(3, dimensionStyle);
    v.boolean(71, hasArrow);
    v.boolean(72, isSpline);
    countField(v, 76, points.size());
    pointsField(v, 10, points);
    v.point(210, normal, worldZAxis);
}

} // namespace drawing
