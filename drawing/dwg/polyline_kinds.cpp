// Both kinds of polyline, the old one with its vertices.

#include "drawing/dwg/kinds.h"
#include "drawing/entities.h"

namespace drawing::dwg {

namespace {

// Bits of a light polyline: what follows, and two of its own.
enum LightFlag
{
    hasNormal = 1,
    hasThickness = 2,
    hasConstantWidth = 4,
    hasElevation = 8,
    hasBulges = 16,
    hasWidths = 32,
    generateLinetype = 256,
    closed = 512,
};

constexpr int dxfClosed = 1;
constexpr int dxfGenerateLinetype = 128;

std::vector<PolylinePoint> takePoints(ObjectFields& f, bool& bulges, bool& widths)
{
    std::vector<PolylinePoint> points;
    for (const PlacedGroup& group : f.takeAll({10, 20, 40, 41, 42})) {
        if (group.code == 10) {
            points.push_back({{group.real(), 0}});
        } else if (!points.empty()) {
            PolylinePoint& last = points.back();
            double& value = group.code == 20   ? last.position.y
                            : group.code == 40 ? last.startWidth
                            : group.code == 41 ? last.endWidth
                                               : last.bulge;
            value = group.real();
        }
    }
    for (const PolylinePoint& point : points) {
        bulges = bulges || point.bulge != 0;
        widths = widths || point.startWidth != 0 || point.endWidth != 0;
    }
    return points;
}

void lightPoints(ObjectFields& f, std::vector<PolylinePoint>& points, int flags)
{
    constexpr unsigned leastBits = 4;
    auto count = static_cast<int>(points.size());
    f.bits.count(count, leastBits);
    int bulgeCount = count;
    if (flags & hasBulges) {
        f.bits.count(bulgeCount, 2);
    }
    int widthCount = count;
    if (flags & hasWidths) {
        f.bits.count(widthCount, leastBits);
    }
    points.resize(static_cast<std::size_t>(count));
    Vector2 before;
    for (std::size_t i = 0; i < points.size(); ++i) {
        Vector2& position = points[i].position;
        if (i == 0) {
            f.bits.rawFlatPoint(position);
        } else {
            f.bits.realNear(position.x, before.x);
            f.bits.realNear(position.y, before.y);
        }
        before = position;
    }
    for (int i = 0; (flags & hasBulges) != 0 && i < bulgeCount; ++i) {
        PolylinePoint spare;
        f.bits.real((i < count ? points[static_cast<std::size_t>(i)] : spare).bulge);
    }
    for (int i = 0; (flags & hasWidths) != 0 && i < widthCount; ++i) {
        PolylinePoint spare;
        PolylinePoint& point = i < count ? points[static_cast<std::size_t>(i)] : spare;
        f.bits.real(point.startWidth);
        f.bits.real(point.endWidth);
    }
}

void givePoints(ObjectFields& f, const std::vector<PolylinePoint>& points)
{
    for (const PolylinePoint& point : points) {
        f.give(10, point.position);
        if (point.startWidth != 0 || point.endWidth != 0) {
            f.give(40, point.startWidth);
            f.give(41, point.endWidth);
        }
        if (point.bulge != 0) {
            f.give(42, point.bulge);
        }
    }
}

void lightPolyline(ObjectFields& f)
{
    f.marker("AcDbPolyline");
    int dxfFlags = 0;
    double constantWidth = 0;
    double elevation = 0;
    double thickness = 0;
    Vector3 normal = worldZAxis;
    f.take(70, dxfFlags);
    f.take(43, constantWidth);
    f.take(38, elevation);
    f.take(39, thickness);
    f.take(210, normal);
    bool bulges = false;
    bool widths = false;
    std::vector<PolylinePoint> points = takePoints(f, bulges, widths);
    int flags = (normal != worldZAxis ? hasNormal : 0) | (thickness != 0 ? hasThickness : 0) |
                (constantWidth != 0 ? hasConstantWidth : 0) | (elevation != 0 ? hasElevation : 0) |
                (bulges ? hasBulges : 0) | (widths ? hasWidths : 0) |
                ((dxfFlags & dxfGenerateLinetype) != 0 ? generateLinetype : 0) |
                ((dxfFlags & dxfClosed) != 0 ? closed : 0);
    f.bits.shortNumber(flags);
    const auto option = [&](int flag, double& value, int code) {
        if (flags & flag) {
            f.bits.real(value);
            f.give(code, value);
        }
    };
    f.give(70, (flags & closed ? dxfClosed : 0) | (flags & generateLinetype ? dxfGenerateLinetype : 0));
    option(hasConstantWidth, constantWidth, 43);
    option(hasElevation, elevation, 38);
    option(hasThickness, thickness, 39);
    if (flags & hasNormal) {
        f.bits.point(normal);
        f.give(210, normal);
    }
    lightPoints(f, points, flags);
    f.expect(2 * points.size());
    f.give(90, static_cast<int>(points.size()));
    givePoints(f, points);
}

void parts(ObjectFields& f)
{
    f.bits.handle(f.links.first, Reference::SoftPointer);
    f.bits.handle(f.links.last, Reference::SoftPointer);
    f.bits.handle(f.links.sequenceEnd, Reference::HardOwner);
}

void flatPolyline(ObjectFields& f)
{
    f.marker("AcDb2dPolyline");
    Vector3 base;
    f.take(10, base);
    f.shortNumber(70);
    f.shortNumber(75, 0);
    f.real(40, 0.0);
    f.real(41, 0.0);
    f.thickness();
    f.bits.real(base.z);
    f.give(10, base);
    f.extrusion();
    parts(f);
}

// In space only what follows from the kind of spline is told, and whether it closes.
void spacePolyline(ObjectFields& f)
{
    constexpr int quadratic = 5;
    constexpr int cubic = 6;
    f.marker("AcDb3dPolyline");
    int flags = 0;
    int surface = 0;
    f.take(70, flags);
    f.take(75, surface);
    int smooth = surface == quadratic ? 1 : surface == cubic ? 2 : 0;
    int ends = flags & HeavyPolyline::closedFlag;
    f.bits.byte(smooth);
    f.bits.byte(ends);
    const int closedBit = (ends & 1) != 0 ? HeavyPolyline::closedFlag : 0;
    f.give(70, HeavyPolyline::inSpace | closedBit | (smooth != 0 ? HeavyPolyline::splineFit : 0));
    if (smooth != 0) {
        f.give(75, (smooth & 1) != 0 ? quadratic : cubic);
    }
    parts(f);
}

void polyfaceMesh(ObjectFields& f)
{
    f.marker("AcDbPolyFaceMesh");
    f.give(70, static_cast<int>(HeavyPolyline::polyfaceMesh));
    f.shortNumber(71, 0);
    f.shortNumber(72, 0);
    parts(f);
}

void mesh(ObjectFields& f)
{
    f.marker("AcDbPolygonMesh");
    int flags = 0;
    f.take(70, flags);
    flags &= ~static_cast<int>(HeavyPolyline::meshFlag);
    f.bits.shortNumber(flags);
    f.give(70, flags | HeavyPolyline::meshFlag);
    f.shortNumber(75, 0);
    f.shortNumber(71, 0);
    f.shortNumber(72, 0);
    f.shortNumber(73, 0);
    f.shortNumber(74, 0);
    parts(f);
}

int polylineFlags(const Record& record)
{
    bool inside = false;
    for (const PlacedGroup& group : record.groups) {
        inside = inside || (group.code == 100 && group.value != "AcDbEntity");
        if (inside && group.code == 70) {
            return group.integer();
        }
    }
    return 0;
}

bool isInSpace(const Record& record)
{
    return (polylineFlags(record) & HeavyPolyline::inSpace) != 0;
}

bool isMesh(const Record& record)
{
    return (polylineFlags(record) & HeavyPolyline::meshFlag) != 0;
}

bool isPolyface(const Record& record)
{
    return (polylineFlags(record) & HeavyPolyline::polyfaceMesh) != 0;
}

// A negative start width stands for both.
void flatVertex(ObjectFields& f)
{
    f.marker("AcDbVertex");
    f.marker("AcDb2dVertex");
    f.byte(70);
    f.point3(10);
    double start = 0;
    double end = 0;
    const bool hasStart = f.take(40, start);
    const bool hasEnd = f.take(41, end);
    double stored = hasStart && hasEnd && start == end && start > 0 ? -start : start;
    f.bits.real(stored);
    if (stored < 0) {
        start = end = -stored;
    } else {
        start = stored;
        f.bits.real(end);
    }
    if (start != 0 || end != 0) {
        f.give(40, start);
        f.give(41, end);
    }
    f.real(42, 0.0);
    f.angle(50, 0.0);
}

void pointVertex(ObjectFields& f, std::string_view marker, int ofKind)
{
    f.marker("AcDbVertex");
    f.marker(marker);
    int flags = 0;
    f.take(70, flags);
    f.bits.byte(flags);
    f.give(70, flags | ofKind);
    f.point3(10);
}

void spaceVertex(ObjectFields& f)
{
    pointVertex(f, "AcDb3dPolylineVertex", Vertex::inSpace);
}

void meshVertex(ObjectFields& f)
{
    pointVertex(f, "AcDbPolygonMeshVertex", Vertex::ofMesh);
}

void polyfaceVertex(ObjectFields& f)
{
    pointVertex(f, "AcDbPolyFaceMeshVertex", Vertex::ofMesh | Vertex::ofPolyfaceMesh);
}

void polyfaceFace(ObjectFields& f)
{
    f.marker("AcDbFaceRecord");
    f.give(70, static_cast<int>(Vertex::ofPolyfaceMesh));
    for (int code = 71; code <= 74; ++code) {
        f.shortNumber(code, 0);
    }
}

bool isFace(const Record& record)
{
    constexpr int both = Vertex::ofPolyfaceMesh | Vertex::ofMesh;
    return (polylineFlags(record) & both) == Vertex::ofPolyfaceMesh;
}

bool isPolyfaceVertex(const Record& record)
{
    return (polylineFlags(record) & Vertex::ofPolyfaceMesh) != 0;
}

bool isMeshVertex(const Record& record)
{
    return (polylineFlags(record) & Vertex::ofMesh) != 0;
}

bool isSpaceVertex(const Record& record)
{
    return (polylineFlags(record) & Vertex::inSpace) != 0;
}

} // namespace

std::span<const Kind> polylineKinds()
{
    static constexpr Kind kinds[] = {
        {0x4D, true, "LWPOLYLINE", lightPolyline},
        {0x10, true, "POLYLINE", spacePolyline, isInSpace},
        {0x1E, true, "POLYLINE", mesh, isMesh},
        {0x1D, true, "POLYLINE", polyfaceMesh, isPolyface},
        {0x0F, true, "POLYLINE", flatPolyline},
        {0x0E, true, "VERTEX", polyfaceFace, isFace},
        {0x0D, true, "VERTEX", polyfaceVertex, isPolyfaceVertex},
        {0x0C, true, "VERTEX", meshVertex, isMeshVertex},
        {0x0B, true, "VERTEX", spaceVertex, isSpaceVertex},
        {0x0A, true, "VERTEX", flatVertex},
    };
    return kinds;
}

} // namespace drawing::dwg
