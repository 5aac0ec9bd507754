// The fields of both kinds of polyline.

#include "drawing/entities.h"
#include "drawing/field_visitor.h"

namespace drawing {

namespace {

constexpr int closedBit = 1;
constexpr int generateLinetypeBit = 128;

void readPoints(FieldVisitor& v, std::vector<PolylinePoint>& points)
{
    for (const PlacedGroup& group : v.take({10, 20, 40, 41, 42})) {
        if (group.code == 10) {
            points.push_back({{group.real(), 0}});
        }
        if (points.empty()) {
            continue;
        }
        PolylinePoint& last = points.back();
        switch (group.code) {
        case 20:
            last.position.y = group.real();
            break;
        case 40:
            last.startWidth = group.real();
            break;
        case 41:
            last.endWidth = group.real();
            break;
        case 42:
            last.bulge = group.real();
            break;
        default:
            break;
        }
    }
}

void writePoints(FieldVisitor& v, const std::vector<PolylinePoint>& points)
{
    for (const PolylinePoint& point : points) {
        v.putReal(10, point.position.x);
        v.putReal(20, point.position.y);
        if (point.startWidth != 0 || point.endWidth != 0) {
            v.putReal(40, point.startWidth);
            v.putReal(41, point.endWidth);
        }
        if (point.bulge != 0) {
            v.putReal(42, point.bulge);
        }
    }
}

} // namespace

void LightPolyline::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbPolyline");
    int count = static_cast<int>(points.size());
    v.integer(90, count);
    int flags = (closed ? closedBit : 0) | (generateLinetype ? generateLinetypeBit : 0);
    v.integer(70, flags);
    closed = (flags & closedBit) != 0;
    generateLinetype = (flags & generateLinetypeBit) != 0;
    v.real(43, constantWidth, 0.0);
    v.real(38, elevation, 0.0);
    v.real(39, thickness, 0.0);
    if (v.reading()) {
        readPoints(v, points);
    } else {
        writePoints(v, points);
    }
    v.point(210, extrusion, worldZAxis);
}

namespace {

std::string_view polylineMarker(int flags)
{
    if (flags & HeavyPolyline::polyfaceMesh) {
        return "AcDbPolyFaceMesh";
    }
    if (flags & HeavyPolyline::meshFlag) {
        return "AcDbPolygonMesh";
    }
    return flags & HeavyPolyline::inSpace ? "AcDb3dPolyline" : "AcDb2dPolyline";
}

// A polyface mesh's face stands among the vertices, but is none.
bool isFace(int flags)
{
    return (flags & Vertex::ofPolyfaceMesh) != 0 && (flags & Vertex::ofMesh) == 0;
}

std::string_view vertexMarker(int flags)
{
    if (flags & Vertex::ofPolyfaceMesh) {
        return isFace(flags) ? "AcDbFaceRecord" : "AcDbPolyFaceMeshVertex";
    }
    if (flags & Vertex::ofMesh) {
        return "AcDbPolygonMeshVertex";
    }
    return flags & Vertex::inSpace ? "AcDb3dPolylineVertex" : "AcDb2dVertex";
}

} // namespace

void HeavyPolyline::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass(polylineMarker(flags), {"AcDb2dPolyline", "AcDb3dPolyline", "AcDbPolygonMesh", "AcDbPolyFaceMesh"});
    v.take({66}); // announces the vertices, which are there anyway
    v.putInteger(66, 1);
    Vector3 base{0, 0, elevation};
    v.point(10, base, {});
    elevation = base.z;
    v.real(39, thickness, 0.0);
    v.integer(70, flags);
    v.real(40, startWidth, 0.0);
    v.real(41, endWidth, 0.0);
    v.integer(71, meshCountM, 0);
    v.integer(72, meshCountN, 0);
    v.integer(73, smoothCountM, 0);
    v.integer(74, smoothCountN, 0);
    v.integer(75, surfaceType, 0);
    v.point(210, extrusion, worldZAxis);
}

void Vertex::fields(FieldVisitor& v)
{
    Entity::fields(v);
    // A face has no marker of a vertex.
    if (v.reading() || !isFace(flags)) {
        v.subclass("AcDbVertex");
    }
    v.subclass(vertexMarker(flags), {"AcDb2dVertex", "AcDb3dPolylineVertex", "AcDbPolygonMeshVertex",
                                     "AcDbPolyFaceMeshVertex", "AcDbFaceRecord"});
    v.point(10, position, {});
    v.maybe(40, startWidth);
    v.maybe(41, endWidth);
    v.real(42, bulge, 0.0);
    v.integer(70, flags);
    v.real(50, tangent, 0.0);
    for (int i = 0; i < 4; ++i) {
        v.integer(71 + i, face[static_cast<std::size_t>(i)], 0);
    }
}

} // namespace drawing
