// Flattening of splines, hatches, leaders, points' symbols, endless lines, faces and viewports.

#include <cmath>
#include <gmock/gmock.h>
#include <numbers>

#include "flattening.h"

namespace drawing::test {

using testing::ElementsAre;

TEST_F(Flattening, CurveThroughPointsGoesThroughThemAndKeepsItsTangents)
{
    auto& spline = add<Spline>();
    options.tolerance = 0.001;
    // A straight row stays one, whatever the distances.
    spline.fitPoints = {{0, 0, 0}, {1, 1, 0}, {4, 4, 0}};
    for (const Vector2& point : onlyPath().points) {
        EXPECT_NEAR(point.x, point.y, near);
    }
    // Points of a circle, with its tangents, give nearly the circle.
    spline.fitPoints.clear();
    for (int i = 0; i <= 12; ++i) {
        const double angle = i * std::numbers::pi / 12;
        spline.fitPoints.push_back({10 * std::cos(angle), 10 * std::sin(angle), 0});
    }
    spline.startTangent = Vector3{0, 3, 0};
    spline.endTangent = Vector3{0, -3, 0};
    for (const Vector2& point : onlyPath().points) {
        EXPECT_NEAR(length(point), 10, 0.01);
    }
    // Closed, it is as round where it begins as elsewhere.
    spline.flags = Spline::closedFlag;
    spline.startTangent.reset();
    spline.endTangent.reset();
    for (int i = 13; i < 24; ++i) {
        const double angle = i * std::numbers::pi / 12;
        spline.fitPoints.push_back({10 * std::cos(angle), 10 * std::sin(angle), 0});
    }
    const FlatPath ring = onlyPath();
    for (const Vector2& point : ring.points) {
        EXPECT_NEAR(length(point), 10, 0.01);
    }
    expectPoint(ring.points.front(), 10, 0);
    expectPoint(ring.points.back(), 10, 0);
}

TEST_F(Flattening, SplinesThatAreNoneAreLeftOutAndSaidSo)
{
    auto& spline = add<Spline>();
    spline.controlPoints = {{0, 0, 0}, {1, 1, 0}, {2, 0, 0}, {3, 1, 0}};
    spline.knots = {0, 0, 0, 0, 1, 1, 1, 1};
    EXPECT_EQ(items().size(), 1u);
    EXPECT_TRUE(complete);
    const auto spoilt = [&](const char* what, auto&& spoil) {
        const auto knots = spline.knots;
        spoil();
        EXPECT_TRUE(items().empty()) << what;
        EXPECT_FALSE(complete) << what;
        spline.knots = knots;
        spline.degree = 3;
        spline.weights.clear();
    };
    spoilt("too few knots", [&] { spline.knots.pop_back(); });
    spoilt("falling knots", [&] { spline.knots[2] = 5; });
    spoilt("all knots alike", [&] { spline.knots.assign(8, 1); });
    spoilt("degree of 2 billion", [&] { spline.degree = 2'000'000'000; });
    spoilt("negative degree", [&] { spline.degree = -1; });
    spoilt("a weight of nothing", [&] { spline.weights = {1, 0, 1, 1}; });
}

HatchPath square(double low, double high)
{
    HatchPath path;
    path.flags = HatchPath::external | HatchPath::polyline;
    for (const Vector2& corner : {Vector2{low, low}, {high, low}, {high, high}, {low, high}}) {
        path.points.push_back({corner, 0, 0, 0});
    }
    return path;
}

TEST_F(Flattening, HatchStyleSaysWhatBecomesOfIslands)
{
    auto& hatch = add<Hatch>();
    hatch.paths = {square(0, 100), square(10, 90), square(20, 80)};
    const struct
    {
        Hatch::Style style;
        bool rim;
        bool island;
        bool core;
    } cases[] = {{Hatch::Style::Normal, true, false, true},
                 {Hatch::Style::Outer, true, false, false},
                 {Hatch::Style::Ignore, true, true, true}};
    for (const auto& each : cases) {
        hatch.style = each.style;
        const auto all = items();
        ASSERT_EQ(all.size(), 1u);
        EXPECT_EQ(covers(all[0], {5, 5}), each.rim);
        EXPECT_EQ(covers(all[0], {15, 15}), each.island);
        EXPECT_EQ(covers(all[0], {50, 50}), each.core);
    }
}

TEST_F(Flattening, HatchLiesInItsPlaneAndItsEdgesMayRunEitherWay)
{
    auto& hatch = add<Hatch>();
    hatch.extrusion = {0, 0, -1}; // x is mirrored
    HatchPath path;
    path.edges = {HatchLine{{0, 0}, {10, 0}}, HatchLine{{10, 10}, {10, 0}}, HatchLine{{0, 0}, {10, 10}}};
    hatch.paths = {path};
    expectPoints(onlyContour(), {{0, 0}, {-10, 0}, {-10, 10}});
    // A half disc: the arc runs clockwise from the left to the right, its angles are measured that way.
    HatchArc arc;
    arc.center = {5, 0};
    arc.radius = 5;
    arc.startAngle = 180;
    arc.endAngle = 360;
    arc.counterClockwise = false;
    path.edges = {arc, HatchLine{{10, 0}, {0, 0}}};
    hatch.paths = {path};
    hatch.extrusion = worldZAxis;
    const auto all = items();
    EXPECT_TRUE(covers(all.at(0), {5, 4}));
    EXPECT_FALSE(covers(all.at(0), {5, -1}));
}

TEST_F(Flattening, HatchPatternIsCutByItsArea)
{
    auto& hatch = add<Hatch>();
    hatch.solid = false;
    hatch.paths = {square(0, 10), square(4, 6)};
    // Level lines at the heights 5, 8, 11, ...; dash 3, gap 1, each shifted by 1. Two lines lie in the area: at 5 and
    // 8, and at 2 the one before them.
    hatch.lines = {{0, {0, 5}, {1, 3}, {3, -1}}};
    const std::vector<Vector2> runs[] = {{{0, 2}, {2, 2}}, {{3, 2}, {6, 2}}, {{7, 2}, {10, 2}},
                                         {{0, 5}, {3, 5}}, {{6, 5}, {7, 5}}, {{8, 5}, {10, 5}},
                                         {{1, 8}, {4, 8}}, {{5, 8}, {8, 8}}, {{9, 8}, {10, 8}}};
    const auto all = items();
    ASSERT_EQ(all.size(), std::size(runs));
    for (std::size_t i = 0; i < all.size(); ++i) {
        expectPoints(std::get<FlatPath>(all[i].shape).points, runs[i]);
    }
    EXPECT_TRUE(complete);
}

TEST_F(Flattening, HatchPatternsWithoutMeasureAreLeftOut)
{
    auto& hatch = add<Hatch>();
    hatch.solid = false;
    hatch.paths = {square(0, 10)};
    const HatchPatternLine hostile[] = {
        {0, {0, 0}, {0, 1e-9}, {}},    {0, {0, 0}, {0, 1}, {1e-9, -1e-9}}, {0, {0, 0}, {1, 0}, {}},
        {0, {0, 0}, {0, 1e-300}, {1}}, {0, {1e300, 1e300}, {0, 1e-3}, {}}, {0, {0, 0}, {0, 0}, {}}};
    for (const HatchPatternLine& line : hostile) {
        hatch.lines = {line};
        EXPECT_TRUE(items().empty());
    }
    hatch.paths.clear();
    hatch.solid = true;
    EXPECT_TRUE(items().empty());
    EXPECT_TRUE(complete) << "without a boundary there is nothing to be left out";
}

TEST_F(Flattening, LeaderHasAnArrowIfItsFirstSegmentIsLongEnough)
{
    auto& leader = add<Leader>();
    leader.points = {{0, 0, 0}, {30, 0, 0}, {30, 20, 0}};
    document.header.setReal("$DIMASZ", 3);
    document.header.setReal("$DIMSCALE", 2);
    leader.dimensionStyle = "NONE OF THE DRAWING";
    const auto all = items();
    ASSERT_EQ(all.size(), 2u);
    expectPoints(std::get<FlatPath>(all[0].shape).points, {{0, 0}, {30, 0}, {30, 20}});
    expectPoints(std::get<FlatArea>(all[1].shape).contours.at(0), {{0, 0}, {6, 1}, {6, -1}});
    leader.extendedData = {{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "41"}, {1040, "8"}, {1002, "}"}};
    EXPECT_EQ(items().size(), 1u) << "an arrow of 16 doesn't fit twice into 30";
    leader.extendedData.clear();
    leader.hasArrow = false;
    EXPECT_EQ(items().size(), 1u);
    leader.isSpline = true;
    EXPECT_GT(onlyPath().points.size(), 5u);
}

TEST_F(Flattening, EndlessLinesAreCutToTheWindow)
{
    auto& ray = add<EndlessLine>();
    ray.base = {5, 5, 0};
    ray.direction = {1, 1, 0};
    EXPECT_TRUE(items().empty()) << "without a window there is no end";
    EXPECT_FALSE(extentsOf(document, document.modelSpace()));
    options.window = Extents{{0, 0}, {20, 10}};
    expectPoints(onlyPath().points, {{5, 5}, {10, 10}});
    EXPECT_TRUE(onlyPath().endless);
    ray.direction = {-3, 0, 0};
    expectPoints(onlyPath().points, {{5, 5}, {0, 5}});
    ray.base = {5, 11, 0};
    EXPECT_TRUE(items().empty()) << "beside the window";
    document.erase(ray.handle);
    auto& line = document.addEntity(document.modelSpace(), std::make_unique<EndlessLine>(true));
    line.base = {1000, 7, 0};
    line.direction = {5, 0, 0};
    expectPoints(onlyPath().points, {{0, 7}, {20, 7}});
}

TEST_F(Flattening, FaceHasItsVisibleEdges)
{
    auto& face = add<Face>();
    face.corners = {Vector3{0, 0, 0}, {1, 0, 5}, {1, 1, 0}, {1, 1, 0}};
    EXPECT_EQ(items().size(), 3u) << "a triangle has no fourth edge";
    face.invisibleEdges = 1 | 8;
    const auto all = items();
    ASSERT_EQ(all.size(), 1u);
    expectPoints(std::get<FlatPath>(all[0].shape).points, {{1, 0}, {1, 1}});
}

TEST_F(Flattening, PointsHaveTheSymbolOfTheDrawing)
{
    add<Point>().position = {100, 50, 0};
    const struct
    {
        int mode;
        double size;
        double viewHeight;
        std::size_t pieces;
        double reach; // to the right of the point
    } cases[] = {{0, 4, 0, 1, 0},    {1, 4, 0, 0, 0},    {2, 4, 0, 2, 4},  {3, 4, 0, 2, 4},
                 {4, 4, 0, 1, 0},    {33, 4, 0, 1, 2},   {65, 4, 0, 1, 2}, {98, 4, 0, 4, 4},
                 {2, 0, 200, 2, 10}, {2, -3, 200, 2, 6}, {35, 0, 0, 1, 0}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.mode);
        document.header.setInteger("$PDMODE", each.mode);
        document.header.setReal("$PDSIZE", each.size);
        options.viewHeight = each.viewHeight;
        const auto all = items();
        EXPECT_EQ(all.size(), each.pieces);
        double right = 100;
        for (const FlatItem& item : all) {
            for (const Vector2& point : std::get<FlatPath>(item.shape).points) {
                right = std::max(right, point.x);
            }
        }
        EXPECT_NEAR(right - 100, each.reach, near);
    }
}

class Sheet : public Flattening
{
protected:
    Sheet()
    {
        auto& layer = addLayer("ELSEWHERE", 1);
        frozen = layer.handle;
        auto& line = add<Line>();
        line.start = {10, 20, 0};
        line.end = {20, 20, 0};
        viewport = &document.addEntity(document.paperSpace(), std::make_unique<Viewport>());
        viewport->center = {100, 100, 0};
        viewport->width = 80;
        viewport->height = 40;
        viewport->status = viewport->number = 2;
        viewport->viewCenter = {10, 20};
        viewport->viewHeight = 10; // four times as large on the sheet
    }
    std::vector<FlatItem> sheet()
    {
        std::vector<FlatItem> result;
        complete =
            flattenBlock(document, document.paperSpace(), options, [&](FlatItem&& item) { result.push_back(item); });
        return result;
    }

    Viewport* viewport;
    Handle frozen;
};

TEST_F(Sheet, ShowsTheModelThroughItsViewports)
{
    auto dashed = std::make_unique<Linetype>();
    dashed->recordName = "DASHED";
    dashed->elements = {{3, {}}, {-1, {}}};
    document.addRecord(std::move(dashed));
    document.find<Line>(document.modelSpace().entities[0])->linetype = "DASHED";
    const auto all = sheet();
    ASSERT_EQ(all.size(), 2u) << "the line, and the viewport's frame";
    expectPoints(std::get<FlatPath>(all[0].shape).points, {{100, 100}, {140, 100}});
    EXPECT_EQ(all[0].entity, viewport->handle);
    EXPECT_EQ(all[0].clip, (Extents{{60, 80}, {140, 120}}));
    EXPECT_THAT(all[0].style.dashes, ElementsAre(12, -4));
    expectPoints(std::get<FlatPath>(all[1].shape).points, {{60, 80}, {140, 80}, {140, 120}, {60, 120}});
    EXPECT_FALSE(all[1].clip);
    EXPECT_TRUE(complete);

    viewport->twist = 90; // the model is seen turned to the left, and the view's centre counts in what is seen
    viewport->viewCenter = {-20, 10};
    expectPoints(std::get<FlatPath>(sheet().at(0).shape).points, {{100, 100}, {100, 140}});
    viewport->twist = 0;
    viewport->viewTarget = {10, 20, 0};
    viewport->viewCenter = {};
    viewport->viewDirection = {0, -1, 0}; // from the front: x stays x, z is up
    document.find<Line>(document.modelSpace().entities[0])->end.z = 5;
    expectPoints(std::get<FlatPath>(sheet().at(0).shape).points, {{100, 100}, {140, 120}});
}

TEST_F(Sheet, ViewportsThatShowNothingAndLayersThatTheyHide)
{
    viewport->number = Viewport::sheetNumber;
    EXPECT_TRUE(sheet().empty()) << "the sheet itself";
    viewport->number = 2;
    viewport->status = 0;
    EXPECT_TRUE(sheet().empty()) << "switched off";
    viewport->status = 2;
    viewport->viewHeight = 0;
    EXPECT_TRUE(sheet().empty());
    viewport->viewHeight = 10;
    viewport->layer = "ELSEWHERE";
    document.findLayer("ELSEWHERE")->on = false;
    EXPECT_EQ(sheet().size(), 1u) << "a viewport on a hidden layer has no frame";
    document.findLayer("ELSEWHERE")->on = true;
    document.find<Line>(document.modelSpace().entities[0])->layer = "elsewhere";
    EXPECT_EQ(sheet().size(), 2u);
    viewport->frozenLayers = {frozen, 0xDEAD};
    EXPECT_EQ(sheet().size(), 1u);
    EXPECT_EQ(items().size(), 1u) << "frozen in the viewport alone";
}

TEST_F(Sheet, ViewportsInTheModelOrInBlocksShowNothing)
{
    auto inner = std::make_unique<Viewport>(*viewport);
    inner->handle = 0;
    document.addEntity(document.modelSpace(), std::move(inner));
    EXPECT_EQ(items().size(), 1u);
    EXPECT_EQ(sheet().size(), 2u);
    EXPECT_TRUE(complete);
    auto nested = std::make_unique<Viewport>(*viewport);
    nested->handle = 0;
    document.addEntity(document.addBlock("B"), std::move(nested));
    auto reference = std::make_unique<BlockReference>();
    reference->block = "B";
    document.addEntity(document.paperSpace(), std::move(reference));
    EXPECT_EQ(sheet().size(), 2u);
}

TEST_F(Flattening, NewKindsFollowTheReferenceThatTheyStandIn)
{
    Block& block = document.addBlock("B");
    auto& hatch = addTo<Hatch>(block);
    hatch.paths = {square(0, 1)};
    hatch.color = colorByBlock;
    auto& spline = addTo<Spline>(block);
    spline.degree = 1;
    spline.controlPoints = {{0, 0, 0}, {2, 1, 0}};
    spline.knots = {0, 0, 1, 1};
    auto& reference = refer("B");
    reference.scale = {-2, 3, 1};
    reference.position = {10, 0, 0};
    reference.color = 4;
    options.tolerance = 1;
    const auto all = items();
    ASSERT_EQ(all.size(), 2u);
    expectPoints(std::get<FlatArea>(all[0].shape).contours.at(0), {{8, 0}, {8, 3}, {10, 3}, {10, 0}});
    EXPECT_EQ(all[0].style.colorIndex, 4);
    const auto& points = std::get<FlatPath>(all[1].shape).points;
    expectPoint(points.front(), 10, 0);
    expectPoint(points.back(), 6, 3);
}

} // namespace drawing::test
