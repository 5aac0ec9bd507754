#pragma once

#include <optional>

#include "imaging/rounded_axis.h"

namespace imaging {

/// What the source pixels weigh that a target pixel covers, rounded to numbers that fit in a byte.
class ByteWeights
{
public:
    struct Ends
    {
        int first = 0;
        int last = 0;
    };

    /// The largest weights of which all source pixels of a target pixel together weigh `most` or less, or one more for
    /// rounding.
    ByteWeights(const RoundedAxis& axis, int most)
        : m_axis(axis), m_whole(int(most * axis.whole() / axis.targetPixel()))
    {}

    /// What a pixel weighs that is covered wholly.
    int whole() const { return m_whole; }

    /// What all source pixels of a target pixel weigh.
    int sum(Ends ends) const { return ends.first + ends.last + (m_axis.n() - 1) * m_whole; }

    Ends nearest(RoundedAxis::Ends ends) const;

    /// By how much at most the weight of ink in one of a target pixel's lines, less half of what the line weighs, is
    /// wrong, whichever of the line's pixels are ink.
    float error(RoundedAxis::Ends ends, Ends bytes) const;

    /// For a source that n divides in the other direction, so that a target pixel lies over n lines: weights by which
    /// any ink in them reaches half of all just when it does so by the true weights. Nothing if no bytes are found that
    /// do.
    std::optional<Ends> alike(RoundedAxis::Ends ends) const;
    bool areAlike(RoundedAxis::Ends ends, Ends bytes) const;

private:
    RoundedAxis m_axis;
    int m_whole;
};

} // namespace imaging
