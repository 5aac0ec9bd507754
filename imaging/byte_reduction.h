#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/bitmap.h"
#include "imaging/byte_weights.h"
#include "imaging/rounded_axis.h"

namespace imaging {

/// Reduces to a rounded half or fourth (Factor 2 or 4) by weights that fit in a byte, on processors with AVX2. Pixels
/// whose ink comes too near to half of their area for such weights are left open. Of a large scan that is one of a
/// hundred or less; where Factor divides one of the directions, a few rows or columns.
template <int Factor> class ByteReduction
{
public:
    /// The source has to outlive this.
    ByteReduction(const Bitmap& source, const RoundedAxis& columns, const RoundedAxis& rows);

    /// How many words weigh() sets: as many as the target's row has, or some more.
    std::size_t wordsOfRow() const { return m_alwaysOpen.size(); }

    /// Writes which pixels of target row y are ink, and which are left open; those may be set as ink too, and so may
    /// any beyond the row's end.
    void weigh(int y, std::uint64_t* ink, std::uint64_t* open) const;

    static constexpr int targetWords = 4 / Factor;
    static constexpr int targetPixels = 64 * targetWords;

    /// Target pixels of `targetWords` words for whose columns the same weights will do.
    struct Block
    {
        int target; // word
        int source; // where its first pixel would begin if it lay as the others do; that and what follows may be
                    // outside
        std::array<std::uint64_t, targetWords> mask;
        int sum;     // of the weights
        float error; // by how much at most they are wrong
        // What the pixels weigh that are the bits of the index, and of fourths what the last one weighs if it is ink,
        // which is the index's highest bit.
        std::array<std::uint8_t, 16> table;
        std::array<std::uint8_t, 16> lastTable;
    };

    struct RowWeights
    {
        ByteWeights::Ends ends;
        int whole;
        int sum;
        float error;
    };

private:
    int addBlock(int t);
    int endOfRun(int t) const;
    Block blockOf(int t, int end, ByteWeights::Ends ends) const;
    std::optional<RowWeights> rowWeights(int y) const;
    bool oneIsWhole() const { return m_columns.excess() == 0 || m_rows.excess() == 0; }

    const Bitmap& m_source;
    RoundedAxis m_columns;
    RoundedAxis m_rows;
    ByteWeights m_columnWeights;
    ByteWeights m_rowWeights;
    std::vector<Block> m_blocks;
    std::vector<std::uint64_t> m_alwaysOpen;
};

extern template class ByteReduction<2>;
extern template class ByteReduction<4>;

} // namespace imaging
