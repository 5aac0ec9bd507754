#include "picture.h"

#include "imaging/mirror.h"
#include "imaging/turn.h"

using namespace imaging;

namespace {

Bitmap mirroredHorizontally(Bitmap bitmap)
{
    mirrorHorizontal(bitmap);
    return bitmap;
}

Bitmap mirroredVertically(Bitmap bitmap)
{
    mirrorVertical(bitmap);
    return bitmap;
}

Bitmap turnedHalf(Bitmap bitmap)
{
    turnHalf(bitmap);
    return bitmap;
}

} // namespace

TEST(Turns, GoTheWayTheyAreCalled)
{
    const Bitmap flag = drawn({"110", //
                               "100"});
    EXPECT_TRUE(samePicture(drawn({"11", "01", "00"}), turnClockwise(flag)));
    EXPECT_TRUE(samePicture(drawn({"00", "10", "11"}), turnCounterClockwise(flag)));
    EXPECT_TRUE(samePicture(drawn({"001", "011"}), turnedHalf(flag)));
    EXPECT_TRUE(samePicture(drawn({"011", "001"}), mirroredHorizontally(flag)));
    EXPECT_TRUE(samePicture(drawn({"100", "110"}), mirroredVertically(flag)));
}

TEST(Turns, MovePixelsRightlyAtEverySize)
{
    for (const int width : awkwardWidths) {
        for (const int height : {1, 2, 63, 64, 65, 130, 600}) {
            SCOPED_TRACE(testing::Message() << width << " x " << height);
            const Bitmap b = noise({width, height}, 0.5, unsigned(width * 1000 + height));
            const int r = width - 1;
            const int l = height - 1;
            const auto turned = [&](int x, int y) { return b.ink(y, l - x); };
            const auto turnedBack = [&](int x, int y) { return b.ink(r - y, x); };
            EXPECT_TRUE(samePicture(made({height, width}, turned), turnClockwise(b)));
            EXPECT_TRUE(samePicture(made({height, width}, turnedBack), turnCounterClockwise(b)));
            EXPECT_TRUE(
                samePicture(made(b.size(), [&](int x, int y) { return b.ink(r - x, y); }), mirroredHorizontally(b)));
            EXPECT_TRUE(
                samePicture(made(b.size(), [&](int x, int y) { return b.ink(x, l - y); }), mirroredVertically(b)));
            EXPECT_TRUE(samePicture(made(b.size(), [&](int x, int y) { return b.ink(r - x, l - y); }), turnedHalf(b)));
        }
    }
}

TEST(Turns, AddUpOnALargeSheet)
{
    const Bitmap sheet = noise({2345, 3210}, 0.2, 11);
    const Bitmap once = turnClockwise(sheet);
    const Bitmap twice = turnClockwise(once);
    EXPECT_TRUE(samePicture(turnedHalf(sheet), twice));
    EXPECT_TRUE(samePicture(turnCounterClockwise(sheet), turnClockwise(twice)));
    EXPECT_TRUE(samePicture(sheet, turnClockwise(turnClockwise(twice))));
    EXPECT_TRUE(samePicture(turnedHalf(sheet), mirroredHorizontally(mirroredVertically(sheet))));
    EXPECT_TRUE(samePicture(mirroredVertically(once), turnClockwise(mirroredHorizontally(sheet))));
}
