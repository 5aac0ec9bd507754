#include <cmath>
#include <limits>
#include <numbers>

#include "imaging/area.h"
#include "picture.h"
#include "plane.h"

using namespace imaging;

namespace {

using Contour = std::vector<Position>;

Bitmap filled(Size size, const std::vector<Contour>& contours, const Region* region = nullptr,
              FillRule rule = FillRule::evenOdd)
{
    Bitmap bitmap(size);
    SpanPainter painter(bitmap, region);
    fillArea(painter, contours, rule);
    return bitmap;
}

// Whether a ray from the position crosses the contours an odd number of times.
bool inside(const std::vector<Contour>& contours, const Position& p)
{
    bool in = false;
    for (const Contour& contour : contours) {
        for (std::size_t i = 0; i < contour.size(); ++i) {
            const Position& a = contour[i];
            const Position& b = contour[(i + 1) % contour.size()];
            if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x))
                in = !in;
        }
    }
    return in;
}

double distanceTo(const std::vector<Contour>& contours, const Position& p)
{
    double distance = std::numeric_limits<double>::infinity();
    for (const Contour& contour : contours) {
        for (std::size_t i = 0; i < contour.size(); ++i)
            distance = std::min(distance, ::distanceTo(contour[i], contour[(i + 1) % contour.size()], p));
    }
    return distance;
}

// A strip of a width about the line from a to b.
Contour strip(const Position& a, const Position& b, double width)
{
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const double x = -(b.y - a.y) / length * width / 2;
    const double y = (b.x - a.x) / length * width / 2;
    return {{a.x + x, a.y + y}, {b.x + x, b.y + y}, {b.x - x, b.y - y}, {a.x - x, a.y - y}};
}

} // namespace

TEST(Area, InksTheCentresInsideAndNothingAwayFromTheBorder)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> anywhere(-20, 110);
    for (int round = 0; round < 200; ++round) {
        std::vector<Contour> contours(std::size_t(1 + round % 3));
        for (Contour& contour : contours) {
            for (int i = 0; i < 3 + round % 5; ++i)
                contour.push_back({anywhere(random), anywhere(random)});
        }
        const Bitmap bitmap = filled({90, 80}, contours);
        for (int y = 0; y < 80; ++y) {
            for (int x = 0; x < 90; ++x) {
                // Pixels that are not inside are traces of what is thinner than a pixel there.
                const bool in = inside(contours, centreOf(x, y));
                ASSERT_TRUE(in ? bitmap.ink(x, y)
                               : !bitmap.ink(x, y) || distanceTo(contours, centreOf(x, y)) < std::numbers::sqrt2 / 2)
                    << "round " << round << ": " << x << "," << y;
            }
        }
    }
}

TEST(Area, NothingGrowsThatHasThePixelsWidth)
{
    struct Case
    {
        std::vector<Contour> contours;
        Picture picture;
    };
    for (const Case& each : {
             Case{{{{1, 1}, {5, 1}, {5, 3}, {1, 3}}}, {"......", ".####.", ".####.", "......"}},
             Case{{{{1.4, 1.4}, {5.4, 1.4}, {5.4, 3.4}, {1.4, 3.4}}}, {"......", ".####.", ".####.", "......"}},
             Case{{{{0, 0}, {6, 0}, {6, 4}, {0, 4}}, {{2, 1}, {2, 3}, {4, 3}, {4, 1}}},
                  {"######", "##..##", "##..##", "######"}},
             // Centres on the border: to the right of and below the area.
             Case{{{{1.5, 0.5}, {3.5, 0.5}, {3.5, 2.5}, {1.5, 2.5}}}, {"......", "..##..", "..##..", "......"}},
         })
        EXPECT_EQ(rowsOf(filled({6, 4}, each.contours)), each.picture);

    // A turned rectangle of 40 by 20 pixels: exactly the centres inside, but for a tip at each corner.
    const std::vector<Contour> turned{strip({15, 20}, {50, 40}, 20)};
    const Bitmap bitmap = filled({70, 60}, turned);
    int extra = 0;
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 70; ++x)
            extra += bitmap.ink(x, y) != inside(turned, centreOf(x, y));
    EXPECT_LE(extra, 4);
}

TEST(Area, ThinPartsLeaveATraceWithoutGaps)
{
    for (const double width : {0.0, 0.01, 0.4, 0.9}) {
        for (int degrees = 0; degrees < 360; degrees += 7) {
            const double angle = degrees * std::numbers::pi / 180;
            const Position end{40.3 + 30 * std::cos(angle), 40.6 + 30 * std::sin(angle)};
            const std::vector<Contour> contours{strip({40.3, 40.6}, end, width)};
            const Bitmap bitmap = filled({80, 80}, contours);
            EXPECT_EQ(countGroups(bitmap), 1) << width << " wide at " << degrees << " degrees";
            int columns = 0;
            int rows = 0;
            for (int i = 0; i < 80; ++i) {
                bool inColumn = false;
                bool inRow = false;
                for (int k = 0; k < 80; ++k) {
                    inColumn = inColumn || bitmap.ink(i, k);
                    inRow = inRow || bitmap.ink(k, i);
                }
                columns += inColumn;
                rows += inRow;
            }
            EXPECT_GE(columns, std::floor(std::abs(30 * std::cos(angle)))) << degrees;
            EXPECT_GE(rows, std::floor(std::abs(30 * std::sin(angle)))) << degrees;
        }
    }
    const Picture dot{"....", ".#..", "....", "...."};
    EXPECT_EQ(rowsOf(filled({4, 4}, {{{1.6, 1.6}, {1.9, 1.6}, {1.9, 1.8}}})), dot);
    EXPECT_EQ(rowsOf(filled({4, 4}, {{{1.2, 1.3}}})), dot);
}

TEST(Area, PaintsTheRegionAloneAndTellsWhetherItDid)
{
    const std::vector<Contour> contours{{{-40, 10}, {150, -20}, {90, 150}}, {{20, 20}, {60, 30}, {30.2, 80}}};
    const Bitmap whole = filled({130, 90}, contours);
    const Region region = Region::fromRects(anyRects(whole.size(), 6, 3));
    EXPECT_TRUE(samePicture(made(whole.size(),
                                 [&](int x, int y) {
                                     return whole.ink(x, y) && region.contains({x, y});
                                 }),
                            filled(whole.size(), contours, &region)));

    Bitmap bitmap({20, 20});
    SpanPainter painter(bitmap);
    fillArea(painter, std::vector<Contour>{{{-9, -9}, {30, -9}, {-9, 30}}, {{-9, -9}, {30, -9}, {-9, 30}}},
             FillRule::evenOdd);
    EXPECT_TRUE(painter.touched()) << "the border that the two have in common";
    SpanPainter other(bitmap);
    fillArea(other, std::vector<Contour>{{{25, 5}, {30, 5}, {30, 9}}}, FillRule::evenOdd);
    fillArea(other,
             std::vector<Contour>{{{-30, -30}, {50, -30}, {50, 50}, {-30, 50}},
                                  {{-20, -20}, {40, -20}, {40, 40}, {-20, 40}}},
             FillRule::evenOdd);
    EXPECT_FALSE(other.touched()) << "the raster lies in the hole";
}

TEST(Area, FarAndAbsurdPositionsAreHarmless)
{
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const Picture full(6, "######");
    const Picture nothing(6, "......");
    for (const double far : {100.0, 1e9, 1e18, 1e300}) {
        EXPECT_EQ(rowsOf(filled({6, 6}, {{{-far, -far}, {far, -far}, {far, far}, {-far, far}}})), full) << far;
        EXPECT_EQ(rowsOf(filled({6, 6}, {{{far, far}, {2 * far, far}, {far, 2 * far}}})), nothing) << far;
    }
    EXPECT_EQ(rowsOf(filled({6, 6}, {{{-infinite, 0}, {6, 0}, {6, 6}}, {{0, std::nan("")}, {6, 6}, {0, 6}}, {}})),
              nothing);
    EXPECT_EQ(rowsOf(filled({6, 6}, {{{-1.7e308, -1.7e308}, {1.7e308, 1.7e308}, {0, 3}}})).size(), 6u);
}

TEST(Area, TheRuleSaysWhatOverlappingContoursGoAround)
{
    const Contour outer{{0, 0}, {6, 0}, {6, 5}, {0, 5}};
    const Contour same{{1, 1}, {5, 1}, {5, 4}, {1, 4}};
    const Contour back{{2, 2}, {2, 3}, {4, 3}, {4, 2}};
    const Picture odd{"######", "#....#", "#.##.#", "#....#", "######"};
    EXPECT_EQ(rowsOf(filled({6, 5}, {outer, same, back})), odd);
    EXPECT_EQ(rowsOf(filled({6, 5}, {outer, same, back}, nullptr, FillRule::nonZero)), Picture(5, "######"));
    EXPECT_EQ(rowsOf(filled({6, 5}, {outer, back}, nullptr, FillRule::nonZero)),
              (Picture{"######", "######", "##..##", "######", "######"}));
    EXPECT_EQ(rowsOf(filled({6, 5}, {back}, nullptr, FillRule::nonZero))[2], "..##..");
}
