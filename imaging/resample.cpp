#include "imaging/resample.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>
#include <vector>

#include "imaging/bits.h"
#include "imaging/error.h"
#include "imaging/half_by_words.h"
#include "imaging/parallel.h"
#include "imaging/reduce.h"
#include "imaging/resample_axis.h"
#include "imaging/rounded_reduction.h"
#include "imaging/running_sums.h"

namespace imaging {

namespace {

// Source rows that are weighed together: at most so many.
constexpr std::size_t groupSize = 8;

// The source rows of a group that a target row covers, and what each weighs.
template <class Sum> struct WeighedRows
{
    std::size_t count = 0;
    std::array<const std::uint64_t*, groupSize> rows{};
    // By the pixels of a column, the first row's as the lowest bit: what those weigh that are ink.
    std::array<Sum, std::size_t(1) << groupSize> sums{};

    void clear() { count = 0; }

    void add(const std::uint64_t* row, Sum weight)
    {
        const std::size_t half = std::size_t(1) << count;
        for (std::size_t pixels = 0; pixels < half; ++pixels)
            sums[half + pixels] = sums[pixels] + weight;
        rows[count++] = row;
    }
};

// Sums the ink that falls on the pixels of one target row. Where a column's sum of the source rows differs from that of
// the column before it, this is entered as a change, so that a run of ink costs the same at any length, and ink that
// rows have in common the same as that of one; the row's sums come out as running totals.
template <class Sum> class RowSums
{
public:
    RowSums(const ResampleAxis& columns, int width)
        : m_columns(columns), m_unit(Sum(columns.unit())), m_width(width), m_changes(std::size_t(width) + 65, 0),
          m_touched(std::size_t(width) / 64 + 2, 0)
    {}

    void add(const WeighedRows<Sum>& group) { addByCount(group, std::make_index_sequence<groupSize>()); }

    // Writes the pixels whose sum reaches the threshold as ink, and forgets the sums.
    void write(std::uint64_t* row, Sum threshold)
    {
        Sum sum = 0;
        Sum* changes = m_changes.data();
        const int words = (m_width + 63) / 64;
        for (int i = 0; i < words; ++i, changes += 64) {
            std::uint64_t word = sum >= threshold ? allBits : 0;
            if (m_touched[std::size_t(i)]) {
                word = whereReached(changes, sum, threshold);
                m_touched[std::size_t(i)] = 0;
            }
            row[i] = i + 1 < words ? word : word & maskUpTo(m_width);
        }
        m_changes[std::size_t(m_width)] = m_changes[std::size_t(m_width) + 1] = 0;
    }

private:
    template <std::size_t... Less> void addByCount(const WeighedRows<Sum>& group, std::index_sequence<Less...>)
    {
        ((group.count == Less + 1 ? addRows<Less + 1>(group) : void()), ...);
    }

    // From right to left, as the lowest bit of a word is the cheapest to find.
    template <std::size_t Count> void addRows(const WeighedRows<Sum>& group)
    {
        std::array<std::uint64_t, Count> words{};
        Sum beside = 0; // on the right
        for (int x = (m_columns.source() - 1) & ~63; x >= 0; x -= 64) {
            std::uint64_t changed = 0;
            for (std::size_t row = 0; row < Count; ++row) {
                const std::uint64_t right = words[row] >> 63;
                words[row] = group.rows[row][x / 64];
                changed |= words[row] ^ (words[row] << 1 | right);
            }
            for (; changed; changed &= changed - 1) {
                const int place = std::countr_zero(changed);
                std::size_t pixels = 0;
                for (std::size_t row = Count; row-- > 0;)
                    pixels = 2 * pixels | (words[row] >> place & 1);
                const Sum sum = group.sums[pixels];
                enter(m_columns[x + 64 - place], beside - sum);
                beside = sum;
            }
        }
        if (beside != 0)
            enter(m_columns[0], beside);
    }

    void enter(ResampleAxis::Edge edge, Sum change)
    {
        const Sum beyond = edge.fraction * change;
        m_changes[std::size_t(edge.pixel)] += m_unit * change - beyond;
        m_changes[std::size_t(edge.pixel) + 1] += beyond;
        m_touched[std::size_t(edge.pixel) / 64] = 1;
        m_touched[std::size_t(edge.pixel + 1) / 64] = 1;
    }

    const ResampleAxis& m_columns;
    Sum m_unit;
    int m_width;
    std::vector<Sum> m_changes;
    std::vector<char> m_touched;
};

template <class Sum>
void resampleByArea(const Bitmap& source, Bitmap& target, const ResampleAxis& columns, const ResampleAxis& rows)
{
    const Sum whole = Sum(columns.unit() * rows.unit());
    inParallel(target.height(), rowsWorthACore(target.wordsPerRow() * 8), [&](int begin, int end) {
        RowSums<Sum> sums(columns, target.width());
        WeighedRows<Sum> group;
        for (int y = begin; y < end; ++y) {
            const int last = rows.endSource(y);
            for (int s = rows.firstSource(y); s < last; ++s) {
                group.add(source.row(s), Sum(rows.overlap(s, y)));
                if (group.count < groupSize && s + 1 < last)
                    continue;
                sums.add(group);
                group.clear();
            }
            sums.write(target.row(y), whole - whole / 2);
        }
    });
}

void enlarge(const Bitmap& source, Bitmap& target, const ResampleAxis& columns, const ResampleAxis& rows)
{
    inParallel(source.height(), rowsWorthACore(target.wordsPerRow()), [&](int begin, int end) {
        std::vector<int> room(roomForEdges(source.width()));
        for (int s = begin; s < end; ++s) {
            const int first = rows[s].pixel;
            std::uint64_t* row = target.row(first);
            std::fill_n(row, target.wordsPerRow(), 0);
            const std::span<const int> edges = findInkEdges(source.row(s), source.width(), room);
            for (std::size_t i = 0; i < edges.size(); i += 2)
                setSpan(row, columns[edges[i]].pixel, columns[edges[i + 1]].pixel, true);
            for (int y = first + 1; y < rows[s + 1].pixel; ++y)
                std::copy_n(row, target.wordsPerRow(), target.row(y));
        }
    });
}

// abcd -> aabbccdd
std::uint64_t doubled(std::uint32_t pixels)
{
    std::uint64_t word = pixels;
    word = (word | word << 16) & 0x0000ffff0000ffff;
    word = (word | word << 8) & 0x00ff00ff00ff00ff;
    word = (word | word << 4) & 0x0f0f0f0f0f0f0f0f;
    word = (word | word << 2) & 0x3333333333333333;
    word = (word | word << 1) & 0x5555555555555555;
    return word | word << 1;
}

void enlargeByTwo(const Bitmap& source, Bitmap& target)
{
    const std::ptrdiff_t words = target.wordsPerRow();
    inParallel(source.height(), rowsWorthACore(words * 2), [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const std::uint64_t* from = source.row(y);
            std::uint64_t* to = target.row(2 * y);
            for (std::ptrdiff_t i = 0; i < words; ++i)
                to[i] = doubled(std::uint32_t(from[i / 2] >> (i % 2 ? 0 : 32)));
            std::copy_n(to, words, target.row(2 * y + 1));
        }
    });
}

} // namespace

Bitmap resample(const Bitmap& bitmap, Size size)
{
    if (size == bitmap.size())
        return bitmap;
    if (size.empty() || bitmap.empty())
        throw ImagingError("An image can't be brought to a size of no pixels, nor from it to another.");
    Bitmap target = Bitmap::uninitialized(size);
    if (halvesEvenSides(bitmap.size(), size)) {
        halveEvenSides(bitmap, target);
        return target;
    }
    if (reducesByPowerOfTwo(bitmap.size(), size)) {
        reduceByPowerOfTwo(bitmap, target);
        return target;
    }
    if (size.width == 2 * bitmap.width() && size.height == 2 * bitmap.height()) {
        enlargeByTwo(bitmap, target);
        return target;
    }
    const ResampleAxis columns(bitmap.width(), size.width);
    const ResampleAxis rows(bitmap.height(), size.height);
    if (size.width >= bitmap.width() && size.height >= bitmap.height()) {
        enlarge(bitmap, target, columns, rows);
    } else if (reducesToRoundedPart(columns, rows)) {
        reduceToRoundedPart(bitmap, target, columns, rows);
    } else if (columns.unit() * rows.unit() < (1 << 30)) { // as for all but the most awkward pairs of large sizes
        resampleByArea<std::int32_t>(bitmap, target, columns, rows);
    } else {
        resampleByArea<std::int64_t>(bitmap, target, columns, rows);
    }
    return target;
}

} // namespace imaging
