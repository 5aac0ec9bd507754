#include <algorithm>
#include <vector>

#include "imaging/codec.h"
#include "imaging/fax_encode.h"
#include "imaging/parallel.h"
#include "imaging/row_bits.h"
#include "imaging/tiff_file.h"
#include "imaging/tiff_handle.h"

namespace imaging {

namespace {

std::uint16_t compressionTag(Format format)
{
    switch (format) {
    case Format::TiffGroup4:
        return COMPRESSION_CCITTFAX4;
    case Format::TiffPackBits:
        return COMPRESSION_PACKBITS;
    case Format::TiffDeflate:
        return COMPRESSION_ADOBE_DEFLATE;
    default:
        return COMPRESSION_NONE;
    }
}

int rowsPerStrip(const Bitmap& bitmap, Format format)
{
    // Group 4 begins anew in each strip: some hundred rows make that cheap and give every core strips to work on.
    // The others are cut so that a strip passes through the processor's cache.
    constexpr int group4Rows = 512;
    constexpr std::size_t stripBytes = 1 << 16;
    if (format == Format::TiffGroup4)
        return std::min(group4Rows, bitmap.height());
    return int(std::clamp<std::size_t>(stripBytes / bytesPerRow(bitmap.width()), 1, std::size_t(bitmap.height())));
}

void setResolution(TiffHandle& tiff, Resolution resolution)
{
    const bool known = resolution.x > 0 && resolution.y > 0;
    tiff.setTag(TIFFTAG_RESOLUTIONUNIT, known ? RESUNIT_INCH : RESUNIT_NONE);
    tiff.setTag(TIFFTAG_XRESOLUTION, known ? resolution.x : 1.0);
    tiff.setTag(TIFFTAG_YRESOLUTION, known ? resolution.y : 1.0);
}

void writeGroup4Strips(TiffHandle& tiff, const Bitmap& bitmap, int stripRows)
{
    // As many strips together as keep the cores at work; together they take less than the bitmap does.
    constexpr int atOnce = 16;
    const int count = (bitmap.height() + stripRows - 1) / stripRows;
    for (int begin = 0; begin < count; begin += atOnce) {
        std::vector<MemorySink> strips(std::size_t(std::min(atOnce, count - begin)));
        inTurns(int(strips.size()), [&](int i) {
            const int first = (begin + i) * stripRows;
            encodeGroup4(bitmap, first, std::min(stripRows, bitmap.height() - first), strips[std::size_t(i)]);
        });
        for (std::size_t i = 0; i < strips.size(); ++i) {
            std::vector<std::byte> bytes = strips[i].take();
            if (TIFFWriteRawStrip(tiff.get(), std::uint32_t(begin) + std::uint32_t(i), bytes.data(),
                                  tmsize_t(bytes.size())) < 0)
                tiff.fail("Writing the image failed");
        }
    }
}

void writeOtherStrips(TiffHandle& tiff, const Bitmap& bitmap, int stripRows)
{
    const std::size_t rowBytes = bytesPerRow(bitmap.width());
    std::vector<std::uint8_t> bytes(rowBytes * std::size_t(stripRows));
    for (int first = 0; first < bitmap.height(); first += stripRows) {
        const int rows = std::min(stripRows, bitmap.height() - first);
        for (int y = 0; y < rows; ++y)
            bytesFromWords(bytes.data() + rowBytes * std::size_t(y), bitmap.row(first + y), bitmap.width(), false);
        if (TIFFWriteEncodedStrip(tiff.get(), std::uint32_t(first / stripRows), bytes.data(),
                                  tmsize_t(rowBytes) * rows) < 0)
            tiff.fail("Writing the image failed");
    }
}

} // namespace

void writeTiff(ByteSink& sink, const Bitmap& bitmap, Resolution resolution, Format format)
{
    const int stripRows = rowsPerStrip(bitmap, format);
    TiffHandle tiff(sink);
    tiff.setTag(TIFFTAG_IMAGEWIDTH, std::uint32_t(bitmap.width()));
    tiff.setTag(TIFFTAG_IMAGELENGTH, std::uint32_t(bitmap.height()));
    tiff.setTag(TIFFTAG_BITSPERSAMPLE, 1);
    tiff.setTag(TIFFTAG_SAMPLESPERPIXEL, 1);
    tiff.setTag(TIFFTAG_COMPRESSION, compressionTag(format));
    tiff.setTag(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    tiff.setTag(TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    tiff.setTag(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    tiff.setTag(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    tiff.setTag(TIFFTAG_ROWSPERSTRIP, std::uint32_t(stripRows));
    setResolution(tiff, tidyResolution(resolution.x, resolution.y));
    if (format == Format::TiffGroup4) {
        writeGroup4Strips(tiff, bitmap, stripRows);
    } else {
        writeOtherStrips(tiff, bitmap, stripRows);
    }
    if (!TIFFWriteDirectory(tiff.get()))
        tiff.fail("Writing the image failed");
}

} // namespace imaging
