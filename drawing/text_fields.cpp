// The fields of the text entities.

#include <cmath>
#include <numbers>

#include "drawing/entities.h"
#include "drawing/field_visitor.h"
#include "drawing/text_encoding.h"

namespace drawing {

void Text::textFields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbText");
    v.real(39, thickness, 0.0);
    v.point(10, position, {});
    v.real(40, height);
    v.string(1, text);
    v.real(50, rotation, 0.0);
    v.real(41, widthFactor, 1.0);
    v.real(51, oblique, 0.0);
    v.string(7, style, "Standard");
    v.integer(71, generation, 0);
    int alignment = static_cast<int>(horizontal);
    v.integer(72, alignment, 0);
    horizontal =
        alignment >= 0 && alignment <= 5 ? static_cast<HorizontalAlignment>(alignment) : HorizontalAlignment::Left;
    v.maybe(11, alignmentPoint);
    v.point(210, extrusion, worldZAxis);
}

namespace {

void verticalField(FieldVisitor& v, int code, VerticalAlignment& vertical)
{
    int alignment = static_cast<int>(vertical);
    v.integer(code, alignment, 0);
    vertical =
        alignment >= 0 && alignment <= 3 ? static_cast<VerticalAlignment>(alignment) : VerticalAlignment::Baseline;
}

} // namespace

void Text::fields(FieldVisitor& v)
{
    textFields(v);
    v.subclass("AcDbText");
    verticalField(v, 73, vertical);
}

void Attribute::fields(FieldVisitor& v)
{
    textFields(v);
    v.subclass("AcDbAttribute");
    v.string(2, tag);
    v.integer(70, flags);
    v.integer(73, fieldLength, 0);
    verticalField(v, 74, vertical);
}

void AttributeDefinition::fields(FieldVisitor& v)
{
    textFields(v);
    v.subclass("AcDbAttributeDefinition");
    v.string(3, prompt);
    v.string(2, tag);
    v.integer(70, flags);
    v.integer(73, fieldLength, 0);
    verticalField(v, 74, vertical);
}

namespace {

// Long text is stored in pieces: all but the last under code 3, the last under code 1. A piece is counted with the
// longest form that a character may take in the file, so that none of them exceeds what readers expect.
void putPieces(FieldVisitor& v, std::string_view text)
{
    constexpr std::size_t pieceBytes = 250;
    constexpr std::size_t escapeBytes = 14;
    std::string_view rest = text;
    const char* begin = text.data();
    std::size_t bytes = 0;
    while (!rest.empty()) {
        const char* here = rest.data();
        const std::size_t size = takeCharacter(rest) < 0x80 ? 1 : escapeBytes;
        if (bytes + size > pieceBytes) {
            v.put(3, std::string(begin, here));
            begin = here;
            bytes = 0;
        }
        bytes += size;
    }
    v.put(1, std::string(begin, text.data() + text.size()));
}

} // namespace

void MText::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbMText");
    v.point(10, position, {});
    v.real(40, height);
    v.real(41, width, 0.0);
    v.integer(71, attachment);
    v.integer(72, flow);
    if (v.reading()) {
        for (const PlacedGroup& piece : v.take({1, 3})) {
            text += piece.value;
        }
        // An escape may have been cut in two by the pieces.
        text = decodeEscapes(text);
    } else {
        putPieces(v, text);
    }
    v.string(7, style, "Standard");
    v.point(210, extrusion, worldZAxis);
    v.maybe(11, direction);
    v.real(50, rotation, 0.0);
    v.integer(73, spacingStyle, 1);
    v.real(44, spacingFactor, 1.0);
}

Vector3 MText::baseline() const
{
    const double angle = rotation * std::numbers::pi / 180;
    return direction.value_or(Vector3{std::cos(angle), std::sin(angle), 0});
}

} // namespace drawing
