#include "imaging/slanted_line.h"

#include <immintrin.h>

namespace imaging {

namespace {

std::int32_t signedFraction(std::int64_t position)
{
    return std::int32_t(std::uint32_t(position) ^ 0x80000000);
}

__attribute__((target("avx2"))) __m256i load(const std::int32_t* numbers)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(numbers));
}

} // namespace

SlantedLine::SlantedLine(const Bitmap& bitmap, std::int64_t stepX, std::int64_t stepY)
    : m_bitmap(bitmap), m_rowLength(std::int32_t(bitmap.wordsPerRow() * 2))
{
    for (int i = 0; i < steps; ++i) {
        const auto place = std::size_t(i ^ 7);
        m_wholeX[place] = std::int32_t(i * stepX >> 32);
        m_fractionX[place] = signedFraction(~(i * stepX));
        m_wholeY[place] = std::int32_t(i * stepY >> 32) * m_rowLength;
        m_fractionY[place] = signedFraction(~(i * stepY));
    }
}

bool SlantedLine::possible()
{
    return __builtin_cpu_supports("avx2");
}

__attribute__((target("avx2"))) std::uint32_t SlantedLine::pixels(std::int64_t x, std::int64_t y, int first) const
{
    // A word's left half is the second one in memory.
    const auto* halves = reinterpret_cast<const int*>(m_bitmap.row(int(y >> 32)) + (x >> 38));
    const __m256i left = _mm256_set1_epi32(int(x >> 32 & 63));
    const __m256i fractionX = _mm256_set1_epi32(signedFraction(x));
    const __m256i fractionY = _mm256_set1_epi32(signedFraction(y));
    const __m256i rowLength = _mm256_set1_epi32(m_rowLength);
    const __m256i one = _mm256_set1_epi32(1);
    std::uint32_t result = 0;
    for (int i = first; i < first + 32; i += 8) {
        const __m256i moreX = _mm256_cmpgt_epi32(fractionX, load(&m_fractionX[std::size_t(i)]));
        const __m256i moreY = _mm256_cmpgt_epi32(fractionY, load(&m_fractionY[std::size_t(i)]));
        const __m256i column = _mm256_sub_epi32(_mm256_add_epi32(left, load(&m_wholeX[std::size_t(i)])), moreX);
        const __m256i row = _mm256_add_epi32(load(&m_wholeY[std::size_t(i)]), _mm256_and_si256(moreY, rowLength));
        const __m256i place = _mm256_add_epi32(row, _mm256_xor_si256(_mm256_srai_epi32(column, 5), one));
        const __m256i found = _mm256_i32gather_epi32(halves, place, 4);
        // Shifts count by the lowest five bits where they are left out of the higher ones.
        const __m256i pixel = _mm256_sllv_epi32(found, _mm256_and_si256(column, _mm256_set1_epi32(31)));
        result = result << 8 | std::uint32_t(_mm256_movemask_ps(_mm256_castsi256_ps(pixel)));
    }
    return result;
}

} // namespace imaging
