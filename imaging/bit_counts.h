// Counts for many columns of pixels at once, kept as digits of base two: a word for each digit, a bit for each column.
// So adding takes a few logical operations for all the columns of a word.
//
//   column            1 2 3 4
//   ones    (word 0)  0 1 0 1
//   twos    (word 1)  0 0 1 1     the counts are 0, 1, 2 and 3
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace imaging {

/// Two words side by side, which every processor works on at once.
using WordPair = std::uint64_t __attribute__((vector_size(16)));

template <class Word> Word wordAt(const std::uint64_t* row)
{
    Word word;
    std::memcpy(&word, row, sizeof word);
    return word;
}

/// Counts of up to Digits binary digits, the lowest digit first. Word is std::uint64_t or WordPair.
template <class Word, std::size_t Digits> using BitCounts = std::array<Word, Digits>;

template <class Word, std::size_t Digits>
BitCounts<Word, Digits + 1> sum(const BitCounts<Word, Digits>& a, const BitCounts<Word, Digits>& b)
{
    BitCounts<Word, Digits + 1> result;
    Word carry{};
    for (std::size_t i = 0; i < Digits; ++i) {
        const Word differ = a[i] ^ b[i];
        result[i] = differ ^ carry;
        carry = (a[i] & b[i]) | (differ & carry);
    }
    result[Digits] = carry;
    return result;
}

/// The ink in 2^Log pixels below each other, from the given word of each row on.
template <class Word, std::size_t Log>
BitCounts<Word, Log + 1> countDown(const std::uint64_t* const* rows, std::ptrdiff_t word)
{
    if constexpr (Log == 0) {
        return {wordAt<Word>(rows[0] + word)};
    } else {
        return sum(countDown<Word, Log - 1>(rows, word), countDown<Word, Log - 1>(rows + (1 << (Log - 1)), word));
    }
}

} // namespace imaging
