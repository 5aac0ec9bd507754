#include "drawing/flatten.h"

#include <algorithm>

#include "drawing/flattener.h"
#include "drawing/text_encoding.h"

namespace drawing {

bool flattenBlock(const Document& document, const Block& block, const FlattenOptions& options, const FlatSink& sink)
{
    return Flattener(document, options, sink).block(block);
}

bool flattenEntity(const Document& document, const Entity& entity, const FlattenOptions& options, const FlatSink& sink)
{
    return Flattener(document, options, sink).entity(entity);
}

bool isShown(const Document& document, const Entity& entity)
{
    const Layer* layer = document.findLayer(entity.layer);
    return entity.visible && (!layer || (layer->on && !layer->frozen()));
}

namespace {

std::size_t characters(std::string_view text)
{
    std::size_t count = 0;
    while (!text.empty()) {
        takeCharacter(text);
        ++count;
    }
    return count;
}

void includeShape(std::optional<Extents>& extents, const FlatPath& path)
{
    for (const Vector2& point : path.points) {
        include(extents, point);
    }
}

void includeShape(std::optional<Extents>& extents, const FlatArea& area)
{
    for (const auto& contour : area.contours) {
        for (const Vector2& point : contour) {
            include(extents, point);
        }
    }
}

void includeShape(std::optional<Extents>& extents, const FlatImage& image)
{
    const Vector2 width = image.u * image.image->pixels.x;
    const Vector2 height = image.v * image.image->pixels.y;
    for (const Vector2& corner :
         {image.position, image.position + width, image.position + height, image.position + width + height}) {
        include(extents, corner);
    }
}

void includeShape(std::optional<Extents>& extents, const FlatText& text)
{
    constexpr double characterWidth = 0.9;
    std::size_t longest = 0;
    for (const std::string& line : text.lines) {
        longest = std::max(longest, characters(line));
    }
    double width = static_cast<double>(longest) * text.height * text.widthFactor * characterWidth;
    width = text.wrapWidth > 0 ? std::min(width, text.wrapWidth) : width;
    width = text.fitLength > 0 ? text.fitLength : width;
    const double height = text.height + text.lineSpacing * static_cast<double>(text.lines.size() - 1);
    const bool right = text.horizontal == HorizontalAlignment::Right;
    const bool centered =
        text.horizontal == HorizontalAlignment::Center || text.horizontal == HorizontalAlignment::Middle;
    const double left = right ? -width : centered ? -width / 2 : 0;
    const bool middle = text.vertical == VerticalAlignment::Middle || text.horizontal == HorizontalAlignment::Middle;
    const double bottom = text.vertical == VerticalAlignment::Top ? -height : middle ? -height / 2 : 0;
    for (const double x : {left, left + width}) {
        for (const double y : {bottom, bottom + height}) {
            include(extents, text.position + text.direction * x + text.up * y);
        }
    }
}

FlattenOptions coarse()
{
    FlattenOptions options;
    options.tolerance = 0;
    return options;
}

FlatSink collector(std::optional<Extents>& extents)
{
    return [&extents](FlatItem&& item) {
        std::visit([&](const auto& shape) { includeShape(extents, shape); }, item.shape);
    };
}

} // namespace

std::optional<Extents> extentsOf(const Document& document, const Block& block)
{
    std::optional<Extents> extents;
    flattenBlock(document, block, coarse(), collector(extents));
    return extents;
}

std::optional<Extents> extentsOf(const Document& document, const Entity& entity)
{
    std::optional<Extents> extents;
    flattenEntity(document, entity, coarse(), collector(extents));
    return extents;
}

} // namespace drawing
