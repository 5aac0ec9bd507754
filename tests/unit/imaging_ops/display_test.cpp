#include <cmath>

#include "imaging/display.h"
#include "imaging/error.h"
#include "picture.h"

using namespace imaging;

namespace {

using Gray = std::vector<std::uint8_t>;

// Samples into rows that are wider than the output, to see whether what lies between them stays as it was.
Gray sampled(const Bitmap& bitmap, const Affine& map, Size output)
{
    const std::ptrdiff_t stride = output.width + 3;
    Gray padded(std::size_t(stride * output.height), 77);
    sampleCoverage(bitmap, map, output, padded.data(), stride);
    Gray gray;
    for (int y = 0; y < output.height; ++y) {
        const auto row = padded.begin() + y * stride;
        gray.insert(gray.end(), row, row + output.width);
        EXPECT_EQ(Gray(row + output.width, row + stride), Gray(3, 77)) << "row " << y << " runs over its end";
    }
    return gray;
}

// The length that [begin, end) and pixel i have in common.
double common(double begin, double end, int i)
{
    return std::max(0.0, std::min(end, i + 1.0) - std::max(begin, double(i)));
}

// The exact average over the part of the image that each output pixel covers, for reductions along the axes.
Gray plainlyAveraged(const Bitmap& bitmap, const Affine& map, Size output)
{
    Gray gray;
    for (int y = 0; y < output.height; ++y) {
        for (int x = 0; x < output.width; ++x) {
            const auto [left, right] = std::minmax({map.xx * x + map.x0, map.xx * (x + 1) + map.x0});
            const auto [top, bottom] = std::minmax({map.yy * y + map.y0, map.yy * (y + 1) + map.y0});
            double ink = 0;
            double all = 0;
            for (int v = std::max(0, int(top)); v < std::min(double(bitmap.height()), bottom); ++v) {
                for (int u = std::max(0, int(left)); u < std::min(double(bitmap.width()), right); ++u) {
                    const double area = common(left, right, u) * common(top, bottom, v);
                    all += area;
                    ink += bitmap.ink(u, v) ? area : 0;
                }
            }
            gray.push_back(all > 0 ? std::uint8_t(std::floor(ink / all * 255 + 0.5)) : 0);
        }
    }
    return gray;
}

} // namespace

TEST(Display, EnlargedPixelsAreSquares)
{
    EXPECT_EQ(sampled(drawn({"10", "01"}), {0.5, 0, 0, 0, 0.5, 0}, {4, 4}),
              (Gray{255, 255, 0, 0, 255, 255, 0, 0, 0, 0, 255, 255, 0, 0, 255, 255}));
}

TEST(Display, TurnedAndMirroredImagesStandRight)
{
    const Bitmap flag = drawn({"110", "100"});
    EXPECT_EQ(sampled(flag, {-1, 0, 3, 0, 1, 0}, {3, 2}), (Gray{0, 255, 255, 0, 0, 255})) << "left and right swapped";
    EXPECT_EQ(sampled(flag, {1, 0, 0, 0, -1, 2}, {3, 2}), (Gray{255, 0, 0, 255, 255, 0})) << "top and bottom swapped";
    // Turned clockwise, the output's x runs up the image's left side and its y to the right.
    EXPECT_EQ(sampled(flag, {0, 1, 0, -1, 0, 2}, {2, 3}), (Gray{255, 255, 0, 255, 0, 0}));
}

TEST(Display, OutsideIsZero)
{
    const Bitmap bitmap = drawn({"10", "11"});
    const Affine map{1, 0, -2, 0, 1, -1};                            // the image begins at 2,1
    EXPECT_EQ(sampled(bitmap, map, {5, 4}), (Gray{0, 0, 0,   0,   0, //
                                                  0, 0, 255, 0,   0, //
                                                  0, 0, 255, 255, 0, //
                                                  0, 0, 0,   0,   0}));
}

TEST(Display, InsideFollowsATurnedImagesEdges)
{
    const Size image{40, 25};
    for (const double angle : {0.0, 0.3, 1.2, 2.0, 4.0}) {
        const double c = 0.8 * std::cos(angle), s = 0.8 * std::sin(angle);
        const Affine map{c, s, -3.3, -s, c, 7.7};
        for (int y = 0; y < 60; ++y) {
            const OutputSpan span = insideImage(image, map, {60, 60}, y);
            for (int x = 0; x < 60; ++x) {
                const double u = map.xx * (x + 0.5) + map.xy * (y + 0.5) + map.x0;
                const double v = map.yx * (x + 0.5) + map.yy * (y + 0.5) + map.y0;
                EXPECT_EQ(x >= span.begin && x < span.end, u >= 0 && u < 40 && v >= 0 && v < 25) << x << "," << y;
            }
        }
    }
}

TEST(Display, ReductionIsTheAreasAverage)
{
    // Scales and places in sixteenths of a pixel, in which parts of pixels are counted, or in whole ones above twelve.
    const Bitmap bitmap = scanLike({150, 131}, 5);
    for (const Affine& map :
         {Affine{1.5, 0, 0, 0, 1.5, 0}, Affine{2.25, 0, -7.5, 0, 3.0625, 11.125}, Affine{-2.5, 0, 150, 0, 2, 0},
          Affine{1.0625, 0, 3, 0, -1.25, 131}, Affine{5, 0, -12, 0, 11, -20}, Affine{13, 0, 2, 0, 14, 3},
          Affine{70, 0, -5, 0, 20, 0}, Affine{400, 0, -5, 0, 300, -9}}) {
        SCOPED_TRACE(testing::Message() << "one output pixel is " << map.xx << " x " << map.yy);
        const Size output{60, 50};
        EXPECT_EQ(sampled(bitmap, map, output), plainlyAveraged(bitmap, map, output));
    }
}

TEST(Display, TurnedReductionKeepsTheShareOfInk)
{
    const Bitmap stripes = made({400, 400}, [](int x, int) { return x % 4 == 0; });
    for (const double angle : {0.5, 1.0, 2.5}) {
        const double c = 8 * std::cos(angle), s = 8 * std::sin(angle);
        const Affine map{c, -s, 200 - 10 * (c - s), s, c, 200 - 10 * (s + c)};
        for (const std::uint8_t gray : sampled(stripes, map, {20, 20}))
            EXPECT_NEAR(gray, 64, 1) << "a quarter of every 8 x 8 pixels is ink";
    }
}

TEST(Display, UselessMapsAreRefused)
{
    const Bitmap bitmap({5, 5});
    std::uint8_t gray[4];
    EXPECT_THROW(sampleCoverage(bitmap, {0, 0, 0, 0, 1, 0}, {2, 2}, gray, 2), ImagingError);
    EXPECT_THROW(sampleCoverage(bitmap, {1, 0, NAN, 0, 1, 0}, {2, 2}, gray, 2), ImagingError);
    const Gray nothing(4, 0);
    EXPECT_EQ(sampled(noise({5, 5}, 1, 1), {1e18, 0, 1e17, 0, 1e18, 1e17}, {2, 2}), nothing);
    EXPECT_EQ(sampled(noise({5, 5}, 1, 1), {1e-9, 0, 2, 0, 1e-9, 2}, {2, 2}), (Gray(4, 255)));
    EXPECT_EQ(sampled(Bitmap(), Affine(), {2, 2}), nothing);
}
