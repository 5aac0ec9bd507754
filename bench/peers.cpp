#include "peers.h"

#include <cstring>
#include <stdexcept>
#include <tiffio.h>
#include <vector>

namespace bench {

namespace {

struct TiffCloser
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};

std::unique_ptr<TIFF, TiffCloser> open(const std::string& path, const char* mode)
{
    std::unique_ptr<TIFF, TiffCloser> tiff(TIFFOpen(path.c_str(), mode));
    if (!tiff)
        throw std::runtime_error("libtiff can't open " + path);
    return tiff;
}

} // namespace

PixPointer toPix(const imaging::Bitmap& bitmap)
{
    PixPointer pix(pixCreate(bitmap.width(), bitmap.height(), 1));
    const int words = pixGetWpl(pix.get());
    for (int y = 0; y < bitmap.height(); ++y) {
        l_uint32* row = pixGetData(pix.get()) + std::ptrdiff_t(y) * words;
        for (int i = 0; i < words; ++i)
            row[i] = l_uint32(bitmap.row(y)[i / 2] >> (i % 2 ? 0 : 32));
    }
    return pix;
}

imaging::Bitmap fromPix(const Pix& source)
{
    Pix* pix = const_cast<Pix*>(&source); // Leptonica's getters take no const
    imaging::Bitmap bitmap({pixGetWidth(pix), pixGetHeight(pix)});
    const int words = pixGetWpl(pix);
    for (int y = 0; y < bitmap.height(); ++y) {
        const l_uint32* row = pixGetData(pix) + std::ptrdiff_t(y) * words;
        for (int i = 0; i < words; ++i)
            bitmap.row(y)[i / 2] |= std::uint64_t(row[i]) << (i % 2 ? 0 : 32);
        if (bitmap.wordsPerRow() > 0)
            bitmap.row(y)[bitmap.wordsPerRow() - 1] &= bitmap.lastWordMask();
    }
    return bitmap;
}

void readWithLibtiff(const std::string& path, imaging::Bitmap& into)
{
    const auto tiff = open(path, "r");
    std::vector<unsigned char> row(std::size_t(TIFFScanlineSize(tiff.get())));
    for (int y = 0; y < into.height(); ++y) {
        if (TIFFReadScanline(tiff.get(), row.data(), std::uint32_t(y)) != 1)
            throw std::runtime_error("libtiff can't decode " + path);
        std::uint64_t* words = into.row(y);
        for (std::size_t i = 0; i < row.size(); i += 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, row.data() + i, std::min<std::size_t>(8, row.size() - i));
            words[i / 8] = __builtin_bswap64(word);
        }
    }
}

void writeWithLibtiff(const std::string& path, const imaging::Bitmap& bitmap, float dpi)
{
    const auto tiff = open(path, "w");
    TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, bitmap.width());
    TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, bitmap.height());
    TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, bitmap.height());
    TIFFSetField(tiff.get(), TIFFTAG_XRESOLUTION, dpi);
    TIFFSetField(tiff.get(), TIFFTAG_YRESOLUTION, dpi);
    TIFFSetField(tiff.get(), TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    std::vector<std::uint64_t> row(std::size_t(bitmap.wordsPerRow()));
    for (int y = 0; y < bitmap.height(); ++y) {
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = __builtin_bswap64(bitmap.row(y)[i]);
        if (TIFFWriteScanline(tiff.get(), row.data(), std::uint32_t(y)) != 1)
            throw std::runtime_error("libtiff can't write " + path);
    }
}

} // namespace bench
