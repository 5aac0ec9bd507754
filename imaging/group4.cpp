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

// The header and directory of a TIFF file whose one group 4 strip follows them.
Bytes tiffHeaderForStrip(int width, int height, std::size_t streamSize)
{
    struct Entry
    {
        std::uint16_t tag;
        std::uint16_t type; // 3: 16 bits, 4: 32 bits
        std::uint32_t value;
    };
    constexpr std::size_t entryCount = 8;
    constexpr std::uint32_t headerSize = 8 + 2 + entryCount * 12 + 4;
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

// A TIFF file with the first bits of the stream and, behind them, the filler over and over.
Bytes tiffOfStream(std::span<const std::uint8_t> stream, std::size_t bits, int width, int height,
                   std::span<const std::uint8_t> filler)
{
    const std::size_t whole = bits / 8;
    const int rest = int(bits % 8);
    Bytes tiff = tiffHeaderForStrip(width, height, whole + filler.size() + 1);
    tiff.reserve(tiff.size() + whole + filler.size() + 1);
    tiff.insert(tiff.end(), stream.begin(), stream.begin() + std::ptrdiff_t(whole));
    std::uint8_t carried = rest > 0 ? std::uint8_t(stream[whole] & 0xFF << (8 - rest)) : std::uint8_t(0);
    for (const std::uint8_t byte : filler) {
        tiff.push_back(std::uint8_t(carried | byte >> rest));
        carried = std::uint8_t(byte << (8 - rest));
    }
    tiff.push_back(carried);
    return tiff;
}

void decodeRows(const Bytes& tiffBytes, Bitmap& bitmap, int firstRow, int rowCount, bool inverted)
{
    MemorySource source(std::as_bytes(std::span(tiffBytes)));
    TiffHandle tiff(source);
    tiff.forgetComplaints();
    Bytes bytes(std::size_t(TIFFScanlineSize(tiff.get())));
    for (int y = 0; y < rowCount; ++y) {
        if (TIFFReadScanline(tiff.get(), bytes.data(), std::uint32_t(y)) != 1 || tiff.faulty())
            tiff.fail("The group 4 data is damaged or cut off at row " + std::to_string(firstRow + y));
        wordsFromBytes(bitmap.row(firstRow + y), bytes.data(), bitmap.width(), inverted);
    }
}

} // namespace

std::vector<std::uint8_t> encodeGroup4(const Bitmap& bitmap, int firstRow, int rowCount)
{
    constexpr tmsize_t bufferSize = 1 << 16;
    MemorySink sink;
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

    const std::size_t start = sink.size();
    Bytes bytes(bytesPerRow(bitmap.width()));
    for (int y = 0; y < rowCount; ++y) {
        bytesFromWords(bytes.data(), bitmap.row(firstRow + y), bitmap.width(), false);
        if (TIFFWriteScanline(tiff.get(), bytes.data(), std::uint32_t(y)) != 1)
            tiff.fail("The image can't be encoded");
    }
    if (!TIFFFlushData(tiff.get()))
        tiff.fail("The image can't be encoded");

    Bytes stream(sink.size() - start);
    std::transform(sink.bytes().begin() + std::ptrdiff_t(start), sink.bytes().end(), stream.begin(),
                   [](std::byte byte) { return std::to_integer<std::uint8_t>(byte); });
    return stream;
}

void decodeGroup4(std::span<const std::uint8_t> stream, Bitmap& bitmap, int firstRow, int rowCount, bool inverted)
{
    constexpr std::size_t most = std::size_t(1) << 31; // more than any image that can be worked on takes
    stream = stream.first(std::min(stream.size(), most));
    if (std::size_t(rowCount) > stream.size() * 8) { // a row takes one bit at least
        throw ImagingError("The file holds less group 4 data than its " + std::to_string(bitmap.height()) +
                           " rows can take.");
    }

    // At the end of its data libtiff goes on with zeros, takes them for the end-of-block mark and silently leaves the
    // rest white. Behind the pixels it therefore gets codes that it does not accept.
    static constexpr std::uint8_t unacceptable[] = {0x03, 0xC0, 0xF0, 0x3C, 0x0F, 0x03, 0xC0, 0xF0, 0x3C, 0x0F};
    const StreamEnd end = findEnd(stream);
    decodeRows(tiffOfStream(stream, end.bits, bitmap.width(), rowCount, unacceptable), bitmap, firstRow, rowCount,
               inverted);
    if (end.marked)
        return;

    // Without the mark the last code may have been cut in two. It was not if other bits behind it give the same rows.
    static constexpr std::uint8_t otherwise[] = {0xFF, 0xFF, 0x00, 0xFF, 0x00, 0xFF};
    Bitmap again = Bitmap::uninitialized({bitmap.width(), rowCount});
    decodeRows(tiffOfStream(stream, end.bits, bitmap.width(), rowCount, otherwise), again, 0, rowCount, inverted);
    for (int y = 0; y < rowCount; ++y) {
        if (!std::equal(again.row(y), again.row(y) + again.wordsPerRow(), bitmap.row(firstRow + y)))
            throw ImagingError("The group 4 data is cut off at row " + std::to_string(firstRow + y) + ".");
    }
}

} // namespace imaging
