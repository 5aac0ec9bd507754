// Cursors told apart by their pictures, as the script's eye tells the tools.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "standin/desk/cursor_picture.h"

using desk::script::CursorPicture;

namespace {

constexpr int side = 32;
constexpr POINT hotSpot{15, 16};
constexpr std::uint32_t clear = 0x00FFFF, ink = 0x000000, white = 0xFFFFFF;

using Pixels = std::vector<std::uint32_t>;

Pixels blank()
{
    return Pixels(std::size_t{side} * side, clear);
}

// A bar of ink and white at the upper right, so many rows high: what tells one brush from another.
Pixels brushPicture(int rows)
{
    Pixels pixels = blank();
    for (int y = 0; y < rows; ++y) {
        pixels[std::size_t(y) * side + 20] = ink;
        pixels[std::size_t(y) * side + 21] = white;
    }
    return pixels;
}

// The ring of pixels that lie `radius` from the hot spot along the farther axis.
void addRing(Pixels& pixels, int radius, std::uint32_t color)
{
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            if (std::max(std::abs(x - int(hotSpot.x)), std::abs(y - int(hotSpot.y))) == radius)
                pixels[std::size_t(y) * side + x] = color;
}

// A black and white cursor of the system's, shown by masks.
CursorPicture shown(const Pixels& pixels, POINT hot = hotSpot)
{
    std::vector<BYTE> andMask(side * side / 8, 0), xorMask(side * side / 8, 0);
    for (int i = 0; i < side * side; ++i) {
        const auto bit = static_cast<BYTE>(0x80 >> (i % 8));
        if (pixels[std::size_t(i)] == clear)
            andMask[std::size_t(i / 8)] |= bit;
        if (pixels[std::size_t(i)] == white)
            xorMask[std::size_t(i / 8)] |= bit;
    }
    const HCURSOR cursor =
        CreateCursor(GetModuleHandleW(nullptr), hot.x, hot.y, side, side, andMask.data(), xorMask.data());
    const auto picture = CursorPicture::of(cursor);
    DestroyCursor(cursor);
    return picture.value_or(CursorPicture{});
}

CursorPicture drawn(const Pixels& pixels)
{
    return CursorPicture::ofPixels(pixels, {side, side}, clear, hotSpot);
}

} // namespace

TEST(CursorPicture, ABrushIsKnownWithoutASquareAndWithOneOfAnySize)
{
    const CursorPicture brush = drawn(brushPicture(9));
    EXPECT_TRUE(shown(brushPicture(9)).sameAs(brush));
    for (const int half : {1, 5, 10, 14}) { // from 7 on it runs through the picture
        Pixels pixels = brushPicture(9);
        addRing(pixels, half, ink);
        addRing(pixels, half + 1, white);
        EXPECT_TRUE(shown(pixels).sameButSquare(brush)) << half;
        EXPECT_FALSE(shown(pixels).sameAs(brush)) << half;
        EXPECT_FALSE(shown(pixels).sameButSquare(drawn(brushPicture(4)))) << half;
    }
}

TEST(CursorPicture, OtherPicturesAreNotTakenForABrush)
{
    const CursorPicture brush = drawn(brushPicture(9));
    Pixels twoSquares = brushPicture(9);
    addRing(twoSquares, 4, ink);
    addRing(twoSquares, 8, ink);
    EXPECT_FALSE(shown(twoSquares).sameButSquare(brush));
    EXPECT_FALSE(shown(brushPicture(12)).sameButSquare(brush));
    EXPECT_FALSE(shown(brushPicture(9), {14, 16}).sameButSquare(brush)) << "held at another point";
    EXPECT_FALSE(CursorPicture::of(LoadCursorW(nullptr, IDC_ARROW)).value().sameButSquare(brush));
    EXPECT_FALSE(CursorPicture::of(nullptr));
}
