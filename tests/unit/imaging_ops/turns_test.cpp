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
    std::vector<Size> sizes = {{2345, 3210}}; // worth several cores
    for (const int width : awkwardWidths) {
        for (const int height : {1, 2, 63, 64, 65, 130, 600})
            sizes.push_back({width, height});
    }
    for (const Size size : sizes) {
        SCOPED_TRACE(testing::Message() << size.width << " x " << size.height);
        const Bitmap b = noise(size, 0.5, unsigned(size.width * 1000 + size.height));
        const int r = size.width - 1;
        const int l = size.height - 1;
        const Size turned{size.height, size.width};
        const auto is = [](const Bitmap& result, Size expectedSize, const auto& pixel) {
            EXPECT_TRUE(samePicture(made(expectedSize, pixel), result));
        };
        is(turnClockwise(b), turned, [&](int x, int y) { return b.ink(y, l - x); });
        is(turnCounterClockwise(b), turned, [&](int x, int y) { return b.ink(r - y, x); });
        is(after(mirrorHorizontal, b), size, [&](int x, int y) { return b.ink(r - x, y); });
        is(after(mirrorVertical, b), size, [&](int x, int y) { return b.ink(x, l - y); });
        is(after(turnHalf, b), size, [&](int x, int y) { return b.ink(r - x, l - y); });
    }
}
