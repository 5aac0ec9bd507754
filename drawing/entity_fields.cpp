// The fields of the plain entities, each with its group code.

#include "drawing/entities.h"
#include "drawing/field_visitor.h"

namespace drawing {

void Entity::fields(FieldVisitor& v)
{
    v.subclass(entityMarker);
    properties(v);
}

void Entity::properties(FieldVisitor& v)
{
    v.boolean(67, v.context.paperSpace, false);
    v.string(8, layer);
    v.string(6, linetype, "ByLayer");
    v.integer(62, color, colorByLayer);
    std::optional<int> rgb;
    if (trueColor) {
        rgb = static_cast<int>(*trueColor);
    }
    v.maybe(420, rgb);
    if (v.reading() && rgb) {
        trueColor = static_cast<std::uint32_t>(*rgb) & 0xFFFFFFu;
    }
    v.real(48, linetypeScale, 1.0);
    bool invisible = !visible;
    v.boolean(60, invisible, false);
    visible = !invisible;
    v.integer(370, lineweight, -1);
}

void Line::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbLine");
    v.real(39, thickness, 0.0);
    v.point(10, start, {});
    v.point(11, end, {});
    v.point(210, extrusion, worldZAxis);
}

void Point::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbPoint");
    v.point(10, position, {});
    v.real(39, thickness, 0.0);
    v.point(210, extrusion, worldZAxis);
}

void Circle::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbCircle");
    v.real(39, thickness, 0.0);
    v.point(10, center, {});
    v.real(40, radius);
    v.point(210, extrusion, worldZAxis);
}

void Arc::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbCircle");
    v.real(39, thickness, 0.0);
    v.point(10, center, {});
    v.real(40, radius);
    v.point(210, extrusion, worldZAxis);
    v.subclass("AcDbArc");
    v.real(50, startAngle);
    v.real(51, endAngle);
}

void Ellipse::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbEllipse");
    v.point(10, center, {});
    v.point(11, majorAxis, {});
    v.point(210, extrusion, worldZAxis);
    v.real(40, ratio);
    v.real(41, startParameter);
    v.real(42, endParameter);
}

void Solid::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbTrace");
    v.point(10, corners[0], {});
    v.point(11, corners[1], {});
    v.point(12, corners[2], {});
    std::optional<Vector3> fourth = v.reading() ? std::nullopt : std::optional<Vector3>(corners[3]);
    v.maybe(13, fourth);
    corners[3] = fourth.value_or(corners[2]);
    v.real(39, thickness, 0.0);
    v.point(210, extrusion, worldZAxis);
}

void Face::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbFace");
    v.point(10, corners[0], {});
    v.point(11, corners[1], {});
    v.point(12, corners[2], {});
    std::optional<Vector3> fourth = v.reading() ? std::nullopt : std::optional<Vector3>(corners[3]);
    v.maybe(13, fourth);
    corners[3] = fourth.value_or(corners[2]);
    v.integer(70, invisibleEdges, 0);
}

void EndlessLine::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass(bothWays ? "AcDbXline" : "AcDbRay");
    v.point(10, base, {});
    v.point(11, direction, {});
}

void Dimension::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbDimension");
    v.string(2, block, "");
    v.string(3, style);
}

void Viewport::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass("AcDbViewport");
    v.point(10, center, {});
    v.real(40, width);
    v.real(41, height);
    v.integer(68, status);
    v.integer(69, number);
    v.point(12, viewCenter);
    v.point(16, viewDirection, worldZAxis);
    v.point(17, viewTarget, Vector3{});
    v.real(45, viewHeight, 0.0);
    v.real(51, twist, 0.0);
    for (const PlacedGroup& frozen : v.take({331, 341})) {
        frozenLayers.push_back(frozen.handleValue());
    }
    for (const Handle frozen : frozenLayers) {
        v.putHandle(331, frozen);
    }
    v.integer(90, flags, 0);
}

void BlockReference::fields(FieldVisitor& v)
{
    Entity::fields(v);
    const bool repeated = rows > 1 || columns > 1;
    v.subclass(repeated ? "AcDbMInsertBlock" : "AcDbBlockReference", {"AcDbBlockReference", "AcDbMInsertBlock"});
    v.integer(66, v.context.attributesFollow, 0);
    v.string(2, block);
    v.point(10, position, {});
    v.real(41, scale.x, 1.0);
    v.real(42, scale.y, 1.0);
    v.real(43, scale.z, 1.0);
    v.real(50, rotation, 0.0);
    v.integer(70, columns, 1);
    v.integer(71, rows, 1);
    v.real(44, columnSpacing, 0.0);
    v.real(45, rowSpacing, 0.0);
    v.point(210, extrusion, worldZAxis);
}

namespace {

void clipFields(FieldVisitor& v, std::vector<Vector2>& clip)
{
    for (const PlacedGroup& group : v.take({14, 24})) {
        if (group.code == 14) {
            clip.push_back({group.real(), 0});
        } else if (!clip.empty()) {
            clip.back().y = group.real();
        }
    }
    if (!v.reading()) {
        v.putInteger(91, static_cast<int>(clip.size()));
        for (const Vector2& corner : clip) {
            v.putReal(14, corner.x);
            v.putReal(24, corner.y);
        }
    }
}

} // namespace

void Image::fields(FieldVisitor& visitor)
{
    Entity::fields(visitor);
    visitor.subclass("AcDbRasterImage");
    visitor.integer(90, classVersion);
    visitor.point(10, position, {});
    visitor.point(11, u, {});
    visitor.point(12, v, {});
    visitor.point(13, pixels);
    visitor.handle(340, definition);
    visitor.integer(70, display);
    visitor.boolean(280, clipped);
    visitor.integer(281, brightness);
    visitor.integer(282, contrast);
    visitor.integer(283, fade);
    visitor.handle(360, definitionReactor);
    int type = static_cast<int>(clipType);
    visitor.integer(71, type);
    clipType = type == static_cast<int>(ClipType::Polygon) ? ClipType::Polygon : ClipType::Rectangle;
    visitor.take({91});
    clipFields(visitor, clip);
    if (visitor.reading() && clip.size() < 2) {
        resetClip(); // without a boundary there is nothing to clip
    }
}

void Image::resetClip()
{
    clipped = false;
    clipType = ClipType::Rectangle;
    clip = {{-0.5, -0.5}, {pixels.x - 0.5, pixels.y - 0.5}};
}

} // namespace drawing
