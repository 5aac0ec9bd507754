#include "imaging/error.h"
#include "imaging/resample.h"
#include "imaging/running_sums.h"
#include "picture.h"

using namespace imaging;

namespace {

// How much of the source pixel the target pixel covers, in one direction, counted in parts of which `source` make up a
// target pixel; where the direction grows, 1 for the one pixel that is nearest to the target pixel's centre.
long long share(int source, int target, int sourcePixel, int targetPixel)
{
    if (target >= source)
        return (2LL * targetPixel + 1) * source / (2LL * target) == sourcePixel;
    const long long begin = std::max(1LL * sourcePixel * target, 1LL * targetPixel * source);
    const long long end = std::min((sourcePixel + 1LL) * target, (targetPixel + 1LL) * source);
    return std::max(0LL, end - begin);
}

// Pixel by pixel, with nothing clever about it.
Bitmap plainlyResampled(const Bitmap& bitmap, Size size)
{
    return made(size, [&](int x, int y) {
        long long ink = 0;
        long long all = 0;
        for (int v = 0; v < bitmap.height(); ++v) {
            const long long across = share(bitmap.height(), size.height, v, y);
            for (int u = 0; across && u < bitmap.width(); ++u) {
                const long long area = across * share(bitmap.width(), size.width, u, x);
                all += area;
                ink += bitmap.ink(u, v) ? area : 0;
            }
        }
        return 2 * ink >= all;
    });
}

} // namespace

TEST(Resample, AgreesWithThePlainWayAtEverySize)
{
    for (const int width : awkwardWidths) {
        const Bitmap bitmap = scanLike({width, 67}, unsigned(width));
        for (const Size size :
             {Size{1, 1}, Size{width, 30}, Size{(width + 1) / 2, 34}, Size{(width + 2) / 3, 23},
              Size{width / 4 + 1, 17}, Size{width, 67}, Size{width * 2, 134}, Size{width + 1, 66}, Size{70, 41},
              Size{200, 100}, Size{33, 200}, Size{width * 3, 5}, Size{width * 3, 9}, Size{width / 3 + 1, 3}}) {
            SCOPED_TRACE(testing::Message() << width << " x 67 to " << size.width << " x " << size.height);
            EXPECT_TRUE(samePicture(plainlyResampled(bitmap, size), resample(bitmap, size)));
        }
    }
}

TEST(Resample, WholeFactorsAgreeWithThePlainWay)
{
    for (const int factor : {2, 3, 4, 5, 8}) {
        for (const int width : {31, 64, 65}) {
            const Bitmap bitmap = scanLike({width * factor, 6 * factor}, unsigned(factor));
            EXPECT_TRUE(samePicture(plainlyResampled(bitmap, {width, 6}), resample(bitmap, {width, 6})));
            const Bitmap halfTone = noise({width * factor, 6 * factor}, 0.5, unsigned(factor));
            EXPECT_TRUE(samePicture(plainlyResampled(halfTone, {width, 6}), resample(halfTone, {width, 6})));
        }
    }
}

TEST(Resample, SizesWithNoCommonDivisorDoNotOverflow)
{
    // 65,521 and 65,519 are primes: the sums are counted in parts of 65,521 x 65,521.
    const Bitmap ink = made({65521, 2}, [](int, int) { return true; });
    EXPECT_TRUE(samePicture(made({65519, 1}, [](int, int) { return true; }), resample(ink, {65519, 1})));
    // The sums of a row must not be carried into the next: those of all of them would not fit.
    const Bitmap sheet = made({4001, 2003}, [](int, int) { return true; });
    EXPECT_TRUE(samePicture(made({3968, 1800}, [](int, int) { return true; }), resample(sheet, {3968, 1800})));
    Bitmap tall({1, 65521});
    for (int y = 0; y < 65521; y += 2)
        tall.setInk(0, y, true);
    EXPECT_TRUE(samePicture(drawn({"1"}), resample(tall, {1, 1}))) << "32,761 of 65,521 rows are ink, over half";
}

TEST(Resample, ManySumsAtATimeAreThoseOfOneAfterTheOther)
{
    std::mt19937 random(5);
    std::int32_t sum = 40;
    for (int i = 0; i < 500; ++i) {
        std::int32_t narrow[64];
        std::int64_t wide[64];
        for (int k = 0; k < 64; ++k)
            wide[k] = narrow[k] = random() % 4 ? 0 : int(random() % 2001) - 1000;
        std::int64_t wideSum = sum;
        const std::uint64_t expected = whereReached(wide, wideSum, 70);
        ASSERT_EQ(expected, whereReached(narrow, sum, 70));
        ASSERT_EQ(wideSum, sum);
        ASSERT_EQ(0, std::count_if(std::begin(narrow), std::end(narrow), [](auto left) { return left != 0; }));
    }
}

TEST(Resample, NoPixelsAreRefused)
{
    EXPECT_THROW(resample(Bitmap({5, 5}), {0, 5}), ImagingError);
    EXPECT_THROW(resample(Bitmap({5, 5}), {5, -1}), ImagingError);
    EXPECT_THROW(resample(Bitmap(), {5, 5}), ImagingError);
    EXPECT_THROW(resample(Bitmap({5, 5}), {2000000000, 2000000000}), ImagingError);
    EXPECT_TRUE(resample(Bitmap(), {0, 0}).empty());
}
