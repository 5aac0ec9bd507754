#include "standin/desk/scene.h"

#include <algorithm>
#include <map>
#include <set>

namespace desk {
namespace {

Vec2 toVec2(const drawing::Vector2& v)
{
    return {v.x, v.y};
}

ScenePath pathOf(const drawing::FlatPath& flat, const drawing::FlatStyle& style)
{
    ScenePath path;
    path.points.reserve(flat.points.size() + 1);
    for (const auto& point : flat.points)
        path.points.push_back(toVec2(point));
    if (flat.closed && !path.points.empty())
        path.points.push_back(path.points.front());
    path.dashes = style.dashes;
    return path;
}

// Clip points are pixels, y down from the centre of the top left pixel.
std::vector<Vec2> clipOf(const drawing::Image& image, const ImagePlacement& placement)
{
    std::vector<drawing::Vector2> corners = image.clip;
    if (image.clipType == drawing::Image::ClipType::Rectangle && corners.size() == 2)
        corners = {corners[0], {corners[1].x, corners[0].y}, corners[1], {corners[0].x, corners[1].y}};
    std::vector<Vec2> polygon;
    polygon.reserve(corners.size());
    for (const auto& corner : corners)
        polygon.push_back(placement.toDrawing(toVec2(corner) + Vec2{0.5, 0.5}, placement.pixels));
    return polygon;
}

SceneImage imageOf(const drawing::FlatImage& flat, const drawing::Document& document)
{
    const drawing::Image& image = *flat.image;
    SceneImage placed;
    placed.image = image.handle;
    placed.placement = {toVec2(flat.position),
                        toVec2(flat.u),
                        toVec2(flat.v),
                        {static_cast<int>(image.pixels.x), static_cast<int>(image.pixels.y)}};
    placed.shown = (image.display & drawing::Image::showFlag) != 0;
    placed.transparent = (image.display & drawing::Image::transparent) != 0;
    placed.fade = std::clamp(image.fade, 0, 100);
    if (const auto* definition = document.find<drawing::ImageDefinition>(image.definition))
        placed.file = definition->path;
    if (image.clipped && (image.display & drawing::Image::clipFlag) != 0)
        placed.clip = clipOf(image, placed.placement);
    return placed;
}

Box boundsOf(const SceneItem& item)
{
    Box box;
    if (const auto* path = std::get_if<ScenePath>(&item.shape)) {
        for (const Vec2 point : path->points)
            box.add(point);
    } else if (const auto* area = std::get_if<SceneArea>(&item.shape)) {
        for (const auto& contour : area->contours) {
            for (const Vec2 point : contour)
                box.add(point);
        }
    } else if (const auto* text = std::get_if<drawing::FlatText>(&item.shape)) {
        for (const auto& line : text->lineBoxes) {
            for (const Vec2 corner : line)
                box.add(corner);
        }
    } else {
        for (const Vec2 corner : std::get<SceneImage>(item.shape).corners())
            box.add(corner);
    }
    return box;
}

} // namespace

std::vector<Vec2> SceneImage::corners() const
{
    const Vec2 corner = placement.position, right = placement.right(), up = placement.up();
    return {corner, corner + right, corner + right + up, corner + up};
}

PickShape SceneItem::pickShape() const
{
    PickShape pieces;
    if (const auto* path = std::get_if<ScenePath>(&shape)) {
        pieces.push_back({{path->points}, false});
    } else if (const auto* area = std::get_if<SceneArea>(&shape)) {
        pieces.push_back({area->contours, true});
    } else if (const auto* text = std::get_if<drawing::FlatText>(&shape)) {
        for (const auto& line : text->lineBoxes)
            pieces.push_back({{{line.begin(), line.end()}}, true});
    } else {
        std::vector<Vec2> outline = std::get<SceneImage>(shape).outline();
        if (!outline.empty())
            outline.push_back(outline.front());
        pieces.push_back({{std::move(outline)}, false});
    }
    return pieces;
}

void Scene::build(const drawing::Document& document, const drawing::Block& space, double tolerance,
                  drawing::FontSource& fonts)
{
    m_items.clear();
    m_extents = {};
    m_tolerance = tolerance;
    drawing::FlattenOptions options;
    options.tolerance = tolerance;
    options.fonts = &fonts;
    drawing::flattenBlock(document, space, options, [&](drawing::FlatItem&& flat) {
        SceneItem item;
        item.entity = flat.entity;
        item.color = Color(flat.style.rgb.red) << 16 | Color(flat.style.rgb.green) << 8 | flat.style.rgb.blue;
        item.inForeground = flat.style.colorIndex == 7 && flat.style.rgb == drawing::rgbOfIndex(7);
        if (const auto* path = std::get_if<drawing::FlatPath>(&flat.shape)) {
            item.shape = pathOf(*path, flat.style);
        } else if (auto* area = std::get_if<drawing::FlatArea>(&flat.shape)) {
            item.shape = SceneArea{std::move(area->contours)};
        } else if (auto* text = std::get_if<drawing::FlatText>(&flat.shape)) {
            item.shape = std::move(*text);
        } else {
            item.shape = imageOf(std::get<drawing::FlatImage>(flat.shape), document);
        }
        item.bounds = boundsOf(item);
        m_extents.add(item.bounds);
        m_items.push_back(std::move(item));
    });
}

drawing::Handle Scene::pick(Vec2 at, double reach) const
{
    Box around;
    around.add(at - Vec2{reach, reach});
    around.add(at + Vec2{reach, reach});
    for (auto item = m_items.rbegin(); item != m_items.rend(); ++item) {
        if (item->bounds.overlaps(around) && distanceTo(item->pickShape(), at) <= reach)
            return item->entity;
    }
    return 0;
}

std::vector<drawing::Handle> Scene::pickWindow(const Box& window, bool crossing) const
{
    std::set<drawing::Handle> touched, straying;
    std::vector<drawing::Handle> found;
    for (const SceneItem& item : m_items) {
        if (item.bounds.empty())
            continue;
        const PickShape shape = item.pickShape();
        if (crossing) {
            if (item.bounds.overlaps(window) && touchesWindow(shape, window) && touched.insert(item.entity).second)
                found.push_back(item.entity);
        } else if (!insideWindow(shape, window)) {
            straying.insert(item.entity);
        } else if (touched.insert(item.entity).second) {
            found.push_back(item.entity);
        }
    }
    std::erase_if(found, [&](drawing::Handle entity) { return straying.contains(entity); });
    return found;
}

} // namespace desk
