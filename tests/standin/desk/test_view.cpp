// The view's arithmetic: what lies where, zoom, pan, picking, typed coordinates.

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standin/desk/coordinate_input.h"
#include "standin/desk/picking.h"
#include "standin/desk/view_transform.h"

using namespace desk;

namespace {

ViewTransform viewOf(int width, int height, Vec2 centre, double units)
{
    ViewTransform view;
    view.resize({width, height});
    view.set(centre, units);
    return view;
}

void expectNear(Vec2 seen, Vec2 expected, const char* what)
{
    EXPECT_NEAR(seen.x, expected.x, 1e-9) << what;
    EXPECT_NEAR(seen.y, expected.y, 1e-9) << what;
}

const PickShape triangle = {{{{{0, 0}, {10, 0}, {0, 10}}}, true}};
const PickShape bent = {{{{{0, 0}, {10, 0}, {10, 10}}}, false}};

} // namespace

TEST(View, TheHostsVariablesPlaceADrawingPoint)
{
    // 1000 pixels show 100 units about the origin: 10 pixels a unit, y turned over.
    const ViewTransform view = viewOf(1000, 1000, {0, 0}, 100);
    expectNear(view.toView({0, 0}), {500, 500}, "the centre");
    expectNear(view.toView({10, 20}), {600, 300}, "up is towards smaller y");
    expectNear(view.toDrawing({600, 300}), {10, 20}, "and back");
}

TEST(View, ZoomHoldsThePointUnderTheMouse)
{
    ViewTransform view = viewOf(800, 600, {50, 70}, 30);
    const Vec2 mouse{123, 456};
    const Vec2 held = view.toDrawing(mouse);
    view.zoomAbout(mouse, 2.5);
    expectNear(view.toDrawing(mouse), held, "the point under the mouse");
    EXPECT_NEAR(view.height(), 12, 1e-9);
}

TEST(View, AbsurdZoomsAreRefused)
{
    ViewTransform view = viewOf(400, 200, {1e6, 0}, 100);
    for (int i = 0; i < 500; ++i)
        view.zoomAbout({0, 0}, 1.25);
    EXPECT_NE(view.toDrawing({0, 0}).x, view.toDrawing({1, 0}).x) << "neighbouring pixels must stay different points";
    view.set({0, 0}, std::nan(""));
    EXPECT_TRUE(std::isfinite(view.height()));
}

TEST(Picking, DistanceToOpenAndFilledShapes)
{
    EXPECT_NEAR(distanceTo(bent, {5, 3}), 3, 1e-12);
    EXPECT_NEAR(distanceTo(bent, {14, 13}), 5, 1e-12) << "beyond the end: to the corner";
    EXPECT_NEAR(distanceTo(triangle, {2, 2}), 0, 1e-12) << "inside a fill";
    EXPECT_NEAR(distanceTo(triangle, {10, 10}), std::sqrt(50), 1e-12) << "to the edge that closes it";
    EXPECT_TRUE(std::isinf(distanceTo({}, {0, 0})));
    PickShape holed = triangle;
    holed[0].contours.push_back({{1, 1}, {5, 1}, {1, 5}});
    EXPECT_NEAR(distanceTo(holed, {2, 2}), 1, 1e-12) << "in the hole: to its edge";
    EXPECT_FALSE(touchesWindow(holed, {{1.5, 1.5}, {2, 2}}));
    EXPECT_NEAR(distanceTo(holed, {0.5, 0.5}), 0, 1e-12) << "between the contours";
}

TEST(Picking, AWindowTakesWhatLiesInItAndACrossingWhatTouchesIt)
{
    const auto box = [](double left, double low, double right, double high) { return Box{{left, low}, {right, high}}; };
    const struct
    {
        Box window;
        bool inside, touches;
        const char* what;
    } cases[] = {
        {box(-1, -1, 11, 11), true, true, "around all of it"},
        {box(4, -1, 6, 1), false, true, "across one leg, holding no corner"},
        {box(2, 2, 8, 8), false, false, "in the bend, touching nothing"},
        {box(12, -1, 14, 1), false, false, "beyond the end of a leg"},
        {box(20, 20, 30, 30), false, false, "far away"},
    };
    for (const auto& [window, inside, touches, what] : cases) {
        EXPECT_EQ(insideWindow(bent, window), inside) << what;
        EXPECT_EQ(touchesWindow(bent, window), touches) << what;
    }
    EXPECT_TRUE(touchesWindow(triangle, box(1, 1, 2, 2))) << "a window wholly inside a fill";
    EXPECT_TRUE(touchesWindow(triangle, box(-1, 4, 1, 6))) << "across the edge that closes the fill";
}

TEST(Coordinates, AreTypedAbsoluteRelativeAndPolar)
{
    const Vec2 last{10, 20};
    const struct
    {
        const wchar_t* text;
        Vec2 expected;
    } cases[] = {
        {L"1.5,-2", {1.5, -2}}, {L"1,2,3", {1, 2}},   {L"@1,2", {11, 22}},
        {L"@", {10, 20}},       {L"@5<90", {10, 25}}, {L"2<180", {-2, 0}},
    };
    for (const auto& [text, expected] : cases) {
        const auto point = parsePoint(text, last);
        ASSERT_TRUE(point) << text;
        expectNear(*point, expected, "typed");
    }
    for (const wchar_t* text :
         {L"", L"5", L"1,", L",1", L"1,2,3,4", L"1;2", L"a,b", L"1,2 ", L"5<", L"nan,1", L"1e999,1"})
        EXPECT_FALSE(parsePoint(text, last)) << text;
}
