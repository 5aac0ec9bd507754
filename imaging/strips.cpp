#include "imaging/strips.h"

#include <algorithm>
#include <memory>

#include "imaging/bits.h"
#include "imaging/fill.h"
#include "imaging/parallel.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace imaging {

namespace {

constexpr int margin = 8;      // rows above and below, and at least as many columns on the left
constexpr int rightMargin = 3; // strips: one for the pixels, two for what is read with them
constexpr int line = 64;       // bytes of the processor's cache
constexpr int beyond = 16;     // bytes that may be read behind the last strip

// Strips whose lengths are a power of two would all compete for the same lines of the cache.
std::ptrdiff_t lengthFor(int rows)
{
    const std::ptrdiff_t lines = (rows + 2 * margin + line - 1) / line;
    return (lines | 1) * line;
}

// A word of rows that follow each other becomes a column in each of eight strips.
void layColumns(const std::uint64_t* word, std::ptrdiff_t wordsPerRow, int rows, std::uint64_t mask,
                std::uint8_t* bytes, std::ptrdiff_t length)
{
    for (int y = 0; y < rows; ++y, word += wordsPerRow) {
        for (int strip = 0; strip < 8; ++strip)
            bytes[strip * length + y] = std::uint8_t((*word & mask) >> (56 - 8 * strip));
    }
}

#ifdef __SSE2__
// The same for sixteen whole words, by interleaving rows whose distance doubles at the same time as the units do:
//
//   row 0  a b c d      bytes of two rows    a e b f | c g d h      pairs of four   a e i m | b f j n ...
//   row 1  e f g h
void laySixteen(const std::uint64_t* word, std::ptrdiff_t wordsPerRow, std::uint8_t* bytes, std::ptrdiff_t length)
{
    __m128i pairs[8];
    for (int i = 0; i < 8; ++i, word += 2 * wordsPerRow) {
        const __m128i upper = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(word));
        const __m128i lower = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(word + wordsPerRow));
        pairs[i] = _mm_unpacklo_epi8(upper, lower);
    }
    // The lowest byte of a word is its rightmost strip.
    const auto store = [&](int strip, __m128i upper, __m128i lower) {
        std::uint8_t* const to = bytes + (7 - strip) * length;
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi64(upper, lower));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to - length), _mm_unpackhi_epi64(upper, lower));
    };
    __m128i left[4], right[4]; // four rows' left and right strips
    for (std::size_t i = 0; i < 4; ++i) {
        right[i] = _mm_unpacklo_epi16(pairs[2 * i], pairs[2 * i + 1]);
        left[i] = _mm_unpackhi_epi16(pairs[2 * i], pairs[2 * i + 1]);
    }
    store(0, _mm_unpacklo_epi32(right[0], right[1]), _mm_unpacklo_epi32(right[2], right[3]));
    store(2, _mm_unpackhi_epi32(right[0], right[1]), _mm_unpackhi_epi32(right[2], right[3]));
    store(4, _mm_unpacklo_epi32(left[0], left[1]), _mm_unpacklo_epi32(left[2], left[3]));
    store(6, _mm_unpackhi_epi32(left[0], left[1]), _mm_unpackhi_epi32(left[2], left[3]));
}
#endif

} // namespace

// The box's pixels are as many columns to the right of a strip's first as `shift` is, which is less than 64.
Strips::Strips(const Rect& box, int shift)
    : m_box(box), m_origin{box.left - shift - margin, box.top - margin},
      m_count(1 + 8 * std::ptrdiff_t((shift + box.width() + 63) / 64) + rightMargin), m_length(lengthFor(box.height())),
      m_memory(std::size_t(m_count * m_length + line + beyond) / 8)
{
    void* memory = m_memory.data();
    std::size_t space = std::size_t(m_count * m_length + line + beyond);
    m_bytes = static_cast<std::uint8_t*>(std::align(line, space - line, memory, space));
    clearMargins();
}

Strips::Strips(const Bitmap& bitmap, const Rect& part, Point at)
    : Strips({at.x, at.y, at.x + part.width(), at.y + part.height()}, part.left & 63)
{
    inBlocks([&](int begin, int end) {
        fillRows(bitmap, {part.left, part.top + begin, part.right, part.top + end}, begin);
    });
}

// No bitmap of the whole region is made, as the strips already take as much memory as one.
Strips::Strips(const Region& region) : Strips(region.box(), 0)
{
    inBlocks([&](int begin, int end) {
        const Rect rows{m_box.left, m_box.top + begin, m_box.right, m_box.top + end};
        Region part = intersect(region, Region(rows));
        part.offset(-rows.left, -rows.top);
        Bitmap block(rows.size());
        imaging::fill(block, part, true);
        fillRows(block, block.bounds(), begin);
    });
}

// Calls fill(begin, end) for blocks of the box's rows whose bytes of a strip fill a line, several at a time.
void Strips::inBlocks(const std::function<void(int begin, int end)>& fill)
{
    const int height = m_box.height();
    const int blocks = (height + margin + line - 1) / line;
    inParallel(blocks, rowsWorthACore(m_count / 8 * line), [&](int first, int last) {
        for (int i = first; i < last; ++i)
            fill(std::max(i * line - margin, 0), std::min((i + 1) * line - margin, height));
    });
}

void Strips::clearMargins()
{
    for (std::ptrdiff_t strip = 0; strip < m_count; ++strip) {
        const bool beside = strip == 0 || strip >= m_count - rightMargin;
        std::uint8_t* const bytes = m_bytes + strip * m_length;
        std::fill_n(bytes, margin, 0);
        std::fill(bytes + margin + (beside ? 0 : m_box.height()), bytes + m_length, 0);
    }
}

// `row` is where the part of the bitmap begins in the box.
void Strips::fillRows(const Bitmap& bitmap, const Rect& part, int row)
{
    const std::ptrdiff_t wordsPerRow = bitmap.wordsPerRow();
    forEachWord(part.left, part.right, [&](std::ptrdiff_t index, std::uint64_t mask) {
        // So many rows and strips are nothing that the processor foresees.
        std::uint8_t* const bytes = m_bytes + (1 + 8 * (index - (part.left >> 6))) * m_length + margin + row;
        for (int strip = 16; strip < 24; ++strip)
            __builtin_prefetch(bytes + strip * m_length, 1);
        for (int y = 0; y < part.height(); y += 16) {
            const std::uint64_t* const word = bitmap.row(part.top + y) + index;
            const int rows = std::min(16, part.height() - y);
            for (int i = 0; i < rows; ++i)
                __builtin_prefetch(word + i * wordsPerRow + 16);
#ifdef __SSE2__
            if (rows == 16 && mask == allBits) {
                laySixteen(word, wordsPerRow, bytes + y, m_length);
                continue;
            }
#endif
            layColumns(word, wordsPerRow, rows, mask, bytes + y, m_length);
        }
    });
}

} // namespace imaging
