#include "drawing/flatten.h"

#include "drawing/flattener.h"

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

void includeShape(std::optional<Extents>& extents, const FlatPath& path)
{
    if (path.endless) {
        return;
    }
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
    for (const auto& box : text.lineBoxes) {
        for (const Vector2& corner : box) {
            include(extents, corner);
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
