#include "imaging/ink_map.h"

#include <algorithm>
#include <cstring>

#include "imaging/parallel.h"

namespace imaging {

namespace {

// One flag for each cell of a column of cells.
void markColumn(const Strips& strips, std::ptrdiff_t column, char* flags, std::ptrdiff_t rows)
{
    constexpr std::ptrdiff_t stripsPerCell = InkMap::cell / 8;
    const std::ptrdiff_t end = std::min((column + 1) * stripsPerCell, strips.count());
    for (std::ptrdiff_t strip = column * stripsPerCell; strip < end; ++strip) {
        const std::uint8_t* bytes = strips.at(strip * 8, 0);
        for (std::ptrdiff_t row = 0; row < rows; ++row, bytes += InkMap::cell) {
            std::uint64_t words[InkMap::cell / 8];
            std::memcpy(words, bytes, sizeof words);
            flags[row] |= (words[0] | words[1] | words[2] | words[3]) != 0;
        }
    }
}

} // namespace

InkMap::InkMap(const Strips& strips, bool falling) : m_rows(strips.length() / cell)
{
    const std::ptrdiff_t columns = (strips.count() * 8 + cell - 1) / cell;
    // Two columns and rows more, as each cell also takes the flags of those beside it.
    constexpr std::ptrdiff_t reach = 2;
    const std::ptrdiff_t stride = m_rows + 2 * reach;
    std::vector<char> flags(std::size_t(stride * (columns + reach)), 0);
    inParallel(int(columns), rowsWorthACore(strips.length() / 2), [&](int begin, int end) {
        for (int column = begin; column < end; ++column)
            markColumn(strips, column, flags.data() + column * stride + reach, m_rows);
    });
    m_flags.resize(std::size_t(columns * m_rows));
    const std::ptrdiff_t below = falling ? 1 : -1;
    std::vector<char> across(std::size_t(stride), 0);
    for (std::ptrdiff_t column = 0; column < columns; ++column) {
        const char* const here = flags.data() + column * stride;
        for (std::ptrdiff_t row = 0; row < stride; ++row)
            across[std::size_t(row)] = here[row] | here[stride + row] | here[2 * stride + row];
        const char* const first = across.data() + reach;
        for (std::ptrdiff_t row = 0; row < m_rows; ++row)
            m_flags[std::size_t(column * m_rows + row)] = first[row] | first[row + below] | first[row + 2 * below];
    }
}

} // namespace imaging
