#include "imaging/running_sums.h"

#include <immintrin.h>
#include <utility>

#include "imaging/bits.h"

namespace imaging {

namespace {

template <class Number> std::uint64_t oneByOne(Number* numbers, Number& sum, Number threshold)
{
    std::uint64_t word = 0;
    for (int i = 0; i < 64; ++i) {
        sum += std::exchange(numbers[i], 0);
        word = word << 1 | std::uint64_t(sum >= threshold);
    }
    return word;
}

// Sums of one, two, four and at last eight numbers, in each place those that end there:
//
//   a    b    c    d     e    f    g    h
//   a    ab   bc   cd    e    ef   fg   gh      each plus its neighbour
//   a    ab   abc  abcd  e    ef   efg  efgh    plus the second next, in either half
//   a    ab   abc  abcd  a-e  a-f  a-g  a-h     plus the left half's last
__attribute__((target("avx2"))) std::uint64_t byEights(std::int32_t* numbers, std::int32_t& sum, std::int32_t threshold)
{
    __m256i before = _mm256_set1_epi32(sum);
    const __m256i below = _mm256_set1_epi32(threshold - 1);
    const __m256i last = _mm256_set1_epi32(7);
    std::uint64_t reached = 0;
    for (int i = 0; i < 64; i += 8) {
        __m256i* const place = reinterpret_cast<__m256i*>(numbers + i);
        __m256i sums = _mm256_loadu_si256(place);
        _mm256_storeu_si256(place, _mm256_setzero_si256());
        sums = _mm256_add_epi32(sums, _mm256_slli_si256(sums, 4));
        sums = _mm256_add_epi32(sums, _mm256_slli_si256(sums, 8));
        const __m256i leftHalf = _mm256_permute2x128_si256(sums, sums, 0x08); // on the right, nothing on the left
        sums = _mm256_add_epi32(sums, _mm256_shuffle_epi32(leftHalf, 0xff));
        const __m256i here = _mm256_cmpgt_epi32(_mm256_add_epi32(sums, before), below);
        before = _mm256_add_epi32(before, _mm256_permutevar8x32_epi32(sums, last));
        reached |= std::uint64_t(std::uint32_t(_mm256_movemask_ps(_mm256_castsi256_ps(here)))) << i;
    }
    sum = _mm_cvtsi128_si32(_mm256_castsi256_si128(before));
    return reverseBits(reached);
}

} // namespace

std::uint64_t whereReached(std::int64_t* numbers, std::int64_t& sum, std::int64_t threshold)
{
    return oneByOne(numbers, sum, threshold);
}

std::uint64_t whereReached(std::int32_t* numbers, std::int32_t& sum, std::int32_t threshold)
{
    static const bool wide = __builtin_cpu_supports("avx2");
    return wide ? byEights(numbers, sum, threshold) : oneByOne(numbers, sum, threshold);
}

} // namespace imaging
