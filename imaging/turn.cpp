#include "imaging/turn.h"

#include <algorithm>
#include <utility>

#include "imaging/bits.h"
#include "imaging/parallel.h"

namespace imaging {

namespace {

// Exchanges rows and columns of 64 x 64 pixels: quarters first, then the quarters of each, down to single pixels. Each
// size of quarters is a loop of its own, for the compiler to do several rows at once.
template <int Step = 32> void transpose(std::uint64_t (&block)[64])
{
    constexpr std::uint64_t rightHalves = allBits / ((std::uint64_t(1) << Step) + 1);
    for (int group = 0; group < 64; group += 2 * Step) {
        for (int i = group; i < group + Step; ++i) {
            const std::uint64_t change = (block[i] ^ block[i + Step] >> Step) & rightHalves;
            block[i] ^= change;
            block[i + Step] ^= change << Step;
        }
    }
    if constexpr (Step > 1)
        transpose<Step / 2>(block);
}

// Turns 64 source rows, given from the one that becomes the left column on, at one column of source words.
// rowOf(i) is the i-th of these rows or null beyond the image; targetRow(x) is where source column x goes.
template <class RowOf, class TargetRow>
void turnBlock(RowOf rowOf, TargetRow targetRow, std::ptrdiff_t sourceWord, std::ptrdiff_t targetWord, int columns)
{
    std::uint64_t block[64];
    std::uint64_t any = 0;
    for (int i = 0; i < 64; ++i) {
        const std::uint64_t* row = rowOf(i);
        block[i] = row ? row[sourceWord] : 0;
        any |= block[i];
    }
    if (any)
        transpose(block);
    for (int i = 0; i < columns; ++i)
        targetRow(int(sourceWord * 64) + i)[targetWord] = block[i];
}

template <class RowOf, class TargetRow>
Bitmap turn(const Bitmap& source, Bitmap& target, RowOf rowOf, TargetRow targetRow)
{
    // The blocks are taken in squares of 8 x 8, in which both the rows read and the rows written fill whole cache
    // lines.
    constexpr std::ptrdiff_t square = 8;
    const std::ptrdiff_t squares = (target.wordsPerRow() + square - 1) / square;
    const int worthACore = rowsWorthACore(source.wordsPerRow() * square * 64);
    inParallel(int(squares), worthACore, [&](int begin, int end) {
        for (std::ptrdiff_t left = begin * square; left < end * square; left += square) {
            for (std::ptrdiff_t top = 0; top < source.wordsPerRow(); top += square) {
                const std::ptrdiff_t lastWord = std::min(top + square, source.wordsPerRow());
                const std::ptrdiff_t lastTarget = std::min(left + square, target.wordsPerRow());
                for (std::ptrdiff_t word = top; word < lastWord; ++word) {
                    const int columns = int(std::min<std::ptrdiff_t>(64, source.width() - word * 64));
                    for (std::ptrdiff_t targetWord = left; targetWord < lastTarget; ++targetWord) {
                        const auto rows = [&](int i) { return rowOf(targetWord * 64 + i); };
                        turnBlock(rows, targetRow, word, targetWord, columns);
                    }
                }
            }
        }
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
