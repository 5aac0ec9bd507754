#pragma once

#include <span>

#include "imaging/ink_map.h"
#include "imaging/step_patterns.h"
#include "imaging/strips.h"

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

/// Looks up pixels turned by at most 45 degrees either way, 64 of the result at a time. Coordinates are fixed-point.
class TurnedSheet
{
public:
    /// The strips must outlive this.
    TurnedSheet(const Strips& strips, const InverseTurn& turn);

    /// A position in the strips with 40 bits of fraction: over the longest row, steps of 64 pixels add up to an error
    /// of less than a hundred-millionth of a pixel.
    struct Place
    {
        std::int64_t x;
        std::int64_t y;
    };

    Place placeOf(int x, int y) const;

    /// Of the 64th pixel to the right in the result.
    Place next(Place place) const { return {place.x + m_wordX, place.y + m_wordY}; }

    /// Of each place the 64 pixels of the result from it on: the nearest ones. They must lie in the box, or no farther
    /// outside than rounding brings them.
    ///
    /// They go by groups of sixteen, for which sixteen rows of three strips are at hand. Each pixel picks its row out
    /// of all three, and of the strip in which it lies the bit of its column.
    void words(std::span<const Place> places, std::uint64_t* words) const;

    /// The same of one place, pixel by pixel: those where the mask, a run of ones, has a one, else paper. Every
    /// processor can, and the faster way is compared with it.
    std::uint64_t plainWord(Place place, std::uint64_t mask) const;

private:
    void wordsByGroups(std::span<const Place> places, std::uint64_t* words) const;

    const Strips& m_strips;
    InkMap m_ink;
    InverseTurn m_turn;
    std::int64_t m_stepX; // with 32 bits of fraction
    std::int64_t m_stepY;
    std::int64_t m_wordX; // with 40 bits of fraction
    std::int64_t m_wordY;
    StepPatterns m_columns;
    StepPatterns m_rows;
    bool m_byGroups;
};

} // namespace imaging
