// Of each line it matters alone whether any and whether both of its pixels are ink, and that is found for 128 target
// pixels at once:
//
//   first     . .
//   middle    # .    any
//   last      # #    any, both
//
// Which lines make ink together, the true weights decide beforehand: for a target row or column it is a Rule.

#include "imaging/half_by_words.h"

#include <algorithm>
#include <array>
#include <bit>

#include "imaging/bits.h"
#include "imaging/parallel.h"
#include "imaging/wide_words.h"

namespace imaging {

namespace {

// By the number of ink pixels in each line.
bool isInk(HalfByWords::Rule rule, int first, int middle, int last)
{
    const bool outerBoth = first == 2 && last == 2;
    switch (middle) {
    case 0:
        return outerBoth && rule.outer;
    case 1:
        return (first > 0 && last > 0) || (first == 2 && rule.firstMiddle) || (last == 2 && rule.lastMiddle);
    default:
        return first > 0 || last > 0 || rule.middle;
    }
}

// Nothing for ends that go by no rule, as irregular ones do.
std::optional<HalfByWords::Rule> ruleOf(const RoundedAxis& axis, RoundedAxis::Ends ends)
{
    const auto reachesHalf = [&](int first, int middle, int last) {
        return first * ends.first + middle * axis.whole() + last * ends.last >= axis.targetPixel();
    };
    const HalfByWords::Rule rule{reachesHalf(0, 2, 0), reachesHalf(2, 0, 2), reachesHalf(2, 1, 0),
                                 reachesHalf(0, 1, 2)};
    bool same = axis.isRegular(ends);
    for (int first = 0; first <= 2; ++first) {
        for (int middle = 0; middle <= 2; ++middle) {
            for (int last = 0; last <= 2; ++last)
                same = same && isInk(rule, first, middle, last) == reachesHalf(first, middle, last);
        }
    }
    return same ? std::optional(rule) : std::nullopt;
}

// Whether any and both pixels of a line are ink, in the bit of the target pixel's first source column.
struct Line
{
    __m256i any;
    __m256i both;
};

HALVORAN_AVX2_INLINE Line lineOf(__m256i pixels, __m256i others)
{
    return {_mm256_or_si256(pixels, others), _mm256_and_si256(pixels, others)};
}

struct WideRule
{
    __m256i middle;
    __m256i outer;
    __m256i firstMiddle;
    __m256i lastMiddle;
};

HALVORAN_AVX2_INLINE __m256i everywhere(bool set)
{
    return _mm256_set1_epi64x(set ? -1 : 0);
}

// The same as isInk(), for two words of target pixels.
HALVORAN_AVX2_INLINE __m256i inkOf(const Line& first, const Line& middle, const Line& last, const WideRule& rule)
{
    const __m256i anyOuter = _mm256_or_si256(first.any, last.any);
    const __m256i ofBoth = _mm256_and_si256(middle.both, _mm256_or_si256(anyOuter, rule.middle));
    const __m256i ofOne = _mm256_or_si256(
        _mm256_and_si256(first.any, last.any),
        _mm256_or_si256(_mm256_and_si256(first.both, rule.firstMiddle), _mm256_and_si256(last.both, rule.lastMiddle)));
    const __m256i ofNone = _mm256_and_si256(_mm256_and_si256(first.both, last.both), rule.outer);
    return _mm256_or_si256(_mm256_or_si256(ofBoth, ofNone), _mm256_and_si256(middle.any, ofOne));
}

// The first pixels of all pairs, brought together:
//
//   a.b.c.d.   abb.cdd.   ab..cd..   abbbcd..   abcd....      and then the halves of sixteen pixels
HALVORAN_AVX2_INLINE void storeFirsts(__m256i pixels, std::uint64_t* target)
{
    pixels = _mm256_and_si256(pixels, _mm256_set1_epi8(char(0xaa)));
    pixels = _mm256_or_si256(pixels, _mm256_slli_epi16(pixels, 1));
    pixels = _mm256_and_si256(pixels, _mm256_set1_epi8(char(0xcc)));
    pixels = _mm256_or_si256(pixels, _mm256_slli_epi16(pixels, 2));
    pixels = _mm256_and_si256(pixels, _mm256_set1_epi8(char(0xf0)));
    const __m256i eights = _mm256_srli_epi16(_mm256_maddubs_epi16(pixels, _mm256_set1_epi16(0x1001)), 4);
    const __m256i bytes = _mm256_packus_epi16(eights, eights);
    target[0] = std::rotl(std::uint64_t(_mm256_extract_epi64(bytes, 0)), 32);
    target[1] = std::rotl(std::uint64_t(_mm256_extract_epi64(bytes, 2)), 32);
}

HALVORAN_AVX2_INLINE Line lineAcross(const std::uint64_t* row)
{
    const __m256i pixels = loadWords(row);
    return lineOf(pixels, _mm256_slli_epi64(pixels, 1));
}

// Lines are rows.
HALVORAN_AVX2 void halveRows(const std::array<const std::uint64_t*, 3>& rows, std::ptrdiff_t words,
                             HalfByWords::Rule rule, std::uint64_t* target)
{
    const WideRule wideRule{everywhere(rule.middle), everywhere(rule.outer), everywhere(rule.firstMiddle),
                            everywhere(rule.lastMiddle)};
    std::ptrdiff_t i = 0;
    for (; !isAtEdge(i, words); i += wideWords) {
        storeFirsts(inkOf(lineAcross(rows[0] + i), lineAcross(rows[1] + i), lineAcross(rows[2] + i), wideRule),
                    target + i / 2);
    }
    for (; i < words; i += wideWords) {
        const RowsAtEdge<3> atEdge(rows, words, i * 64);
        storeFirsts(
            inkOf(lineAcross(atEdge.rows()[0]), lineAcross(atEdge.rows()[1]), lineAcross(atEdge.rows()[2]), wideRule),
            target + i / 2);
    }
}

HALVORAN_AVX2_INLINE __m256i inkOf(const Line& first, const Line& second)
{
    return _mm256_or_si256(_mm256_and_si256(first.any, second.any), _mm256_or_si256(first.both, second.both));
}

HALVORAN_AVX2 void halveEvenRows(const std::array<const std::uint64_t*, 2>& rows, std::ptrdiff_t words,
                                 std::uint64_t* target)
{
    std::ptrdiff_t i = 0;
    for (; !isAtEdge(i, words); i += wideWords)
        storeFirsts(inkOf(lineAcross(rows[0] + i), lineAcross(rows[1] + i)), target + i / 2);
    for (; i < words; i += wideWords) {
        const RowsAtEdge<2> atEdge(rows, words, i * 64);
        storeFirsts(inkOf(lineAcross(atEdge.rows()[0]), lineAcross(atEdge.rows()[1])), target + i / 2);
    }
}

HALVORAN_AVX2_INLINE Line lineDown(const std::array<const std::uint64_t*, 2>& rows, std::ptrdiff_t x)
{
    const WidePlace place = widePlace(x);
    return lineOf(widePixels(rows[0], place), widePixels(rows[1], place));
}

// Lines are columns, the first ones of which begin at `beyond`.
HALVORAN_AVX2 void halveColumns(const std::array<const std::uint64_t*, 2>& rows, std::ptrdiff_t words, int beyond,
                                HalfByWords::Rule always, const std::uint64_t* firstMiddle,
                                const std::uint64_t* lastMiddle, std::uint64_t* target)
{
    for (std::ptrdiff_t i = 0; i < words; i += wideWords) {
        const WideRule rule{everywhere(always.middle), everywhere(always.outer), loadWords(firstMiddle + i),
                            loadWords(lastMiddle + i)};
        const std::ptrdiff_t x = i * 64 + beyond;
        if (isAtEdge(x >> 6, words)) {
            const RowsAtEdge<2> atEdge(rows, words, x);
            storeFirsts(inkOf(lineDown(atEdge.rows(), 0), lineDown(atEdge.rows(), 1), lineDown(atEdge.rows(), 2), rule),
                        target + i / 2);
        } else {
            storeFirsts(inkOf(lineDown(rows, x), lineDown(rows, x + 1), lineDown(rows, x + 2), rule), target + i / 2);
        }
    }
}

// Of a row that is written by twos of words, four source words at a time.
std::size_t wordsOfHalf(const Bitmap& source)
{
    return std::size_t(source.wordsPerRow() + wideWords - 1) / wideWords * 2;
}

} // namespace

bool halvesEvenSides(Size source, Size target)
{
    static const bool wide = __builtin_cpu_supports("avx2");
    return wide && source.width == 2 * std::int64_t(target.width) && source.height == 2 * std::int64_t(target.height);
}

void halveEvenSides(const Bitmap& source, Bitmap& target)
{
    inParallel(target.height(), rowsWorthACore(source.wordsPerRow() * 2), [&](int begin, int end) {
        std::vector<std::uint64_t> row(wordsOfHalf(source));
        for (int y = begin; y < end; ++y) {
            halveEvenRows({source.row(2 * y), source.row(2 * y + 1)}, source.wordsPerRow(), row.data());
            std::copy_n(row.data(), target.wordsPerRow(), target.row(y));
        }
    });
}

bool HalfByWords::suits(const RoundedAxis& columns, const RoundedAxis& rows)
{
    return (columns.excess() == 0) != (rows.excess() == 0);
}

HalfByWords::HalfByWords(const Bitmap& source, const RoundedAxis& columns, const RoundedAxis& rows)
    : m_source(source), m_columns(columns), m_rows(rows)
{
    m_alwaysOpen.resize(wordsOfHalf(source));
    if (columns.excess() == 0)
        return;
    m_firstMiddle.resize(2 * wordsOfHalf(source));
    m_lastMiddle.resize(2 * wordsOfHalf(source));
    // The same for all columns; only column 0 may differ, and goes by no rule then.
    m_beyond = columns.firstSource(columns.target() - 1) - 2 * (columns.target() - 1);
    for (int t = 0; t < columns.target(); ++t) {
        const std::optional<Rule> rule = ruleOf(columns, columns.endsOf(t));
        if (!rule) {
            m_alwaysOpen[std::size_t(t / 64)] |= firstBit >> (t & 63);
            continue;
        }
        m_middle = rule->middle;
        m_outer = rule->outer;
        m_firstMiddle[std::size_t(t / 32)] |= rule->firstMiddle ? firstBit >> (2 * t & 63) : 0;
        m_lastMiddle[std::size_t(t / 32)] |= rule->lastMiddle ? firstBit >> (2 * t & 63) : 0;
    }
}

void HalfByWords::weigh(int y, std::uint64_t* ink, std::uint64_t* open) const
{
    if (m_columns.excess() == 0) {
        weighRows(y, ink, open);
        return;
    }
    std::copy(m_alwaysOpen.begin(), m_alwaysOpen.end(), open);
    halveColumns({m_source.row(2 * y), m_source.row(2 * y + 1)}, m_source.wordsPerRow(), m_beyond,
                 {m_middle, m_outer, false, false}, m_firstMiddle.data(), m_lastMiddle.data(), ink);
}

void HalfByWords::weighRows(int y, std::uint64_t* ink, std::uint64_t* open) const
{
    const std::optional<Rule> rule = ruleOf(m_rows, m_rows.endsOf(y));
    std::fill_n(open, wordsOfRow(), rule ? 0 : allBits);
    if (!rule) {
        std::fill_n(ink, wordsOfRow(), 0);
        return;
    }
    const int first = m_rows.firstSource(y);
    const int last = std::min(first + 2, m_source.height() - 1);
    halveRows({m_source.row(first), m_source.row(first + 1), m_source.row(last)}, m_source.wordsPerRow(), *rule, ink);
}

} // namespace imaging
