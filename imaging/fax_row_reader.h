#pragma once

#include <span>
#include <vector>

#include "imaging/fax_stream.h"

namespace imaging {

/// Decodes rows of group 3 and group 4, one after the other, into the places where their colour changes.
class FaxRowReader
{
public:
    /// For rows of that many pixels; the row above the first one is paper.
    FaxRowReader(const FaxStream& stream, int width);

    /// The stream, between two rows.
    FaxBits& bits() { return m_bits; }

    /// Each decodes a row and returns whether its codes are sound, whole and of just the row's width. After false the
    /// reader is of no further use.
    bool readOneDimensional();
    bool readTwoDimensional();

    /// Of the row decoded last: where its pixels change from paper to ink and back, in turn and in ascending order. Two
    /// changes at one place cancel each other. The last one is the width.
    std::span<const int> changes() const { return {m_above.data() + 1, m_count}; }

private:
    void finishRow(const int* behindLast);

    // A row with more changes than pixels is refused, but only after the codes that are taken together, with a change
    // for each of up to 63 bits, have been put down. The marks around a row need three places.
    static constexpr int spareChanges = 63 + 3;

    int m_width;
    FaxBits m_bits;
    // Both rows have a 0 in front, which is not part of them, and behind their last change, which is the width,
    // another one there and one beyond, so that the search for b1 needs no end and what passes that leads to a fault.
    std::vector<int> m_above;
    std::vector<int> m_row; // being decoded
    std::size_t m_count = 0;
};

} // namespace imaging
