// Flattening of text: its frame in the drawing, whatever turned, scaled or mirrored it.

#include <cmath>
#include <numbers>

#include "drawing/flattener.h"
#include "drawing/numbers.h"
#include "drawing/rich_text.h"
#include "drawing/text_layout.h"

namespace drawing {

namespace {

constexpr double radiansPerDegree = std::numbers::pi / 180;
constexpr int backwardFlag = 2;
constexpr int upsideDown = 4;

// A style's extended data may name a family, with bits for bold and italic behind it; else it has a file.
FontRequest fontOf(const TextStyle& style)
{
    constexpr int registeredName = 1001, string = 1000, bits = 1071;
    constexpr int italicBit = 0x1000000, boldBit = 0x2000000;
    FontRequest font;
    font.name = style.font;
    bool ours = false;
    for (const Group& group : style.extendedData) {
        if (group.code == registeredName) {
            ours = group.value == "ACAD";
        } else if (ours && group.code == string && !group.value.empty()) {
            font = {group.value, true, false, false};
        } else if (ours && group.code == bits && font.isFamily) {
            const int flags = parseInteger(group.value).value_or(0);
            font.bold = (flags & boldBit) != 0;
            font.italic = (flags & italicBit) != 0;
        }
    }
    return font;
}

} // namespace

// A text's pieces, each with the colour that it names itself.
void Flattener::emitText(const Entity& entity, const RichText& text, const TextFrame& frame, const Place& place)
{
    for (LaidText& laid : layOut(text, frame, m_options.fonts)) {
        FlatStyle style = styleOf(entity, place.inherited);
        style.linetype = "Continuous"; // the strokes of letters have no dashes
        if (laid.color) {
            setColor(style, laid.color->index, laid.color->trueColor, place.inherited);
        }
        emit(std::move(style), std::move(laid.text));
    }
}

// The text's plane as it is seen in the drawing; nothing if it is seen from the side.
std::optional<TextFrame> Flattener::textFrame(const Vector3& position, const Vector3& direction, const Vector3& up,
                                              const Place& place)
{
    const Vector3 seenPosition = place.map.point(position);
    const Vector3 seenDirection = place.map.direction(direction);
    const Vector3 seenUp = place.map.direction(up);
    TextFrame frame;
    frame.origin = {seenPosition.x, seenPosition.y};
    frame.across = {seenDirection.x, seenDirection.y};
    frame.up = {seenUp.x, seenUp.y};
    if (frame.across.x * frame.up.y == frame.across.y * frame.up.x) {
        return std::nullopt;
    }
    return frame;
}

TextFormat Flattener::textFormat(const std::string& styleName, double height) const
{
    TextFormat format;
    format.height = height;
    if (const TextStyle* style = findStyle(styleName)) {
        format.height = height > 0 ? height : style->fixedHeight;
        format.widthFactor = style->widthFactor;
        format.oblique = style->oblique;
        format.font = fontOf(*style);
    }
    return format;
}

void Flattener::text(const Text& text, const std::string& shown, const Place& place)
{
    TextFormat format = textFormat(text.style, text.height);
    format.widthFactor = text.widthFactor;
    format.oblique = text.oblique;
    Vector3 position = text.position;
    double angle = text.rotation * radiansPerDegree;
    double fitLength = 0;
    const bool fitted = text.horizontal == HorizontalAlignment::Aligned || text.horizontal == HorizontalAlignment::Fit;
    if (text.alignmentPoint && fitted) {
        const Vector3 along = *text.alignmentPoint - text.position;
        fitLength = std::hypot(along.x, along.y);
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
    auto frame = textFrame(Transform::fromExtrusion(text.extrusion).point(position), direction, up, place);
    if (frame && format.height > 0) {
        frame->horizontal = text.horizontal;
        frame->vertical = text.vertical;
        frame->fitLength = fitLength;
        emitText(text, readText(shown, format), *frame, place);
    }
}

void Flattener::mtext(const MText& text, const Place& place)
{
    constexpr int exactSpacing = 2;
    constexpr VerticalAlignment verticalCode[] = {VerticalAlignment::Top, VerticalAlignment::Middle,
                                                  VerticalAlignment::Bottom};
    constexpr HorizontalAlignment horizontalCode[] = {HorizontalAlignment::Left, HorizontalAlignment::Center,
                                                      HorizontalAlignment::Right};
    const TextFormat format = textFormat(text.style, text.height);
    // Unlike other texts, this one is turned in the drawing's coordinates, whichever way its plane faces.
    const Vector3 up = normalized(cross(text.extrusion, text.baseline()));
    auto frame = textFrame(text.position, normalized(cross(up, text.extrusion)), up, place);
    if (frame && format.height > 0) {
        const int attachment = text.attachment >= 1 && text.attachment <= 9 ? text.attachment - 1 : 0;
        frame->horizontal = horizontalCode[attachment % 3];
        frame->vertical = verticalCode[attachment / 3];
        frame->columnWidth = text.width;
        frame->spacingFactor = text.spacingFactor;
        frame->exactSpacingOf = text.spacingStyle == exactSpacing ? format.height : 0;
        emitText(text, readMText(text.text, format), *frame, place);
    }
}

} // namespace drawing
