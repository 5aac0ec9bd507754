#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <unordered_map>

#include "drawing/flatten.h"
#include "imaging/raster_file.h"

namespace worker {

/// How wide the lines of each colour are drawn.
class PenTable
{
public:
    static constexpr int defaultWidth = 18; // hundredths of a millimetre
    static constexpr int colors = 254;      // the indices 1 to 254 have pens

    /// Every pen of the default width.
    PenTable() { m_widths.fill(defaultWidth); }

    /// From text with one decimal integer a line, in hundredths of a millimetre: the first line is the pen of index 1.
    /// The last line holds for the indices that remain, lines beyond the table count for nothing, and a line that does
    /// not begin with a number, or whose number is negative, is a 0. Text without lines leaves the default.
    explicit PenTable(std::string_view text);

    /// Hundredths of a millimetre, 0 or more; the default for an index outside the table.
    int width(int colorIndex) const;

private:
    std::array<int, colors> m_widths;
};

/// The table in a file. Throws imaging::ImagingError when it can't be read.
PenTable readPenTable(const std::filesystem::path& path);

/// A pen's width in pixels, rounded: at least 1, which is also the width where the resolution is unknown, and at most
/// widestPen.
int penPixels(int width, imaging::Resolution resolution);
inline constexpr int widestPen = 1000; // pixels; 2 cm at 1,200 dpi, ten times what plotters have

/// The index whose pen draws a piece: its own, or for a true colour the one of the indices 1 to 254 that comes nearest,
/// by the distance between red, green and blue; of several the lowest.
class PenColors
{
public:
    int indexOf(const drawing::FlatStyle& style);

private:
    std::unordered_map<std::uint32_t, int> m_nearest; // by the true colour
};

} // namespace worker
