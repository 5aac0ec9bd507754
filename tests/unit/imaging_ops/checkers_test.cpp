// The helpers that judge pictures must find fault with faulty ones.

#include "picture.h"

using namespace imaging;

TEST(Checkers, PictureIsReadAsDrawn)
{
    const Bitmap bitmap = drawn({"010", "1.1"});
    EXPECT_EQ(bitmap.size(), (Size{3, 2}));
    EXPECT_FALSE(bitmap.ink(0, 0));
    EXPECT_TRUE(bitmap.ink(1, 0));
    EXPECT_TRUE(bitmap.ink(0, 1));
    EXPECT_FALSE(bitmap.ink(1, 1));
    EXPECT_EQ(bitmap.row(1)[0], 0xa000000000000000u) << "the leftmost pixel is the highest bit";
}

TEST(Checkers, OnePixelOfDifferenceIsSeenAnywhere)
{
    const Bitmap bitmap = noise({130, 5}, 0.5, 1);
    EXPECT_TRUE(samePicture(bitmap, bitmap));
    for (const Point p : {Point{0, 0}, Point{129, 0}, Point{64, 2}, Point{0, 4}, Point{129, 4}}) {
        Bitmap changed = bitmap;
        changed.setInk(p.x, p.y, !bitmap.ink(p.x, p.y));
        EXPECT_FALSE(samePicture(bitmap, changed));
    }
    EXPECT_FALSE(samePicture(bitmap, Bitmap({130, 6})));
}

TEST(Checkers, InkInThePaddingIsSeen)
{
    Bitmap bitmap({65, 2});
    EXPECT_TRUE(paddingIsPaper(bitmap));
    bitmap.row(1)[1] |= 1;
    EXPECT_FALSE(paddingIsPaper(bitmap));
    EXPECT_FALSE(samePicture(Bitmap({65, 2}), bitmap));
}

TEST(Checkers, DamageOnEverySideOfTheRectangleIsSeen)
{
    const Bitmap before({9, 9});
    const Rect inside{3, 3, 6, 6};
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x) {
            Bitmap after = before;
            after.setInk(x, y, true);
            EXPECT_EQ(bool(surroundingsIntact(before, after, inside)), x >= 3 && x < 6 && y >= 3 && y < 6);
        }
    }
}
