#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/bitmap.h"
#include "imaging/rounded_axis.h"

namespace imaging {

/// Fills the target with the source of twice its sides: ink where two or more of four pixels are. For processors with
/// AVX2.
void halveByWords(const Bitmap& source, Bitmap& target);

/// Reduces to a half where two divides one direction and the other is rounded, on processors with AVX2. In the rounded
/// direction, a target pixel lies over three lines of two pixels, which are source rows or columns.
class HalfByWords
{
public:
    /// The source has to outlive this.
    HalfByWords(const Bitmap& source, const RoundedAxis& columns, const RoundedAxis& rows);

    static bool suits(const RoundedAxis& columns, const RoundedAxis& rows);

    /// How many words weigh() sets, one or more beyond the target's row.
    std::size_t wordsOfRow() const { return m_alwaysOpen.size(); }

    /// Writes which pixels of target row y are ink, and which are left open, those of a few rows or columns; they may
    /// be set as ink too, and so may any beyond the row's end.
    void weigh(int y, std::uint64_t* ink, std::uint64_t* open) const;

    /// Which lines reach half of the area, besides those of which the middle one has a pixel and each other one as
    /// well, or the middle one both and another one any.
    struct Rule
    {
        bool middle;      // both pixels of the middle line alone
        bool outer;       // both of the first and of the last line, and none between
        bool firstMiddle; // both of the first line and one of the middle line
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
