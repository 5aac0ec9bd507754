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

InverseTurn::InverseTurn(double radians, Point about)
    : cosine(std::cos(radians)), sine(std::sin(radians)), pivotX(about.x), pivotY(about.y)
{}

Countdown::Countdown(std::int64_t step)
    : m_least(step > 0 ? 1 : 64), m_shift(31 + int(std::bit_width(std::uint64_t(step)))),
      m_inverse(step > 0 ? (std::uint64_t(1) << m_shift) / std::uint64_t(step) : 0)
{}

TurnedSheet::TurnedSheet(const Bitmap& sheet, Point origin, const InverseTurn& turn)
    : m_sheet(sheet), m_ink(sheet, turn.sine < 0), m_originX(origin.x), m_originY(origin.y), m_turn(turn),
      m_stepX(fixed(turn.cosine)), m_stepY(fixed(-turn.sine)), m_gather(SlantedLine::possible()),
      m_quickShifts(__builtin_cpu_supports("bmi2")), m_line(sheet, m_stepX, m_stepY), m_untilColumn(fixed(1) - m_stepX),
      m_untilRow(std::abs(m_stepY)), m_rowStep(m_stepY < 0 ? -sheet.wordsPerRow() : sheet.wordsPerRow())
{
    const double slant = std::abs(turn.sine);
    m_pieces = int(63 * slant) + 2;
    // With more pieces, copying them takes longer than looking up every pixel.
    if (m_pieces > (m_gather ? 7 : 14))
        m_pieces = 0;
}

std::uint64_t TurnedSheet::word(int x, int y, std::uint64_t mask) const
{
    // The half makes the cut to an integer the nearest pixel.
    const std::int64_t startX = fixed(m_turn.sourceX(x, y) - m_originX + 0.5);
    const std::int64_t startY = fixed(m_turn.sourceY(x, y) - m_originY + 0.5);
    if (mask != allBits)
        return pixelByPixel(startX, startY, mask);
    // The rows of a square of the result lie far apart, so the processor does not see by itself what comes next.
    constexpr std::ptrdiff_t ahead = 16; // words
    __builtin_prefetch(m_sheet.row(int(startY >> 32)) + (startX >> 38) + ahead);
    const std::int64_t middleX = startX + 32 * m_stepX;
    const std::int64_t middleY = startY + 32 * m_stepY;
    const bool left = m_ink.mayHoldInk(int(startX >> 32), int(startY >> 32));
    const bool right = m_ink.mayHoldInk(int(middleX >> 32), int(middleY >> 32));
    if (!left && !right)
        return 0;
    if (m_pieces > 0 && m_untilColumn.steps(std::uint32_t(startX)) >= 64)
        return m_quickShifts ? piecewiseByQuickShifts(startX, startY) : piecewise(startX, startY);
    if (!m_gather)
        return pixelByPixel(startX, startY, mask);
    return (left ? std::uint64_t(m_line.pixels(startX, startY, 0)) << 32 : 0) |
           (right ? m_line.pixels(startX, startY, 32) : 0);
}

std::uint64_t TurnedSheet::plainWord(int x, int y, std::uint64_t mask) const
{
    return pixelByPixel(fixed(m_turn.sourceX(x, y) - m_originX + 0.5), fixed(m_turn.sourceY(x, y) - m_originY + 0.5),
                        mask);
}

std::uint64_t TurnedSheet::pixelByPixel(std::int64_t x, std::int64_t y, std::uint64_t mask) const
{
    if (mask == 0)
        return 0;
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

inline __attribute__((always_inline)) std::uint64_t TurnedSheet::pieces(std::int64_t x, std::int64_t y) const
{
    const std::uint64_t* words = m_sheet.row(int(y >> 32)) + (x >> 38);
    const int shift = int(x >> 32 & 63);
    const std::int64_t step = std::abs(m_stepY);
    // Counted down in either direction.
    std::int64_t fraction = m_stepY > 0 ? ~std::uint32_t(y) : std::uint32_t(y);
    std::uint64_t word = 0;
    std::uint64_t rest = allBits; // what is still to come
    // The same number for every word, as a guess that fails costs more than a piece too many of no length.
    for (int piece = 0; piece < m_pieces || rest; ++piece) {
        const std::int64_t length = std::min<std::int64_t>(m_untilRow.steps(std::uint32_t(fraction)), 64);
        const std::uint64_t next = rest >> (length - 1) >> 1;
        word |= (words[0] << shift | words[1] >> 1 >> (63 - shift)) & (rest ^ next);
        rest = next;
        fraction -= length * step;
        words += fraction >> 63 & m_rowStep;
        fraction &= 0xffffffff;
    }
    return word;
}

std::uint64_t TurnedSheet::piecewise(std::int64_t x, std::int64_t y) const
{
    return pieces(x, y);
}

__attribute__((target("bmi2"))) std::uint64_t TurnedSheet::piecewiseByQuickShifts(std::int64_t x, std::int64_t y) const
{
    return pieces(x, y);
}

} // namespace imaging
