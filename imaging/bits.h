// How pixels lie in the words of a bitmap's row.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

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

/// How many numbers findInkEdges() needs room for.
constexpr std::size_t roomForEdges(int width)
{
    return std::size_t(width) + 72;
}

/// Finds where ink begins and ends in a row, in turn and in ascending order, always an even number of places. They lie
/// at the end of `room`, which has roomForEdges(width) numbers; the eight behind them, and the one before them, may be
/// written to.
inline std::span<int> findInkEdges(const std::uint64_t* row, int width, std::span<int> room)
{
    // From right to left, as the lowest bit of a word is the cheapest to find. The places of a word are written by
    // fours, whether there are so many or not: what is too much lies on the left, where the next word's come to lie.
    //
    //   ......[ - - 7 9 | 14 20 23 ]    next come 3 of the word on the left, and one too many
    //   ......[ x 2 4 6 | 7 9 14 20 23 ]
    int* const end = room.data() + roomForEdges(width) - 8;
    int* first = end;
    for (std::ptrdiff_t i = (std::ptrdiff_t(width) - 1) / 64; i >= 0; --i) {
        std::uint64_t changes = row[i] ^ (row[i] >> 1 | (i > 0 ? row[i - 1] << 63 : 0));
        int* next = first;
        for (first -= std::popcount(changes); changes; next -= 4) {
            for (int k = 1; k <= 4; ++k) {
                next[-k] = int(i * 64) + 63 - std::countr_zero(changes | firstBit);
                changes &= changes - 1;
            }
        }
    }
    if ((end - first) % 2 == 0)
        return {first, end};
    *end = width;
    return {first, end + 1};
}

} // namespace imaging
