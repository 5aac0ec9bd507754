// Source pixels are weighed first across, then down, 32 target pixels at a time:
//
//   across    The bits of a source row that a target pixel covers are the index into a table of sixteen bytes, which
//             holds what that ink weighs. All indices of a byte are taken out by shifts:
//
//               pixels     abcdefgh ijkl
//               halves     abc cde efg ghi         first, whole, last
//               fourths    abcd+e efgh+i           first and three wholes + last
//
//   down      These bytes are multiplied by the weight of their row and added up in sixteen bits.

#include "imaging/byte_reduction.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <span>

#include "imaging/bits.h"
#include "imaging/wide_words.h"

namespace imaging {

namespace {

// What the columns of a target pixel weigh together, and its rows. The columns have to fit in a byte, and both with one
// more for rounding, multiplied, in fifteen bits.
constexpr int mostOfColumns = 251;
constexpr int mostOfRows = 129;
static_assert(mostOfColumns < 255 && (mostOfColumns + 1) * (mostOfRows + 1) < 1 << 15);

// By so much the weights of a block's columns may differ.
constexpr float blockSpan = 2;

template <int Factor> using Rows = std::array<const std::uint64_t*, Factor + 1>;

// A byte for each target pixel of a block: in number k those that are the k-th of their source byte.
template <int Factor> struct Lanes
{
    __m256i of[8 / Factor];
};

// Sums in sixteen bits for the lanes of the first eight and of the second eight of each sixteen bytes.
struct Sums
{
    __m256i first;
    __m256i second;
};

HALVORAN_AVX2_INLINE Sums operator+(Sums a, Sums b)
{
    return {_mm256_add_epi16(a.first, b.first), _mm256_add_epi16(a.second, b.second)};
}

HALVORAN_AVX2_INLINE Sums weighed(__m256i a, __m256i b, __m256i weights)
{
    return {_mm256_maddubs_epi16(_mm256_unpacklo_epi8(a, b), weights),
            _mm256_maddubs_epi16(_mm256_unpackhi_epi8(a, b), weights)};
}

HALVORAN_AVX2_INLINE __m256i above(Sums sums, __m256i limit)
{
    return _mm256_packs_epi16(_mm256_cmpgt_epi16(sums.first, limit), _mm256_cmpgt_epi16(sums.second, limit));
}

HALVORAN_AVX2_INLINE __m256i bothHalves(const std::array<std::uint8_t, 16>& table)
{
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(table.data())));
}

// What a block needs of any of its rows.
struct Across
{
    WidePlace here;
    WidePlace beyond; // Factor pixels further on
    __m256i table;
    __m256i lastTable;
};

template <int Factor> HALVORAN_AVX2_INLINE Lanes<Factor> weighAcross(const std::uint64_t* row, const Across& across)
{
    const __m256i low = _mm256_set1_epi8(15);
    const __m256i here = widePixels(row, across.here);
    const __m256i beyond = widePixels(row, across.beyond);
    const __m256i a = _mm256_and_si256(_mm256_srli_epi16(here, 4), low);
    const __m256i b = _mm256_and_si256(_mm256_srli_epi16(beyond, 4), low);
    const __m256i c = _mm256_and_si256(here, low);
    const __m256i d = _mm256_and_si256(beyond, low);
    if constexpr (Factor == 2) {
        return {_mm256_shuffle_epi8(across.table, a), _mm256_shuffle_epi8(across.table, b),
                _mm256_shuffle_epi8(across.table, c), _mm256_shuffle_epi8(across.table, d)};
    } else {
        return {_mm256_add_epi8(_mm256_shuffle_epi8(across.table, a), _mm256_shuffle_epi8(across.lastTable, b)),
                _mm256_add_epi8(_mm256_shuffle_epi8(across.table, c), _mm256_shuffle_epi8(across.lastTable, d))};
    }
}

// One bit of each lane, in the order of the target pixels. In memory the left one of two bytes of a word comes last,
// but the left one of two words first.
HALVORAN_AVX2_INLINE std::array<std::uint64_t, 2> packed(const Lanes<2>& lanes)
{
    const __m256i fours = _mm256_or_si256(_mm256_or_si256(_mm256_and_si256(lanes.of[0], _mm256_set1_epi8(8)),
                                                          _mm256_and_si256(lanes.of[1], _mm256_set1_epi8(4))),
                                          _mm256_or_si256(_mm256_and_si256(lanes.of[2], _mm256_set1_epi8(2)),
                                                          _mm256_and_si256(lanes.of[3], _mm256_set1_epi8(1))));
    const __m256i eights = _mm256_maddubs_epi16(fours, _mm256_set1_epi16(0x1001));
    const __m256i bytes = _mm256_packus_epi16(eights, eights);
    return {std::rotl(std::uint64_t(_mm256_extract_epi64(bytes, 0)), 32),
            std::rotl(std::uint64_t(_mm256_extract_epi64(bytes, 2)), 32)};
}

HALVORAN_AVX2_INLINE std::array<std::uint64_t, 1> packed(const Lanes<4>& lanes)
{
    const __m256i twos = _mm256_or_si256(_mm256_and_si256(lanes.of[0], _mm256_set1_epi8(2)),
                                         _mm256_and_si256(lanes.of[1], _mm256_set1_epi8(1)));
    const __m256i fours = _mm256_maddubs_epi16(twos, _mm256_set1_epi16(0x0401));
    const __m256i eights = _mm256_madd_epi16(fours, _mm256_set1_epi32(0x00100001));
    const __m256i halves = _mm256_packs_epi32(eights, eights);
    const __m256i bytes = _mm256_packus_epi16(halves, halves);
    const std::uint32_t left = std::rotl(std::uint32_t(_mm256_extract_epi32(bytes, 0)), 16);
    const std::uint32_t right = std::rotl(std::uint32_t(_mm256_extract_epi32(bytes, 4)), 16);
    return {std::uint64_t(left) << 32 | right};
}

template <int Factor>
HALVORAN_AVX2_INLINE void set(std::uint64_t* row, const typename ByteReduction<Factor>::Block& block,
                              const Lanes<Factor>& lanes)
{
    const auto words = packed(lanes);
    for (std::size_t i = 0; i < words.size(); ++i)
        row[std::size_t(block.target) + i] |= words[i] & block.mask[i];
}

template <int Factor> HALVORAN_AVX2_INLINE bool isBlank(const Rows<Factor>& rows, std::ptrdiff_t word)
{
    __m256i ink = _mm256_setzero_si256();
    std::uint64_t behind = 0;
    for (const std::uint64_t* row : rows) {
        ink = _mm256_or_si256(ink, loadWords(row + word));
        behind |= row[word + wideWords];
    }
    return behind == 0 && _mm256_testz_si256(ink, ink);
}

// Sets the pixels of a block that begins at x in the words of the rows.
template <int Factor>
HALVORAN_AVX2_INLINE void weighBlock(const Rows<Factor>& rows, std::ptrdiff_t x,
                                     const typename ByteReduction<Factor>::Block& block,
                                     const typename ByteReduction<Factor>::RowWeights& weights, bool decidesAll,
                                     std::uint64_t* inkRow, std::uint64_t* openRow)
{
    constexpr std::size_t count = 8 / Factor;
    const Across across{widePlace(x), widePlace(x + Factor), bothHalves(block.table), bothHalves(block.lastTable)};
    const __m256i none = _mm256_setzero_si256();
    const __m256i ends = _mm256_set1_epi16(short(weights.ends.last << 8 | weights.ends.first));
    const __m256i wholes = _mm256_set1_epi8(char(weights.whole));
    Sums sums[count];
    const Lanes<Factor> first = weighAcross<Factor>(rows[0], across);
    const Lanes<Factor> last = weighAcross<Factor>(rows[Factor], across);
    for (std::size_t k = 0; k < count; ++k)
        sums[k] = weighed(first.of[k], last.of[k], ends);
    if constexpr (Factor == 4) {
        const Lanes<Factor> second = weighAcross<Factor>(rows[1], across);
        const Lanes<Factor> third = weighAcross<Factor>(rows[2], across);
        for (std::size_t k = 0; k < count; ++k)
            sums[k] = sums[k] + weighed(second.of[k], third.of[k], wholes);
    }
    const Lanes<Factor> single = weighAcross<Factor>(rows[Factor - 1], across);
    for (std::size_t k = 0; k < count; ++k)
        sums[k] = sums[k] + weighed(single.of[k], none, wholes);

    const int half = (weights.sum * block.sum + 1) / 2;
    // Both errors together, that of their product, and rounding: less than five more.
    const int error = decidesAll ? 0 : int(float(weights.sum) * block.error + float(block.sum) * weights.error) + 5;
    const __m256i paper = _mm256_set1_epi16(short(half - 1 - error));
    const __m256i notInk = _mm256_set1_epi16(short(half - 1 + error));
    Lanes<Factor> ink;
    Lanes<Factor> open;
    __m256i anyOpen = none;
    for (std::size_t k = 0; k < count; ++k) {
        ink.of[k] = above(sums[k], notInk);
        open.of[k] = decidesAll ? none : _mm256_xor_si256(ink.of[k], above(sums[k], paper));
        anyOpen = _mm256_or_si256(anyOpen, open.of[k]);
    }
    set<Factor>(inkRow, block, ink);
    if (!_mm256_testz_si256(anyOpen, anyOpen))
        set<Factor>(openRow, block, open);
}

template <int Factor>
HALVORAN_AVX2 void weighRow(const Rows<Factor>& rows, std::ptrdiff_t words,
                            std::span<const typename ByteReduction<Factor>::Block> blocks,
                            const typename ByteReduction<Factor>::RowWeights& weights, bool decidesAll,
                            std::uint64_t* inkRow, std::uint64_t* openRow)
{
    for (const auto& block : blocks) {
        const std::ptrdiff_t word = block.source >> 6;
        if (isAtEdge(word, words)) {
            const RowsAtEdge<Factor + 1> atEdge(rows, words, block.source);
            weighBlock<Factor>(atEdge.rows(), 0, block, weights, decidesAll, inkRow, openRow);
        } else if (!isBlank<Factor>(rows, word)) {
            weighBlock<Factor>(rows, block.source, block, weights, decidesAll, inkRow, openRow);
        }
    }
}

} // namespace

template <int Factor>
ByteReduction<Factor>::ByteReduction(const Bitmap& source, const RoundedAxis& columns, const RoundedAxis& rows)
    : m_source(source), m_columns(columns), m_rows(rows), m_columnWeights(columns, mostOfColumns),
      m_rowWeights(rows, mostOfRows), m_alwaysOpen(std::size_t(columns.target() / targetPixels + 1) * targetWords)
{
    for (int t = 0; t < columns.target();)
        t = addBlock(t);
}

// Makes a block of target columns from t on that have weights in common; the first one that is left.
template <int Factor> int ByteReduction<Factor>::addBlock(int t)
{
    int end = endOfRun(t);
    std::optional<ByteWeights::Ends> ends;
    if (end > t && m_columns.excess() != 0 && m_rows.excess() == 0) {
        ends = m_columnWeights.alike(m_columns.endsOf(t));
        const int limit = end;
        for (end = t + 1; ends && end < limit && m_columnWeights.areAlike(m_columns.endsOf(end), *ends);)
            ++end;
    } else if (end > t) {
        ends = m_columnWeights.nearest(m_columns.endsOf((t + end - 1) / 2));
    }
    if (ends) {
        m_blocks.push_back(blockOf(t, end, *ends));
        return end;
    }
    m_alwaysOpen[std::size_t(t / 64)] |= firstBit >> (t & 63);
    return t + 1;
}

// Up to where target columns from t on are regular, lie over the source in the same way and weigh about the same.
template <int Factor> int ByteReduction<Factor>::endOfRun(int t) const
{
    const int limit = std::min(m_columns.target(), (t / targetPixels + 1) * targetPixels);
    const int beyond = m_columns.firstSource(t) - Factor * t;
    const std::int64_t first = m_columns.endsOf(t).first;
    const auto span = std::int64_t(blockSpan / float(m_columnWeights.whole()) * float(m_columns.whole()));
    int end = t;
    while (end < limit && m_columns.isRegular(m_columns.endsOf(end)) &&
           m_columns.firstSource(end) - Factor * end == beyond &&
           (oneIsWhole() || std::abs(m_columns.endsOf(end).first - first) <= span))
        ++end;
    return end;
}

template <int Factor>
typename ByteReduction<Factor>::Block ByteReduction<Factor>::blockOf(int t, int end, ByteWeights::Ends ends) const
{
    Block block{};
    block.target = t / targetPixels * targetWords;
    block.source = block.target * 64 * Factor + m_columns.firstSource(t) - Factor * t;
    block.sum = m_columnWeights.sum(ends);
    for (int column = t; column < end; ++column) {
        block.mask[std::size_t(column / 64 - block.target)] |= firstBit >> (column & 63);
        block.error = std::max(block.error, m_columnWeights.error(m_columns.endsOf(column), ends));
    }
    for (unsigned i = 0; i < 16; ++i) {
        const int first = i & 8 ? ends.first : 0;
        if constexpr (Factor == 2) {
            block.table[i] = std::uint8_t(first + (i & 4 ? m_columnWeights.whole() : 0) + (i & 2 ? ends.last : 0));
        } else {
            block.table[i] = std::uint8_t(first + std::popcount(i & 7) * m_columnWeights.whole());
            block.lastTable[i] = std::uint8_t(i & 8 ? ends.last : 0);
        }
    }
    return block;
}

template <int Factor>
std::optional<typename ByteReduction<Factor>::RowWeights> ByteReduction<Factor>::rowWeights(int y) const
{
    const RoundedAxis::Ends exact = m_rows.endsOf(y);
    if (!m_rows.isRegular(exact))
        return std::nullopt;
    const bool mustBeAlike = m_rows.excess() != 0 && m_columns.excess() == 0;
    const auto ends = mustBeAlike ? m_rowWeights.alike(exact) : m_rowWeights.nearest(exact);
    if (!ends)
        return std::nullopt;
    return RowWeights{*ends, m_rowWeights.whole(), m_rowWeights.sum(*ends), m_rowWeights.error(exact, *ends)};
}

template <int Factor> void ByteReduction<Factor>::weigh(int y, std::uint64_t* ink, std::uint64_t* open) const
{
    std::fill_n(ink, wordsOfRow(), 0);
    const std::optional<RowWeights> weights = rowWeights(y);
    if (!weights) {
        std::fill_n(open, wordsOfRow(), allBits);
        return;
    }
    std::copy(m_alwaysOpen.begin(), m_alwaysOpen.end(), open);
    const int first = m_rows.firstSource(y);
    Rows<Factor> rows;
    for (int i = 0; i <= Factor; ++i)
        rows[std::size_t(i)] = m_source.row(std::min(first + i, m_source.height() - 1));
    weighRow<Factor>(rows, m_source.wordsPerRow(), m_blocks, *weights, oneIsWhole(), ink, open);
}

template class ByteReduction<2>;
template class ByteReduction<4>;

} // namespace imaging
