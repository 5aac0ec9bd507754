#include "imaging/row_bits.h"

namespace imaging {

namespace {

// Compilers turn these eight shifts into one load or store with a byte swap.
std::uint64_t loadBigEndian(const std::uint8_t* bytes)
{
    std::uint64_t word = 0;
    for (int i = 0; i < 8; ++i)
        word = word << 8 | bytes[i];
    return word;
}

void storeBigEndian(std::uint8_t* bytes, std::uint64_t word)
{
    for (int i = 0; i < 8; ++i)
        bytes[i] = std::uint8_t(word >> (56 - 8 * i));
}

} // namespace

void wordsFromBytes(std::uint64_t* words, const std::uint8_t* bytes, int width, bool inverted)
{
    const std::uint64_t flip = inverted ? ~std::uint64_t(0) : 0;
    const int whole = width / 64;
    for (int i = 0; i < whole; ++i)
        words[i] = loadBigEndian(bytes + std::ptrdiff_t(8) * i) ^ flip;
    const int rest = width % 64;
    if (rest == 0)
        return;
    std::uint8_t last[8] = {};
    std::copy_n(bytes + std::ptrdiff_t(8) * whole, bytesPerRow(rest), last);
    words[whole] = (loadBigEndian(last) ^ flip) & ~std::uint64_t(0) << (64 - rest);
}

void bytesFromWords(std::uint8_t* bytes, const std::uint64_t* words, int width, bool inverted)
{
    const std::uint64_t flip = inverted ? ~std::uint64_t(0) : 0;
    const int whole = width / 64;
    for (int i = 0; i < whole; ++i)
        storeBigEndian(bytes + std::ptrdiff_t(8) * i, words[i] ^ flip);
    const int rest = width % 64;
    if (rest == 0)
        return;
    std::uint8_t last[8];
    storeBigEndian(last, (words[whole] ^ flip) & ~std::uint64_t(0) << (64 - rest));
    std::copy_n(last, bytesPerRow(rest), bytes + std::ptrdiff_t(8) * whole);
}

void addBits(std::uint64_t* row, int x, const std::uint64_t* bits, int width)
{
    const int shift = x % 64;
    std::uint64_t* target = row + x / 64;
    const int words = (width + 63) / 64;
    for (int i = 0; i < words; ++i) {
        const int count = std::min(64, width - 64 * i);
        target[i] |= bits[i] >> shift;
        if (shift + count > 64)
            target[i + 1] |= bits[i] << (64 - shift);
    }
}

bool oneIsInk(std::span<const int> luminances)
{
    constexpr int half = 127500;
    return luminances.size() == 1 ? luminances[0] >= half : luminances.size() == 2 && luminances[1] < luminances[0];
}

} // namespace imaging
