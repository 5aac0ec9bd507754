#include "imaging/turn.h"

#include <algorithm>
#include <utility>

#include "imaging/bits.h"
#include "imaging/parallel.h"

namespace imaging {

namespace {

// Two rows at a time, which every processor can.
using Rows = std::uint64_t __attribute__((vector_size(16)));

// Exchanges the right half of each group of 2 * Step pixels in the upper rows with the left half in the lower rows.
//
//   a b        a c
//   c d   to   b d    each letter Step pixels
template <int Step> void exchange(Rows& upper, Rows& lower)
{
    constexpr std::uint64_t rightHalves = allBits / ((std::uint64_t(1) << Step) + 1);
    const Rows change = (upper ^ lower >> Step) & rightHalves;
    upper ^= change;
    lower ^= change << Step;
}

// Exchanges quarters of 2 * Step and then of Step rows, all over the block.
template <int Step> void exchangeTwice(Rows (&block)[32])
{
    constexpr int pairs = Step / 2;
    for (int group = 0; group < 32; group += 4 * pairs) {
        for (int i = group; i < group + pairs; ++i) {
            Rows a = block[i], b = block[i + pairs], c = block[i + 2 * pairs], d = block[i + 3 * pairs];
            exchange<2 * Step>(a, c);
            exchange<2 * Step>(b, d);
            exchange<Step>(a, b);
            exchange<Step>(c, d);
            block[i] = a, block[i + pairs] = b, block[i + 2 * pairs] = c, block[i + 3 * pairs] = d;
        }
    }
}

// Exchanges rows and columns of 64 x 64 pixels: quarters first, then the quarters of each, down to single pixels.
void transpose(Rows (&block)[32])
{
    exchangeTwice<16>(block);
    exchangeTwice<4>(block);
    for (int i = 0; i < 32; i += 2) {
        exchange<2>(block[i], block[i + 1]);
        Rows even{block[i][0], block[i + 1][0]};
        Rows odd{block[i][1], block[i + 1][1]};
        exchange<1>(even, odd);
        block[i] = Rows{even[0], odd[0]};
        block[i + 1] = Rows{even[1], odd[1]};
    }
}

// How the source's rows, 64 at a time, become columns of words of the target:
//
//         word w                  target word t
//   row a abcd....           row 64 w + 0  ....pkfa
//   row b efgh....   turns       64 w + 1  ....qlgb     a block of 64 x 64 pixels is one word in each of 64 rows
//   row c ijkl....   into        64 w + 2  ....rmhc
//
// rowOf(i) is the source row that becomes the i-th column, null beyond the image; targetRow(x) is where source column x
// goes.
template <class RowOf, class TargetRow> class Turner
{
public:
    Turner(const Bitmap& source, Bitmap& target, RowOf rowOf, TargetRow targetRow)
        : m_source(source), m_target(target), m_rowOf(rowOf), m_targetRow(targetRow)
    {}

    // Fills the target's words of these columns. Blocks are taken in squares, in which rows read and rows written
    // fill whole cache lines. All lie far apart in memory, where the processor expects nothing, so it is told in time
    // what comes next.
    void turn(std::ptrdiff_t firstTarget, std::ptrdiff_t endTarget)
    {
        for (std::ptrdiff_t first = 0; first < m_source.wordsPerRow(); first += square) {
            const std::ptrdiff_t end = std::min(first + square, m_source.wordsPerRow());
            for (std::ptrdiff_t target = firstTarget; target < endTarget; ++target) {
                if (target + 1 < endTarget) {
                    fetch(first, end, target + 1);
                } else {
                    fetch(end, std::min(end + square, m_source.wordsPerRow()), firstTarget);
                }
                for (std::ptrdiff_t word = first; word < end; ++word)
                    turnBlock(word, target);
            }
        }
    }

    static constexpr std::ptrdiff_t square = 8;

private:
    void fetch(std::ptrdiff_t first, std::ptrdiff_t end, std::ptrdiff_t target) const
    {
        for (int i = 0; first < end && i < 64; ++i) {
            if (const std::uint64_t* row = m_rowOf(target * 64 + i)) {
                __builtin_prefetch(row + first);
                __builtin_prefetch(row + end - 1);
            }
        }
    }

    void turnBlock(std::ptrdiff_t word, std::ptrdiff_t target)
    {
        Rows block[32];
        Rows any{};
        std::ptrdiff_t next = target * 64;
        for (Rows& rows : block) {
            const std::uint64_t* even = m_rowOf(next++);
            const std::uint64_t* odd = m_rowOf(next++);
            rows = Rows{even ? even[word] : 0, odd ? odd[word] : 0};
            any |= rows;
        }
        if (any[0] | any[1])
            transpose(block);
        const int columns = int(std::min<std::ptrdiff_t>(64, m_source.width() - word * 64));
        for (int i = 0; i < columns; ++i)
            m_targetRow(int(word * 64) + i)[target] = block[i / 2][i % 2];
    }

    const Bitmap& m_source;
    Bitmap& m_target;
    RowOf m_rowOf;
    TargetRow m_targetRow;
};

template <class RowOf, class TargetRow>
Bitmap turn(const Bitmap& source, Bitmap& target, RowOf rowOf, TargetRow targetRow)
{
    constexpr std::ptrdiff_t square = Turner<RowOf, TargetRow>::square;
    const std::ptrdiff_t squares = (target.wordsPerRow() + square - 1) / square;
    inParallel(int(squares), rowsWorthACore(source.wordsPerRow() * square * 64), [&](int begin, int end) {
        Turner<RowOf, TargetRow> turner(source, target, rowOf, targetRow);
        for (std::ptrdiff_t left = begin * square; left < end * square; left += square)
            turner.turn(left, std::min(left + square, target.wordsPerRow()));
    });
    return std::move(target);
}

} // namespace

Bitmap turnClockwise(const Bitmap& bitmap)
{
    Bitmap result = Bitmap::uninitialized({bitmap.height(), bitmap.width()});
    const auto rowOf = [&](std::ptrdiff_t column) {
        return column < bitmap.height() ? bitmap.row(int(bitmap.height() - 1 - column)) : nullptr;
    };
    return turn(bitmap, result, rowOf, [&](int x) { return result.row(x); });
}

Bitmap turnCounterClockwise(const Bitmap& bitmap)
{
    Bitmap result = Bitmap::uninitialized({bitmap.height(), bitmap.width()});
    const auto rowOf = [&](std::ptrdiff_t column) {
        return column < bitmap.height() ? bitmap.row(int(column)) : nullptr;
    };
    return turn(bitmap, result, rowOf, [&](int x) { return result.row(bitmap.width() - 1 - x); });
}

} // namespace imaging
