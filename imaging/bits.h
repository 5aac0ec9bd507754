// How pixels lie in the words of a bitmap's row.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace imaging {

constexpr std::uint64_t allBits = ~std::uint64_t(0);
constexpr std::uint64_t firstBit = std::uint64_t(1) << 63;

/// In the word that holds pixel x: this pixel and all to its right.
constexpr std::uint64_t maskFrom(int x)
{
    return allBits >> (x & 63);
}

/// In the word that holds pixel x - 1: this pixel and all to its left.
constexpr std::uint64_t maskUpTo(int x)
{
    return allBits << (-x & 63);
}

/// Calls apply(index of the word, mask of its pixels) for the words that hold the pixels left up to, without, right.
template <class Apply> inline void forEachWord(int left, int right, Apply apply)
{
    if (left >= right)
        return;
    const std::ptrdiff_t first = left >> 6;
    const std::ptrdiff_t last = (right - 1) >> 6;
    if (first == last) {
        apply(first, maskFrom(left) & maskUpTo(right));
        return;
    }
    apply(first, maskFrom(left));
    for (std::ptrdiff_t i = first + 1; i < last; ++i)
        apply(i, allBits);
    apply(last, maskUpTo(right));
}

/// The 64 pixels from x on, x being any position; what lies outside the row's words is paper.
inline std::uint64_t pixelsAt(const std::uint64_t* row, std::ptrdiff_t words, std::ptrdiff_t x)
{
    const std::ptrdiff_t index = x >> 6;
    const int shift = int(x & 63);
    const std::uint64_t here = index >= 0 && index < words ? row[index] : 0;
    if (shift == 0)
        return here;
    const std::uint64_t next = index + 1 >= 0 && index + 1 < words ? row[index + 1] : 0;
    return here << shift | next >> (64 - shift);
}

inline void setSpan(std::uint64_t* row, int left, int right, bool ink)
{
    if (ink) {
        forEachWord(left, right, [row](std::ptrdiff_t i, std::uint64_t mask) { row[i] |= mask; });
    } else {
        forEachWord(left, right, [row](std::ptrdiff_t i, std::uint64_t mask) { row[i] &= ~mask; });
    }
}

/// The word with its pixels in the opposite order.
constexpr std::uint64_t reverseBits(std::uint64_t word)
{
    word = (word >> 1 & 0x5555555555555555) | (word & 0x5555555555555555) << 1;
    word = (word >> 2 & 0x3333333333333333) | (word & 0x3333333333333333) << 2;
    word = (word >> 4 & 0x0f0f0f0f0f0f0f0f) | (word & 0x0f0f0f0f0f0f0f0f) << 4;
    return __builtin_bswap64(word);
}

/// Writes where ink begins and ends in a row, in turn and in ascending order, and returns how many such edges there
/// are, always an even number. There must be room for width + 1 of them.
inline std::size_t findInkEdges(const std::uint64_t* row, int width, int* edges)
{
    const int* const first = edges;
    const std::ptrdiff_t words = (std::ptrdiff_t(width) + 63) / 64;
    std::uint64_t carry = 0;
    for (std::ptrdiff_t i = 0; i < words; ++i) {
        const std::uint64_t word = row[i];
        std::uint64_t changes = word ^ (word >> 1 | carry << 63);
        carry = word & 1;
        while (changes) {
            const int position = std::countl_zero(changes);
            changes ^= firstBit >> position;
            *edges++ = int(i * 64) + position;
        }
    }
    if ((edges - first) % 2)
        *edges++ = width;
    return std::size_t(edges - first);
}

} // namespace imaging
