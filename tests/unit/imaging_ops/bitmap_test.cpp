#include <algorithm>

#include "imaging/error.h"
#include "picture.h"

using namespace imaging;

TEST(Bitmap, CopiesShareNothingAndMovingLeavesNothing)
{
    Bitmap bitmap = noise({70, 4}, 0.5, 3);
    const Bitmap copy = bitmap;
    bitmap.setInk(69, 3, !bitmap.ink(69, 3));
    EXPECT_NE(copy, bitmap);
    bitmap = copy;
    const Bitmap& self = bitmap;
    bitmap = self;
    EXPECT_TRUE(samePicture(copy, bitmap));
    Bitmap moved = std::move(bitmap);
    EXPECT_TRUE(samePicture(copy, moved));
    EXPECT_EQ(bitmap, Bitmap()); // NOLINT(bugprone-use-after-move): the state after a move is part of the contract
    bitmap = std::move(moved);
    EXPECT_TRUE(samePicture(copy, bitmap));
    EXPECT_EQ(moved, Bitmap()); // NOLINT(bugprone-use-after-move)
}

TEST(Bitmap, MemoryUsedBeforeIsPaperAgain)
{
    // Large enough for the buffer to be kept and used again.
    const Size large{4000, 3000};
    for (const Size size : {large, Size{3999, 2500}, Size{63, 200000}}) {
        Bitmap used(large);
        for (int y = 0; y < large.height; ++y)
            std::fill_n(used.row(y), used.wordsPerRow(), ~std::uint64_t(0));
        used = Bitmap();
        const Bitmap fresh(size);
        bool paper = true;
        for (int y = 0; y < size.height; ++y)
            paper = paper && std::all_of(fresh.row(y), fresh.row(y) + fresh.wordsPerRow(),
                                         [](std::uint64_t word) { return word == 0; });
        EXPECT_TRUE(paper) << size.width << " x " << size.height;
    }
}

TEST(Bitmap, SizesAreChecked)
{
    EXPECT_THROW(Bitmap({-1, 5}), ImagingError);
    EXPECT_THROW(Bitmap({5, -1}), ImagingError);
    EXPECT_THROW(Bitmap({2000000000, 2000000000}), ImagingError);
    EXPECT_THROW(Bitmap({Bitmap::maximumSide + 1, 1}), ImagingError);
    EXPECT_THROW(Bitmap({Bitmap::maximumSide, Bitmap::maximumSide}), ImagingError);
    EXPECT_EQ(Bitmap::uninitialized({65535, 32767}).width(), 65535);
    EXPECT_THROW(Bitmap({65537, 32768}), ImagingError);
    EXPECT_TRUE(Bitmap({0, 7}).empty());
    EXPECT_EQ(Bitmap({0, 7}), Bitmap());
    EXPECT_EQ(Bitmap({Bitmap::maximumSide, 1}).width(), Bitmap::maximumSide);
}
