// Flattening of text: its frame in the drawing, whatever turned, scaled or mirrored it.

#include <cmath>
#include <numbers>

#include "drawing/flattener.h"
#include "drawing/plain_text.h"

namespace drawing {

namespace {

constexpr double radiansPerDegree = std::numbers::pi / 180;
constexpr int backwardFlag = 2;
constexpr int upsideDown = 4;

} // namespace

double FlatText::rotation() const
{
    return std::atan2(direction.y, direction.x);
}

// Completes a text whose height, width factor and lean are still those of its own plane, where `direction` and `up`
// have length 1. A point x to the right and y up in the plane comes to lie at direction' x + (skewed up)' y.
void Flattener::emitText(const Entity& entity, FlatText text, const Vector3& position, const Vector3& direction,
                         const Vector3& up, const Place& place)
{
    const Vector3 seenPosition = place.map.point(position);
    const Vector3 seenDirection = place.map.direction(direction);
    const Vector3 seenUp = place.map.direction(up);
    const double along = std::hypot(seenDirection.x, seenDirection.y);
    if (along == 0 || !(text.height > 0)) {
        return; // seen from the side, or too small to be seen at all
    }
    const Vector2 axis{seenDirection.x / along, seenDirection.y / along};
    const double across = axis.x * seenUp.y - axis.y * seenUp.x;
    const double rise = std::abs(across);
    if (rise == 0) {
        return;
    }
    const double shear = axis.x * seenUp.x + axis.y * seenUp.y;
    text.position = {seenPosition.x, seenPosition.y};
    text.direction = axis;
    text.up = across > 0 ? Vector2{-axis.y, axis.x} : Vector2{axis.y, -axis.x};
    text.oblique = std::atan((along * std::tan(text.oblique * radiansPerDegree) + shear) / rise) / radiansPerDegree;
    text.height *= rise;
    text.lineSpacing *= rise;
    text.widthFactor *= along / rise;
    text.fitLength *= along;
    text.wrapWidth *= along;
    emit(entity, std::move(text), place);
}

void Flattener::text(const Text& text, const std::string& shown, const Place& place)
{
    FlatText flat;
    flat.lines = {plainText(shown)};
    flat.height = text.height;
    flat.widthFactor = text.widthFactor;
    flat.oblique = text.oblique;
    flat.horizontal = text.horizontal;
    flat.vertical = text.vertical;
    if (const TextStyle* style = findStyle(text.style)) {
        flat.font = style->font;
    }
    Vector3 position = text.position;
    double angle = text.rotation * radiansPerDegree;
    const bool fitted = text.horizontal == HorizontalAlignment::Aligned || text.horizontal == HorizontalAlignment::Fit;
    if (text.alignmentPoint && fitted) {
        const Vector3 along = *text.alignmentPoint - text.position;
        flat.fitLength = std::hypot(along.x, along.y);
        angle = std::atan2(along.y, along.x);
        // Backward text runs back from the second point to the first.
        position = text.generation & backwardFlag ? *text.alignmentPoint : position;
    } else if (text.alignmentPoint &&
               (text.horizontal != HorizontalAlignment::Left || text.vertical != VerticalAlignment::Baseline)) {
        position = *text.alignmentPoint;
    }
    const Transform plane = Transform::fromExtrusion(text.extrusion) * Transform::rotation(angle);
    const Vector3 direction = text.generation & backwardFlag ? plane.xAxis * -1 : plane.xAxis;
    const Vector3 up = text.generation & upsideDown ? plane.yAxis * -1 : plane.yAxis;
    emitText(text, std::move(flat), Transform::fromExtrusion(text.extrusion).point(position), direction, up, place);
}

void Flattener::mtext(const MText& text, const Place& place)
{
    constexpr double lineDistance = 5.0 / 3; // of the text's height, at the factor 1
    constexpr VerticalAlignment verticalCode[] = {VerticalAlignment::Top, VerticalAlignment::Middle,
                                                  VerticalAlignment::Bottom};
    constexpr HorizontalAlignment horizontalCode[] = {HorizontalAlignment::Left, HorizontalAlignment::Center,
                                                      HorizontalAlignment::Right};
    FlatText flat;
    flat.lines = plainLines(text.text);
    flat.height = text.height;
    flat.wrapWidth = text.width;
    flat.lineSpacing = text.height * text.spacingFactor * lineDistance;
    const int attachment = text.attachment >= 1 && text.attachment <= 9 ? text.attachment - 1 : 0;
    flat.horizontal = horizontalCode[attachment % 3];
    flat.vertical = verticalCode[attachment / 3];
    if (const TextStyle* style = findStyle(text.style)) {
        flat.font = style->font;
        flat.widthFactor = style->widthFactor;
        flat.oblique = style->oblique;
    }
    // Unlike other texts, this one is turned in the drawing's coordinates, whichever way its plane faces.
    const Vector3 up = normalized(cross(text.extrusion, text.baseline()));
    emitText(text, std::move(flat), text.position, normalized(cross(up, text.extrusion)), up, place);
}

} // namespace drawing
