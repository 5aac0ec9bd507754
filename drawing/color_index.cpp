#include "drawing/color_index.h"

#include <array>

namespace drawing {

namespace {

constexpr std::array<Rgb, 10> named{{{255, 255, 255},
                                     {255, 0, 0},
                                     {255, 255, 0},
                                     {0, 255, 0},
                                     {0, 255, 255},
                                     {0, 0, 255},
                                     {255, 0, 255},
                                     {255, 255, 255},
                                     {128, 128, 128},
                                     {192, 192, 192}}};
constexpr int firstHue = 10;
constexpr int firstGray = 250;
constexpr std::array<std::uint8_t, 6> grays{51, 91, 132, 173, 214, 255};

// From 10 to 249 the table goes round the colour circle in 24 steps of 15 degrees; each step holds five brightnesses,
// each of them pure and then mixed half with white.
Rgb rgbOfHue(int index)
{
    constexpr std::array<int, 5> brightness{255, 165, 127, 76, 38};
    constexpr int quartersOfSextant = 4; // 60 degrees are four steps
    const int step = index / 10 - 1;
    const int high = brightness[static_cast<std::size_t>(index % 10 / 2)];
    const int low = index % 2 != 0 ? high / 2 : 0;
    const int quarter = step % quartersOfSextant;
    const int rising = low + (high - low) * quarter / quartersOfSextant;
    const int falling = low + (high - low) * (quartersOfSextant - quarter) / quartersOfSextant;
    const auto rgb = [](int red, int green, int blue) {
        return Rgb{static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green), static_cast<std::uint8_t>(blue)};
    };
    switch (step / quartersOfSextant) {
    case 0:
        return rgb(high, rising, low);
    case 1:
        return rgb(falling, high, low);
    case 2:
        return rgb(low, high, rising);
    case 3:
        return rgb(low, falling, high);
    case 4:
        return rgb(rising, low, high);
    default:
        return rgb(high, low, falling);
    }
}

} // namespace

Rgb rgbOfIndex(int index)
{
    if (index <= 0 || index > 255) {
        return named[7];
    }
    if (index < firstHue) {
        return named[static_cast<std::size_t>(index)];
    }
    if (index < firstGray) {
        return rgbOfHue(index);
    }
    const std::uint8_t gray = grays[static_cast<std::size_t>(index - firstGray)];
    return {gray, gray, gray};
}

} // namespace drawing
