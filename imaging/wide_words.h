// Four words of a bitmap's row at a time, for processors with AVX2. Functions that use these have to be compiled for
// it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <immintrin.h>

#include "imaging/bits.h"

#define HALVORAN_AVX2 __attribute__((target("avx2")))
#define HALVORAN_AVX2_INLINE inline __attribute__((target("avx2"), always_inline))

namespace imaging {

constexpr int wideWords = 4;

HALVORAN_AVX2_INLINE __m256i loadWords(const std::uint64_t* words)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(words));
}

/// Where pixels begin in the words of a row.
struct WidePlace
{
    std::ptrdiff_t word;
    __m256i shift;
    __m256i shiftBack;
};

HALVORAN_AVX2_INLINE WidePlace widePlace(std::ptrdiff_t x)
{
    return {x >> 6, _mm256_set1_epi64x(x & 63), _mm256_set1_epi64x(64 - (x & 63))};
}

/// The 256 pixels from a place on, out of five words and however many bits these hold before and behind.
HALVORAN_AVX2_INLINE __m256i widePixels(const std::uint64_t* row, const WidePlace& place)
{
    return _mm256_or_si256(_mm256_sllv_epi64(loadWords(row + place.word), place.shift),
                           _mm256_srlv_epi64(loadWords(row + place.word + 1), place.shiftBack));
}

/// Whether loading the pixels of a place in this word of a row, or in the next one, would read outside of the row.
constexpr bool isAtEdge(std::ptrdiff_t word, std::ptrdiff_t words)
{
    return word < 0 || word + wideWords + 2 > words;
}

/// Copies of rows from pixel x on, to load from at an edge; what lies outside is paper.
template <std::size_t Count> class RowsAtEdge
{
public:
    RowsAtEdge(const std::array<const std::uint64_t*, Count>& rows, std::ptrdiff_t words, std::ptrdiff_t x)
    {
        for (std::size_t i = 0; i < Count; ++i) {
            for (std::size_t k = 0; k < m_words[i].size(); ++k)
                m_words[i][k] = pixelsAt(rows[i], words, x + 64 * std::ptrdiff_t(k));
            m_rows[i] = m_words[i].data();
        }
    }
    RowsAtEdge(const RowsAtEdge&) = delete;
    RowsAtEdge& operator=(const RowsAtEdge&) = delete;

    const std::array<const std::uint64_t*, Count>& rows() const { return m_rows; }

private:
    std::array<std::array<std::uint64_t, wideWords + 2>, Count> m_words;
    std::array<const std::uint64_t*, Count> m_rows;
};

} // namespace imaging
