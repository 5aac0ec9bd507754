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

    /// Of the weights to be had for which all source pixels of a target pixel together weigh `most`, or one more for
    /// rounding, the largest ones.
    ByteWeights(const RoundedAxis& axis, int most)
        : m_axis(axis), m_whole(int(most * axis.whole() / axis.targetPixel()))
    {}

    /// What a pixel weighs that is covered wholly.
    int whole() const { return m_whole; }

    /// What all source pixels of a target pixel weigh.
    int sum(Ends ends) const { return ends.first + ends.last + (m_axis.n() - 1) * m_whole; }

    Ends nearest(RoundedAxis::Ends ends) const;

    /// By how much at most the weight of any of these pixels, less half of all, differs from the true one.
    float error(RoundedAxis::Ends ends, Ends bytes) const;

    /// In the other direction, a target pixel covers n source pixels wholly: the weights with which any ink among these
    /// n times n + 1 pixels reaches half of all just when it does so by the true ones; nothing if no bytes are found.
    std::optional<Ends> alike(RoundedAxis::Ends ends) const;
    bool areAlike(RoundedAxis::Ends ends, Ends bytes) const;

private:
    RoundedAxis m_axis;
    int m_whole;
};

} // namespace imaging
