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
/// whose ink comes too near to half of their area for such weights are left open, of a scan a few of a thousand. Where
/// Factor divides one of the directions, only those of a few rows or columns are.
template <int Factor> class ByteReduction
{
public:
    /// The source has to outlive this.
    ByteReduction(const Bitmap& source, const RoundedAxis& columns, const RoundedAxis& rows);

    /// How many words weigh() sets, one or more beyond the target's row.
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
        int source; // the first one's first pixel if it were among them; it and all that follow may lie outside
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
        bool decideAll;
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
