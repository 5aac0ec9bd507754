#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

// Rows between the bitmap's words and the bytes of files, most significant bit leftmost in both.

namespace imaging {

inline std::size_t bytesPerRow(int width)
{
    return (std::size_t(width) + 7) / 8;
}

/// Fills a bitmap's row, its padding with zeros. With inverted, a 0 bit of the bytes is ink.
void wordsFromBytes(std::uint64_t* words, const std::uint8_t* bytes, int width, bool inverted);

/// The other way; the bits that pad the last byte are zero.
void bytesFromWords(std::uint8_t* bytes, const std::uint64_t* words, int width, bool inverted);

/// Adds the ink of a row of width pixels to another one from x on.
void addBits(std::uint64_t* row, int x, const std::uint64_t* bits, int width);

/// Fills a bitmap's row by asking isInk(x) for each pixel.
template <typename IsInk> void fillRow(std::uint64_t* words, int width, IsInk isInk)
{
    for (int x = 0; x < width; x += 64) {
        const int count = std::min(64, width - x);
        std::uint64_t word = 0;
        for (int i = 0; i < count; ++i)
            word = word << 1 | std::uint64_t(isInk(x + i) ? 1 : 0);
        words[x / 64] = word << (64 - count);
    }
}

/// Luminance in thousandths of 0..255.
inline int luminance(int red, int green, int blue)
{
    return 299 * red + 587 * green + 114 * blue;
}

/// Of a palette of one bit, given by its luminances, whether 1 is the ink: of two colours the darker, however light it
/// is. Two equal ones tell nothing, and 1 is then paper. Of a palette with one colour, 0 is ink when that is darker
/// than half, and 1 the opposite.
bool oneIsInk(std::span<const int> luminances);

/// Whether a colour of 0..255 each is darker than half.
inline bool isDark(int red, int green, int blue)
{
    return luminance(red, green, blue) < 127500;
}

/// The same for a colour that lies with the given opacity on white paper.
inline bool isDark(int red, int green, int blue, int opacity)
{
    constexpr std::int64_t half = std::int64_t(127500) * 255;
    return luminance(red, green, blue) * std::int64_t(opacity) + 255000 * std::int64_t(255 - opacity) < half;
}

} // namespace imaging
