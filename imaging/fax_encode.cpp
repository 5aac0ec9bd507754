#include "imaging/fax_encode.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "imaging/bits.h"
#include "imaging/error.h"
#include "imaging/fax_bit_writer.h"
#include "imaging/fax_codes.h"
#include "imaging/fax_stream.h"

namespace imaging {

namespace {

using RunCodes = std::array<FaxCode, faxRunCodeCount>;

constexpr RunCodes runCodesOf(const FaxRunCodes& digits)
{
    RunCodes codes;
    for (std::size_t i = 0; i < codes.size(); ++i)
        codes[i] = FaxCode(digits[i]);
    return codes;
}

constexpr RunCodes runCodes[] = {runCodesOf(whiteRunCodes), runCodesOf(blackRunCodes)};

constexpr auto vertical = [] {
    std::array<FaxCode, verticalCodes.size()> codes;
    for (std::size_t i = 0; i < codes.size(); ++i)
        codes[i] = FaxCode(verticalCodes[i]);
    return codes;
}();

constexpr FaxCode pass(passCode);
constexpr FaxCode horizontal(horizontalCode);

void putRun(FaxBitWriter& writer, bool black, int run)
{
    const RunCodes& codes = runCodes[black];
    if (run > longestTerminatingRun) {
        for (; run > longestMakeUpRun + longestTerminatingRun; run -= longestMakeUpRun)
            writer.put(codes.back());
        writer.put(codes[std::size_t(longestTerminatingRun) + std::size_t(run / 64)]);
        run %= 64;
    }
    writer.put(codes[std::size_t(run)]);
}

// The places where a row's colour changes, with a 0 in front and the width several times behind: there a1, a2, b1 and
// b2 lie when the row has no more changes.
class Changes
{
public:
    explicit Changes(int width) : m_width(width), m_room(roomForEdges(width))
    {
        finish(std::span(m_room).last(8).first(0));
    }

    void find(const std::uint64_t* row) { finish(findInkEdges(row, m_width, m_room)); }

    const int* first() const { return m_first; }

private:
    void finish(std::span<int> places)
    {
        m_first = places.data();
        m_first[-1] = 0;
        std::fill_n(m_first + places.size(), 4, m_width);
    }

    int m_width;
    std::vector<int> m_room;
    int* m_first = nullptr;
};

// By value, so that the writer's state stays in registers.
FaxBitWriter encodeRow(FaxBitWriter writer, const int* const row, const int* b1, int width)
{
    const int* a1 = row;
    int a0 = 0;
    while (a0 < width) {
        if (b1[1] < *a1) {
            writer.put(pass);
            a0 = b1[1];
            b1 += 2;
            continue;
        }
        const int offset = *a1 - *b1;
        if (offset >= -farthestVertical && offset <= farthestVertical) {
            writer.put(vertical[std::size_t(offset) + std::size_t(farthestVertical)]);
            a0 = *a1++;
            // The next change is to the other colour. If this one lies left of b1, the one before may still be ahead.
            b1 += b1[-1] > a0 ? -1 : 1;
        } else {
            const bool black = (a1 - row) & 1;
            writer.put(horizontal);
            putRun(writer, black, a1[0] - a0);
            putRun(writer, !black, a1[1] - a1[0]);
            a0 = a1[1];
            a1 += 2;
        }
        while (a0 < width && *b1 <= a0)
            b1 += 2;
    }
    return writer;
}

// Hands bytes over as they are made, many at a time.
class StreamBuffer
{
public:
    StreamBuffer(ByteSink& sink, std::size_t mostAtOnce)
        : m_sink(sink), m_bytes(std::make_unique_for_overwrite<std::uint8_t[]>(worthHandingOver + mostAtOnce))
    {}

    std::uint8_t* begin() { return m_bytes.get(); }

    bool wellFilled(const std::uint8_t* end) const { return end >= m_bytes.get() + worthHandingOver; }

    void handOver(const std::uint8_t* end)
    {
        const auto count = std::size_t(end - m_bytes.get());
        m_handedOver += count;
        if (m_handedOver > longestFaxStream)
            throw ImagingError("In one piece of group 4 data the image takes too much room; TIFF has it in several.");
        m_sink.append(m_bytes.get(), count);
    }

private:
    static constexpr std::size_t worthHandingOver = 1 << 16;

    ByteSink& m_sink;
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::uint64_t m_handedOver = 0;
};

} // namespace

void encodeGroup4(const Bitmap& bitmap, int firstRow, int rowCount, ByteSink& sink)
{
    // Two changes take 27 bits at the most, runs of 64 pixels and more 13 besides, passes half as many as there are
    // changes above: no row takes three bytes a pixel.
    const std::size_t longestRow = std::size_t(bitmap.width()) * 3 + 64;
    StreamBuffer buffer(sink, longestRow);
    FaxBitWriter writer(buffer.begin());
    Changes above(bitmap.width());
    Changes row(bitmap.width());
    for (int y = firstRow; y < firstRow + rowCount; ++y) {
        row.find(bitmap.row(y));
        writer = encodeRow(writer, row.first(), above.first(), bitmap.width());
        if (buffer.wellFilled(writer.end())) {
            buffer.handOver(writer.end());
            writer.moveTo(buffer.begin());
        }
        std::swap(above, row);
    }
    for (int i = 0; i < 2; ++i)
        writer.put(FaxCode(endOfLineCode));
    writer.finish();
    buffer.handOver(writer.end());
}

} // namespace imaging
