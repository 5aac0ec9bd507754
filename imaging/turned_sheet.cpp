#include "imaging/turned_sheet.h"

#include "imaging/bits.h"

#include <cmath>

namespace imaging {

namespace {

constexpr double one = 4294967296.0;

std::int64_t fixed(double value)
{
    return std::int64_t(std::floor(value * one + 0.5));
}

/// In how many steps a fraction falls below 0 that shrinks by 1/steps each time; at least 1.
int stepsLeft(std::uint32_t fraction, double steps)
{
    return int(std::min(double(fraction) * (1 / one) * steps, 64.0)) + 1;
}

} // namespace

InverseTurn::InverseTurn(double radians, Point about) : cosine(std::cos(radians)), sine(std::sin(radians)), pivot(about)
{}

TurnedSheet::TurnedSheet(const Bitmap& sheet, Point origin, const InverseTurn& turn)
    : sheet_(sheet), ink_(sheet), origin_(origin), turn_(turn), stepX_(fixed(turn.cosine)), stepY_(fixed(-turn.sine))
{
    constexpr double mostSteps = 1e6;
    pixelsPerRow_ = std::min(1 / std::max(std::abs(turn.sine), 1e-12), mostSteps);
    pixelsPerColumn_ = std::min(1 / std::max(1 - turn.cosine, 1e-12), mostSteps);
    // Below, copying pieces of rows takes less time than looking up their pixels.
    inPieces_ = pixelsPerRow_ > 6;
}

std::uint64_t TurnedSheet::word(int x, int y, std::uint64_t mask) const
{
    // The half makes the cut to an integer the nearest pixel.
    const std::int64_t startX = fixed(turn_.sourceX(x, y) - origin_.x + 0.5);
    const std::int64_t startY = fixed(turn_.sourceY(x, y) - origin_.y + 0.5);
    std::uint64_t word = 0;
    for (int first = 0; first < 64; first += InkMap::cell) {
        const int last = first + InkMap::cell - 1;
        const auto atX = [&](int i) { return int((startX + i * stepX_) >> 32); };
        const auto atY = [&](int i) { return int((startY + i * stepY_) >> 32); };
        const std::uint64_t part = mask << first >> 32;
        if (part == 0 || !ink_.mayHoldInk(atX(first), atY(first), atX(last), atY(last)))
            continue;
        const int begin = first + std::countl_zero(part) - 32;
        const int end = first + 32 - std::countr_zero(part);
        const std::int64_t fromX = startX + begin * stepX_;
        const std::int64_t fromY = startY + begin * stepY_;
        word |= inPieces_ ? piecewise(fromX, fromY, begin, end) : pixelByPixel(fromX, fromY, begin, end);
    }
    return word & mask;
}

std::uint64_t TurnedSheet::pixelByPixel(std::int64_t x, std::int64_t y, int begin, int end) const
{
    const std::uint64_t* const words = sheet_.row(0);
    const std::ptrdiff_t wordsPerRow = sheet_.wordsPerRow();
    std::uint64_t word = 0;
    for (int i = begin; i < end; ++i) {
        const std::uint64_t pixels = words[(y >> 32) * wordsPerRow + (x >> 38)];
        word = word << 1 | (pixels >> (~(x >> 32) & 63) & 1);
        x += stepX_;
        y += stepY_;
    }
    return word << (64 - end);
}

/// As long as neither the source's row nor its distance from the result's column changes, pixels are copied together.
std::uint64_t TurnedSheet::piecewise(std::int64_t x, std::int64_t y, int begin, int end) const
{
    std::uint64_t word = 0;
    while (begin < end) {
        const std::uint32_t fractionY = stepY_ > 0 ? ~std::uint32_t(y) : std::uint32_t(y);
        const int length =
            std::min({stepsLeft(fractionY, pixelsPerRow_), stepsLeft(std::uint32_t(x), pixelsPerColumn_), end - begin});
        const int column = int(x >> 32);
        const std::uint64_t* words = sheet_.row(int(y >> 32)) + (column >> 6);
        const int shift = column & 63;
        const std::uint64_t pixels = shift ? words[0] << shift | words[1] >> (64 - shift) : words[0];
        word |= (pixels & allBits << (64 - length)) >> begin;
        begin += length;
        x += length * stepX_;
        y += length * stepY_;
    }
    return word;
}

} // namespace imaging
