#include "imaging/fax_row_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "imaging/fax_codes.h"

namespace imaging {

namespace {

// Every table is looked up by as many of the next bits as its longest code has, and so has the same entry for all
// numbers that begin with a code. An entry with the length 0 stands for no code.
template <typename Entry, int bits> struct CodeTable
{
    std::array<Entry, std::size_t(1) << bits> entries{};

    constexpr void add(std::string_view code, Entry entry)
    {
        std::size_t first = 0;
        for (const char bit : code)
            first = first << 1 | std::size_t(bit == '1');
        const int free = bits - int(code.size());
        for (std::size_t i = first << free; i < (first + 1) << free; ++i)
            entries[i] = entry;
    }

    const Entry& next(const FaxBits& stream) const { return entries[stream.peek(bits)]; }
};

struct RunEntry
{
    std::uint16_t length : 4;
    std::uint16_t run : 12;
};

using RunTable = CodeTable<RunEntry, longestFaxCode>;

constexpr RunTable runTable(const FaxRunCodes& codes)
{
    RunTable table;
    for (int i = 0; i < faxRunCodeCount; ++i) {
        const std::string_view code = codes[std::size_t(i)];
        table.add(code, {std::uint16_t(code.size()), std::uint16_t(runOfFaxCode(i))});
    }
    return table;
}

constexpr RunTable runTables[] = {runTable(whiteRunCodes), runTable(blackRunCodes)};

enum class Mode : std::uint8_t
{
    None,
    Vertical,
    Pass,
    Horizontal
};

struct ModeEntry
{
    Mode mode;
    std::uint8_t length;
    std::int8_t offset; // of a1 from b1
};

constexpr CodeTable<ModeEntry, longestModeCode> modeTable = [] {
    CodeTable<ModeEntry, longestModeCode> table;
    for (int offset = -farthestVertical; offset <= farthestVertical; ++offset) {
        const std::string_view code = verticalCodes[std::size_t(offset + farthestVertical)];
        table.add(code, {Mode::Vertical, std::uint8_t(code.size()), std::int8_t(offset)});
    }
    table.add(passCode, {Mode::Pass, std::uint8_t(passCode.size()), 0});
    table.add(horizontalCode, {Mode::Horizontal, std::uint8_t(horizontalCode.size()), 0});
    return table;
}();

// A run with its make-up codes; -1 when a code is not sound or the run longer than most. There must be bits for two
// codes.
int takeRun(FaxBits& bits, bool black, int most)
{
    for (int run = 0;;) {
        const RunEntry entry = runTables[black].next(bits);
        run += entry.run;
        if (entry.length == 0 || run > most)
            return -1;
        bits.skip(entry.length);
        if (entry.run <= longestTerminatingRun)
            return run;
        bits.refill();
    }
}

} // namespace

FaxRowReader::FaxRowReader(const FaxStream& stream, int width)
    : m_width(width), m_bits(stream), m_above(std::size_t(width) + 6), m_row(std::size_t(width) + 6)
{
    m_row[1] = width;
    finishRow(m_row.data() + 2);
}

void FaxRowReader::finishRow(const int* behindLast)
{
    m_count = std::size_t(behindLast - m_row.data()) - 1;
    m_row[m_count + 1] = m_width;
    m_row[m_count + 2] = m_width + 1;
    m_above.swap(m_row);
}

bool FaxRowReader::readOneDimensional()
{
    const int* const first = m_row.data() + 1;
    int* change = m_row.data() + 1;
    int at = 0;
    while (change - first <= m_width) {
        for (const bool black : {false, true}) {
            m_bits.refill();
            const int run = takeRun(m_bits, black, m_width - at);
            if (run < 0)
                return false;
            *change++ = at += run;
            if (at == m_width) {
                finishRow(change);
                return !m_bits.beyondEnd();
            }
        }
        if (change[-1] == change[-3]) // two runs of nothing are nothing for the row below, too
            change -= 2;
    }
    return false;
}

bool FaxRowReader::readTwoDimensional()
{
    FaxBits bits = m_bits; // in registers
    const int width = m_width;
    const int* const first = m_row.data() + 1;
    const int* const full = first + width;
    int* change = m_row.data() + 1;
    const int* b1 = m_above.data() + 1;
    int a0 = 0;
    while (a0 < width) {
        bits.refill();
        if (change > full)
            return false;
        if (bits.ahead() >> 59 == 31) {
            // Lines that go straight down: many changes below those above, a single bit each.
            int ones = std::min(std::countl_one(bits.ahead()), 56);
            const int* const from = b1;
            do {
                *change++ = a0 = *b1++;
            } while (*b1 > a0 && b1 - from < ones && a0 < width);
            bits.skip(int(b1 - from));
            if (a0 < width)
                while (*b1 <= a0)
                    b1 += 2;
            continue;
        }
        const ModeEntry& entry = modeTable.next(bits);
        bits.skip(entry.length);
        if (entry.mode == Mode::Vertical) {
            const int a1 = *b1 + entry.offset;
            if (a1 < a0)
                return false;
            *change++ = a0 = a1;
            // The next change is to the other colour, so b1 is one of the neighbours. Only after a step to the left can
            // the one before still lie ahead.
            b1 += b1[-1] > a0 ? -1 : 1;
        } else if (entry.mode == Mode::Horizontal) {
            for (int i = 0; i < 2; ++i) {
                const int run = takeRun(bits, (change - first) & 1, width - a0);
                if (run < 0)
                    return false;
                *change++ = a0 += run;
            }
        } else if (entry.mode == Mode::Pass) {
            a0 = b1[1];
            b1 += 2;
            if (change == first) // nothing is behind a row's beginning, not even a change that lies there
                continue;
        } else {
            return false;
        }
        if (a0 < width)
            while (*b1 <= a0)
                b1 += 2;
    }
    if (change[-1] != a0) // ended by a pass
        *change++ = a0;
    m_bits = bits;
    finishRow(change);
    return a0 == width && !bits.beyondEnd();
}

} // namespace imaging
