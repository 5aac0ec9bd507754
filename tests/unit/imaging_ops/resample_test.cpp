#include "imaging/byte_reduction.h"
#include "imaging/error.h"
#include "imaging/half_by_words.h"
#include "imaging/reduce.h"
#include "imaging/resample.h"
#include "imaging/rounded_reduction.h"
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

// What of the source each target pixel covers, in one direction: source pixels and their shares.
std::vector<std::vector<std::pair<int, long long>>> shares(int source, int target)
{
    std::vector<std::vector<std::pair<int, long long>>> covered(target);
    for (int t = 0; t < target; ++t) {
        for (int s = 0; s < source; ++s) {
            if (const long long part = share(source, target, s, t))
                covered[t].emplace_back(s, part);
        }
    }
    return covered;
}

// Pixel by pixel, with nothing clever about it.
Bitmap plainlyResampled(const Bitmap& bitmap, Size size)
{
    const auto columns = shares(bitmap.width(), size.width);
    const auto rows = shares(bitmap.height(), size.height);
    return made(size, [&](int x, int y) {
        long long ink = 0;
        long long all = 0;
        for (const auto& [v, down] : rows[y]) {
            for (const auto& [u, across] : columns[x]) {
                all += across * down;
                ink += bitmap.ink(u, v) ? across * down : 0;
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
        for (const int width : {31, 64, 65, 650}) {
            const Bitmap bitmap = scanLike({width * factor, 6 * factor}, unsigned(factor));
            EXPECT_TRUE(samePicture(plainlyResampled(bitmap, {width, 6}), resample(bitmap, {width, 6})));
            const Bitmap halfTone = noise({width * factor, 6 * factor}, 0.5, unsigned(factor));
            const Bitmap expected = plainlyResampled(halfTone, {width, 6});
            EXPECT_TRUE(samePicture(expected, resample(halfTone, {width, 6})));
            if (reducesByPowerOfTwo(halfTone.size(), {width, 6})) {
                Bitmap reduced({width, 6});
                reduceByPowerOfTwo(halfTone, reduced);
                EXPECT_TRUE(samePicture(expected, reduced)) << "on processors of any age";
            }
        }
    }
}

// Ink set pixel by pixel while that brings a target pixel no farther than to half of its area.
Bitmap nearHalf(Size size, Size target)
{
    const auto columns = shares(size.width, target.width);
    const auto rows = shares(size.height, target.height);
    const long long area = 1LL * size.width * size.height;
    Bitmap bitmap(size);
    std::mt19937 random(unsigned(size.width));
    for (const auto& across : columns) {
        for (const auto& down : rows) {
            long long ink = 0;
            for (const auto& [x, width] : across) {
                for (const auto& [y, height] : down)
                    ink += bitmap.ink(x, y) ? width * height : 0;
            }
            for (int i = 0; i < 64; ++i) {
                const auto& [x, width] = across[random() % across.size()];
                const auto& [y, height] = down[random() % down.size()];
                if (!bitmap.ink(x, y) && 2 * (ink + width * height) <= area + 1) {
                    bitmap.setInk(x, y, true);
                    ink += width * height;
                }
            }
        }
    }
    return bitmap;
}

// To a half or fourth, either side rounded up or down.
void expectRoundedParts(const std::vector<Bitmap>& pictures, int factor)
{
    const Size size = pictures[0].size();
    for (const int up : {0, factor - 1}) {
        const Size target{(size.width + up) / factor, (size.height + up) / factor};
        std::vector<Bitmap> all = pictures;
        all.push_back(nearHalf(size, target));
        for (std::size_t i = 0; i < all.size(); ++i) {
            SCOPED_TRACE(testing::Message()
                         << "picture " << i << " of " << size.width << " x " << size.height << " by " << factor);
            EXPECT_TRUE(samePicture(plainlyResampled(all[i], target), resample(all[i], target)));
        }
    }
}

TEST(Resample, HalvesAndFourthsOfAnySidesAgreeWithThePlainWay)
{
    const auto lines = [](Size size, int thickness) {
        // Target pixels cover some of them by half, or by a trifle more or less. Every fifth field is all ink.
        return made(size, [=](int x, int y) {
            const int field = x / 16 + y / 9;
            return field % 5 == 0 || (field % 2 ? x % 16 / thickness == 2 : y % 9 / thickness == 1);
        });
    };
    for (const int factor : {2, 4}) {
        for (const Size size : {Size{1303, 73}, Size{1301, 72}, Size{1300, 71}, Size{1023, 30}, Size{767, 41},
                                Size{262, 260}, Size{71, 1302}}) {
            expectRoundedParts({noise(size, 0.5, unsigned(size.width)), lines(size, 1), lines(size, 2), lines(size, 3),
                                made(size, [](int x, int) { return x % 512 < 4; })},
                               factor);
        }
        for (int width = factor; width < 24; ++width) {
            for (int height = factor; height < 24; ++height) {
                const Size size{width, height};
                expectRoundedParts({noise(size, 0.5, unsigned(width)), made(size, [](int, int) { return true; })},
                                   factor);
            }
        }
    }
}

TEST(Resample, FewPixelsAreLeftForExactWeights)
{
    const auto openPixels = [](const auto& reduction, Size target) {
        std::vector<std::uint64_t> ink(reduction.wordsOfRow()), open(reduction.wordsOfRow());
        int count = 0;
        for (int y = 0; y < target.height; ++y) {
            reduction.weigh(y, ink.data(), open.data());
            for (int x = 0; x < target.width; ++x)
                count += open[x / 64] >> (63 - x % 64) & 1;
        }
        return count;
    };
    if (!__builtin_cpu_supports("avx2"))
        GTEST_SKIP() << "only processors with AVX2 reduce so";
    for (const Size size : {Size{1300, 1303}, Size{1303, 1300}, Size{1303, 1303}}) {
        const Bitmap bitmap = scanLike(size, 1);
        const Size half{size.width / 2, size.height / 2}, fourth{size.width / 4, size.height / 4};
        const ResampleAxis halfColumns(size.width, half.width), halfRows(size.height, half.height);
        const ResampleAxis columns(size.width, fourth.width), rows(size.height, fourth.height);
        EXPECT_TRUE(reducesToRoundedPart(halfColumns, halfRows));
        EXPECT_TRUE(reducesToRoundedPart(columns, rows));
        EXPECT_FALSE(reducesToRoundedPart(columns, halfRows));
        const RoundedAxis byTwo[] = {{halfColumns, 2}, {halfRows, 2}}, byFour[] = {{columns, 4}, {rows, 4}};
        EXPECT_LT(openPixels(ByteReduction<4>(bitmap, byFour[0], byFour[1]), fourth), 12 * 325);
        if (HalfByWords::suits(byTwo[0], byTwo[1])) {
            EXPECT_LE(openPixels(HalfByWords(bitmap, byTwo[0], byTwo[1]), half), 2 * 650);
        } else {
            EXPECT_LT(openPixels(ByteReduction<2>(bitmap, byTwo[0], byTwo[1]), half), 8 * 650);
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
