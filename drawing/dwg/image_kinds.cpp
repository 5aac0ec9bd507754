// Raster images, their definitions and what goes with them; wipeouts, which are images of nothing.

#include "drawing/dwg/kinds.h"
#include "drawing/entities.h"

namespace drawing::dwg {

namespace {

std::vector<Vector2> takeCorners(ObjectFields& f)
{
    std::vector<Vector2> corners;
    for (const PlacedGroup& group : f.takeAll({14, 24})) {
        if (group.code == 14) {
            corners.push_back({group.real(), 0});
        } else if (!corners.empty()) {
            corners.back().y = group.real();
        }
    }
    return corners;
}

// A rectangle has two corners; a polygon says how many. A boundary that is none spoils the file for the host, so that
// of the whole image takes its place.
void clip(ObjectFields& f, Vector2 pixels)
{
    constexpr unsigned rawPointBits = 128;
    constexpr std::size_t rectangleCorners = 2;
    constexpr std::size_t leastCorners = 3; // of a polygon
    std::vector<Vector2> corners = takeCorners(f);
    int type = static_cast<int>(Image::ClipType::Rectangle);
    f.take(71, type);
    const bool isPolygon = type == static_cast<int>(Image::ClipType::Polygon);
    if (!f.reading() && corners.size() < (isPolygon ? leastCorners : rectangleCorners)) {
        type = static_cast<int>(Image::ClipType::Rectangle);
        corners = {{-0.5, -0.5}, {pixels.x - 0.5, pixels.y - 0.5}};
    }
    f.bits.shortNumber(type);
    // A polygon closes by itself here; elsewhere its first corner stands again at the end.
    const bool polygon = type == static_cast<int>(Image::ClipType::Polygon);
    if (polygon && corners.size() > 1 && corners.front() == corners.back()) {
        corners.pop_back();
    }
    auto count = static_cast<int>(corners.size());
    if (polygon) {
        f.bits.count(count, rawPointBits);
    } else {
        count = rectangleCorners;
    }
    corners.resize(static_cast<std::size_t>(count));
    f.give(71, type);
    for (Vector2& corner : corners) {
        f.bits.rawFlatPoint(corner);
    }
    if (polygon && !corners.empty()) {
        corners.push_back(corners.front());
    }
    f.give(91, static_cast<int>(corners.size()));
    for (const Vector2& corner : corners) {
        f.give(14, corner);
    }
}

void image(ObjectFields& f)
{
    f.marker(f.recordName() == "IMAGE" ? "AcDbRasterImage" : "AcDbWipeout");
    f.longNumber(90);
    f.point3(10);
    f.point3(11);
    f.point3(12);
    Vector2 pixels;
    f.take(13, pixels);
    f.bits.rawFlatPoint(pixels);
    f.give(13, pixels);
    f.shortNumber(70);
    f.bit(280);
    f.byte(281);
    f.byte(282);
    f.byte(283);
    clip(f, pixels);
    f.handle(340, Reference::HardPointer);
    f.handle(360, Reference::HardOwner);
}

void definition(ObjectFields& f)
{
    f.marker("AcDbRasterImageDef");
    f.longNumber(90);
    f.rawPoint2(10);
    f.text(1);
    f.bit(280);
    f.byte(281);
    f.rawPoint2(11);
}

// The image that it stands for is its owner.
void reactor(ObjectFields& f)
{
    f.marker("AcDbRasterImageDefReactor");
    f.longNumber(90);
}

void variables(ObjectFields& f)
{
    f.marker("AcDbRasterVariables");
    f.longNumber(90);
    f.shortNumber(70);
    f.shortNumber(71);
    f.shortNumber(72);
}

void wipeoutVariables(ObjectFields& f)
{
    f.marker("AcDbWipeoutVariables");
    f.shortNumber(70);
}

} // namespace

std::span<const Kind> imageKinds()
{
    static constexpr Kind kinds[] = {
        {0, true, "IMAGE", image},
        {0, false, "IMAGEDEF", definition},
        {0, false, "IMAGEDEF_REACTOR", reactor},
        {0, false, "RASTERVARIABLES", variables},
        {0, true, "WIPEOUT", image},
        {0, false, "WIPEOUTVARIABLES", wipeoutVariables},
    };
    return kinds;
}

} // namespace drawing::dwg
