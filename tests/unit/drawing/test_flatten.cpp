// Flattening: what the desk draws of an entity.

#include <cmath>
#include <gmock/gmock.h>
#include <numbers>

#include "drawing/flatten.h"
#include "drawing/stroke_font.h"
#include "support.h"

namespace drawing::test {

constexpr double near = 1e-9;

// A drawing to be filled, and the pieces that it flattens to.
class Flattening : public testing::Test
{
protected:
    template <class T> T& add() { return document.addEntity(document.modelSpace(), std::make_unique<T>()); }
    template <class T> T& addTo(Block& block) { return document.addEntity(block, std::make_unique<T>()); }
    Layer& addLayer(const std::string& name, int color)
    {
        auto layer = std::make_unique<Layer>();
        layer->recordName = name;
        layer->color = color;
        return document.addRecord(std::move(layer));
    }
    BlockReference& refer(const std::string& block)
    {
        auto& reference = add<BlockReference>();
        reference.block = block;
        return reference;
    }

    std::vector<FlatItem> items()
    {
        std::vector<FlatItem> result;
        complete =
            flattenBlock(document, document.modelSpace(), options, [&](FlatItem&& item) { result.push_back(item); });
        return result;
    }
    FlatPath onlyPath()
    {
        const auto all = items();
        EXPECT_EQ(all.size(), 1u);
        return std::get<FlatPath>(all.at(0).shape);
    }
    // The one contour of the one area.
    std::vector<Vector2> onlyContour()
    {
        const auto all = items();
        EXPECT_EQ(all.size(), 1u);
        const auto area = std::get<FlatArea>(all.at(0).shape);
        EXPECT_EQ(area.contours.size(), 1u);
        return area.contours.at(0);
    }
    FlatText onlyText()
    {
        const auto all = items();
        EXPECT_EQ(all.size(), 1u);
        return std::get<FlatText>(all.at(0).shape);
    }

    Document document;
    FlattenOptions options;
    bool complete = false;
};

void expectPoint(const Vector2& found, double x, double y)
{
    EXPECT_NEAR(found.x, x, near);
    EXPECT_NEAR(found.y, y, near);
}

void expectPoints(const std::vector<Vector2>& found, const std::vector<Vector2>& wanted)
{
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        expectPoint(found[i], wanted[i].x, wanted[i].y);
    }
}

// By how much, at most, the straight lines stray inwards from the circle around `center`.
double strayFromCircle(const FlatPath& path, const Vector2& center, double radius)
{
    double worst = 0;
    const std::size_t edges = path.closed ? path.points.size() : path.points.size() - 1;
    for (std::size_t i = 0; i < edges; ++i) {
        const Vector2 a = path.points[i] - center;
        const Vector2 b = path.points[(i + 1) % path.points.size()] - center;
        EXPECT_NEAR(length(a), radius, 1e-9 * radius);
        worst = std::max(worst, radius - length((a + b) * 0.5));
    }
    return worst;
}

TEST_F(Flattening, CircleStaysWithinTheToleranceWithoutWastingPoints)
{
    auto& circle = add<Circle>();
    circle.center = {5, 6, 0};
    circle.radius = 100;
    for (const double tolerance : {1.0, 0.1, 0.001}) {
        options.tolerance = tolerance;
        const FlatPath path = onlyPath();
        EXPECT_TRUE(path.closed);
        const double stray = strayFromCircle(path, {5, 6}, 100);
        EXPECT_LE(stray, tolerance);
        EXPECT_GE(stray, tolerance / 4);
    }
}

TEST_F(Flattening, ToleranceHoldsInTheDrawingAlsoInsideAScaledBlock)
{
    addTo<Circle>(document.addBlock("WHEEL")).radius = 1;
    refer("WHEEL").scale = {1000, 1000, 1};
    options.tolerance = 0.5;
    EXPECT_LE(strayFromCircle(onlyPath(), {0, 0}, 1000), 0.5);
}

TEST_F(Flattening, ArcRunsCounterClockwiseThroughZero)
{
    auto& arc = add<Arc>();
    arc.radius = 2;
    arc.startAngle = 270;
    arc.endAngle = 90;
    const FlatPath path = onlyPath();
    EXPECT_FALSE(path.closed);
    expectPoint(path.points.front(), 0, -2);
    expectPoint(path.points.back(), 0, 2);
    expectPoint(path.points[path.points.size() / 2], 2, 0);
    arc.extrusion = {0, 0, -1}; // seen from below: x is mirrored
    expectPoint(items().size() == 1 ? onlyPath().points[path.points.size() / 2] : Vector2{}, -2, 0);
}

TEST_F(Flattening, QuarterCircleBulgeHasItsCentreWhereGeometryPutsIt)
{
    auto& polyline = add<LightPolyline>();
    polyline.closed = true;
    polyline.points = {{{1, 0}, 0, 0, std::tan(std::numbers::pi / 8)}, {{0, 1}, 0, 0, 0}, {{0, 0}, 0, 0, 0}};
    const FlatPath path = onlyPath();
    EXPECT_TRUE(path.closed);
    expectPoint(path.points.back(), 0, 0);
    EXPECT_GT(path.points.size(), 4u);
    for (std::size_t i = 0; i + 1 < path.points.size(); ++i) {
        EXPECT_NEAR(length(path.points[i]), 1, near);
    }
}

TEST_F(Flattening, WidePolylineIsFilledMitredAndOfOnePiece)
{
    auto& polyline = add<LightPolyline>();
    polyline.constantWidth = 2;
    polyline.points = {{{0, 0}}, {{10, 0}}, {{10, 10}}};
    expectPoints(onlyContour(), {{0, 1}, {9, 1}, {9, 10}, {11, 10}, {11, -1}, {0, -1}});
    polyline.points[1].startWidth = polyline.points[1].endWidth = 4;
    EXPECT_EQ(items().size(), 2u) << "where the width jumps, a new piece begins";
    document.erase(polyline.handle);
    auto& heavy = add<HeavyPolyline>();
    heavy.startWidth = heavy.endWidth = 2;
    document.addVertex(heavy, std::make_unique<Vertex>());
    document.addVertex(heavy, std::make_unique<Vertex>()).position = {10, 0, 0};
    expectPoints(onlyContour(), {{0, 1}, {10, 1}, {10, -1}, {0, -1}});
}

// Twice the area, positive if the outline runs counter-clockwise.
double doubleArea(const std::vector<Vector2>& contour)
{
    double area = 0;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Vector2& a = contour[i];
        const Vector2& b = contour[(i + 1) % contour.size()];
        area += a.x * b.y - a.y * b.x;
    }
    return area;
}

int crossingsToTheRight(const FlatArea& area, const Vector2& at)
{
    int count = 0;
    for (const auto& contour : area.contours) {
        for (std::size_t i = 0; i < contour.size(); ++i) {
            const Vector2& a = contour[i];
            const Vector2& b = contour[(i + 1) % contour.size()];
            const bool spans = (a.y <= at.y) != (b.y <= at.y);
            count += spans && a.x + (b.x - a.x) * (at.y - a.y) / (b.y - a.y) > at.x ? 1 : 0;
        }
    }
    return count;
}

TEST_F(Flattening, WideRingIsOneOutlineUnlessItIsWiderThanRound)
{
    options.tolerance = 1e-4;
    auto& ring = add<LightPolyline>();
    ring.closed = true;
    ring.constantWidth = 2;
    ring.points = {{{-5, 0}, 0, 0, 1}, {{5, 0}, 0, 0, 1}};
    EXPECT_NEAR(std::abs(doubleArea(onlyContour())), 2 * std::numbers::pi * (36 - 16), 0.01);
    ring.constantWidth = 12;
    for (const FlatItem& item : items()) {
        EXPECT_EQ(std::get<FlatArea>(item.shape).contours.at(0).size(), 4u)
            << "an outline would leave a hole in the middle";
    }
}

TEST_F(Flattening, WidePolylineThatCrossesItselfHasNoHoleThere)
{
    auto& polyline = add<LightPolyline>();
    polyline.constantWidth = 2;
    polyline.points = {{{0, 0}}, {{10, 0}}, {{10, 5}}, {{5, 5}}, {{5, -5}}};
    int around = 0;
    for (const FlatItem& item : items()) {
        around += crossingsToTheRight(std::get<FlatArea>(item.shape), {5.1, 0.2}) % 2;
    }
    EXPECT_EQ(around, 2) << "both legs cover the crossing";
}

TEST_F(Flattening, EllipseFollowsItsAxes)
{
    auto& ellipse = add<Ellipse>();
    ellipse.center = {1, 1, 0};
    ellipse.majorAxis = {0, 4, 0};
    ellipse.ratio = 0.5;
    ellipse.startParameter = 0;
    ellipse.endParameter = std::numbers::pi / 2;
    const FlatPath path = onlyPath();
    expectPoint(path.points.front(), 1, 5);
    expectPoint(path.points.back(), -1, 1);
}

TEST_F(Flattening, CurveThatTurnsFullButForTheRoundingOfItsDigitsIsClosed)
{
    auto& ellipse = add<Ellipse>();
    for (const double end : {6.283185307179586, 6.28318530717959, 6.2831853071796, 6.28318531, 6.283185, 12.566371}) {
        ellipse.endParameter = end;
        EXPECT_TRUE(onlyPath().closed) << end;
    }
    ellipse.endParameter = 1e-7;
    EXPECT_FALSE(onlyPath().closed) << "a short one stays short";
    document.erase(ellipse.handle);
    auto& arc = add<Arc>();
    arc.radius = 5;
    for (const double start : {0, 2, 10, 11, 90, 180, 270, -180}) {
        arc.startAngle = start;
        arc.endAngle = start + 360;
        EXPECT_TRUE(onlyPath().closed) << start;
    }
}

TEST_F(Flattening, SolidGoesAroundItsCorners)
{
    add<Solid>().corners = {Vector3{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    EXPECT_THAT(onlyContour(), testing::ElementsAre(Vector2{0, 0}, Vector2{1, 0}, Vector2{1, 1}, Vector2{0, 1}));
}

TEST_F(Flattening, BlockReferenceScalesAboutItsBaseThenTurnsThenMoves)
{
    Block& block = document.addBlock("MARK");
    document.find<BlockBracket>(block.begin)->basePoint = {1, 1, 0};
    addTo<Point>(block).position = {3, 1, 0};
    auto& reference = refer("mark");
    reference.position = {100, 200, 0};
    reference.scale = {5, 1, 1};
    reference.rotation = 90;
    expectPoint(onlyPath().points[0], 100, 210);
    reference.columns = 2;
    reference.rows = 2;
    reference.columnSpacing = 7;
    reference.rowSpacing = 3;
    const auto all = items();
    ASSERT_EQ(all.size(), 4u);
    expectPoint(std::get<FlatPath>(all[1].shape).points[0], 100, 217);
    expectPoint(std::get<FlatPath>(all[3].shape).points[0], 97, 217);
    EXPECT_EQ(all[3].entity, reference.handle) << "a click on any piece is to select the reference";
}

TEST_F(Flattening, AttributesComeWithEveryBlockOfAnArray)
{
    document.addBlock("FLAG");
    auto& reference = refer("FLAG");
    reference.position = {100, 0, 0};
    reference.scale = {3, 3, 3};
    reference.rotation = 90;
    reference.columns = 2;
    reference.columnSpacing = 7;
    auto& attribute = document.addAttribute(reference, std::make_unique<Attribute>());
    attribute.text = "x";
    attribute.height = 1;
    attribute.position = {101, 1, 0};
    const auto all = items();
    ASSERT_EQ(all.size(), 2u);
    expectPoint(std::get<FlatText>(all[0].shape).glyphs.at(0).origin, 101, 1);
    expectPoint(std::get<FlatText>(all[1].shape).glyphs.at(0).origin, 101, 8);
}

TEST_F(Flattening, ColoursComeFromEntityLayerOrReference)
{
    addLayer("RED", 1);
    addLayer("GREEN", 3);
    Block& block = document.addBlock("B");
    const struct
    {
        const char* layer;
        int color;
        int expected;
    } cases[] = {{"RED", colorByLayer, 1}, {"0", colorByLayer, 3}, {"RED", colorByBlock, 5}, {"RED", 140, 140}};
    for (const auto& each : cases) {
        auto& point = addTo<Point>(block);
        point.layer = each.layer;
        point.color = each.color;
    }
    auto& reference = refer("B");
    reference.layer = "green";
    reference.color = 5;
    const auto all = items();
    ASSERT_EQ(all.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(all[i].style.colorIndex, cases[i].expected) << "piece " << i;
        EXPECT_EQ(all[i].style.rgb, rgbOfIndex(cases[i].expected));
    }
    document.find<Point>(block.entities[0])->trueColor = 0x102030;
    EXPECT_EQ(items().at(0).style.rgb, (Rgb{0x10, 0x20, 0x30}));
}

TEST_F(Flattening, LinetypeAndLineweightAreResolvedToo)
{
    addLayer("L", 1).linetype = "DASHED";
    document.findLayer("L")->lineweight = 50;
    Block& block = document.addBlock("B");
    auto& inner = addTo<Point>(block);
    inner.linetype = "ByBlock";
    inner.lineweight = -2;
    auto& reference = refer("B");
    reference.layer = "L";
    EXPECT_EQ(items().at(0).style.linetype, "DASHED");
    EXPECT_EQ(items().at(0).style.lineweight, 50);
    EXPECT_TRUE(items().at(0).style.dashes.empty()) << "there is no such linetype";
    auto dashed = std::make_unique<Linetype>();
    dashed->recordName = "Dashed";
    dashed->elements = {{3, {}}, {-1, {}}, {0, {}}};
    document.addRecord(std::move(dashed));
    document.header.setReal("$LTSCALE", 10);
    inner.linetypeScale = 0.5;
    EXPECT_THAT(items().at(0).style.dashes, testing::ElementsAre(15, -5, 0));
}

TEST_F(Flattening, HiddenPiecesAreLeftOut)
{
    Layer& off = addLayer("OFF", 1);
    off.on = false;
    addLayer("FROZEN", 1).flags = Layer::frozenFlag;
    Block& block = document.addBlock("B");
    addTo<Point>(block).layer = "0";
    addTo<Point>(block).layer = "OFF";
    addTo<Line>(block).layer = "SHOWN";
    addLayer("SHOWN", 1);
    add<Point>().layer = "OFF";
    add<Point>().layer = "FROZEN";
    add<Point>().visible = false;
    EXPECT_TRUE(items().empty());
    EXPECT_FALSE(isShown(document, *document.find<Entity>(document.modelSpace().entities[0])));

    BlockReference& reference = refer("B");
    EXPECT_EQ(items().size(), 2u) << "the piece on the hidden layer stays away";
    reference.layer = "OFF";
    EXPECT_EQ(items().size(), 1u) << "a reference that is off still shows the pieces on layers of their own";
    reference.layer = "FROZEN";
    EXPECT_EQ(items().size(), 0u) << "a frozen reference shows nothing";
    options.hiddenToo = true;
    EXPECT_EQ(items().size(), 6u);
}

TEST_F(Flattening, BlockThatComesToHoldItselfIsLeftOut)
{
    addTo<BlockReference>(document.addBlock("A")).block = "B";
    Block& b = document.addBlock("B");
    addTo<BlockReference>(b).block = "A";
    addTo<Point>(b);
    refer("A");
    EXPECT_EQ(items().size(), 1u);
    EXPECT_FALSE(complete);
}

TEST_F(Flattening, BlocksThatMultiplyBeyondMeasureComeToAnEnd)
{
    for (int level = 0; level < 20; ++level) {
        auto& reference = addTo<BlockReference>(document.addBlock("B" + std::to_string(level)));
        reference.block = "B" + std::to_string(level + 1);
        reference.rows = 1000;
        reference.columns = 1000;
    }
    refer("B0");
    options.limit = 100'000;
    EXPECT_TRUE(items().empty());
    EXPECT_FALSE(complete);
    addTo<Point>(document.addBlock("B20"));
    EXPECT_LE(items().size(), 100'000u);
}

TEST_F(Flattening, ReferenceToAMissingBlockShowsItsAttributesOnly)
{
    auto& reference = refer("NOWHERE");
    document.addAttribute(reference, std::make_unique<Attribute>()).text = "shown";
    document.addAttribute(reference, std::make_unique<Attribute>()).flags = Attribute::invisibleFlag;
    const auto all = items();
    ASSERT_EQ(all.size(), 0u) << "text without a height can't be seen";
    for (const Handle attribute : reference.attributes) {
        document.find<Attribute>(attribute)->height = 1;
    }
    EXPECT_EQ(onlyText().glyphs.size(), 5u) << "the letters of shown";
}

TEST_F(Flattening, DimensionIsDrawnByItsBlock)
{
    addTo<Line>(document.addBlock("*D1")).end = {7, 0, 0};
    add<Dimension>().block = "*D1";
    expectPoint(onlyPath().points.at(1), 7, 0);
}

TEST_F(Flattening, MeshesShowTheirEdges)
{
    auto& mesh = add<HeavyPolyline>();
    mesh.flags = HeavyPolyline::meshFlag;
    mesh.meshCountM = 2;
    mesh.meshCountN = 3;
    for (int i = 0; i < 6; ++i) {
        document.addVertex(mesh, std::make_unique<Vertex>()).position = {double(i % 3), double(i / 3), 0};
    }
    auto all = items();
    ASSERT_EQ(all.size(), 5u) << "two rows and three columns";
    EXPECT_EQ(std::get<FlatPath>(all[4].shape).points, (std::vector<Vector2>{{2, 0}, {2, 1}}));
    mesh.meshCountM = 2'000'000'000;
    EXPECT_TRUE(items().empty()) << "a mesh that promises more than it has is not drawn";

    mesh.flags = HeavyPolyline::polyfaceMesh;
    for (const Handle vertex : mesh.vertices) {
        document.find<Vertex>(vertex)->flags = Vertex::ofPolyfaceMesh | Vertex::ofMesh;
    }
    auto& face = document.addVertex(mesh, std::make_unique<Vertex>());
    face.flags = Vertex::ofPolyfaceMesh;
    face.face = {1, -2, 5, 99};
    all = items();
    ASSERT_EQ(all.size(), 1u) << "one edge is invisible, two lead to a corner that isn't there";
    EXPECT_EQ(std::get<FlatPath>(all[0].shape).points, (std::vector<Vector2>{{0, 0}, {1, 0}}));
}

TEST_F(Flattening, TextKeepsItsFrameWhenTurnedScaledAndMirrored)
{
    auto& text = addTo<Text>(document.addBlock("T"));
    text.text = "x";
    text.height = 2;
    text.position = {1, 0, 0};
    auto& reference = refer("T");
    reference.rotation = 90;
    reference.scale = {-3, 1, 1};
    const FlatText flat = onlyText();
    ASSERT_EQ(flat.glyphs.size(), 1u);
    expectPoint(flat.glyphs[0].origin, 0, -3);
    expectPoint(flat.across, 0, -6);
    expectPoint(flat.up, -2, 0);
    EXPECT_NEAR(flat.height, 2, near);
}

TEST_F(Flattening, StretchedAcrossTurnedTextLeans)
{
    // A square turned by 45 degrees and stretched along x to twice its width: the baseline goes to (2, 1), the upright
    // to (-2, 1).
    auto& text = addTo<Text>(document.addBlock("T"));
    text.text = "x";
    text.height = std::sqrt(2.0);
    text.rotation = 45;
    refer("T").scale = {2, 1, 1};
    const FlatText flat = onlyText();
    expectPoint(flat.across, 2, 1);
    expectPoint(flat.up, -2, 1);
    EXPECT_NEAR(flat.height, 4 / std::sqrt(5.0), near) << "distance of (-2, 1) from the baseline";
}

TEST_F(Flattening, AlignmentPlacesTheText)
{
    auto& text = add<Text>();
    text.text = "x";
    text.height = 1;
    text.position = {1, 1, 0};
    text.alignmentPoint = Vector3{4, 5, 0};
    expectPoint(onlyText().glyphs.at(0).origin, 1, 1);
    text.horizontal = HorizontalAlignment::Right;
    expectPoint(onlyText().lineBoxes.at(0)[1], 4, 5 - 0.3);
    text.horizontal = HorizontalAlignment::Fit;
    const double advance = strokeGlyph('x').advance;
    const FlatText fitted = onlyText();
    expectPoint(fitted.glyphs.at(0).origin, 1, 1);
    expectPoint(fitted.across, 3 / advance, 4 / advance);
    expectPoint(fitted.up, -0.8, 0.6);
    text.horizontal = HorizontalAlignment::Aligned;
    expectPoint(onlyText().across, 3 / advance, 4 / advance);
    expectPoint(onlyText().up, -4 / advance, 3 / advance);
    text.horizontal = HorizontalAlignment::Fit;
    text.generation = 2; // backward: between the same points, mirrored where it stands
    expectPoint(onlyText().glyphs.at(0).origin, 4, 5);
    expectPoint(onlyText().across, -3 / advance, -4 / advance);
    expectPoint(onlyText().up, -0.8, 0.6);
}

TEST_F(Flattening, MultiLineTextIsTurnedInTheDrawing)
{
    auto& text = add<MText>();
    text.text = "x";
    text.height = 3;
    text.attachment = 7;
    text.rotation = 30;
    const double third = std::sqrt(3.0) / 2;
    expectPoint(onlyText().across, 3 * third, 1.5);
    expectPoint(onlyText().up, -1.5, 3 * third);
    expectPoint(onlyText().lineBoxes.at(0)[0], 0, 0);
    text.extrusion = {0, 0, -1}; // seen from behind: the baseline stays where it is
    expectPoint(onlyText().across, 3 * third, 1.5);
    expectPoint(onlyText().up, 1.5, -3 * third);
}

TEST_F(Flattening, ImageHasTheEdgesOfItsPixels)
{
    auto& image = addTo<Image>(document.addBlock("SCAN"));
    image.position = {1, 2, 0};
    image.u = {0.5, 0, 0};
    image.v = {0, 0.25, 0};
    image.pixels = {100, 40};
    refer("SCAN").rotation = 90;
    const auto all = items();
    ASSERT_EQ(all.size(), 1u);
    const auto& flat = std::get<FlatImage>(all[0].shape);
    EXPECT_EQ(flat.image, &image);
    expectPoint(flat.position, -2, 1);
    expectPoint(flat.u, 0, 0.5);
    expectPoint(flat.v, -0.25, 0);
    const auto extents = extentsOf(document, document.modelSpace());
    ASSERT_TRUE(extents);
    expectPoint(extents->low, -12, 1);
    expectPoint(extents->high, -2, 51);
}

TEST_F(Flattening, ExtentsHoldTheOutermostPointsOfCurves)
{
    EXPECT_FALSE(extentsOf(document, document.modelSpace()));
    auto& circle = add<Circle>();
    circle.center = {10, 20, 0};
    circle.radius = 3;
    add<Line>().end = {-5, 4, 0};
    const auto extents = extentsOf(document, document.modelSpace());
    ASSERT_TRUE(extents);
    expectPoint(extents->low, -5, 0);
    expectPoint(extents->high, 13, 23);
}

TEST_F(Flattening, NumbersThatOverflowAreLeftOut)
{
    addTo<Line>(document.addBlock("B")).end = {1e200, 0, 0};
    refer("B").scale = {1e200, 1, 1};
    EXPECT_TRUE(items().empty());
    EXPECT_FALSE(complete);
}

TEST(ExtrusionFrame, FollowsTheRuleForThePlanesAxes)
{
    const Transform tilted = Transform::fromExtrusion({0, -1, 0}); // a view of the front
    EXPECT_EQ(tilted.point({2, 3, 0}), (Vector3{2, 0, 3}));
    const Transform below = Transform::fromExtrusion({0, 0, -1});
    EXPECT_EQ(below.point({2, 3, 0}), (Vector3{-2, 3, 0}));
}

} // namespace drawing::test
