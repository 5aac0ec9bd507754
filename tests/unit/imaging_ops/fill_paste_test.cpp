// Fills, inversion, paste and crop: what is inside changes as said, what is outside stays.

#include "imaging/crop.h"
#include "imaging/fill.h"
#include "imaging/invert.h"
#include "imaging/paste.h"
#include "picture.h"

using namespace imaging;

namespace {

const std::vector<Rect> rectsOffTheGrid = {{0, 0, 1, 1},    {3, 1, 60, 4},     {63, 0, 65, 9},  {-5, -5, 40, 3},
                                           {60, 2, 500, 7}, {64, 3, 128, 4},   {1, 1, 128, 8},  {-9, -9, 999, 999},
                                           {5, 5, 5, 9},    {200, 0, 300, 10}, {0, -10, 50, 0}, {9, 4, 2, 6}};

} // namespace

TEST(Fill, PaintsExactlyTheRectangle)
{
    for (const int width : awkwardWidths) {
        const Bitmap before = noise({width, 9}, 0.5, unsigned(width));
        for (const Rect& rect : rectsOffTheGrid) {
            for (const bool ink : {true, false}) {
                Bitmap bitmap = before;
                fill(bitmap, rect, ink);
                EXPECT_TRUE(samePicture(made(before.size(),
                                             [&](int x, int y) {
                                                 return rect.contains({x, y}) ? ink : before.ink(x, y);
                                             }),
                                        bitmap));
            }
        }
    }
}

TEST(Invert, ChangesEveryPixel)
{
    std::vector<Size> sizes = {{2100, 1600}}; // large enough to be split among the cores
    for (const int width : awkwardWidths)
        sizes.push_back({width, 5});
    for (const Size size : sizes) {
        const Bitmap before = noise(size, 0.3, unsigned(size.width));
        Bitmap bitmap = before;
        invert(bitmap);
        EXPECT_TRUE(samePicture(made(size, [&](int x, int y) { return !before.ink(x, y); }), bitmap));
    }
}

TEST(FillAndInvert, ChangeTheRegionAlone)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        const Bitmap before = noise({131, 40}, 0.5, seed);
        const Region region = Region::fromRects(anyRects({131, 40}, 6, seed));
        Bitmap inverted = before;
        invert(inverted, &region);
        const auto opposite = [&](int x, int y) { return region.contains({x, y}) != before.ink(x, y); };
        EXPECT_TRUE(samePicture(made(before.size(), opposite), inverted));
        Bitmap filled = before;
        fill(filled, region, seed % 2);
        const auto even = [&](int x, int y) { return region.contains({x, y}) ? bool(seed % 2) : before.ink(x, y); };
        EXPECT_TRUE(samePicture(made(before.size(), even), filled));
    }
    const Region nothing;
    Bitmap bitmap = noise({65, 4}, 0.5, 1);
    const Bitmap before = bitmap;
    invert(bitmap, &nothing);
    EXPECT_TRUE(samePicture(before, bitmap)) << "an empty selection selects nothing";
}

TEST(Paste, IsCutAtTheEdgesAndLeavesTheRest)
{
    for (const int width : awkwardWidths) {
        const Bitmap source = noise({width, 6}, 0.5, unsigned(width));
        const Bitmap before = noise({130, 12}, 0.5, 99);
        for (const Point at : {Point{0, 0}, Point{-3, 2}, Point{1, -2}, Point{63, 8}, Point{100, 3}, Point{-64, -1},
                               Point{129, 11}, Point{130, 0}, Point{-1000, 4}, Point{0, -6}}) {
            for (const PasteMode mode : {PasteMode::transparent, PasteMode::opaque}) {
                Bitmap bitmap = before;
                paste(bitmap, source, at, mode);
                const Rect place = Rect::of(at, source.size());
                const auto expected = [&](int x, int y) {
                    if (!place.contains({x, y}))
                        return before.ink(x, y);
                    return source.ink(x - at.x, y - at.y) || (mode == PasteMode::transparent && before.ink(x, y));
                };
                EXPECT_TRUE(samePicture(made(before.size(), expected), bitmap)) << at.x << "," << at.y;
            }
        }
    }
}

TEST(Crop, CopyIsPaperBeyondTheImage)
{
    const Bitmap bitmap = noise({129, 20}, 0.5, 4);
    for (const Rect& rect : rectsOffTheGrid) {
        const Bitmap copy = extract(bitmap, rect);
        const Size size = rect.empty() ? Size() : rect.size();
        const auto expected = [&](int x, int y) {
            const Point p{x + rect.left, y + rect.top};
            return bitmap.bounds().contains(p) && bitmap.ink(p.x, p.y);
        };
        EXPECT_TRUE(samePicture(made(size, expected), copy));
    }
}

TEST(Crop, ResultIsTheBoxWithPaperOutsideTheRegion)
{
    const Bitmap bitmap = drawn({"11111", "11111", "11111", "11111"});
    const Region region = Region::fromRects(std::vector<Rect>{{1, 1, 2, 4}, {2, 3, 4, 4}});
    EXPECT_TRUE(samePicture(drawn({"100", "100", "111"}), crop(bitmap, region)));
    EXPECT_TRUE(crop(bitmap, Region()).empty());
}
