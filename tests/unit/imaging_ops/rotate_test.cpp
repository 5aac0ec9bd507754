#include <cmath>
#include <numbers>
#include <random>

#include "imaging/error.h"
#include "imaging/rotate.h"
#include "imaging/turned_sheet.h"
#include "picture.h"

using namespace imaging;

namespace {

constexpr double quarter = std::numbers::pi / 2;

Bitmap rotated(Bitmap bitmap, double radians, Point pivot, bool transparent, const Region* region = nullptr)
{
    rotate(bitmap, radians, pivot, transparent, region);
    return bitmap;
}

// Looks up each pixel by itself. Where the source position lies so close to halfway between two pixels that rounding
// decides, the pixel's actual value is taken over.
Bitmap plainlyRotated(const Bitmap& bitmap, double radians, Point pivot, bool transparent, const Region& region,
                      const Bitmap& actual)
{
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    int undecided = 0;
    Bitmap result = made(bitmap.size(), [&](int x, int y) {
        const double u = c * (x - pivot.x) + s * (y - pivot.y) + pivot.x + 0.5;
        const double v = c * (y - pivot.y) - s * (x - pivot.x) + pivot.y + 0.5;
        const Point p{int(std::floor(u)), int(std::floor(v))};
        const bool left = bitmap.ink(x, y) && !region.contains({x, y});
        if (std::abs(u - std::round(u)) < 1e-6 || std::abs(v - std::round(v)) < 1e-6) {
            ++undecided;
            return actual.ink(x, y);
        }
        if (!bitmap.bounds().contains(p) || !region.contains(p))
            return left;
        return bitmap.ink(p.x, p.y) || (transparent && left);
    });
    EXPECT_LE(undecided, bitmap.width() + bitmap.height()) << "too many pixels were left undecided";
    return result;
}

} // namespace

TEST(Rotate, AgreesWithThePlainWayAtAnyAngle)
{
    for (const int width : {33, 64, 129, 200}) {
        const Bitmap bitmap = scanLike({width, 90}, unsigned(width));
        const Region selection = Region::fromRects(anyRects(bitmap.size(), 3, unsigned(width)));
        const Region rectangle({width / 4, 20, width / 2 + 9, 71});
        const Region everything(bitmap.bounds());
        for (const double degrees :
             {0.0, 0.01, 0.3, 7.0, 45.0, 90.0, 120.0, 180.0, 200.0, -3.0, -61.0, -90.0, 1000.0}) {
            for (const Point pivot : {Point{width / 2, 45}, Point{0, 0}, Point{-50, 300}}) {
                for (const Region* region : {&everything, &selection, &rectangle}) {
                    for (const bool transparent : {true, false}) {
                        SCOPED_TRACE(testing::Message()
                                     << width << " wide, " << degrees << " degrees about " << pivot.x << "," << pivot.y
                                     << (transparent ? ", transparent" : ", opaque") << ", " << region->rects().size()
                                     << " rectangles");
                        const double angle = degrees * std::numbers::pi / 180;
                        const Bitmap result =
                            rotated(bitmap, angle, pivot, transparent, region == &everything ? nullptr : region);
                        ASSERT_TRUE(
                            samePicture(plainlyRotated(bitmap, angle, pivot, transparent, *region, result), result));
                    }
                }
            }
        }
    }
}

// At steps of no, hardly any and many fractions, from places on both sides of each.
TEST(Rotate, FastWayFindsThePixelsOfThePlainOne)
{
    const Bitmap sheet = scanLike({500, 400}, 12);
    const Strips strips(sheet, sheet.bounds(), {0, 0});
    for (const double degrees : {0.0, 1e-8, 2e-8, 0.2, 1.0, 3.5, 5.0, 12.0, 20.0, 30.0, 36.87, 45.0}) {
        for (const double angle : {degrees * std::numbers::pi / 180, -degrees * std::numbers::pi / 180}) {
            const InverseTurn turn(angle, {250, 200});
            const TurnedSheet turned(strips, turn);
            const auto inside = [&](double x, double y) {
                const double u = turn.sourceX(x, y), v = turn.sourceY(x, y);
                return u >= 0 && u < 499 && v >= 0 && v < 399;
            };
            std::vector<TurnedSheet::Place> places;
            for (int i = 0; i < 400 * 500; i += 19) {
                const int x = i % 500, y = i / 500;
                if (inside(x, y) && inside(x + 63, y))
                    places.push_back(turned.placeOf(x, y));
            }
            std::vector<std::uint64_t> words(places.size());
            turned.words(places, words.data());
            for (std::size_t i = 0; i < places.size(); ++i)
                ASSERT_EQ(turned.plainWord(places[i], ~0ULL), words[i]) << angle << ", place " << i;
            EXPECT_GT(places.size(), 1000U) << angle;
        }
    }
}

TEST(Rotate, LargeMostlyEmptySheetLosesNoInk)
{
    Bitmap bitmap({1500, 1100});
    std::mt19937 random(3);
    for (int i = 0; i < 150; ++i)
        bitmap.setInk(int(random() % 1500), int(random() % 1100), true);
    // A word of 64 pixels lies across two or three rows of squares that are known to be blank or not.
    for (const double angle : {0.4, 0.78, -0.78}) {
        const Bitmap result = rotated(bitmap, angle, {700, 500}, true);
        const Bitmap expected = plainlyRotated(bitmap, angle, {700, 500}, true, Region(bitmap.bounds()), result);
        EXPECT_TRUE(samePicture(expected, result)) << angle;
    }
}

TEST(Rotate, ImagesOfTheLongestSideTurnToo)
{
    constexpr int middle = (Bitmap::maximumSide - 1) / 2;
    Bitmap bitmap({Bitmap::maximumSide, 3});
    for (const int x : {0, middle, Bitmap::maximumSide - 1})
        bitmap.setInk(x, 1, true);
    EXPECT_TRUE(samePicture(bitmap, rotated(bitmap, 2 * quarter, {middle, 1}, false)));
    EXPECT_TRUE(samePicture(bitmap, rotated(bitmap, 1e-9, {middle, 1}, true)));
    EXPECT_TRUE(rotated(bitmap, quarter, {middle, 1}, false).ink(middle, 1));
}

TEST(Rotate, NothingHappensWithoutSelectionOrFarAway)
{
    const Bitmap bitmap = noise({65, 20}, 0.5, 8);
    const Region nothing;
    const Region beyond({100, 100, 120, 120});
    EXPECT_TRUE(samePicture(bitmap, rotated(bitmap, 1, {3, 3}, false, &nothing)));
    EXPECT_TRUE(samePicture(bitmap, rotated(bitmap, 1, {3, 3}, false, &beyond)));
    EXPECT_TRUE(samePicture(Bitmap({65, 20}), rotated(bitmap, 1, {1000000, 1000000}, false)));
    EXPECT_TRUE(samePicture(Bitmap({65, 20}), rotated(bitmap, 2, {1 << 30, -(1 << 30)}, false)));
    EXPECT_TRUE(samePicture(bitmap, rotated(bitmap, 0, {1 << 30, 1 << 30}, false)));
    EXPECT_THROW(rotated(bitmap, NAN, {0, 0}, false), ImagingError);
    EXPECT_THROW(rotated(bitmap, INFINITY, {0, 0}, false), ImagingError);
}
