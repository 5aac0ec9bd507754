#include "imaging/ink_map.h"

#include <algorithm>

#include "imaging/parallel.h"

namespace imaging {

namespace {

// One flag for each cell of a row of cells, and one more.
void markRow(const Bitmap& bitmap, int cellRow, char* flags)
{
    std::vector<std::uint64_t> any(std::size_t(bitmap.wordsPerRow()), 0);
    const int last = std::min((cellRow + 1) * InkMap::cell, bitmap.height());
    for (int y = cellRow * InkMap::cell; y < last; ++y) {
        const std::uint64_t* words = bitmap.row(y);
        for (std::size_t i = 0; i < any.size(); ++i)
            any[i] |= words[i];
    }
    for (std::size_t i = 0; i < any.size(); ++i) {
        flags[2 * i] = any[i] >> 32 != 0;
        flags[2 * i + 1] = std::uint32_t(any[i]) != 0;
    }
    flags[2 * any.size()] = 0;
}

} // namespace

InkMap::InkMap(const Bitmap& bitmap, bool falling) : m_columns(bitmap.wordsPerRow() * 2 + 1)
{
    const int rows = (bitmap.height() + cell - 1) / cell;
    // A row more, as each cell also takes the flags of the one below.
    std::vector<char> flags(std::size_t(m_columns * (rows + 1)), 0);
    inParallel(rows, rowsWorthACore(bitmap.wordsPerRow() * cell), [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            markRow(bitmap, y, flags.data() + y * m_columns);
    });
    m_flags.assign(flags.size(), 0);
    for (int y = 0; y < rows; ++y) {
        const char* here = flags.data() + y * m_columns;
        const char* beside = falling ? here + m_columns : y > 0 ? here - m_columns : here;
        for (std::ptrdiff_t x = 0; x + 1 < m_columns; ++x)
            m_flags[std::size_t(y * m_columns + x)] = here[x] | here[x + 1] | beside[x] | beside[x + 1];
    }
}

} // namespace imaging
