#include "drawing/color_index.h"

#include <array>

namespace drawing {

namespace {

constexpr std::array<Rgb, 10> kNamed{{{255, 255, 255},
                                      {255, 0, 0},
                                      {255, 255, 0},
                                      {0, 255, 0},
                                      {0, 255, 255},
                                      {0, 0, 255},
                                      {255, 0, 255},
                                      {255, 255, 255},
                                      {128, 128, 128},
                                      {192, 192, 192}}};
constexpr int kFirstHue = 10;
constexpr int kFirstGray = 250;
constexpr std::array<std::uint8_t, 6> kGrays{51, 91, 132, 173, 214, 255};

// From 10 to 249 the table goes round the colour circle in 24 steps of 15 degrees; each step holds five brightnesses,
// each of them pure and then mixed half with white.
Rgb rgbOfHue(int index)
{
    constexpr std::array<int, 5> kBrightness{255, 165, 127, 76, 38};
    constexpr int kQuartersOfSextant = 4; // 60 degrees are four steps
    const int step = index / 10 - 1;
    const int high = kBrightness[static_cast<std::size_t>(index % 10 / 2)];
    const int low = index % 2 != 0 ? high / 2 : 0;
    const int quarter = step % kQuartersOfSextant;
    const int rising = low + (high - low) * quarter / kQuartersOfSextant;
    const int falling = low + (high - low) * (kQuartersOfSextant - quarter) / kQuartersOfSextant;
    const auto rgb = [](int red, int green, int blue) {
        return Rgb{static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green), static_cast<std::uint8_t>(blue)};
    };
    switch (step / kQuartersOfSextant) {
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
        return kNamed[7];
    }
    if (index < kFirstHue) {
        return kNamed[static_cast<std::size_t>(index)];
    }
    if (index < kFirstGray) {
        return rgbOfHue(index);
    }
    const std::uint8_t gray = kGrays[static_cast<std::size_t>(index - kFirstGray)];
    return {gray, gray, gray};
}

} // namespace drawing
