// Texts, attributes and their definitions, text of several lines, tolerances.

#include <cmath>
#include <numbers>

#include "drawing/dwg/kinds.h"

namespace drawing::dwg {

namespace {

// What is left out of a line of text because it has its usual value.
enum Omitted
{
    noElevation = 0x01,
    noAlignmentPoint = 0x02,
    noOblique = 0x04,
    noRotation = 0x08,
    unitWidth = 0x10,
    noGeneration = 0x20,
    leftAligned = 0x40,
    onBaseline = 0x80,
};

struct TextLine
{
    Vector3 position;
    Vector3 alignmentPoint;
    bool aligned = false;
    double oblique = 0;
    double rotation = 0;
    double height = 0;
    double width = 1;
    std::string text;
    int generation = 0;
    int horizontal = 0;
    int vertical = 0;
};

int omittedOf(const TextLine& line)
{
    return (line.position.z == 0 ? noElevation : 0) | (line.aligned ? 0 : noAlignmentPoint) |
           (line.oblique == 0 ? noOblique : 0) | (line.rotation == 0 ? noRotation : 0) |
           (line.width == 1 ? unitWidth : 0) | (line.generation == 0 ? noGeneration : 0) |
           (line.horizontal == 0 ? leftAligned : 0) | (line.vertical == 0 ? onBaseline : 0);
}

void rawAngle(BitTransfer& bits, double& degrees)
{
    double radians = degrees * std::numbers::pi / 180;
    bits.rawReal(radians);
    degrees = radians * 180 / std::numbers::pi;
}

void textBits(ObjectFields& f, TextLine& line)
{
    int omitted = omittedOf(line);
    f.bits.byte(omitted);
    const auto has = [&](Omitted flag) { return (omitted & flag) == 0; };
    if (has(noElevation)) {
        f.bits.rawReal(line.position.z);
    }
    f.bits.rawFlatPoint(line.position);
    line.aligned = has(noAlignmentPoint);
    if (line.aligned) {
        f.bits.realNear(line.alignmentPoint.x, line.position.x);
        f.bits.realNear(line.alignmentPoint.y, line.position.y);
        line.alignmentPoint.z = line.position.z;
    }
    f.extrusion();
    f.thickness();
    if (has(noOblique)) {
        rawAngle(f.bits, line.oblique);
    }
    if (has(noRotation)) {
        rawAngle(f.bits, line.rotation);
    }
    f.bits.rawReal(line.height);
    if (has(unitWidth)) {
        f.bits.rawReal(line.width);
    }
    f.bits.text(line.text);
    if (has(noGeneration)) {
        f.bits.shortNumber(line.generation);
    }
    if (has(leftAligned)) {
        f.bits.shortNumber(line.horizontal);
    }
    if (has(onBaseline)) {
        f.bits.shortNumber(line.vertical);
    }
}

void takeLine(ObjectFields& f, TextLine& line)
{
    f.take(10, line.position);
    f.take(40, line.height);
    f.take(1, line.text);
    f.take(50, line.rotation);
    f.take(41, line.width);
    f.take(51, line.oblique);
    f.take(71, line.generation);
    f.take(72, line.horizontal);
    line.aligned = f.take(11, line.alignmentPoint);
}

void giveLine(ObjectFields& f, const TextLine& line)
{
    f.give(10, line.position);
    f.give(40, line.height);
    f.give(1, line.text);
    f.give(50, line.rotation);
    f.give(41, line.width);
    f.give(51, line.oblique);
    f.give(71, line.generation);
    f.give(72, line.horizontal);
    if (line.aligned || line.horizontal != 0 || line.vertical != 0) {
        f.give(11, line.alignmentPoint);
    }
}

// The vertical alignment stands in the section behind the text's own.
void textLine(ObjectFields& f, std::string_view verticalMarker, int verticalCode)
{
    f.marker("AcDbText");
    TextLine line;
    takeLine(f, line);
    f.takeAhead(verticalMarker, verticalCode, line.vertical);
    textBits(f, line);
    giveLine(f, line);
    f.name(7, "STYLE", Reference::HardPointer, "Standard");
    f.marker(verticalMarker);
    f.give(verticalCode, line.vertical);
}

void text(ObjectFields& f)
{
    textLine(f, "AcDbText", 73);
}

void attribute(ObjectFields& f)
{
    textLine(f, "AcDbAttribute", 74);
    f.text(2);
    f.shortNumber(73, 0);
    f.byte(70);
}

void attributeDefinition(ObjectFields& f)
{
    textLine(f, "AcDbAttributeDefinition", 74);
    f.text(2);
    f.shortNumber(73, 0);
    f.byte(70);
    f.text(3);
}

// In DXF a long text is cut into pieces.
void pieces(ObjectFields& f)
{
    std::string text;
    for (const PlacedGroup& piece : f.takeAll({1, 3})) {
        text += piece.value;
    }
    f.bits.text(text);
    f.give(1, text);
}

void multilineText(ObjectFields& f)
{
    f.marker("AcDbMText");
    f.point3(10);
    f.plainExtrusion();
    Vector3 direction{1, 0, 0};
    double rotation = 0;
    // A rotation holds where no direction is told.
    if (!f.take(11, direction) && f.take(50, rotation)) {
        const double angle = rotation * std::numbers::pi / 180;
        direction = {std::cos(angle), std::sin(angle), 0};
    }
    f.bits.point(direction);
    f.give(11, direction);
    f.real(41, 0.0);
    f.real(40);
    f.shortNumber(71);
    f.shortNumber(72);
    f.real(43, 0.0);
    f.real(42, 0.0);
    pieces(f);
    f.shortNumber(73, 1);
    f.real(44, 1.0);
    bool reserved = false;
    f.bits.bit(reserved);
    f.name(7, "STYLE", Reference::HardPointer, "Standard");
}

void tolerance(ObjectFields& f)
{
    f.marker("AcDbFcf");
    f.point3(10);
    f.point3(11, Vector3{1, 0, 0});
    f.plainExtrusion();
    f.text(1);
    f.name(3, "DIMSTYLE");
}

} // namespace

std::span<const Kind> textKinds()
{
    static constexpr Kind kinds[] = {
        {0x01, true, "TEXT", text},
        {0x02, true, "ATTRIB", attribute},
        {0x03, true, "ATTDEF", attributeDefinition},
        {0x2C, true, "MTEXT", multilineText},
        {0x2E, true, "TOLERANCE", tolerance},
    };
    return kinds;
}

} // namespace drawing::dwg
