#include "drawing/flattener.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "drawing/flatten_curves.h"
#include "drawing/flatten_polylines.h"
#include "drawing/lower_case.h"

namespace drawing {

namespace {

constexpr double radiansPerDegree = std::numbers::pi / 180;
constexpr double wholeTurn = 2 * std::numbers::pi;

Rgb rgbOf(std::uint32_t trueColor)
{
    return {static_cast<std::uint8_t>(trueColor >> 16), static_cast<std::uint8_t>(trueColor >> 8),
            static_cast<std::uint8_t>(trueColor)};
}

// Straight lines for the arc centre + radius (cos, sin) in the map's plane.
FlatPath roundPath(const Vector3& center, double radius, double start, double sweep, const Transform& map,
                   double tolerance)
{
    const int steps = arcSteps(radius * largestStretch(map), sweep, tolerance);
    std::vector<Vector3> points;
    for (const Vector2& p : arcPoints({center.x, center.y}, radius, start, sweep, steps)) {
        points.push_back({p.x, p.y, center.z});
    }
    const bool whole = sweep == wholeTurn;
    if (whole) {
        points.pop_back();
    }
    return projectedPath(points, map, whole);
}

} // namespace

Flattener::Flattener(const Document& document, const FlattenOptions& options, const FlatSink& sink)
    : m_document(document), m_options(options), m_sink(sink), m_layers(namesOf("LAYER")),
      m_blocks(namesOf("BLOCK_RECORD")), m_styles(namesOf("STYLE")), m_linetypes(namesOf("LTYPE")),
      m_linetypeScale(document.header.real("$LTSCALE", 1))
{}

Flattener::Names Flattener::namesOf(std::string_view kind) const
{
    Names names;
    for (const Handle handle : m_document.table(kind).records) {
        if (const auto* record = m_document.find<TableRecord>(handle)) {
            names.try_emplace(lowerCase(record->recordName), record);
        }
    }
    return names;
}

const Layer* Flattener::findLayer(const std::string& name) const
{
    const auto found = m_layers.find(lowerCase(name));
    return found == m_layers.end() ? nullptr : dynamic_cast<const Layer*>(found->second);
}

const Block* Flattener::findBlock(const std::string& name) const
{
    const auto found = m_blocks.find(lowerCase(name));
    return found == m_blocks.end() ? nullptr : dynamic_cast<const Block*>(found->second);
}

const TextStyle* Flattener::findStyle(const std::string& name) const
{
    const auto found = m_styles.find(lowerCase(name));
    return found == m_styles.end() ? nullptr : dynamic_cast<const TextStyle*>(found->second);
}

bool Flattener::block(const Block& block)
{
    m_open = {&block};
    for (const Entity* entity : m_document.drawOrder(block)) {
        m_entity = entity->handle;
        any(*entity, Place());
    }
    return m_complete;
}

bool Flattener::entity(const Entity& entity)
{
    m_entity = entity.handle;
    any(entity, Place());
    return m_complete;
}

// True if that many points may still be given out.
bool Flattener::spend(std::size_t points)
{
    if (points > m_options.limit - std::min(m_points, m_options.limit)) {
        m_points = m_options.limit;
        m_complete = false;
        return false;
    }
    m_points += points;
    return true;
}

// In a block, the layer 0 stands for the layer of the reference.
const std::string& Flattener::layerName(const Entity& entity, const Inherited& inherited) const
{
    return inherited.nested && entity.layer == "0" ? inherited.layer : entity.layer;
}

bool Flattener::shown(const Entity& entity, const Inherited& inherited) const
{
    if (m_options.hiddenToo) {
        return true;
    }
    const std::string& name = layerName(entity, inherited);
    const Layer* layer = findLayer(name);
    // A block reference on a layer that is off still shows what lies on other layers; freezing hides all of it.
    const bool off = layer && !layer->on && !dynamic_cast<const BlockReference*>(&entity);
    return entity.visible && !off && !(layer && layer->frozen()) &&
           (m_frozenHere.empty() || !m_frozenHere.contains(lowerCase(name)));
}

// The colour that an index (0: by block, 256: by layer) and a true colour, which goes before it, stand for.
void Flattener::setColor(FlatStyle& style, int color, std::optional<std::uint32_t> trueColor,
                         const Inherited& inherited) const
{
    std::optional<Rgb> rgb;
    if (trueColor) {
        rgb = rgbOf(*trueColor);
    }
    style.colorIndex = color;
    if (color == colorByBlock) {
        style.colorIndex = inherited.color;
        rgb = rgb ? rgb : inherited.rgb;
    } else if (color < 0 || color >= colorByLayer) {
        const Layer* layer = findLayer(style.layer);
        style.colorIndex = layer ? layer->color : 7;
        if (!rgb && layer && layer->trueColor) {
            rgb = rgbOf(*layer->trueColor);
        }
    }
    style.rgb = rgb.value_or(rgbOfIndex(style.colorIndex));
}

FlatStyle Flattener::styleOf(const Entity& entity, const Inherited& inherited) const
{
    FlatStyle style;
    style.layer = layerName(entity, inherited);
    style.linetypeScale = entity.linetypeScale;
    setColor(style, entity.color, entity.trueColor, inherited);
    const Layer* layer = findLayer(style.layer);
    style.linetype = entity.linetype;
    if (sameName(entity.linetype, "ByBlock")) {
        style.linetype = inherited.linetype;
    } else if (sameName(entity.linetype, "ByLayer")) {
        style.linetype = layer ? layer->linetype : "Continuous";
    }
    constexpr int byLayer = -1;
    constexpr int byBlock = -2;
    style.lineweight = entity.lineweight;
    if (entity.lineweight == byBlock) {
        style.lineweight = inherited.lineweight;
    } else if (entity.lineweight == byLayer) {
        style.lineweight = layer ? layer->lineweight : -3;
    }
    style.dashes = dashesOf(style);
    return style;
}

DashPattern Flattener::dashesOf(const FlatStyle& style) const
{
    constexpr std::size_t mostElements = 64; // what programs make has a dozen at most
    const auto found = m_linetypes.find(lowerCase(style.linetype));
    const auto* linetype = found == m_linetypes.end() ? nullptr : dynamic_cast<const drawing::Linetype*>(found->second);
    DashPattern dashes;
    if (linetype && linetype->elements.size() <= mostElements) {
        for (const drawing::Linetype::Element& element : linetype->elements) {
            dashes.push_back(element.length * style.linetypeScale * m_linetypeScale * m_viewScale);
        }
    }
    return periodOf(dashes) > 0 ? dashes : DashPattern();
}

namespace {

bool isFinite(const std::vector<Vector2>& points)
{
    return std::all_of(points.begin(), points.end(),
                       [](const Vector2& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

bool isFinite(const FlatPath& path)
{
    return isFinite(path.points);
}

bool isFinite(const FlatArea& area)
{
    return std::all_of(area.contours.begin(), area.contours.end(),
                       [](const auto& contour) { return isFinite(contour); });
}

template <std::size_t count> bool isFinite(const std::vector<std::array<Vector2, count>>& shapes)
{
    return std::all_of(shapes.begin(), shapes.end(),
                       [](const auto& points) { return isFinite(std::vector<Vector2>(points.begin(), points.end())); });
}

// The boxes enclose where the glyphs begin.
bool isFinite(const FlatText& text)
{
    return isFinite(std::vector{text.across, text.up}) && isFinite(text.lineBoxes) && isFinite(text.rules);
}

bool isFinite(const FlatImage& image)
{
    const Vector2 sum = image.position + image.u + image.v;
    return std::isfinite(sum.x) && std::isfinite(sum.y);
}

std::size_t pointsIn(const FlatPath& path)
{
    return path.points.size();
}

std::size_t pointsIn(const FlatArea& area)
{
    std::size_t points = 0;
    for (const auto& contour : area.contours) {
        points += contour.size();
    }
    return points;
}

std::size_t pointsIn(const FlatText& text)
{
    constexpr std::size_t pieceCost = 8;
    return pieceCost + 2 * text.glyphs.size();
}

std::size_t pointsIn(const FlatImage&)
{
    return 1;
}

} // namespace

void Flattener::emit(const Entity& entity, FlatShape shape, const Place& place, Linetype linetype)
{
    FlatStyle style = styleOf(entity, place.inherited);
    if (linetype == Linetype::Continuous) {
        style.dashes.clear();
    }
    emit(std::move(style), std::move(shape));
}

void Flattener::emit(FlatStyle style, FlatShape shape)
{
    if (!std::visit([](const auto& each) { return isFinite(each); }, shape)) {
        m_complete = false;
        return;
    }
    if (spend(std::visit([](const auto& each) { return pointsIn(each); }, shape))) {
        m_sink(FlatItem{m_entity, std::move(style), std::move(shape), m_clip});
    }
}

void Flattener::any(const Entity& entity, const Place& place)
{
    if (m_points >= m_options.limit) {
        return;
    }
    const auto* window = dynamic_cast<const Viewport*>(&entity);
    if (window && (window->visible || m_options.hiddenToo)) {
        viewport(*window, place);
    } else if (!window && shown(entity, place.inherited)) {
        shape(entity, place);
    }
}

void Flattener::shape(const Entity& entity, const Place& place)
{
    if (const auto* line = dynamic_cast<const Line*>(&entity)) {
        emit(entity, projectedPath({line->start, line->end}, place.map, false), place);
    } else if (const auto* marked = dynamic_cast<const Point*>(&entity)) {
        point(*marked, place);
    } else if (const auto* light = dynamic_cast<const LightPolyline*>(&entity)) {
        lightPolyline(*light, place);
    } else if (const auto* heavy = dynamic_cast<const HeavyPolyline*>(&entity)) {
        heavyPolyline(*heavy, place);
    } else if (const auto* solid = dynamic_cast<const Solid*>(&entity)) {
        const Transform map = place.map * Transform::fromExtrusion(solid->extrusion);
        emit(entity,
             FlatArea{{projected({solid->corners[0], solid->corners[1], solid->corners[3], solid->corners[2]}, map)}},
             place);
    } else if (const auto* inserted = dynamic_cast<const BlockReference*>(&entity)) {
        reference(*inserted, place);
    } else if (const auto* definition = dynamic_cast<const AttributeDefinition*>(&entity)) {
        if (!place.inherited.nested) {
            text(*definition, definition->tag, place);
        } else if (definition->flags & Attribute::constantFlag) {
            text(*definition, definition->text, place);
        }
    } else if (const auto* single = dynamic_cast<const Text*>(&entity)) {
        text(*single, single->text, place);
    } else if (const auto* multiple = dynamic_cast<const MText*>(&entity)) {
        mtext(*multiple, place);
    } else if (const auto* picture = dynamic_cast<const Image*>(&entity)) {
        image(*picture, place);
    } else if (const auto* measure = dynamic_cast<const Dimension*>(&entity)) {
        dimension(*measure, place);
    } else if (const auto* filled = dynamic_cast<const Hatch*>(&entity)) {
        hatch(*filled, place);
    } else {
        curve(entity, place);
    }
}

void Flattener::curve(const Entity& entity, const Place& place)
{
    if (const auto* free = dynamic_cast<const Spline*>(&entity)) {
        spline(*free, place);
    } else if (const auto* arrow = dynamic_cast<const Leader*>(&entity)) {
        leader(*arrow, place);
    } else if (const auto* endless = dynamic_cast<const EndlessLine*>(&entity)) {
        endlessLine(*endless, place);
    } else if (const auto* inSpace = dynamic_cast<const Face*>(&entity)) {
        face(*inSpace, place);
    } else {
        round(entity, place);
    }
}

// Circles, arcs and ellipses.
void Flattener::round(const Entity& entity, const Place& place)
{
    const auto draw = [&](const Vector3& center, double radius, double start, double sweep, const Transform& plane) {
        emit(entity, roundPath(center, radius, start, sweep, place.map * plane, m_options.tolerance), place);
    };
    if (const auto* circle = dynamic_cast<const Circle*>(&entity)) {
        draw(circle->center, circle->radius, 0, wholeTurn, Transform::fromExtrusion(circle->extrusion));
    } else if (const auto* arc = dynamic_cast<const Arc*>(&entity)) {
        const double start = arc->startAngle * radiansPerDegree;
        draw(arc->center, arc->radius, start, sweepBetween(start, arc->endAngle * radiansPerDegree),
             Transform::fromExtrusion(arc->extrusion));
    } else if (const auto* ellipse = dynamic_cast<const Ellipse*>(&entity)) {
        // The unit circle, stretched to both axes.
        const Vector3 minor = cross(normalized(ellipse->extrusion), ellipse->majorAxis) * ellipse->ratio;
        draw({}, 1, ellipse->startParameter, sweepBetween(ellipse->startParameter, ellipse->endParameter),
             {ellipse->majorAxis, minor, worldZAxis, ellipse->center});
    }
}

void Flattener::lightPolyline(const LightPolyline& polyline, const Place& place)
{
    std::vector<PolylinePoint> points = polyline.points;
    for (PolylinePoint& each : points) {
        if (each.startWidth == 0 && each.endWidth == 0) {
            each.startWidth = each.endWidth = polyline.constantWidth;
        }
    }
    const Transform map =
        place.map * Transform::fromExtrusion(polyline.extrusion) * Transform::translation({0, 0, polyline.elevation});
    flattenPolyline(points, polyline.closed, map, m_options.tolerance,
                    [&](FlatShape&& piece) { emit(polyline, std::move(piece), place); });
}

void Flattener::image(const Image& image, const Place& place)
{
    const Vector3 position = place.map.point(image.position);
    const Vector3 u = place.map.direction(image.u);
    const Vector3 v = place.map.direction(image.v);
    emit(image, FlatImage{&image, {position.x, position.y}, {u.x, u.y}, {v.x, v.y}}, place);
}

} // namespace drawing
