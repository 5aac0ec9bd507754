#include "imaging/rounded_reduction.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

#include "imaging/bits.h"
#include "imaging/byte_reduction.h"
#include "imaging/half_by_words.h"
#include "imaging/parallel.h"
#include "imaging/rounded_axis.h"

namespace imaging {

namespace {

// Weighs one target pixel after the other by the true weights.
template <int Factor> class ExactReduction
{
public:
    ExactReduction(const Bitmap& source, const RoundedAxis& columns, const RoundedAxis& rows)
        : m_source(source), m_columns(columns), m_rows(rows), m_area(columns.targetPixel() * rows.targetPixel())
    {}

    // The row that following pixels are in.
    void enterRow(int y)
    {
        m_top = m_rows.firstSource(y);
        m_down = weightsOf(m_rows, y);
    }

    bool isInk(int t) const
    {
        const Weights across = weightsOf(m_columns, t);
        const int left = m_columns.firstSource(t);
        std::int64_t sum = 0;
        for (std::size_t i = 0; i < m_down.size() && m_down[i] > 0; ++i) {
            const std::uint64_t pixels = pixelsAt(m_source.row(m_top + int(i)), m_source.wordsPerRow(), left);
            std::int64_t ink = 0;
            for (std::size_t k = 0; k < across.size(); ++k)
                ink += across[k] & -std::int64_t(pixels >> (63 - k) & 1); // no branches, as none could be foretold
            sum += ink * m_down[i];
        }
        return sum >= m_area - m_area / 2;
    }

private:
    using Weights = std::array<std::int64_t, Factor + 2>;

    static Weights weightsOf(const RoundedAxis& axis, int t)
    {
        Weights weights;
        std::int64_t rest = axis.targetPixel();
        std::int64_t next = axis.endsOf(t).first;
        for (std::int64_t& weight : weights) {
            weight = std::min(next, rest);
            rest -= weight;
            next = axis.whole();
        }
        return weights;
    }

    const Bitmap& m_source;
    const RoundedAxis& m_columns;
    const RoundedAxis& m_rows;
    std::int64_t m_area;
    int m_top = 0;
    Weights m_down{};
};

// By a reduction that leaves pixels open.
template <int Factor, class Reduction>
void reduce(const Bitmap& source, Bitmap& target, const RoundedAxis& columns, const RoundedAxis& rows)
{
    const Reduction reduction(source, columns, rows);
    inParallel(target.height(), rowsWorthACore(source.wordsPerRow() * Factor), [&](int begin, int end) {
        ExactReduction<Factor> exact(source, columns, rows);
        std::vector<std::uint64_t> ink(reduction.wordsOfRow()), open(reduction.wordsOfRow());
        for (int y = begin; y < end; ++y) {
            reduction.weigh(y, ink.data(), open.data());
            exact.enterRow(y);
            for (int i = 0; i < target.wordsPerRow(); ++i) {
                const std::uint64_t inRow = i + 1 < target.wordsPerRow() ? allBits : maskUpTo(target.width());
                std::uint64_t left = open[std::size_t(i)] & inRow;
                std::uint64_t word = ink[std::size_t(i)] & inRow & ~left;
                for (; left; left &= left - 1) {
                    const int place = std::countr_zero(left);
                    word |= std::uint64_t(exact.isInk(64 * i + 63 - place)) << place;
                }
                target.row(y)[i] = word;
            }
        }
    });
}

bool areRounded(const ResampleAxis& columns, const ResampleAxis& rows, int n)
{
    return RoundedAxis::isRounded(columns, n) && RoundedAxis::isRounded(rows, n);
}

} // namespace

bool reducesToRoundedPart(const ResampleAxis& columns, const ResampleAxis& rows)
{
    static const bool wide = __builtin_cpu_supports("avx2");
    return wide && (areRounded(columns, rows, 2) || areRounded(columns, rows, 4));
}

void reduceToRoundedPart(const Bitmap& source, Bitmap& target, const ResampleAxis& columns, const ResampleAxis& rows)
{
    if (areRounded(columns, rows, 2)) {
        const RoundedAxis halfColumns(columns, 2), halfRows(rows, 2);
        const bool byWords = HalfByWords::suits(halfColumns, halfRows);
        (byWords ? reduce<2, HalfByWords> : reduce<2, ByteReduction<2>>)(source, target, halfColumns, halfRows);
    } else {
        reduce<4, ByteReduction<4>>(source, target, RoundedAxis(columns, 4), RoundedAxis(rows, 4));
    }
}

} // namespace imaging
