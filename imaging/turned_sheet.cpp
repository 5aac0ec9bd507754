#include "imaging/turned_sheet.h"

#include <cmath>

#include "imaging/bits.h"

namespace imaging {

namespace {

constexpr double one = 4294967296.0;

std::int64_t fixed(double value)
{
    return std::int64_t(std::floor(value * one + 0.5));
}

} // namespace

InverseTurn::InverseTurn(double radians, Point about) : cosine(std::cos(radians)), sine(std::sin(radians)), pivot(about)
{}

Countdown::Countdown(std::int64_t step)
    : m_least(step > 0 ? 1 : 64), m_shift(31 + int(std::bit_width(std::uint64_t(step)))),
      m_inverse(step > 0 ? (std::uint64_t(1) << m_shift) / std::uint64_t(step) : 0)
{}

TurnedSheet::TurnedSheet(const Bitmap& sheet, Point origin, const InverseTurn& turn)
    : m_sheet(sheet), m_ink(sheet, turn.sine < 0), m_origin(origin), m_turn(turn), m_stepX(fixed(turn.cosine)),
      m_stepY(fixed(-turn.sine)), m_gather(SlantedLine::possible()), m_line(sheet, m_stepX, m_stepY),
      m_untilColumn(fixed(1) - m_stepX), m_untilRow(std::abs(m_stepY))
{
    const double slant = std::abs(turn.sine);
    m_pieces = int(63 * slant) + int(63 * (1 - turn.cosine)) + 2;
    // With more pieces, copying them takes longer than looking up every pixel.
    if (m_pieces > (m_gather ? 7 : 14))
        m_pieces = 0;
}

std::uint64_t TurnedSheet::word(int x, int y, std::uint64_t mask) const
{
    // The half makes the cut to an integer the nearest pixel.
    const std::int64_t startX = fixed(m_turn.sourceX(x, y) - m_origin.x + 0.5);
    const std::int64_t startY = fixed(m_turn.sourceY(x, y) - m_origin.y + 0.5);
    if (mask != allBits)
        return pixelByPixel(startX, startY, mask);
    const std::int64_t middleX = startX + 32 * m_stepX;
    const std::int64_t middleY = startY + 32 * m_stepY;
    const bool left = m_ink.mayHoldInk(int(startX >> 32), int(startY >> 32));
    const bool right = m_ink.mayHoldInk(int(middleX >> 32), int(middleY >> 32));
    if (!left && !right)
        return 0;
    if (m_pieces > 0)
        return piecewise(startX, startY);
    if (!m_gather)
        return pixelByPixel(startX, startY, mask);
    return (left ? std::uint64_t(m_line.pixels(startX, startY, 0)) << 32 : 0) |
           (right ? m_line.pixels(startX, startY, 32) : 0);
}

std::uint64_t TurnedSheet::plainWord(int x, int y, std::uint64_t mask) const
{
    return pixelByPixel(fixed(m_turn.sourceX(x, y) - m_origin.x + 0.5), fixed(m_turn.sourceY(x, y) - m_origin.y + 0.5),
                        mask);
}

std::uint64_t TurnedSheet::pixelByPixel(std::int64_t x, std::int64_t y, std::uint64_t mask) const
{
    const std::uint64_t* const words = m_sheet.row(0);
    const std::ptrdiff_t wordsPerRow = m_sheet.wordsPerRow();
    const int begin = std::countl_zero(mask);
    const int end = 64 - std::countr_zero(mask);
    x += begin * m_stepX;
    y += begin * m_stepY;
    std::uint64_t word = 0;
    for (int i = begin; i < end; ++i) {
        const std::uint64_t pixels = words[(y >> 32) * wordsPerRow + (x >> 38)];
        word = word << 1 | (pixels >> (~(x >> 32) & 63) & 1);
        x += m_stepX;
        y += m_stepY;
    }
    return word << (64 - end);
}

std::uint64_t TurnedSheet::piecewise(std::int64_t x, std::int64_t y) const
{
    const std::uint32_t falling = m_stepY > 0 ? ~std::uint32_t(0) : 0;
    std::uint64_t word = 0;
    std::uint64_t rest = allBits; // what is still to come
    int begin = 0;
    const auto copyPiece = [&] {
        const std::int64_t row = m_untilRow.steps(std::uint32_t(y) ^ falling);
        const std::int64_t column = m_untilColumn.steps(std::uint32_t(x));
        const int length = int(std::min(std::min(row, column), std::int64_t(std::min(64 - begin, 63))));
        const std::uint64_t* words = m_sheet.row(int(y >> 32)) + (x >> 38);
        const int shift = int(x >> 32 & 63);
        const std::uint64_t pixels = words[0] << shift | words[1] >> 1 >> (63 - shift);
        word |= pixels >> (begin & 63) & (rest & ~(rest >> length));
        rest >>= length;
        begin += length;
        x += length * m_stepX;
        y += length * m_stepY;
    };
    // The same number for every word, as a guess that fails costs more than a piece too many of no length.
    for (int piece = 0; piece < m_pieces; ++piece)
        copyPiece();
    while (rest)
        copyPiece();
    return word;
}

} // namespace imaging
