// The ink of a block is counted for all blocks of a word at once.

#include "imaging/reduce.h"

#include <algorithm>
#include <array>
#include <vector>

#include "imaging/bit_counts.h"
#include "imaging/bits.h"
#include "imaging/parallel.h"

namespace imaging {

namespace {

template <std::size_t Digits> using Counts = BitCounts<std::uint64_t, Digits>;

// Adds to each column's count those of the next ones until 2^Log columns are in it; Done is the logarithm of how many
// already are.
template <std::size_t Log, std::size_t Done, std::size_t Digits>
Counts<Digits + Log - Done> countAcross(const Counts<Digits>& counts)
{
    if constexpr (Done == Log) {
        return counts;
    } else {
        Counts<Digits> next = counts;
        for (std::uint64_t& digit : next)
            digit <<= 1 << Done;
        return countAcross<Log, Done + 1>(sum(counts, next));
    }
}

// The first, third, fifth ... pixels of two words, brought together in one.
std::uint64_t everySecond(std::uint64_t left, std::uint64_t right)
{
    // The right word's pixels wait between the left one's; then pairs of ever larger groups of bits change places.
    std::uint64_t word = (left & 0xaaaaaaaaaaaaaaaa) | (right >> 1 & 0x5555555555555555);
    const auto exchange = [&word](std::uint64_t mask, int distance) {
        const std::uint64_t change = (word ^ word >> distance) & mask;
        word ^= change | change << distance;
    };
    exchange(0x2222222222222222, 1);
    exchange(0x0c0c0c0c0c0c0c0c, 2);
    exchange(0x00f000f000f000f0, 4);
    exchange(0x0000ff000000ff00, 8);
    exchange(0x00000000ffff0000, 16);
    return word;
}

template <std::size_t Log> void reduce(const Bitmap& source, Bitmap& target)
{
    constexpr int factor = 1 << Log;
    const std::ptrdiff_t targetWords = target.wordsPerRow();
    inParallel(target.height(), rowsWorthACore(source.wordsPerRow() * factor), [&](int begin, int end) {
        // In each word, the first pixel of every block tells whether the block is ink.
        std::vector<std::uint64_t> blocks(std::size_t(targetWords * factor), 0);
        for (int y = begin; y < end; ++y) {
            std::array<const std::uint64_t*, factor> rows;
            for (int i = 0; i < factor; ++i)
                rows[std::size_t(i)] = source.row(y * factor + i);
            for (std::ptrdiff_t i = 0; i < source.wordsPerRow(); ++i) {
                const auto counts = countAcross<Log, 0>(countDown<std::uint64_t, Log>(rows.data(), i));
                blocks[std::size_t(i)] = counts[2 * Log] | counts[2 * Log - 1];
            }
            for (std::ptrdiff_t words = targetWords * factor; words > targetWords; words /= 2) {
                for (std::ptrdiff_t i = 0; i < words / 2; ++i)
                    blocks[std::size_t(i)] = everySecond(blocks[std::size_t(2 * i)], blocks[std::size_t(2 * i + 1)]);
            }
            std::copy_n(blocks.data(), targetWords, target.row(y));
        }
    });
}

bool isTimes(Size source, Size target, int factor)
{
    return source.width == target.width * std::int64_t(factor) && source.height == target.height * std::int64_t(factor);
}

} // namespace

bool reducesByPowerOfTwo(Size source, Size target)
{
    return isTimes(source, target, 2) || isTimes(source, target, 4) || isTimes(source, target, 8);
}

void reduceByPowerOfTwo(const Bitmap& source, Bitmap& target)
{
    if (isTimes(source.size(), target.size(), 2)) {
        reduce<1>(source, target);
    } else if (isTimes(source.size(), target.size(), 4)) {
        reduce<2>(source, target);
    } else {
        reduce<3>(source, target);
    }
}

} // namespace imaging
