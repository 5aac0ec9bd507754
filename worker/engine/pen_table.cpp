#include "worker/engine/pen_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "imaging/byte_stream.h"
#include "imaging/error.h"

namespace worker {

namespace {

constexpr double hundredthsOfMillimetrePerInch = 2540;

int widthIn(std::string_view line)
{
    line.remove_prefix(std::min(line.find_first_not_of(" \t+"), line.size()));
    int width = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), width);
    const bool tooLarge = error == std::errc::result_out_of_range && line.front() != '-';
    return tooLarge ? std::numeric_limits<int>::max() : std::max(width, 0);
}

int distance(const drawing::Rgb& a, const drawing::Rgb& b)
{
    const auto square = [](int difference) { return difference * difference; };
    return square(a.red - b.red) + square(a.green - b.green) + square(a.blue - b.blue);
}

int nearestIndex(const drawing::Rgb& color)
{
    int nearest = 1;
    for (int index = 2; index <= PenTable::colors; ++index) {
        if (distance(drawing::rgbOfIndex(index), color) < distance(drawing::rgbOfIndex(nearest), color))
            nearest = index;
    }
    return nearest;
}

} // namespace

PenTable::PenTable(std::string_view text) : PenTable()
{
    std::size_t pen = 0;
    for (; pen < m_widths.size() && !text.empty(); ++pen) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        m_widths[pen] = widthIn(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    if (pen > 0)
        std::fill(m_widths.begin() + std::ptrdiff_t(pen), m_widths.end(), m_widths[pen - 1]);
}

int PenTable::width(int colorIndex) const
{
    return colorIndex >= 1 && colorIndex <= colors ? m_widths[std::size_t(colorIndex) - 1] : defaultWidth;
}

PenTable readPenTable(const std::filesystem::path& path)
{
    constexpr std::size_t longestTable = 1 << 16; // bytes; a line has a few
    try {
        imaging::FileSource file(path);
        std::string text(longestTable, '\0');
        text.resize(file.read(0, text.data(), text.size()));
        return PenTable(text);
    } catch (const imaging::ImagingError& error) {
        throw imaging::ImagingError(std::string("The table of pens can't be read. ") + error.what());
    }
}

int penPixels(int width, imaging::Resolution resolution)
{
    const double dotsPerInch = (resolution.x + resolution.y) / 2;
    const double pixels = std::floor(width * dotsPerInch / hundredthsOfMillimetrePerInch + 0.5);
    return static_cast<int>(std::min(std::max(1.0, pixels), double(widestPen))); // 1 also where it is no number
}

int PenColors::indexOf(const drawing::FlatStyle& style)
{
    if (style.rgb == drawing::rgbOfIndex(style.colorIndex))
        return style.colorIndex;
    const std::uint32_t key = std::uint32_t(style.rgb.red) << 16 | std::uint32_t(style.rgb.green) << 8 | style.rgb.blue;
    const auto [found, added] = m_nearest.try_emplace(key, 0);
    if (added)
        found->second = nearestIndex(style.rgb);
    return found->second;
}

} // namespace worker
