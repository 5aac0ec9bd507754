#include "imaging/turned_sheet.h"

#include <array>
#include <cmath>

#include "imaging/bits.h"

#ifdef __x86_64__
#include <immintrin.h>
#endif

namespace imaging {

namespace {

constexpr int placeBits = 40;
constexpr int stepBits = 32;

std::int64_t fixed(double value, int bits)
{
    return std::int64_t(std::floor(std::ldexp(value, bits) + 0.5));
}

#ifdef __x86_64__
__m128i sixteen(const std::uint8_t* bytes)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

__attribute__((target("avx2"))) __m256i both(const std::uint8_t* first, const std::uint8_t* second)
{
    return _mm256_inserti128_si256(_mm256_castsi128_si256(sixteen(first)), sixteen(second), 1);
}

__attribute__((target("avx2"))) __m256i bothGroups(const StepPatterns::Pattern& pattern, std::size_t group)
{
    return _mm256_loadu_si256(
        reinterpret_cast<const __m256i*>(pattern.beyond.data() + group * StepPatterns::groupSize));
}

// Sixteen bytes of each of the numbers that a column may lie beyond its strip's first.
constexpr auto sameNumbers = [] {
    std::array<std::array<std::uint8_t, 16>, 8> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i].fill(std::uint8_t(i));
    return numbers;
}();

// Two groups of sixteen pixels, of each of which three strips are at hand from `first` or `second` on. Each pixel is
// given by its column from its group's first strip on, up to 23, and by its row. The first becomes the least
// significant bit.
//
//            a        b        c        pixel   column   row   bytes    bit
//   row 0    ..1..... ........ ........     1        2     0   a0 b0 c0   2 of a0
//   row 1    ........ .2...... ........     2        9     1   a1 b1 c1   1 of b1
inline __attribute__((target("avx2"), always_inline)) std::uint32_t
pixelsOf(const std::uint8_t* first, const std::uint8_t* second, std::ptrdiff_t length, __m256i columns, __m256i rows)
{
    const __m256i bits = _mm256_setr_epi64x(0x0102040810204080, 0, 0x0102040810204080, 0);
    const __m256i shiftedBits = _mm256_setr_epi64x(0, 0x0102040810204080, 0, 0x0102040810204080);
    // What is beyond sixteen, or below zero, has its highest bit set, for which a look into a table gives nothing.
    const __m256i inTwo = _mm256_adds_epu8(columns, _mm256_set1_epi8(0x70));
    const __m256i inThird = _mm256_sub_epi8(columns, _mm256_set1_epi8(16));
    const __m256i a = _mm256_shuffle_epi8(both(first, second), rows);
    const __m256i b = _mm256_shuffle_epi8(both(first + length, second + length), rows);
    const __m256i c = _mm256_shuffle_epi8(both(first + 2 * length, second + 2 * length), rows);
    const __m256i found = _mm256_or_si256(_mm256_or_si256(_mm256_and_si256(a, _mm256_shuffle_epi8(bits, inTwo)),
                                                          _mm256_and_si256(b, _mm256_shuffle_epi8(shiftedBits, inTwo))),
                                          _mm256_and_si256(c, _mm256_shuffle_epi8(bits, inThird)));
    return ~std::uint32_t(_mm256_movemask_epi8(_mm256_cmpeq_epi8(found, _mm256_setzero_si256())));
}

inline __attribute__((target("avx2"), always_inline)) std::uint32_t
pixelsOf(const Strips& strips, const StepPatterns::Pattern& columns, const StepPatterns::Pattern& rows,
         std::size_t group, std::int64_t x, std::int64_t y)
{
    const std::int64_t first = x + columns.least[group];
    const std::int64_t second = x + columns.least[group + 1];
    const __m256i firstColumns =
        both(sameNumbers[std::size_t(first & 7)].data(), sameNumbers[std::size_t(second & 7)].data());
    return pixelsOf(strips.at(first, y + rows.least[group]), strips.at(second, y + rows.least[group + 1]),
                    strips.length(), _mm256_add_epi8(firstColumns, bothGroups(columns, group)),
                    bothGroups(rows, group));
}
#endif

} // namespace

InverseTurn::InverseTurn(double radians, Point about)
    : cosine(std::cos(radians)), sine(std::sin(radians)), pivotX(about.x), pivotY(about.y)
{}

TurnedSheet::TurnedSheet(const Strips& strips, const InverseTurn& turn)
    : m_strips(strips), m_ink(strips, turn.sine < 0), m_turn(turn), m_stepX(fixed(turn.cosine, stepBits)),
      m_stepY(fixed(-turn.sine, stepBits)), m_wordX(fixed(64 * turn.cosine, placeBits)),
      m_wordY(fixed(-64 * turn.sine, placeBits)), m_columns(m_stepX), m_rows(m_stepY),
      m_byGroups(__builtin_cpu_supports("avx2"))
{}

TurnedSheet::Place TurnedSheet::placeOf(int x, int y) const
{
    // The half makes the cut to an integer the nearest pixel.
    return {fixed(m_turn.sourceX(x, y) - m_strips.origin().x + 0.5, placeBits),
            fixed(m_turn.sourceY(x, y) - m_strips.origin().y + 0.5, placeBits)};
}

void TurnedSheet::words(std::span<const Place> places, std::uint64_t* words) const
{
#ifdef __x86_64__
    if (m_byGroups) {
        wordsByGroups(places, words);
        return;
    }
#endif
    for (const Place place : places)
        *words++ = plainWord(place, allBits);
}

#ifdef __x86_64__
__attribute__((target("avx2"))) void TurnedSheet::wordsByGroups(std::span<const Place> places,
                                                                std::uint64_t* words) const
{
    for (const Place place : places) {
        const std::int64_t x = place.x >> placeBits;
        const std::int64_t y = place.y >> placeBits;
        std::uint64_t word = 0;
        if (m_ink.mayHoldInk(x, y)) {
            const StepPatterns::Pattern& columns = m_columns.from(std::uint32_t(place.x >> (placeBits - stepBits)));
            const StepPatterns::Pattern& rows = m_rows.from(std::uint32_t(place.y >> (placeBits - stepBits)));
            word = pixelsOf(m_strips, columns, rows, 0, x, y) |
                   std::uint64_t(pixelsOf(m_strips, columns, rows, 2, x, y)) << 32;
        }
        *words++ = word;
    }
}
#endif

std::uint64_t TurnedSheet::plainWord(Place place, std::uint64_t mask) const
{
    if (mask == 0)
        return 0;
    const int begin = std::countl_zero(mask);
    const int end = 64 - std::countr_zero(mask);
    std::int64_t x = (place.x >> (placeBits - stepBits)) + begin * m_stepX;
    std::int64_t y = (place.y >> (placeBits - stepBits)) + begin * m_stepY;
    std::uint64_t word = 0;
    for (int i = begin; i < end; ++i) {
        const std::uint8_t pixels = *m_strips.at(x >> stepBits, y >> stepBits);
        word = word << 1 | (pixels >> (~(x >> stepBits) & 7) & 1);
        x += m_stepX;
        y += m_stepY;
    }
    return word << (64 - end);
}

} // namespace imaging
