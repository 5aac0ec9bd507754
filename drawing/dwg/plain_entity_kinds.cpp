// Points, lines, areas and block references.

#include <array>

#include "drawing/dwg/kinds.h"

namespace drawing::dwg {

namespace {

void line(ObjectFields& f)
{
    f.marker("AcDbLine");
    Vector3 start;
    Vector3 end;
    f.take(10, start);
    f.take(11, end);
    bool flat = start.z == 0 && end.z == 0;
    f.bits.bit(flat);
    f.bits.rawReal(start.x);
    f.bits.realNear(end.x, start.x);
    f.bits.rawReal(start.y);
    f.bits.realNear(end.y, start.y);
    if (!flat) {
        f.bits.rawReal(start.z);
        f.bits.realNear(end.z, start.z);
    }
    f.thickness();
    f.give(10, start);
    f.give(11, end);
    f.extrusion();
}

void point(ObjectFields& f)
{
    f.marker("AcDbPoint");
    f.point3(10);
    f.thickness();
    f.extrusion();
    f.angle(50, 0.0);
}

void circle(ObjectFields& f)
{
    f.marker("AcDbCircle");
    f.point3(10);
    f.real(40);
    f.thickness();
    f.extrusion();
}

void arc(ObjectFields& f)
{
    circle(f);
    f.marker("AcDbArc");
    f.angle(50);
    f.angle(51);
}

void ellipse(ObjectFields& f)
{
    f.marker("AcDbEllipse");
    f.point3(10);
    f.point3(11);
    f.plainExtrusion();
    f.real(40);
    f.real(41);
    f.real(42);
}

void endlessLine(ObjectFields& f)
{
    f.marker(f.recordName() == "RAY" ? "AcDbRay" : "AcDbXline");
    f.point3(10);
    f.point3(11);
}

// The corners lie in one plane, whose height stands once.
void solid(ObjectFields& f)
{
    f.marker("AcDbTrace");
    std::array<Vector3, 4> corners;
    for (int i = 0; i < 4; ++i) {
        const auto corner = static_cast<std::size_t>(i);
        if (!f.take(10 + i, corners[corner]) && i > 0) {
            corners[corner] = corners[corner - 1];
        }
    }
    double elevation = corners[0].z;
    f.thickness();
    f.bits.real(elevation);
    for (int i = 0; i < 4; ++i) {
        Vector3& corner = corners[static_cast<std::size_t>(i)];
        f.bits.rawFlatPoint(corner);
        corner.z = elevation;
        f.give(10 + i, corner);
    }
    f.extrusion();
}

// A face: each corner is told by what differs from the one before.
void face(ObjectFields& f)
{
    f.marker("AcDbFace");
    std::array<Vector3, 4> corners;
    for (int i = 0; i < 4; ++i) {
        const auto corner = static_cast<std::size_t>(i);
        if (!f.take(10 + i, corners[corner]) && i > 0) {
            corners[corner] = corners[corner - 1];
        }
    }
    int invisible = 0;
    f.take(70, invisible);
    bool allVisible = invisible == 0;
    bool flat = corners[0].z == 0;
    f.bits.bit(allVisible);
    f.bits.bit(flat);
    f.bits.rawFlatPoint(corners[0]);
    if (!flat) {
        f.bits.rawReal(corners[0].z);
    }
    for (std::size_t i = 1; i < corners.size(); ++i) {
        f.bits.realNear(corners[i].x, corners[i - 1].x);
        f.bits.realNear(corners[i].y, corners[i - 1].y);
        f.bits.realNear(corners[i].z, corners[i - 1].z);
    }
    if (!allVisible) {
        f.bits.shortNumber(invisible);
    }
    for (int i = 0; i < 4; ++i) {
        f.give(10 + i, corners[static_cast<std::size_t>(i)]);
    }
    if (invisible != 0) {
        f.give(70, invisible);
    }
}

enum ScaleForm
{
    threeScales = 0,
    unitX = 1,
    uniform = 2,
    unitScale = 3,
};

void scale(ObjectFields& f)
{
    Vector3 value{1, 1, 1};
    f.take(41, value.x);
    f.take(42, value.y);
    f.take(43, value.z);
    const bool same = value.y == value.x && value.z == value.x;
    int form = same ? (value.x == 1 ? unitScale : uniform) : value.x == 1 ? unitX : threeScales;
    f.bits.bits(form, 2);
    if (form == uniform || form == threeScales) {
        f.bits.rawReal(value.x);
    }
    if (form == uniform) {
        value.y = value.z = value.x;
    } else if (form != unitScale) {
        f.bits.realNear(value.y, value.x);
        f.bits.realNear(value.z, value.x);
    }
    const double factors[] = {value.x, value.y, value.z};
    for (int i = 0; i < 3; ++i) {
        if (factors[i] != 1) {
            f.give(41 + i, factors[i]);
        }
    }
}

void referenceHead(ObjectFields& f)
{
    f.point3(10);
    scale(f);
    f.angle(50, 0.0);
    f.plainExtrusion();
    f.bits.bit(f.links.hasParts);
    f.give(66, f.links.hasParts ? 1 : 0);
}

void referenceTail(ObjectFields& f)
{
    f.name(2, "BLOCK_RECORD");
    if (f.links.hasParts) {
        f.bits.handle(f.links.first, Reference::SoftPointer);
        f.bits.handle(f.links.last, Reference::SoftPointer);
        f.bits.handle(f.links.sequenceEnd, Reference::HardOwner);
    }
}

void blockReference(ObjectFields& f)
{
    f.marker("AcDbBlockReference");
    referenceHead(f);
    referenceTail(f);
}

void repeatedReference(ObjectFields& f)
{
    f.marker("AcDbMInsertBlock");
    referenceHead(f);
    f.shortNumber(70, 1);
    f.shortNumber(71, 1);
    f.real(44, 0.0);
    f.real(45, 0.0);
    referenceTail(f);
}

bool isRepeated(const Record& record)
{
    for (const PlacedGroup& group : record.groups) {
        if (group.code == 100 && group.value == "AcDbMInsertBlock") {
            return true;
        }
    }
    return false;
}

// What brackets a block; all else about it stands in the block's header.
void blockBegin(ObjectFields& f)
{
    f.marker("AcDbBlockBegin");
    f.text(2);
}

void noFields(ObjectFields&) {}

} // namespace

std::span<const Kind> plainEntityKinds()
{
    static constexpr Kind kinds[] = {
        {blockType, true, "BLOCK", blockBegin}, {endBlockType, true, "ENDBLK", noFields},
        {0x06, true, "SEQEND", noFields},       {0x08, true, "INSERT", repeatedReference, isRepeated},
        {0x07, true, "INSERT", blockReference}, {0x11, true, "ARC", arc},
        {0x12, true, "CIRCLE", circle},         {0x13, true, "LINE", line},
        {0x1B, true, "POINT", point},           {0x1C, true, "3DFACE", face},
        {0x1F, true, "SOLID", solid},           {0x20, true, "TRACE", solid},
        {0x23, true, "ELLIPSE", ellipse},       {0x28, true, "RAY", endlessLine},
        {0x29, true, "XLINE", endlessLine},
    };
    return kinds;
}

} // namespace drawing::dwg
