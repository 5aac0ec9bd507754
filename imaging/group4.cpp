#include "imaging/group4.h"

#include <algorithm>
#include <bit>
#include <iterator>

#include "imaging/error.h"
#include "imaging/row_bits.h"
#include "imaging/tiff_handle.h"

// The coding is libtiff's. It is reached through TIFF files in memory that hold one strip each.

namespace imaging {

namespace {

using Bytes = std::vector<std::uint8_t>;

void appendLittleEndian(Bytes& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(std::uint8_t(value >> (8 * i)));
}

constexpr std::size_t entryCount = 8;
constexpr std::size_t headerSize = 8 + 2 + entryCount * 12 + 4;
constexpr std::size_t longestFiller = 10;

// The header and directory of a TIFF file whose one group 4 strip follows them.
Bytes tiffHeaderForStrip(int width, int height, std::size_t streamSize)
{
    struct Entry
    {
        std::uint16_t tag;
        std::uint16_t type; // 3: 16 bits, 4: 32 bits
        std::uint32_t value;
    };
    const Entry entries[entryCount] = {
        {TIFFTAG_IMAGEWIDTH, 4, std::uint32_t(width)},
        {TIFFTAG_IMAGELENGTH, 4, std::uint32_t(height)},
        {TIFFTAG_BITSPERSAMPLE, 3, 1},
        {TIFFTAG_COMPRESSION, 3, COMPRESSION_CCITTFAX4},
        {TIFFTAG_PHOTOMETRIC, 3, PHOTOMETRIC_MINISWHITE},
        {TIFFTAG_STRIPOFFSETS, 4, headerSize},
        {TIFFTAG_ROWSPERSTRIP, 4, std::uint32_t(height)},
        {TIFFTAG_STRIPBYTECOUNTS, 4, std::uint32_t(streamSize)},
    };
    Bytes bytes = {'I', 'I', 42, 0, 8, 0, 0, 0};
    appendLittleEndian(bytes, entryCount, 2);
    for (const Entry& entry : entries) {
        appendLittleEndian(bytes, entry.tag, 2);
        appendLittleEndian(bytes, entry.type, 2);
        appendLittleEndian(bytes, 1, 4);
        appendLittleEndian(bytes, entry.value, 4);
    }
    appendLittleEndian(bytes, 0, 4);
    return bytes;
}

struct StreamEnd
{
    std::size_t bits; // in front of the end-of-block mark, or of whatever else can't be pixels
    bool marked;      // there is an end-of-block mark
};

// Finds the first run of 11 zero bits: the codes are made so that none occurs among pixels.
StreamEnd findEnd(std::span<const std::uint8_t> stream)
{
    constexpr int markZeros = 11;
    // A code may end in up to three zeros, which lengthen the run that follows it.
    constexpr std::size_t zerosOfLastCode = 3;
    std::size_t zeros = 0;
    for (std::size_t i = 0; i < stream.size(); ++i) {
        if (stream[i] == 0) {
            zeros += 8;
            continue;
        }
        const int leading = std::countl_zero(stream[i]);
        if (zeros + leading < markZeros) {
            zeros = std::size_t(std::countr_zero(stream[i]));
            continue;
        }
        const std::size_t one = 8 * i + std::size_t(leading); // the 1 that ends the run
        std::uint32_t following = 0;
        for (std::size_t k = 1; k <= 12; ++k) {
            const std::size_t bit = one + k;
            const bool set = bit / 8 < stream.size() && (stream[bit / 8] >> (7 - bit % 8) & 1);
            following = following << 1 | std::uint32_t(set);
        }
        if (following == 1)
            return {one - markZeros, true};
        return {one - zeros - std::size_t(leading) + zerosOfLastCode, false};
    }
    const std::size_t all = stream.size() * 8;
    return {zeros > zerosOfLastCode ? all - zeros + zerosOfLastCode : all, false};
}

// Makes a TIFF file of the bytes, in which the stream lies behind room for a header: with the first bits of the stream
// and, behind them, the filler. Bits behind the first ones are lost.
std::span<const std::uint8_t> tiffOfStream(Bytes& bytes, std::size_t bits, int width, int height,
                                           std::span<const std::uint8_t> filler)
{
    const std::size_t whole = bits / 8;
    const int rest = int(bits % 8);
    const std::size_t length = whole + filler.size() + 1;
    std::ranges::copy(tiffHeaderForStrip(width, height, length), bytes.begin());
    auto at = bytes.begin() + std::ptrdiff_t(headerSize + whole);
    std::uint8_t carried = rest > 0 ? std::uint8_t(*at & 0xFF << (8 - rest)) : std::uint8_t(0);
    for (const std::uint8_t byte : filler) {
        *at++ = std::uint8_t(carried | byte >> rest);
        carried = std::uint8_t(byte << (8 - rest));
    }
    *at = carried;
    return std::span(bytes).first(headerSize + length);
}

// Calls take(y, bytes) with each row.
template <typename Take> void decodeRows(std::span<const std::uint8_t> tiffBytes, int firstRow, int rowCount, Take take)
{
    MemorySource source(std::as_bytes(tiffBytes));
    TiffHandle tiff(source);
    tiff.forgetComplaints();
    Bytes bytes(std::size_t(TIFFScanlineSize(tiff.get())));
    for (int y = firstRow; y < firstRow + rowCount; ++y) {
        if (TIFFReadScanline(tiff.get(), bytes.data(), std::uint32_t(y - firstRow)) != 1 || tiff.faulty())
            tiff.fail("The group 4 data is damaged or cut off at row " + std::to_string(y));
        take(y, bytes.data());
    }
}

// Passes on what libtiff writes behind the header of its file.
class StripSink : public ByteSink
{
public:
    explicit StripSink(ByteSink& target) : m_target(target) {}

    std::uint64_t size() const override { return m_size; }
    void write(std::uint64_t offset, const void* bytes, std::size_t count) override
    {
        const bool header = offset == 0;
        if (!header && offset != m_size)
            throw ImagingError("The image can't be encoded.");
        m_size = offset + count;
        if (m_size > longestGroup4Stream)
            throw ImagingError("In one piece of group 4 data the image takes too much room; TIFF has it in several.");
        if (!header)
            m_target.append(bytes, count);
    }

private:
    ByteSink& m_target;
    std::uint64_t m_size = 0;
};

} // namespace

std::vector<std::uint8_t> encodeGroup4(const Bitmap& bitmap, int firstRow, int rowCount)
{
    MemorySink stream;
    encodeGroup4(bitmap, firstRow, rowCount, stream);
    Bytes bytes(stream.size());
    std::transform(stream.bytes().begin(), stream.bytes().end(), bytes.begin(),
                   [](std::byte byte) { return std::to_integer<std::uint8_t>(byte); });
    return bytes;
}

void encodeGroup4(const Bitmap& bitmap, int firstRow, int rowCount, ByteSink& target)
{
    constexpr tmsize_t bufferSize = 1 << 16;
    StripSink sink(target);
    TiffHandle tiff(sink);
    tiff.setTag(TIFFTAG_IMAGEWIDTH, std::uint32_t(bitmap.width()));
    tiff.setTag(TIFFTAG_IMAGELENGTH, std::uint32_t(rowCount));
    tiff.setTag(TIFFTAG_BITSPERSAMPLE, 1);
    tiff.setTag(TIFFTAG_SAMPLESPERPIXEL, 1);
    tiff.setTag(TIFFTAG_ROWSPERSTRIP, std::uint32_t(rowCount));
    tiff.setTag(TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    tiff.setTag(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    tiff.setTag(TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    if (!TIFFWriteBufferSetup(tiff.get(), nullptr, bufferSize))
        tiff.fail("The image can't be encoded");
    Bytes bytes(bytesPerRow(bitmap.width()));
    for (int y = 0; y < rowCount; ++y) {
        bytesFromWords(bytes.data(), bitmap.row(firstRow + y), bitmap.width(), false);
        // libtiff goes on when only a part of its buffer could be written.
        if (TIFFWriteScanline(tiff.get(), bytes.data(), std::uint32_t(y)) != 1 || tiff.faulty())
            tiff.fail("The image can't be encoded");
    }
    if (!TIFFFlushData(tiff.get()) || tiff.faulty())
        tiff.fail("The image can't be encoded");
}

Group4Stream::Group4Stream(std::uint64_t size) : m_size(std::size_t(size))
{
    if (size > longestGroup4Stream)
        throw ImagingError("The file has too much group 4 data in one piece.");
    m_bytes.resize(headerSize + m_size + longestFiller + 1);
}

std::uint8_t* Group4Stream::data()
{
    return m_bytes.data() + headerSize;
}

void decodeGroup4(Group4Stream& stream, Bitmap& bitmap, int firstRow, int rowCount, bool inverted)
{
    if (std::size_t(rowCount) > stream.size() * 8) { // a row takes one bit at least
        throw ImagingError("The file holds less group 4 data than its " + std::to_string(bitmap.height()) +
                           " rows can take.");
    }

    // At the end of its data libtiff goes on with zeros, takes them for the end-of-block mark and silently leaves the
    // rest white. Behind the pixels it therefore gets codes that it does not accept.
    static constexpr std::uint8_t unacceptable[longestFiller] = {0x03, 0xC0, 0xF0, 0x3C, 0x0F,
                                                                 0x03, 0xC0, 0xF0, 0x3C, 0x0F};
    const int width = bitmap.width();
    const StreamEnd end = findEnd({stream.data(), stream.size()});
    decodeRows(tiffOfStream(stream.m_bytes, end.bits, width, rowCount, unacceptable), firstRow, rowCount,
               [&](int y, const std::uint8_t* row) { wordsFromBytes(bitmap.row(y), row, width, inverted); });
    if (end.marked)
        return;

    // Without the mark the last code may have been cut in two. It was not if other bits behind it give the same rows.
    static constexpr std::uint8_t otherwise[] = {0xFF, 0xFF, 0x00, 0xFF, 0x00, 0xFF};
    std::vector<std::uint64_t> again(std::size_t(bitmap.wordsPerRow()));
    decodeRows(tiffOfStream(stream.m_bytes, end.bits, width, rowCount, otherwise), firstRow, rowCount,
               [&](int y, const std::uint8_t* row) {
                   wordsFromBytes(again.data(), row, width, inverted);
                   if (!std::equal(again.begin(), again.end(), bitmap.row(y)))
                       throw ImagingError("The group 4 data is cut off at row " + std::to_string(y) + ".");
               });
}

} // namespace imaging
