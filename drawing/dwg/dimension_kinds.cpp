// Dimensions: what all of them have, and the points of each kind.

#include "drawing/dwg/kinds.h"

namespace drawing::dwg {

namespace {

// Bits of a dimension's group 70, besides the kind in the lowest three.
enum DimensionFlag
{
    ownBlock = 32, // the block belongs to this dimension alone
    ordinateAlongX = 64,
    textPlaced = 128, // by the user
};

// What the form tells of them: the text's flag is turned round.
enum StoredFlag
{
    textAtUsualPlace = 1,
    storedOwnBlock = 2,
};

/// What all dimensions have, up to the points of their kind. Gives back group 70 where it is known.
int common(ObjectFields& f, int kind)
{
    int flags = ownBlock;
    f.take(70, flags);
    f.plainExtrusion();
    Vector3 middle;
    f.take(11, middle);
    f.bits.rawFlatPoint(middle);
    f.bits.real(middle.z);
    f.give(11, middle);
    int stored = ((flags & textPlaced) == 0 ? textAtUsualPlace : 0) | ((flags & ownBlock) != 0 ? storedOwnBlock : 0);
    f.bits.byte(stored);
    flags = kind | (flags & ordinateAlongX) | (stored & textAtUsualPlace ? 0 : textPlaced) |
            (stored & storedOwnBlock ? ownBlock : 0);
    f.text(1, "");
    f.angle(53, 0.0);
    f.angle(51, 0.0);
    // The scale and the turn with which the block is inserted.
    Vector3 scale{1, 1, 1};
    f.bits.point(scale);
    f.angle(54, 0.0);
    f.shortNumber(71, 5);
    f.shortNumber(72, 1);
    f.real(41, 1.0);
    f.real(42, 0.0);
    Vector2 insertion;
    f.take(12, insertion);
    f.bits.rawFlatPoint(insertion);
    if (insertion != Vector2{}) {
        f.give(12, Vector3{insertion.x, insertion.y, 0});
    }
    return flags;
}

// The style and the block stand in the section of what all have, their handles behind all else.
void references(ObjectFields& f, std::string& style, std::string& block)
{
    Handle styleHandle = f.reading() ? 0 : f.names.obtain("DIMSTYLE", style);
    Handle blockHandle = f.reading() || block.empty() ? 0 : f.names.find("BLOCK_RECORD", block);
    f.bits.handle(styleHandle, Reference::HardPointer);
    f.bits.handle(blockHandle, Reference::HardPointer);
    f.give(3, f.names.nameOf(styleHandle));
    f.give(2, f.names.nameOf(blockHandle));
}

using Rest = void (*)(ObjectFields& f, int& flags);

constexpr std::string_view commonMarker = "AcDbDimension";

// The points of a kind come last among the numbers; group 70 and the handles belong to what all have.
void dimension(ObjectFields& f, int kind, std::string_view marker, Rest rest)
{
    std::string style = "Standard";
    std::string block;
    f.marker(commonMarker);
    int flags = common(f, kind);
    f.take(3, style);
    f.take(2, block);
    f.marker(marker);
    rest(f, flags);
    f.again(commonMarker);
    references(f, style, block);
    f.give(70, flags);
}

// The point that all kinds have stands in the first section.
void definitionPoint(ObjectFields& f, std::string_view marker)
{
    f.again(commonMarker);
    f.point3(10);
    f.again(marker);
}

constexpr std::string_view aligned = "AcDbAlignedDimension";

void alignedPoints(ObjectFields& f)
{
    f.point3(13);
    f.point3(14);
    definitionPoint(f, aligned);
    f.angle(52, 0.0);
}

void linearDimension(ObjectFields& f)
{
    dimension(f, 0, aligned, [](ObjectFields& g, int&) {
        alignedPoints(g);
        g.angle(50, 0.0);
        g.marker("AcDbRotatedDimension");
    });
}

void alignedDimension(ObjectFields& f)
{
    dimension(f, 1, aligned, [](ObjectFields& g, int&) { alignedPoints(g); });
}

void angularDimension(ObjectFields& f)
{
    dimension(f, 2, "AcDb2LineAngularDimension", [](ObjectFields& g, int&) {
        Vector3 arc;
        g.take(16, arc);
        g.bits.rawFlatPoint(arc);
        g.point3(13);
        g.point3(14);
        g.point3(15);
        g.give(16, arc);
        definitionPoint(g, "AcDb2LineAngularDimension");
    });
}

void diameterDimension(ObjectFields& f)
{
    dimension(f, 3, "AcDbDiametricDimension", [](ObjectFields& g, int&) {
        g.point3(15);
        definitionPoint(g, "AcDbDiametricDimension");
        g.real(40, 0.0);
    });
}

void radiusDimension(ObjectFields& f)
{
    dimension(f, 4, "AcDbRadialDimension", [](ObjectFields& g, int&) {
        definitionPoint(g, "AcDbRadialDimension");
        g.point3(15);
        g.real(40, 0.0);
    });
}

void threePointDimension(ObjectFields& f)
{
    dimension(f, 5, "AcDb3PointAngularDimension", [](ObjectFields& g, int&) {
        definitionPoint(g, "AcDb3PointAngularDimension");
        g.point3(13);
        g.point3(14);
        g.point3(15);
    });
}

void ordinateDimension(ObjectFields& f)
{
    dimension(f, 6, "AcDbOrdinateDimension", [](ObjectFields& g, int& flags) {
        definitionPoint(g, "AcDbOrdinateDimension");
        g.point3(13);
        g.point3(14);
        int alongX = (flags & ordinateAlongX) != 0 ? 1 : 0;
        g.bits.byte(alongX);
        flags = (flags & ~ordinateAlongX) | (alongX != 0 ? ordinateAlongX : 0);
    });
}

int kindOf(const Record& record)
{
    constexpr int kindBits = 7;
    bool inside = false;
    for (const PlacedGroup& group : record.groups) {
        inside = inside || (group.code == 100 && group.value == commonMarker);
        if (inside && group.code == 70) {
            return group.integer() & kindBits;
        }
    }
    return 0;
}

template <int number> bool isKind(const Record& record)
{
    return kindOf(record) == number;
}

} // namespace

std::span<const Kind> dimensionKinds()
{
    static constexpr Kind kinds[] = {
        {0x14, true, "DIMENSION", ordinateDimension, isKind<6>},
        {0x15, true, "DIMENSION", linearDimension, isKind<0>},
        {0x16, true, "DIMENSION", alignedDimension, isKind<1>},
        {0x17, true, "DIMENSION", threePointDimension, isKind<5>},
        {0x18, true, "DIMENSION", angularDimension, isKind<2>},
        {0x19, true, "DIMENSION", radiusDimension, isKind<4>},
        {0x1A, true, "DIMENSION", diameterDimension, isKind<3>},
    };
    return kinds;
}

} // namespace drawing::dwg
