#pragma once

#include "imaging/bitmap.h"
#include "imaging/ink_map.h"
#include "imaging/linear_span.h"
#include "imaging/slanted_line.h"

namespace imaging {

/// The inverse of a turn: where a pixel of the result lies in the source. Positions are those of pixel centres, and the
/// pivot is the centre of a pixel.
struct InverseTurn
{
    double cosine;
    double sine;
    double pivotX;
    double pivotY;

    InverseTurn(double radians, Point about);

    double sourceX(double x, double y) const { return cosine * (x - pivotX) + sine * (y - pivotY) + pivotX; }
    double sourceY(double x, double y) const { return cosine * (y - pivotY) - sine * (x - pivotX) + pivotY; }
    double targetX(double x, double y) const { return cosine * (x - pivotX) - sine * (y - pivotY) + pivotX; }
    double targetY(double x, double y) const { return cosine * (y - pivotY) + sine * (x - pivotX) + pivotY; }
};

/// Paper that must lie around the pixels of a sheet that is looked up turned: a sample that rounding puts just outside
/// finds some, and a word that begins inside can be read whole.
constexpr int sheetMargin = 2;
constexpr int sheetRightMargin = sheetMargin + 128;

/// Tells in how many steps a fraction of 32 bits falls below zero that shrinks by `step` with each.
class Countdown
{
public:
    explicit Countdown(std::int64_t step);

    /// At least 1 and never more than it takes; a step less where a division would have had no rest. 64 or more for
    /// a step of 0.
    std::int64_t steps(std::uint32_t fraction) const { return std::int64_t(m_inverse * fraction >> m_shift) + m_least; }

private:
    std::int64_t m_least;
    int m_shift;
    std::uint64_t m_inverse; // of the step, times 2^m_shift: at most 2^32
};

/// Looks up a sheet turned by at most 45 degrees either way, 64 pixels of the result at a time. Coordinates are
/// fixed-point with 32 bits of fraction, begun anew every 64 pixels so that rounding does not pile up.
class TurnedSheet
{
public:
    /// `origin` is where the sheet's top left pixel lies in the source. The sheet must outlive this.
    TurnedSheet(const Bitmap& sheet, Point origin, const InverseTurn& turn);

    /// The 64 pixels of the result from (x, y) on: the nearest pixels of the sheet where the mask, a run of ones, has a
    /// one, else paper. Those in the mask must not lie farther outside the sheet's pixels than its margin.
    std::uint64_t word(int x, int y, std::uint64_t mask) const;

    /// The same, pixel by pixel: what the faster ways are compared with.
    std::uint64_t plainWord(int x, int y, std::uint64_t mask) const;

private:
    // Any angle: each pixel by itself, one after the other.
    std::uint64_t pixelByPixel(std::int64_t x, std::int64_t y, std::uint64_t mask) const;

    // Small angles: as long as the source stays in one row, pixels are copied together.
    //
    //   source rows  aaaaaaaaaaaa          result  bbbbbbccccccdddddd
    //                ______bbbbbbcccccc    falls into pieces between the steps
    //
    // Half of the work is shifts, which newer processors have quicker ones for.
    std::uint64_t piecewise(std::int64_t x, std::int64_t y) const;
    std::uint64_t piecewiseByQuickShifts(std::int64_t x, std::int64_t y) const;
    std::uint64_t pieces(std::int64_t x, std::int64_t y) const;

    const Bitmap& m_sheet;
    InkMap m_ink;
    double m_originX;
    double m_originY;
    InverseTurn m_turn;
    std::int64_t m_stepX;
    std::int64_t m_stepY;
    bool m_gather;
    bool m_quickShifts;
    SlantedLine m_line;
    Countdown m_untilColumn; // how long the source keeps its distance from the result's columns
    Countdown m_untilRow;    // how long it stays in one row
    std::int64_t m_rowStep;  // from there to the next row, in words
    int m_pieces;            // of a word; 0 where they are too many to be worth it
};

} // namespace imaging
