#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/bitmap.h"
#include "imaging/rounded_axis.h"

namespace imaging {

/// Whether the source has twice the target's sides and this processor has AVX2.
bool halvesEvenSides(Size source, Size target);

/// Fills the target, for which that holds, with the source reduced: ink where two or more of four pixels are.
void halveEvenSides(const Bitmap& source, Bitmap& target);

/// Reduces to a half where two divides one direction and the other is rounded, on processors with AVX2. In the rounded
/// direction, a target pixel lies over three lines of two pixels, which are source rows or columns.
class HalfByWords
{
public:
    /// The source has to outlive this.
    HalfByWords(const Bitmap& source, const RoundedAxis& columns, const RoundedAxis& rows);

    static bool suits(const RoundedAxis& columns, const RoundedAxis& rows);

    /// How many words weigh() sets: as many as the target's row has, or some more.
    std::size_t wordsOfRow() const { return m_alwaysOpen.size(); }

    /// Writes which pixels of target row y are ink, and which are left open, those of a few rows or columns; they may
    /// be set as ink too, and so may any beyond the row's end.
    void weigh(int y, std::uint64_t* ink, std::uint64_t* open) const;

    /// When three lines reach half of the area, by how many pixels of the middle one are ink:
    ///
    ///     2    when another line has any, and without if `middle`
    ///     1    when both others have any, or the first has both if `firstMiddle`, or the last both if `lastMiddle`
    ///     0    when both others have both, if `outer`
    struct Rule
    {
        bool middle;
        bool outer;
        bool firstMiddle;
        bool lastMiddle;
    };

private:
    void weighRows(int y, std::uint64_t* ink, std::uint64_t* open) const;

    const Bitmap& m_source;
    RoundedAxis m_columns;
    RoundedAxis m_rows;
    // Where columns are rounded: how far from column 2 t target column t begins, and the rules by source columns.
    int m_beyond = 0;
    bool m_middle = false;
    bool m_outer = false;
    std::vector<std::uint64_t> m_firstMiddle;
    std::vector<std::uint64_t> m_lastMiddle;
    std::vector<std::uint64_t> m_alwaysOpen;
};

} // namespace imaging
