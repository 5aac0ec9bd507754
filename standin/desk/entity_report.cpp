#include "standin/desk/entity_report.h"

#include <cmath>
#include <cwchar>

#include "standin/desk/coordinate_input.h"
#include "standin/text.h"

namespace desk {
namespace {

std::wstring at(const drawing::Vector3& point)
{
    return formatPoint({point.x, point.y});
}

std::wstring colorOf(const drawing::Entity& entity)
{
    if (entity.color == drawing::colorByLayer)
        return L"ByLayer";
    return entity.color == drawing::colorByBlock ? L"ByBlock" : std::to_wstring(entity.color);
}

std::wstring imageLine(const drawing::Document& document, const drawing::Image& image)
{
    const auto* definition = document.find<drawing::ImageDefinition>(image.definition);
    const std::wstring file = definition != nullptr ? standin::fromUtf8(definition->path) : L"(no definition)";
    const double width = std::hypot(image.u.x, image.u.y) * image.pixels.x;
    const double height = std::hypot(image.v.x, image.v.y) * image.pixels.y;
    return L"file " + file + L"  pixels " + formatNumber(image.pixels.x) + L" x " + formatNumber(image.pixels.y) +
           L"  size " + formatNumber(width) + L" x " + formatNumber(height) + L"  at " + at(image.position) +
           ((image.display & drawing::Image::showFlag) != 0 ? L"  shown" : L"  hidden") +
           ((image.display & drawing::Image::transparent) != 0 ? L"  transparent" : L"");
}

std::wstring geometryOf(const drawing::Document& document, const drawing::Entity& entity)
{
    if (const auto* line = dynamic_cast<const drawing::Line*>(&entity))
        return L"from " + at(line->start) + L"  to " + at(line->end);
    if (const auto* circle = dynamic_cast<const drawing::Circle*>(&entity))
        return L"center " + at(circle->center) + L"  radius " + formatNumber(circle->radius);
    if (const auto* arc = dynamic_cast<const drawing::Arc*>(&entity)) {
        return L"center " + at(arc->center) + L"  radius " + formatNumber(arc->radius) + L"  from " +
               formatNumber(arc->startAngle) + L" to " + formatNumber(arc->endAngle) + L" degrees";
    }
    if (const auto* run = dynamic_cast<const drawing::LightPolyline*>(&entity))
        return std::to_wstring(run->points.size()) + L" points" + (run->closed ? L", closed" : L", open");
    if (const auto* text = dynamic_cast<const drawing::Text*>(&entity)) {
        return L"\"" + standin::fromUtf8(text->text) + L"\"  height " + formatNumber(text->height) + L"  at " +
               at(text->position);
    }
    if (const auto* text = dynamic_cast<const drawing::MText*>(&entity)) {
        return L"\"" + standin::fromUtf8(text->text) + L"\"  height " + formatNumber(text->height) + L"  at " +
               at(text->position);
    }
    if (const auto* point = dynamic_cast<const drawing::Point*>(&entity))
        return L"at " + at(point->position);
    if (const auto* block = dynamic_cast<const drawing::BlockReference*>(&entity))
        return L"block \"" + standin::fromUtf8(block->block) + L"\"  at " + at(block->position);
    if (const auto* image = dynamic_cast<const drawing::Image*>(&entity))
        return imageLine(document, *image);
    return {};
}

} // namespace

std::vector<std::wstring> describe(const drawing::Document& document, const drawing::Entity& entity)
{
    wchar_t handle[20];
    std::swprintf(handle, 20, L"%llX", static_cast<unsigned long long>(entity.handle));
    std::vector<std::wstring> lines = {standin::fromUtf8(entity.name()) + L"  layer \"" +
                                       standin::fromUtf8(entity.layer) + L"\"  color " + colorOf(entity) +
                                       L"  handle " + handle};
    if (const std::wstring geometry = geometryOf(document, entity); !geometry.empty())
        lines.push_back(L"    " + geometry);
    return lines;
}

} // namespace desk
