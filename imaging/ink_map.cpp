#include "imaging/ink_map.h"

#include "imaging/parallel.h"

namespace imaging {

InkMap::InkMap(const Bitmap& bitmap)
    : m_columns((bitmap.width() >> cellShift) + 2), m_rows((bitmap.height() >> cellShift) + 2),
      m_flags(std::size_t(m_columns) * std::size_t(m_rows), 0)
{
    const int cellRows = (bitmap.height() + cell - 1) / cell;
    inParallel(cellRows, rowsWorthACore(bitmap.wordsPerRow() * cell), [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            markRow(bitmap, y);
    });
}

void InkMap::markRow(const Bitmap& bitmap, int cellRow)
{
    std::vector<std::uint64_t> any(std::size_t(bitmap.wordsPerRow()), 0);
    const int last = std::min((cellRow + 1) * cell, bitmap.height());
    for (int y = cellRow * cell; y < last; ++y) {
        const std::uint64_t* words = bitmap.row(y);
        for (std::size_t i = 0; i < any.size(); ++i)
            any[i] |= words[i];
    }
    char* flags = m_flags.data() + std::ptrdiff_t(cellRow) * m_columns;
    for (std::size_t i = 0; i < any.size(); ++i) {
        const std::ptrdiff_t left = std::ptrdiff_t(i) * 2;
        flags[left] = any[i] >> 32 != 0;
        if (left + 1 < m_columns)
            flags[left + 1] = std::uint32_t(any[i]) != 0;
    }
}

} // namespace imaging
