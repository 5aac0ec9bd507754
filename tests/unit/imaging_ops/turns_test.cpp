#include "imaging/mirror.h"
#include "imaging/turn.h"
#include "picture.h"

using namespace imaging;

namespace {

Bitmap after(void (*operation)(Bitmap&), Bitmap bitmap)
{
    operation(bitmap);
    return bitmap;
}

} // namespace

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
                samePicture(made(b.size(), [&](int x, int y) { return b.ink(r - x, y); }), after(mirrorHorizontal, b)));
            EXPECT_TRUE(
                samePicture(made(b.size(), [&](int x, int y) { return b.ink(x, l - y); }), after(mirrorVertical, b)));
            EXPECT_TRUE(
                samePicture(made(b.size(), [&](int x, int y) { return b.ink(r - x, l - y); }), after(turnHalf, b)));
        }
    }
}

TEST(Turns, AddUpOnALargeSheet)
{
    const Bitmap sheet = noise({2345, 3210}, 0.2, 11);
    const Bitmap once = turnClockwise(sheet);
    const Bitmap twice = turnClockwise(once);
    EXPECT_TRUE(samePicture(after(turnHalf, sheet), twice));
    EXPECT_TRUE(samePicture(turnCounterClockwise(sheet), turnClockwise(twice)));
    EXPECT_TRUE(samePicture(sheet, turnClockwise(turnClockwise(twice))));
    EXPECT_TRUE(samePicture(after(turnHalf, sheet), after(mirrorHorizontal, after(mirrorVertical, sheet))));
    EXPECT_TRUE(samePicture(after(mirrorVertical, once), turnClockwise(after(mirrorHorizontal, sheet))));
}
