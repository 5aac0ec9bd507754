#include "standin/desk/palette.h"

#include <algorithm>

namespace desk {
namespace {

// Perceived brightness, 0 to 255.
int brightness(Color color)
{
    const int red = color >> 16 & 0xFF, green = color >> 8 & 0xFF, blue = color & 0xFF;
    return (red * 299 + green * 587 + blue * 114) / 1000;
}

} // namespace

Palette Palette::light()
{
    return {0xFBFAF7, 0x24282D, 0x2F6FDE, 0x6B7480, 0x2F6FDE, 0x3B9A5B};
}

Palette Palette::dark()
{
    return {0x20272F, 0xE9ECEF, 0x7FB2FF, 0x9AA7B5, 0x5B93EE, 0x5FC083};
}

Color Palette::shown(Color color, bool inForeground) const
{
    if (inForeground)
        return foreground;
    constexpr int enough = 70;
    const int contrast = std::abs(brightness(color) - brightness(ground));
    if (contrast >= enough)
        return color;
    return mix(color, foreground, static_cast<unsigned>(140 * (enough - contrast) / enough));
}

} // namespace desk
