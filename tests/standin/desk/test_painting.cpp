// What is painted: lines and fills on the canvas, rasters in the view, crawling frames found again.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "standin/desk/canvas.h"
#include "standin/desk/frame_pattern.h"
#include "standin/desk/raster_coverage.h"

using namespace desk;

namespace {

constexpr Color paper = 0xFFFFFF, ink = 0x000000;

struct Sheet
{
    explicit Sheet(imaging::Size extent) : size(extent), pixels(std::size_t(extent.width) * extent.height, paper) {}
    Canvas canvas() { return {pixels.data(), size, size.width}; }
    // 0 for paper, 255 for ink.
    int darkness(int x, int y) const { return 255 - int(pixels[std::size_t(y) * size.width + x] & 0xFF); }
    int total() const
    {
        int sum = 0;
        for (const Color pixel : pixels)
            sum += 255 - int(pixel & 0xFF);
        return sum;
    }

    imaging::Size size;
    std::vector<Color> pixels;
};

std::shared_ptr<imaging::Bitmap> noise(imaging::Size size, unsigned seed)
{
    auto bitmap = std::make_shared<imaging::Bitmap>(size);
    std::mt19937 random(seed);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            bitmap->setInk(x, y, random() % 3 == 0);
    return bitmap;
}

// An image whose pixels are one drawing unit, with its lower left corner at the origin.
SceneImage placed(imaging::Size size)
{
    SceneImage image;
    image.placement = {{0, 0}, {1, 0}, {0, 1}, size};
    return image;
}

script::FramePattern diagonalStripes()
{
    script::FramePattern pattern{};
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            pattern[std::size_t(y * 8 + x)] = ((x + y) & 7) < 4 ? 0xFF0000 : 0xFFFFFF;
    return pattern;
}

void frame(script::ViewPicture& picture, const imaging::Rect& at, int phase)
{
    const auto pattern = diagonalStripes();
    for (int y = at.top; y < at.bottom; ++y)
        for (int x = at.left; x < at.right; ++x)
            if ((x == at.left || x == at.right - 1 || y == at.top || y == at.bottom - 1) && picture.holds(x, y))
                picture.pixels[std::size_t(y) * picture.size.width + x] =
                    pattern[std::size_t((y & 7) * 8 + ((x + phase) & 7))];
}

} // namespace

TEST(Canvas, LevelAndUprightLinesAreSharp)
{
    Sheet sheet({20, 10});
    Canvas canvas = sheet.canvas();
    canvas.line({3, 5.2}, {9, 5.2}, ink);
    EXPECT_EQ(sheet.total(), 7 * 255) << "seven pixels on one row, from 3 to 9";
    EXPECT_EQ(sheet.darkness(3, 5), 255);
    EXPECT_EQ(sheet.darkness(9, 5), 255);
    canvas.line({15, 1}, {15, 8}, ink);
    EXPECT_EQ(sheet.darkness(15, 8), 255);
    EXPECT_EQ(sheet.total(), 15 * 255);
}

TEST(Canvas, LinesFromFarOutsideCrossTheClipOnly)
{
    Sheet sheet({30, 30});
    Canvas canvas = sheet.canvas();
    canvas.setClip({10, 10, 20, 20});
    canvas.line({-1e12, -1e12}, {1e12, 1e12}, ink);
    EXPECT_GT(sheet.darkness(15, 15), 200);
    for (int i = 0; i < 30; ++i) {
        EXPECT_EQ(sheet.darkness(i, 9), 0);
        EXPECT_EQ(sheet.darkness(20, i), 0);
    }
    const int before = sheet.total();
    canvas.line({-1e300, 5}, {-1e299, 6}, ink);
    canvas.line({100, 0}, {100, 30}, ink);
    EXPECT_EQ(sheet.total(), before);
}

TEST(Canvas, AFillCoversTheShareOfEachPixelThatLiesInside)
{
    Sheet sheet({12, 12});
    // Pixel centres are at integers: the square runs from the middle of pixel 0 to the right edge of pixel 10. The hole
    // runs the other way round.
    const std::vector<std::vector<Vec2>> ring = {{{0, 0.5}, {10.5, 0.5}, {10.5, 10.5}, {0, 10.5}},
                                                 {{3.5, 3.5}, {3.5, 7.5}, {7.5, 7.5}, {7.5, 3.5}}};
    sheet.canvas().polygon(ring, ink);
    EXPECT_NEAR(sheet.darkness(0, 5), 128, 2) << "half covered";
    EXPECT_EQ(sheet.darkness(2, 5), 255);
    EXPECT_EQ(sheet.darkness(5, 5), 0);
    EXPECT_EQ(sheet.darkness(10, 5), 255);
    EXPECT_EQ(sheet.darkness(11, 5), 0);
    EXPECT_EQ(sheet.darkness(5, 0), 0);
    EXPECT_EQ(sheet.darkness(5, 1), 255);
}

TEST(RasterCoverage, AtOneToOneShowsEachPixelWhereItsCentreLies)
{
    const auto pixels = noise({9, 7}, 1);
    RasterCoverage coverage;
    ViewTransform view;
    view.resize({9, 7});
    // View pixel i lies at drawing x = i + 0.5: the centre of the image's column i.
    view.set({5.0, 3.0}, 7);
    ASSERT_NEAR(view.toDrawing({0, 0}).x, 0.5, 1e-9);
    ASSERT_NEAR(view.toDrawing({0, 0}).y, 6.5, 1e-9);
    const auto& shares = coverage.update(placed({9, 7}), pixels, view);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 9; ++x)
            EXPECT_EQ(shares[std::size_t(y) * 9 + x], pixels->ink(x, y) ? 255 : 0) << x << "," << y;
}

TEST(RasterCoverage, APanSamplesTheUncoveredStripsAloneAndShowsTheSame)
{
    const auto pixels = noise({400, 300}, 2);
    const SceneImage image = placed({400, 300});
    ViewTransform view;
    view.resize({100, 80});
    view.set({200, 150}, 130);
    RasterCoverage panned;
    panned.update(image, pixels, view);
    EXPECT_EQ(panned.sampled(), 100 * 80);
    for (const auto& [dx, dy] :
         {std::pair(7, 3), std::pair(-12, 5), std::pair(4, -9), std::pair(-1, -1), std::pair(0, 20)}) {
        view.pan(dx, dy);
        const auto seen = panned.update(image, pixels, view);
        EXPECT_EQ(panned.sampled(), std::abs(dy) * 100 + std::abs(dx) * (80 - std::abs(dy)));
        RasterCoverage fresh;
        EXPECT_EQ(seen, fresh.update(image, pixels, view)) << "after a pan by " << dx << "," << dy;
    }
    panned.update(image, pixels, view);
    EXPECT_EQ(panned.sampled(), 0) << "nothing has changed";
    panned.update(image, std::make_shared<imaging::Bitmap>(*pixels), view);
    EXPECT_EQ(panned.sampled(), 100 * 80) << "new pixels are sampled whole";
}

TEST(RasterCoverage, ATurnedImageLiesTurned)
{
    // A quarter turn to the left: u points up, v points left. Ink in the image's first column becomes the bottom row.
    auto pixels = std::make_shared<imaging::Bitmap>(imaging::Size{6, 4});
    for (int y = 0; y < 4; ++y)
        pixels->setInk(0, y, true);
    SceneImage image = placed({6, 4});
    image.placement = {{4, 0}, {0, 1}, {-1, 0}, {6, 4}};
    ViewTransform view;
    view.resize({4, 6});
    view.set({2.5, 2.5}, 6);
    RasterCoverage coverage;
    const auto& shares = coverage.update(image, pixels, view);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(shares[std::size_t(y) * 4 + x], y == 5 ? 255 : 0) << x << "," << y;
    image.placement.v = {0, 1};
    EXPECT_THAT(coverage.update(image, pixels, view), testing::Each(0)) << "an image without extent shows nothing";
}

TEST(FramePattern, AFrameIsFoundAtEachPhaseAndOnlyAtItsPlace)
{
    const auto pattern = diagonalStripes();
    for (int phase = 0; phase < 8; ++phase) {
        script::ViewPicture picture{{120, 90}, std::vector<std::uint32_t>(120 * 90, 0xFBFAF7)};
        EXPECT_FALSE(holdsPatternRun(picture, pattern));
        frame(picture, {20, 30, 80, 70}, phase);
        EXPECT_EQ(outlineMatch(picture, {20, 30, 80, 70}, pattern), 1.0) << "phase " << phase;
        EXPECT_LT(outlineMatch(picture, {21, 31, 79, 69}, pattern), 0.5) << "one pixel inside";
        EXPECT_LT(outlineMatch(picture, {20, 30, 80, 71}, pattern), 0.9) << "one row lower";
        EXPECT_TRUE(holdsPatternRun(picture, pattern));
    }
}

TEST(FramePattern, AFrameThatRunsOutOfTheViewIsJudgedByWhatShows)
{
    const auto pattern = diagonalStripes();
    script::ViewPicture picture{{100, 60}, std::vector<std::uint32_t>(100 * 60, 0)};
    frame(picture, {-50, 10, 40, 200}, 3);
    EXPECT_EQ(outlineMatch(picture, {-50, 10, 40, 200}, pattern), 1.0);
    EXPECT_EQ(outlineMatch(picture, {300, 300, 400, 400}, pattern), 0.0) << "nothing of it shows";
}
