#include "tests/support/fax_twin.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>
#include <tiffio.h>

#include "imaging/error.h"
#include "imaging/raster_file.h"

using imaging::Bitmap;

namespace {

using Bytes = std::vector<std::uint8_t>;

// A TIFF file in memory under libtiff's hands, and whether it complained.
struct MemoryFile
{
    Bytes bytes;
    std::size_t position = 0;
    bool complained = false;
};

MemoryFile& fileOf(thandle_t handle)
{
    return *static_cast<MemoryFile*>(handle);
}

tmsize_t readBytes(thandle_t handle, void* target, tmsize_t count)
{
    MemoryFile& file = fileOf(handle);
    const std::size_t begin = std::min(file.position, file.bytes.size());
    const std::size_t got = std::min(std::size_t(count), file.bytes.size() - begin);
    std::copy_n(file.bytes.begin() + std::ptrdiff_t(begin), got, static_cast<std::uint8_t*>(target));
    file.position = begin + got;
    return tmsize_t(got);
}

tmsize_t writeBytes(thandle_t handle, void* bytes, tmsize_t count)
{
    MemoryFile& file = fileOf(handle);
    file.bytes.resize(std::max(file.bytes.size(), file.position + std::size_t(count)));
    std::copy_n(static_cast<const std::uint8_t*>(bytes), count, file.bytes.begin() + std::ptrdiff_t(file.position));
    file.position += std::size_t(count);
    return count;
}

toff_t seek(thandle_t handle, toff_t offset, int from)
{
    MemoryFile& file = fileOf(handle);
    file.position = std::size_t(offset) + (from == SEEK_SET ? 0 : from == SEEK_CUR ? file.position : file.bytes.size());
    return file.position;
}

int noteError(TIFF*, void* file, const char*, const char*, va_list)
{
    fileOf(file).complained = true;
    return 1;
}

int noteWarning(TIFF*, void* file, const char* place, const char*, va_list)
{
    if (place && std::string_view(place).starts_with("Fax")) // others are of tags
        fileOf(file).complained = true;
    return 1;
}

struct TiffCloser
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};

std::unique_ptr<TIFF, TiffCloser> open(MemoryFile& file, const char* mode)
{
    file.position = 0;
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                   &TIFFOpenOptionsFree);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &noteError, &file);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &noteWarning, &file);
    return std::unique_ptr<TIFF, TiffCloser>(TIFFClientOpenExt(
        "memory", mode, &file, &readBytes, &writeBytes, &seek, [](thandle_t) { return 0; },
        [](thandle_t handle) { return toff_t(fileOf(handle).bytes.size()); },
        [](thandle_t, void**, toff_t*) { return 0; }, [](thandle_t, void*, toff_t) {}, options.get()));
}

void setTags(TIFF* tiff, const FaxData& data)
{
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, data.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, data.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, data.height);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, data.compression);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(tiff, TIFFTAG_FILLORDER, data.lowestBitFirst ? FILLORDER_LSB2MSB : FILLORDER_MSB2LSB);
    if (data.compression == COMPRESSION_CCITTFAX3)
        TIFFSetField(tiff, TIFFTAG_GROUP3OPTIONS, data.group3Options);
}

// A TIFF file with the data as its only strip.
Bytes tiffOf(const FaxData& data)
{
    struct Entry
    {
        std::uint32_t tag, value;
    };
    constexpr std::uint32_t entryCount = 10;
    constexpr std::uint32_t headerSize = 8 + 2 + entryCount * 12 + 4;
    const Entry entries[entryCount] = {{TIFFTAG_IMAGEWIDTH, std::uint32_t(data.width)},
                                       {TIFFTAG_IMAGELENGTH, std::uint32_t(data.height)},
                                       {TIFFTAG_BITSPERSAMPLE, 1},
                                       {TIFFTAG_COMPRESSION, std::uint32_t(data.compression)},
                                       {TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE},
                                       {TIFFTAG_FILLORDER, data.lowestBitFirst ? 2u : 1u},
                                       {TIFFTAG_STRIPOFFSETS, headerSize},
                                       {TIFFTAG_ROWSPERSTRIP, std::uint32_t(data.height)},
                                       {TIFFTAG_STRIPBYTECOUNTS, std::uint32_t(data.bytes.size())},
                                       {TIFFTAG_GROUP3OPTIONS, std::uint32_t(data.group3Options)}};
    Bytes bytes = {'I', 'I', 42, 0, 8, 0, 0, 0};
    const auto put = [&](std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i)
            bytes.push_back(std::uint8_t(value >> 8 * i));
    };
    put(entryCount, 2);
    for (const Entry& entry : entries) {
        put(entry.tag, 2);
        put(4, 2); // a number of 32 bits
        put(1, 4);
        put(entry.value, 4);
    }
    put(0, 4);
    bytes.insert(bytes.end(), data.bytes.begin(), data.bytes.end());
    return bytes;
}

} // namespace

Bitmap readByUs(const FaxData& data)
{
    const Bytes file = tiffOf(data);
    return imaging::readRaster(std::as_bytes(std::span(file))).bitmap;
}

std::optional<Bitmap> readByLibtiff(const FaxData& data)
{
    MemoryFile file{tiffOf(data)};
    const auto tiff = open(file, "rm");
    if (!tiff)
        return std::nullopt;
    file.complained = false;
    Bitmap bitmap({data.width, data.height});
    Bytes row(std::size_t(TIFFScanlineSize(tiff.get())));
    for (int y = 0; y < data.height; ++y) {
        if (TIFFReadScanline(tiff.get(), row.data(), std::uint32_t(y)) != 1 || file.complained)
            return std::nullopt;
        for (int x = 0; x < data.width; ++x)
            if (row[std::size_t(x) / 8] >> (7 - x % 8) & 1)
                bitmap.setInk(x, y, true);
    }
    return bitmap;
}

FaxData codedByLibtiff(const Bitmap& bitmap, FaxData form)
{
    form.width = bitmap.width();
    form.height = bitmap.height();
    MemoryFile file;
    auto tiff = open(file, "wlm");
    setTags(tiff.get(), form);
    Bytes row(std::size_t(TIFFScanlineSize(tiff.get())));
    for (int y = 0; y < bitmap.height(); ++y) {
        std::fill(row.begin(), row.end(), std::uint8_t(0));
        for (int x = 0; x < bitmap.width(); ++x)
            if (bitmap.ink(x, y))
                row[std::size_t(x) / 8] |= std::uint8_t(0x80 >> x % 8);
        TIFFWriteScanline(tiff.get(), row.data(), std::uint32_t(y), 0);
    }
    tiff.reset();
    tiff = open(file, "rm");
    form.bytes.resize(std::size_t(TIFFRawStripSize(tiff.get(), 0)));
    TIFFReadRawStrip(tiff.get(), 0, form.bytes.data(), tmsize_t(form.bytes.size()));
    return form;
}

FaxVerdict compareWithLibtiff(const FaxData& data)
{
    const std::optional<Bitmap> theirs = readByLibtiff(data);
    try {
        const Bitmap ours = readByUs(data);
        if (!theirs)
            return FaxVerdict::WeRead;
        return ours == *theirs ? FaxVerdict::BothRead : FaxVerdict::PixelsDiffer;
    } catch (const imaging::ImagingError&) {
        return theirs ? FaxVerdict::WeRefuse : FaxVerdict::BothRefuse;
    }
}
