#include "imaging/mirror.h"

#include <algorithm>
#include <vector>

#include "imaging/bits.h"
#include "imaging/parallel.h"

#ifdef __SSSE3__
#include <tmmintrin.h>
#endif

namespace imaging {

namespace {

// Writes the words in the opposite order, and the pixels in each of them too.
void reverseWords(const std::uint64_t* from, std::uint64_t* to, std::ptrdiff_t words)
{
    std::ptrdiff_t i = 0;
#ifdef __SSSE3__
    // Two words at a time: the bytes change places by one shuffle, the halves of each byte go through a table each.
    const __m128i backwards = _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    const __m128i lowHalf = _mm_set1_epi8(0x0f);
    const __m128i asHigh =
        _mm_setr_epi8(0x00, -128, 0x40, -64, 0x20, -96, 0x60, -32, 0x10, -112, 0x50, -48, 0x30, -80, 0x70, -16);
    const __m128i asLow = _mm_setr_epi8(0, 8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15);
    for (; i + 2 <= words; i += 2) {
        const __m128i pair = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + words - 2 - i));
        const __m128i bytes = _mm_shuffle_epi8(pair, backwards);
        const __m128i low = _mm_and_si128(bytes, lowHalf);
        const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), lowHalf);
        const __m128i reversed = _mm_or_si128(_mm_shuffle_epi8(asHigh, low), _mm_shuffle_epi8(asLow, high));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), reversed);
    }
#endif
    for (; i < words; ++i)
        to[i] = reverseBits(from[words - 1 - i]);
}

// Writes a row in the opposite order over another one. Reversing all the words brings the padding to the left end, so
// the pixels move left by the width of the padding on the way. `scratch` has room for a word more than a row, that is
// 0.
void reverseRow(const std::uint64_t* from, std::uint64_t* to, std::ptrdiff_t words, int width, std::uint64_t* scratch)
{
    const int padding = -width & 63;
    if (padding == 0 && from != to) {
        reverseWords(from, to, words);
        return;
    }
    reverseWords(from, scratch, words);
    if (padding == 0) {
        std::copy_n(scratch, words, to);
        return;
    }
    for (std::ptrdiff_t i = 0; i < words; ++i)
        to[i] = scratch[i] << padding | scratch[i + 1] >> (64 - padding);
}

// Exchanges two rows, and fetches those that come next: that the lower ones go upwards, the processor does not foresee.
inline __attribute__((always_inline)) void swapRows(std::uint64_t* upper, std::uint64_t* lower, std::ptrdiff_t words)
{
    constexpr std::ptrdiff_t line = 8; // words
    for (std::ptrdiff_t i = 0; i < words; i += line) {
        __builtin_prefetch(upper + words + i, 1);
        __builtin_prefetch(lower - words + i, 1);
        std::swap_ranges(upper + i, upper + std::min(i + line, words), lower + i);
    }
}

#ifdef __x86_64__
// The same, four words at a time.
__attribute__((target("avx2"))) void swapRowsByFours(std::uint64_t* upper, std::uint64_t* lower, std::ptrdiff_t words)
{
    swapRows(upper, lower, words);
}
#endif

void swapRowsQuickly(std::uint64_t* upper, std::uint64_t* lower, std::ptrdiff_t words)
{
#ifdef __x86_64__
    static const bool byFours = __builtin_cpu_supports("avx2");
    if (byFours) {
        swapRowsByFours(upper, lower, words);
        return;
    }
#endif
    swapRows(upper, lower, words);
}

} // namespace

void mirrorHorizontal(Bitmap& bitmap)
{
    const std::ptrdiff_t words = bitmap.wordsPerRow();
    inParallel(bitmap.height(), rowsWorthACore(words), [&](int begin, int end) {
        std::vector<std::uint64_t> scratch(std::size_t(words) + 1, 0);
        for (int y = begin; y < end; ++y)
            reverseRow(bitmap.row(y), bitmap.row(y), words, bitmap.width(), scratch.data());
    });
}

void mirrorVertical(Bitmap& bitmap)
{
    const std::ptrdiff_t words = bitmap.wordsPerRow();
    inParallel(bitmap.height() / 2, rowsWorthACore(words), [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            swapRowsQuickly(bitmap.row(y), bitmap.row(bitmap.height() - 1 - y), words);
    });
}

void turnHalf(Bitmap& bitmap)
{
    const std::ptrdiff_t words = bitmap.wordsPerRow();
    const int height = bitmap.height();
    inParallel((height + 1) / 2, rowsWorthACore(words), [&](int begin, int end) {
        std::vector<std::uint64_t> copy(std::size_t(words), 0);
        std::vector<std::uint64_t> scratch(std::size_t(words) + 1, 0);
        for (int y = begin; y < end; ++y) {
            std::uint64_t* upper = bitmap.row(y);
            std::uint64_t* lower = bitmap.row(height - 1 - y);
            std::copy_n(upper, words, copy.data());
            reverseRow(lower, upper, words, bitmap.width(), scratch.data());
            reverseRow(copy.data(), lower, words, bitmap.width(), scratch.data());
        }
    });
}

} // namespace imaging
