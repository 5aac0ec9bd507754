#include <cmath>
#include <limits>
#include <numbers>

#include "imaging/stroke.h"
#include "picture.h"
#include "plane.h"

using namespace imaging;

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

Bitmap stroked(Size size, const std::vector<Position>& points, int width, bool closed = false,
               const Region* region = nullptr)
{
    Bitmap bitmap(size);
    SpanPainter painter(bitmap, region);
    stroke(painter, points, closed, width);
    return bitmap;
}

// Each pixel by its own distance. Where that is half the width but for rounding, the pixel's actual value is taken
// over.
Bitmap plainlyStroked(const std::vector<Position>& points, int width, const Bitmap& actual)
{
    return made(actual.size(), [&](int x, int y) {
        double distance = infinite;
        for (std::size_t i = 1; i < points.size(); ++i)
            distance = std::min(distance, distanceTo(points[i - 1], points[i], centreOf(x, y)));
        return std::abs(distance - width / 2.0) < 1e-9 ? actual.ink(x, y) : distance < width / 2.0;
    });
}

} // namespace

TEST(Stroke, WidePensInkWhatLiesWithinHalfTheirWidth)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> anywhere(-30, 130);
    std::uniform_int_distribution<int> halves(-20, 220);
    for (int round = 0; round < 120; ++round) {
        std::vector<Position> points;
        for (int i = 0; i < 2 + round % 3; ++i) {
            // Every other round on whole and half pixels, where lines are level and meet centres.
            if (round % 2 == 0) {
                points.push_back({anywhere(random), anywhere(random)});
            } else {
                points.push_back({halves(random) / 2.0, halves(random) % 3 == 0 ? 40.5 : halves(random) / 2.0});
            }
        }
        for (const int width : {2, 3, 7, 40}) {
            SCOPED_TRACE(testing::Message() << "round " << round << ", " << width << " pixels");
            const Bitmap actual = stroked({100, 90}, points, width);
            ASSERT_TRUE(samePicture(plainlyStroked(points, width, actual), actual));
        }
    }
}

TEST(Stroke, LevelLinesAreAsWideAsThePenWhereverTheyLie)
{
    for (const int width : {1, 2, 3, 4}) {
        for (const double at : {10.0, 10.25, 10.5, 10.75}) {
            const Bitmap level = stroked({30, 30}, {{5, at}, {25, at}}, width);
            const Bitmap upright = stroked({30, 30}, {{at, 25}, {at, 5}}, width);
            const Bitmap almost = stroked({30, 30}, {{5, at}, {25, at + 1e-13}}, width);
            int rows = 0;
            int columns = 0;
            int almostRows = 0;
            for (int i = 0; i < 30; ++i) {
                rows += level.ink(15, i);
                columns += upright.ink(i, 15);
                almostRows += almost.ink(15, i);
            }
            EXPECT_EQ(rows, width) << at;
            EXPECT_EQ(columns, width) << at;
            EXPECT_EQ(almostRows, width) << at;
        }
    }
}

TEST(Stroke, TheThinPenDrawsOnePixelAStep)
{
    struct Case
    {
        std::vector<Position> points;
        Picture picture;
    };
    for (const Case& each : {
             Case{{{0.5, 0.5}, {5.5, 3.5}}, {"#.....", ".##...", "...##.", ".....#"}},
             Case{{{5.5, 0.5}, {0.5, 3.5}}, {".....#", "...##.", ".##...", "#....."}},
             Case{{{1.5, 3.9}, {3.5, 0.1}}, {"...#..", "..#...", "..#...", ".#...."}},
             Case{{{0, 2}, {6, 2}}, {"......", "......", "######", "......"}},
             Case{{{2.3, 1.7}}, {"......", "..#...", "......", "......"}},
             Case{{{2, 1}, {2, 1}}, {"......", "..#...", "......", "......"}},
         })
        EXPECT_EQ(rowsOf(stroked({6, 4}, each.points, 1)), each.picture);
}

TEST(Stroke, ThinLinesHaveNoGaps)
{
    std::mt19937 random(7);
    for (const double step : {0.3, 1.0, 3.0, 60.0}) {
        std::uniform_real_distribution<double> move(-step, step);
        for (int round = 0; round < 25; ++round) {
            std::vector<Position> points{{60, 60}};
            for (int i = 0; i < 12; ++i) {
                const Position& last = points.back();
                points.push_back(
                    {std::clamp(last.x + move(random), 1.0, 119.0), std::clamp(last.y + move(random), 1.0, 119.0)});
            }
            const Bitmap bitmap = stroked({120, 120}, points, 1);
            ASSERT_EQ(countGroups(bitmap), 1) << "steps of " << step << ", round " << round;
            for (int y = 0; y < 120; ++y) {
                for (int x = 0; x < 120; ++x) {
                    double distance = infinite;
                    for (std::size_t i = 1; i < points.size(); ++i)
                        distance = std::min(distance, distanceTo(points[i - 1], points[i], centreOf(x, y)));
                    ASSERT_TRUE(!bitmap.ink(x, y) || distance <= std::numbers::sqrt2 / 2) << x << "," << y;
                }
            }
        }
    }
}

TEST(Stroke, ClosedPathsComeBackAndPointsAreDots)
{
    EXPECT_EQ(rowsOf(stroked({5, 5}, {{0.5, 0.5}, {4.5, 0.5}, {4.5, 4.5}, {0.5, 4.5}}, 1, true)),
              (Picture{"#####", "#...#", "#...#", "#...#", "#####"}));
    EXPECT_EQ(rowsOf(stroked({5, 5}, {{2.5, 2.5}}, 3)), (Picture{".....", ".###.", ".###.", ".###.", "....."}));
    EXPECT_EQ(rowsOf(stroked({4, 4}, {}, 3)), (Picture{"....", "....", "....", "...."}));
}

TEST(Stroke, PaintsTheRegionAloneAndTellsWhetherItDid)
{
    const std::vector<Position> points{{-50, -20}, {140, 95}, {60, -30}, {10, 300}};
    for (const int width : {1, 2, 9}) {
        const Bitmap whole = stroked({130, 90}, points, width);
        const Region region = Region::fromRects(anyRects(whole.size(), 6, unsigned(width)));
        const Bitmap expected = made(whole.size(), [&](int x, int y) {
            return whole.ink(x, y) && region.contains({x, y});
        });
        EXPECT_TRUE(samePicture(expected, stroked(whole.size(), points, width, false, &region)));
    }
    Bitmap bitmap({20, 20});
    const Region corner(Rect{12, 12, 40, 40});
    SpanPainter painter(bitmap, &corner);
    stroke(painter, std::vector<Position>{{0, 11.4}, {11.4, 0}}, false, 1);
    EXPECT_FALSE(painter.touched());
    bitmap.setInk(12, 12, true);
    stroke(painter, std::vector<Position>{{12.5, 12.5}}, false, 1);
    EXPECT_TRUE(painter.touched()) << "also where there was ink already";
}

TEST(Stroke, FarAndAbsurdPositionsAreHarmless)
{
    const Picture nothing(8, "........");
    const Picture diagonal{"#.......", ".#......", "..#.....", "...#....",
                           "....#...", ".....#..", "......#.", ".......#"};
    Picture level = nothing;
    level[4] = "########";
    for (const double far : {100.0, 1e9, 1e18, 1e300}) {
        EXPECT_EQ(rowsOf(stroked({8, 8}, {{-far, 4.5}, {far, 4.5}}, 1)), level) << far;
        EXPECT_EQ(rowsOf(stroked({8, 8}, {{far, far}, {far, -far}, {2 * far, 3}}, 1000)),
                  far > 600 ? nothing : Picture(8, "########"))
            << far;
    }
    EXPECT_EQ(rowsOf(stroked({8, 8}, {{-1e6, -1e6}, {1e6, 1e6}}, 1)), diagonal);
    EXPECT_EQ(rowsOf(stroked({8, 8}, {{noNumber, 4}, {4, 4}, {4, infinite}, {infinite, -infinite}, {noNumber, 0}}, 3)),
              nothing);
    EXPECT_EQ(rowsOf(stroked({8, 8}, {{noNumber, 4}}, 3)), nothing);
    EXPECT_EQ(rowsOf(stroked({8, 8}, {{-1.7e308, -1.7e308}, {1.7e308, 1.7e308}}, 3)), nothing)
        << "the length has no number";
}
