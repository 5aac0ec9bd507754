#include "imaging/resample.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <vector>

#include "imaging/bits.h"
#include "imaging/error.h"
#include "imaging/parallel.h"
#include "imaging/reduce.h"
#include "imaging/running_sums.h"

namespace imaging {

namespace {

// Where one direction's source pixels come to lie among the target's. A target pixel is `unit` long; edge e of the
// source, which lies before pixel e or at the end, falls `fraction` beyond the beginning of target pixel `pixel`. In a
// direction that grows, edges fall between target pixels and unit is 1.
class Axis
{
public:
    struct Edge
    {
        int pixel;
        int fraction;
    };

    Axis(int source, int target) : m_edges(std::size_t(source) + 1)
    {
        const std::int64_t divisor = std::gcd(source, target);
        const std::int64_t from = source / divisor;
        const std::int64_t to = target / divisor;
        m_unit = target < source ? from : 1;
        for (std::int64_t e = 0; e <= source; ++e) {
            // Growing, target pixel t takes source pixel floor((t + 1/2) from / to). The first t that takes e:
            const std::int64_t first = (2 * e * to + from - 1) / (2 * from);
            const std::int64_t position = target < source ? e * to : first;
            m_edges[std::size_t(e)] = {int(position / m_unit), int(position % m_unit)};
        }
    }

    std::int64_t unit() const { return m_unit; }
    const Edge& operator[](int edge) const { return m_edges[std::size_t(edge)]; }
    std::int64_t position(int edge) const { return m_edges[std::size_t(edge)].pixel * m_unit + (*this)[edge].fraction; }

    // The first source pixel that covers some of target pixel t.
    int firstSource(int t) const
    {
        const auto beyond =
            std::upper_bound(m_edges.begin(), m_edges.end(), t * m_unit,
                             [&](std::int64_t at, Edge edge) { return at < edge.pixel * m_unit + edge.fraction; });
        return int(beyond - m_edges.begin()) - 1;
    }

    // How much of target pixel t source pixel s covers, in parts of `unit`; 0 or less for none.
    std::int64_t overlap(int s, int t) const
    {
        return std::min(position(s + 1), (t + 1) * m_unit) - std::max(position(s), t * m_unit);
    }

private:
    std::vector<Edge> m_edges;
    std::int64_t m_unit = 1;
};

// Sums the ink that falls on the pixels of one target row. Each edge between ink and paper is entered as a change of
// coverage, so that a run of ink costs the same at any length; the row's sums come out as running totals.
template <class Sum> class RowSums
{
public:
    RowSums(const Axis& columns, int width)
        : m_columns(columns), m_unit(Sum(columns.unit())), m_width(width), m_changes(std::size_t(width) + 65, 0),
          m_touched(std::size_t(width) / 64 + 2, 0)
    {}

    // Adds a source row, given by its ink edges, with a weight.
    void add(std::span<const int> edges, Sum weight)
    {
        for (std::size_t i = 0; i < edges.size(); i += 2) {
            enter(m_columns[edges[i]], weight);
            enter(m_columns[edges[i + 1]], -weight);
        }
    }

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
                std::fill_n(changes, 64, 0);
                m_touched[std::size_t(i)] = 0;
            }
            row[i] = i + 1 < words ? word : word & maskUpTo(m_width);
        }
        m_changes[std::size_t(m_width)] = m_changes[std::size_t(m_width) + 1] = 0;
    }

private:
    void enter(Axis::Edge edge, Sum weight)
    {
        m_changes[std::size_t(edge.pixel)] += (m_unit - edge.fraction) * weight;
        m_changes[std::size_t(edge.pixel) + 1] += edge.fraction * weight;
        m_touched[std::size_t(edge.pixel) / 64] = 1;
        m_touched[std::size_t(edge.pixel + 1) / 64] = 1;
    }

    const Axis& m_columns;
    Sum m_unit;
    int m_width;
    std::vector<Sum> m_changes;
    std::vector<char> m_touched;
};

template <class Sum> void resampleByArea(const Bitmap& source, Bitmap& target, const Axis& columns, const Axis& rows)
{
    const Sum whole = Sum(columns.unit() * rows.unit());
    inParallel(target.height(), rowsWorthACore(target.wordsPerRow() * 8), [&](int begin, int end) {
        RowSums<Sum> sums(columns, target.width());
        std::vector<int> room(roomForEdges(source.width()));
        std::span<const int> edges;
        int found = -1; // the row whose edges these are: two target rows often share one
        for (int y = begin; y < end; ++y) {
            for (int s = rows.firstSource(y); s < source.height() && rows.position(s) < (y + 1) * rows.unit(); ++s) {
                const std::int64_t weight = rows.overlap(s, y);
                if (weight <= 0)
                    continue;
                if (s != found)
                    edges = findInkEdges(source.row(s), source.width(), room);
                found = s;
                sums.add(edges, Sum(weight));
            }
            sums.write(target.row(y), whole - whole / 2);
        }
    });
}

void enlarge(const Bitmap& source, Bitmap& target, const Axis& columns, const Axis& rows)
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
    if (reducesByPowerOfTwo(bitmap.size(), size)) {
        reduceByPowerOfTwo(bitmap, target);
        return target;
    }
    if (size.width == 2 * bitmap.width() && size.height == 2 * bitmap.height()) {
        enlargeByTwo(bitmap, target);
        return target;
    }
    const Axis columns(bitmap.width(), size.width);
    const Axis rows(bitmap.height(), size.height);
    // Sums of a whole row of pixels fit in an int for all but the most awkward pairs of large sizes.
    if (size.width >= bitmap.width() && size.height >= bitmap.height()) {
        enlarge(bitmap, target, columns, rows);
    } else if (columns.unit() * rows.unit() < (1 << 30)) {
        resampleByArea<std::int32_t>(bitmap, target, columns, rows);
    } else {
        resampleByArea<std::int64_t>(bitmap, target, columns, rows);
    }
    return target;
}

} // namespace imaging
