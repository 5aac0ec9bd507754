#include "standin/desk/cursor_picture.h"

#include <algorithm>
#include <cstdlib>

#include "standin/desk/pixel_buffer.h"

namespace desk::script {
namespace {

constexpr std::uint32_t black = 0x000000, white = 0xFFFFFF;
constexpr std::size_t pixelCount = std::size_t(CursorPicture::side) * CursorPicture::side;

std::vector<std::uint32_t> drawnOn(std::uint32_t ground, HCURSOR cursor)
{
    PixelBuffer buffer;
    buffer.resize({CursorPicture::side, CursorPicture::side});
    std::fill_n(buffer.pixels(), pixelCount, ground);
    DrawIconEx(buffer.context(), 0, 0, cursor, 0, 0, 0, nullptr, DI_NORMAL);
    GdiFlush();
    std::vector<std::uint32_t> pixels(buffer.pixels(), buffer.pixels() + pixelCount);
    for (std::uint32_t& pixel : pixels)
        pixel &= 0xFFFFFF;
    return pixels;
}

} // namespace

std::optional<CursorPicture> CursorPicture::of(HCURSOR cursor)
{
    ICONINFO info{};
    if (cursor == nullptr || !GetIconInfo(cursor, &info))
        return std::nullopt;
    DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr)
        DeleteObject(info.hbmColor);
    return CursorPicture{{static_cast<LONG>(info.xHotspot), static_cast<LONG>(info.yHotspot)},
                         drawnOn(black, cursor),
                         drawnOn(white, cursor)};
}

CursorPicture CursorPicture::ofPixels(const std::vector<std::uint32_t>& pixels, imaging::Size size, std::uint32_t clear,
                                      POINT hotSpot)
{
    CursorPicture picture{hotSpot, std::vector(pixelCount, black), std::vector(pixelCount, white)};
    for (int y = 0; y < std::min(size.height, side); ++y) {
        for (int x = 0; x < std::min(size.width, side); ++x) {
            const std::uint32_t pixel = pixels[std::size_t(y) * size.width + x];
            if (pixel != clear)
                picture.onBlack[std::size_t(y) * side + x] = picture.onWhite[std::size_t(y) * side + x] = pixel;
        }
    }
    return picture;
}

bool CursorPicture::sameAs(const CursorPicture& other) const
{
    return hotSpot.x == other.hotSpot.x && hotSpot.y == other.hotSpot.y && onBlack == other.onBlack &&
           onWhite == other.onWhite;
}

bool CursorPicture::sameButSquare(const CursorPicture& other) const
{
    if (hotSpot.x != other.hotSpot.x || hotSpot.y != other.hotSpot.y)
        return false;
    // How far from the hot spot, along the farther axis, the pixels lie that differ.
    long nearest = side, farthest = -1;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const std::size_t at = std::size_t(y) * side + x;
            if (onBlack[at] == other.onBlack[at] && onWhite[at] == other.onWhite[at])
                continue;
            const long distance = std::max(std::abs(x - hotSpot.x), std::abs(y - hotSpot.y));
            nearest = std::min(nearest, distance);
            farthest = std::max(farthest, distance);
        }
    }
    return farthest - nearest <= 1;
}

} // namespace desk::script
