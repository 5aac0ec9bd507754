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
        const std::string_view code = verticalCodes[std::size_t(offset) + std::size_t(farthestVertical)];
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

// How far a two-dimensional row has been decoded.
struct Progress
{
    int* change; // the next one is put there
    const int* b1;
    int a0 = 0;

    // The first change above that lies ahead, of those to the same colour as b1. There must be one.
    void findB1()
    {
        while (*b1 <= a0)
            b1 += 2;
    }
};

// Lines that go straight down give the same changes as above, each as one bit: whole runs of ones are taken together,
// and the places copied, up to the row's end.
constexpr int worthCopying = 5;
constexpr int worthRefilling = 32; // enough for a copy of some length

void takeStraight(FaxBits& bits, Progress& row, int width)
{
    const int ones = std::min(std::countl_one(bits.ahead()), bits.ready());
    const int* const from = row.b1;
    do {
        *row.change++ = row.a0 = *row.b1++;
    } while (*row.b1 > row.a0 && row.a0 < width && row.b1 - from < ones);
    bits.skip(int(row.b1 - from));
}

bool takeVertical(Progress& row, int offset)
{
    const int a1 = *row.b1 + offset;
    if (a1 < row.a0)
        return false;
    *row.change++ = row.a0 = a1;
    // The next change is to the other colour, so b1 is a neighbour. If this one lies left of b1, the one before may
    // still be ahead.
    row.b1 += row.b1[-1] > a1 ? -1 : 1;
    return true;
}

bool takeHorizontal(FaxBits& bits, Progress& row, bool black, int width)
{
    bits.refill();
    for (const bool colour : {black, !black}) {
        const int run = takeRun(bits, colour, width - row.a0);
        if (run < 0)
            return false;
        *row.change++ = row.a0 += run;
    }
    return true;
}

} // namespace

FaxRowReader::FaxRowReader(const FaxStream& stream, int width)
    : m_width(width), m_bits(stream), m_above(std::size_t(width) + 1 + spareChanges), m_row(m_above.size())
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
    FaxBits bits = m_bits; // here the compiler keeps it in registers
    const int width = m_width;
    const int* const first = m_row.data() + 1;
    Progress row{m_row.data() + 1, m_above.data() + 1};
    while (row.a0 < width) {
        if (row.change - first > width)
            return false;
        if (bits.ready() < worthRefilling)
            bits.refill();
        if (bits.ahead() >> (64 - worthCopying) == (1 << worthCopying) - 1) {
            takeStraight(bits, row, width);
        } else {
            const ModeEntry& entry = modeTable.next(bits);
            bits.skip(entry.length);
            if (entry.mode == Mode::Vertical) {
                if (!takeVertical(row, entry.offset))
                    return false;
            } else if (entry.mode == Mode::Horizontal) {
                if (!takeHorizontal(bits, row, (row.change - first) & 1, width))
                    return false;
            } else if (entry.mode == Mode::Pass) {
                row.a0 = row.b1[1];
                row.b1 += 2;
                if (row.change == first) // before the row's first change b1 may lie at a0
                    continue;
            } else {
                return false;
            }
        }
        if (row.a0 < width)
            row.findB1();
    }
    if (row.change[-1] != row.a0) // it ended by a pass
        *row.change++ = row.a0;
    m_bits = bits;
    finishRow(row.change);
    return row.a0 == width && !bits.beyondEnd();
}

} // namespace imaging
