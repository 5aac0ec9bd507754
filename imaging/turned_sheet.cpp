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

// In how many steps a fraction falls below 0 that shrinks by 1/steps each time; at least 1.
int stepsLeft(std::uint32_t fraction, double steps)
{
    return int(std::min(double(fraction) * (1 / one) * steps, 64.0)) + 1;
}

} // namespace

InverseTurn::InverseTurn(double radians, Point about) : cosine(std::cos(radians)), sine(std::sin(radians)), pivot(about)
{}

TurnedSheet::TurnedSheet(const Bitmap& sheet, Point origin, const InverseTurn& turn)
    : m_sheet(sheet), m_ink(sheet), m_origin(origin), m_turn(turn), m_stepX(fixed(turn.cosine)),
      m_stepY(fixed(-turn.sine))
{
    constexpr double mostSteps = 1e6;
    m_pixelsPerRow = std::min(1 / std::max(std::abs(turn.sine), 1e-12), mostSteps);
    m_pixelsPerColumn = std::min(1 / std::max(1 - turn.cosine, 1e-12), mostSteps);
    // Below, copying pieces of rows takes less time than looking up their pixels.
    m_inPieces = m_pixelsPerRow > 6;
}

std::uint64_t TurnedSheet::word(int x, int y, std::uint64_t mask) const
{
    // The half makes the cut to an integer the nearest pixel.
    const std::int64_t startX = fixed(m_turn.sourceX(x, y) - m_origin.x + 0.5);
    const std::int64_t startY = fixed(m_turn.sourceY(x, y) - m_origin.y + 0.5);
    std::uint64_t word = 0;
    for (int first = 0; first < 64; first += InkMap::cell) {
        const int last = first + InkMap::cell - 1;
        const auto atX = [&](int i) { return int((startX + i * m_stepX) >> 32); };
        const auto atY = [&](int i) { return int((startY + i * m_stepY) >> 32); };
        const std::uint64_t part = mask << first >> 32;
        if (part == 0 || !m_ink.mayHoldInk(atX(first), atY(first), atX(last), atY(last)))
            continue;
        const int begin = first + std::countl_zero(part) - 32;
        const int end = first + 32 - std::countr_zero(part);
        const std::int64_t fromX = startX + begin * m_stepX;
        const std::int64_t fromY = startY + begin * m_stepY;
        word |= m_inPieces ? piecewise(fromX, fromY, begin, end) : pixelByPixel(fromX, fromY, begin, end);
    }
    return word & mask;
}

std::uint64_t TurnedSheet::pixelByPixel(std::int64_t x, std::int64_t y, int begin, int end) const
{
    const std::uint64_t* const words = m_sheet.row(0);
    const std::ptrdiff_t wordsPerRow = m_sheet.wordsPerRow();
    std::uint64_t word = 0;
    for (int i = begin; i < end; ++i) {
        const std::uint64_t pixels = words[(y >> 32) * wordsPerRow + (x >> 38)];
        word = word << 1 | (pixels >> (~(x >> 32) & 63) & 1);
        x += m_stepX;
        y += m_stepY;
    }
    return word << (64 - end);
}

// As long as neither the source's row nor its distance from the result's column changes, pixels are copied together.
std::uint64_t TurnedSheet::piecewise(std::int64_t x, std::int64_t y, int begin, int end) const
{
    std::uint64_t word = 0;
    while (begin < end) {
        const std::uint32_t fractionY = m_stepY > 0 ? ~std::uint32_t(y) : std::uint32_t(y);
        const int length = std::min(
            {stepsLeft(fractionY, m_pixelsPerRow), stepsLeft(std::uint32_t(x), m_pixelsPerColumn), end - begin});
        const int column = int(x >> 32);
        const std::uint64_t* words = m_sheet.row(int(y >> 32)) + (column >> 6);
        const int shift = column & 63;
        const std::uint64_t pixels = shift ? words[0] << shift | words[1] >> (64 - shift) : words[0];
        word |= (pixels & allBits << (64 - length)) >> begin;
        begin += length;
        x += length * m_stepX;
        y += length * m_stepY;
    }
    return word;
}

} // namespace imaging
