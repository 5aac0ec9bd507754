// Hatches. The order of their groups is that of the bits, so that codes with several meanings take care of themselves.

#include "drawing/dwg/kinds.h"
#include "drawing/error.h"
#include "drawing/hatch.h"

namespace drawing::dwg {

namespace {

constexpr unsigned rawPointBits = 128;
constexpr int derivedPath = 4;

enum EdgeKind
{
    lineEdge = 1,
    circleEdge = 2,
    ellipseEdge = 3,
    splineEdge = 4,
};

int countField(ObjectFields& f, int code, unsigned leastBits)
{
    int count = 0;
    f.take(code, count);
    f.bits.count(count, leastBits);
    f.give(code, count);
    return count;
}

int numberField(ObjectFields& f, int code, void (BitTransfer::*move)(int&))
{
    int value = 0;
    f.take(code, value);
    (f.bits.*move)(value);
    f.give(code, value);
    return value;
}

int bitField(ObjectFields& f, int code)
{
    int value = 0;
    f.take(code, value);
    bool bit = value != 0;
    f.bits.bit(bit);
    f.give(code, bit ? 1 : 0);
    return bit ? 1 : 0;
}

void splineEdgeFields(ObjectFields& f)
{
    f.longNumber(94);
    const bool rational = bitField(f, 73) != 0;
    bitField(f, 74);
    int knots = 0;
    int points = 0;
    f.take(95, knots);
    f.take(96, points);
    f.bits.count(knots, 2);
    f.bits.count(points, rawPointBits);
    f.give(95, knots);
    f.give(96, points);
    for (int i = 0; i < knots; ++i) {
        f.real(40);
    }
    for (int i = 0; i < points; ++i) {
        f.rawPoint2(10);
        if (rational) {
            f.real(42);
        }
    }
}

void edge(ObjectFields& f)
{
    const int kind = numberField(f, 72, &BitTransfer::byte);
    switch (kind) {
    case lineEdge:
        f.rawPoint2(10);
        f.rawPoint2(11);
        break;
    case circleEdge:
    case ellipseEdge:
        f.rawPoint2(10);
        if (kind == ellipseEdge) {
            f.rawPoint2(11);
        }
        f.real(40);
        f.angle(50);
        f.angle(51);
        bitField(f, 73);
        break;
    case splineEdge:
        splineEdgeFields(f);
        break;
    default:
        throw DrawingError("a hatch has an edge of an unknown kind");
    }
}

void polylinePath(ObjectFields& f)
{
    const bool bulges = bitField(f, 72) != 0;
    bitField(f, 73);
    const int count = countField(f, 93, rawPointBits);
    for (int i = 0; i < count; ++i) {
        f.rawPoint2(10);
        if (bulges) {
            f.real(42);
        }
    }
}

// Gives back the path's flags. The number of its sources is told here, their handles stand with all other handles.
int path(ObjectFields& f)
{
    const int flags = numberField(f, 92, &BitTransfer::longNumber);
    if (flags & HatchPath::polyline) {
        polylinePath(f);
    } else {
        constexpr unsigned leastEdgeBits = 8;
        const int count = countField(f, 93, leastEdgeBits);
        for (int i = 0; i < count; ++i) {
            edge(f);
        }
    }
    int sources = 0;
    f.take(97, sources);
    f.bits.handleCount(sources);
    f.give(97, sources);
    for (int i = 0; i < sources; ++i) {
        f.handle(330, Reference::SoftPointer);
    }
    return flags;
}

void pattern(ObjectFields& f)
{
    f.angle(52);
    f.real(41);
    bitField(f, 77);
    int lines = 0;
    f.take(78, lines);
    constexpr unsigned leastLineBits = 12;
    f.bits.shortCount(lines, leastLineBits);
    f.give(78, lines);
    for (int i = 0; i < lines; ++i) {
        f.angle(53);
        for (int code = 43; code <= 46; ++code) {
            f.real(code);
        }
        int dashes = 0;
        f.take(79, dashes);
        f.bits.shortCount(dashes, 2);
        f.give(79, dashes);
        for (int dash = 0; dash < dashes; ++dash) {
            f.real(49);
        }
    }
}

void hatch(ObjectFields& f)
{
    f.marker("AcDbHatch");
    Vector3 base;
    f.take(10, base);
    f.bits.real(base.z);
    f.give(10, base);
    f.plainExtrusion();
    f.text(2);
    const bool solid = bitField(f, 70) != 0;
    bitField(f, 71);
    constexpr unsigned leastPathBits = 6;
    const int paths = countField(f, 91, leastPathBits);
    bool derived = false;
    for (int i = 0; i < paths; ++i) {
        derived = (path(f) & derivedPath) != 0 || derived;
    }
    f.shortNumber(75);
    f.shortNumber(76);
    if (!solid) {
        pattern(f);
    } else {
        f.takeAll({52, 41, 77, 78});
    }
    if (derived) {
        f.real(47);
    }
    const int seeds = countField(f, 98, rawPointBits);
    for (int i = 0; i < seeds; ++i) {
        f.rawPoint2(10);
    }
}

} // namespace

std::span<const Kind> hatchKinds()
{
    static constexpr Kind kinds[] = {{0x4E, true, "HATCH", hatch}};
    return kinds;
}

} // namespace drawing::dwg
