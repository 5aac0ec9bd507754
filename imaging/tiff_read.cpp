#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "imaging/codec.h"
#include "imaging/error.h"
#include "imaging/fax_decode.h"
#include "imaging/orientation.h"
#include "imaging/parallel.h"
#include "imaging/row_bits.h"
#include "imaging/tiff_file.h"
#include "imaging/tiff_handle.h"

namespace imaging {

namespace {

constexpr char damaged[] = "The TIFF image is damaged or cut off";

// What the directory says of the pixels.
struct Layout
{
    Size stored;
    int bitsPerSample;
    int samplesPerPixel;
    int compression;
    int photometric;
    bool planes; // each sample in a plane of its own
    bool tiled;
    Orientation orientation;
    Resolution resolution;

    int bitsPerPixel() const { return bitsPerSample * samplesPerPixel; }
};

Resolution resolutionOf(const TiffHandle& tiff)
{
    constexpr double centimetresPerInch = 2.54;
    const double x = tiff.realTag(TIFFTAG_XRESOLUTION, 0);
    const double y = tiff.realTag(TIFFTAG_YRESOLUTION, 0);
    switch (tiff.shortTag(TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH)) {
    case RESUNIT_INCH:
        return tidyResolution(x, y);
    case RESUNIT_CENTIMETER:
        return tidyResolution(x * centimetresPerInch, y * centimetresPerInch);
    default:
        return {}; // numbers without a unit tell no more than the shape of a pixel
    }
}

bool isCcitt(int compression)
{
    return compression == COMPRESSION_CCITTRLE || compression == COMPRESSION_CCITTRLEW ||
           compression == COMPRESSION_CCITTFAX3 || compression == COMPRESSION_CCITTFAX4;
}

Layout layoutOf(const TiffHandle& tiff)
{
    Layout layout{};
    layout.stored = checkedImageSize(tiff.longTag(TIFFTAG_IMAGEWIDTH, 0), tiff.longTag(TIFFTAG_IMAGELENGTH, 0));
    layout.bitsPerSample = tiff.shortTag(TIFFTAG_BITSPERSAMPLE, 1);
    layout.samplesPerPixel = tiff.shortTag(TIFFTAG_SAMPLESPERPIXEL, 1);
    layout.compression = tiff.shortTag(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    layout.photometric = tiff.shortTag(TIFFTAG_PHOTOMETRIC,
                                       isCcitt(layout.compression) ? PHOTOMETRIC_MINISWHITE : PHOTOMETRIC_MINISBLACK);
    layout.planes =
        layout.samplesPerPixel > 1 && tiff.shortTag(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    layout.tiled = TIFFIsTiled(tiff.get()) != 0;
    const int orientation = tiff.shortTag(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    layout.orientation = orientation >= ORIENTATION_TOPLEFT && orientation <= ORIENTATION_LEFTBOT
                             ? Orientation(orientation)
                             : Orientation::TopLeft;
    layout.resolution = resolutionOf(tiff);
    return layout;
}

Format formatOf(const Layout& layout)
{
    switch (layout.compression) {
    case COMPRESSION_CCITTFAX4:
        return Format::TiffGroup4;
    case COMPRESSION_NONE:
        return Format::TiffUncompressed;
    case COMPRESSION_PACKBITS:
        return Format::TiffPackBits;
    case COMPRESSION_ADOBE_DEFLATE:
    case COMPRESSION_DEFLATE:
        return Format::TiffDeflate;
    default:
        return Format::TiffOther;
    }
}

RasterInfo infoOf(const Layout& layout)
{
    RasterInfo info{layout.stored, layout.bitsPerPixel(), layout.resolution, formatOf(layout)};
    makeUpright(info, layout.orientation);
    return info;
}

// Turns stored pixels into a row of the bitmap.
using RowConverter = std::function<void(std::uint64_t* row, const std::uint8_t* pixels, int width)>;

std::array<std::uint16_t*, 3> colourMap(const TiffHandle& tiff)
{
    std::array<std::uint16_t*, 3> map{};
    if (!TIFFGetField(tiff.get(), TIFFTAG_COLORMAP, &map[0], &map[1], &map[2]))
        throw ImagingError("The TIFF file has a palette image without a palette.");
    return map;
}

// The palette's luminances. Its entries have 16 bits; some writers fill only the lower 8.
std::vector<int> paletteLuminances(const TiffHandle& tiff, int entries)
{
    const auto map = colourMap(tiff);
    bool wide = false;
    for (const std::uint16_t* channel : map)
        wide = wide || std::any_of(channel, channel + entries, [](std::uint16_t value) { return value > 255; });
    const int shift = wide ? 8 : 0;
    std::vector<int> result(std::size_t(entries), 0);
    for (int i = 0; i < entries; ++i)
        result[std::size_t(i)] = luminance(map[0][i] >> shift, map[1][i] >> shift, map[2][i] >> shift);
    return result;
}

// Which of the values 0 .. 2^bits - 1 are ink.
std::vector<bool> inkTable(const TiffHandle& tiff, const Layout& layout)
{
    const int entries = 1 << layout.bitsPerSample;
    std::vector<bool> ink(std::size_t(entries), false);
    if (layout.photometric == PHOTOMETRIC_PALETTE) {
        const std::vector<int> luminances = paletteLuminances(tiff, entries);
        if (entries == 2) {
            ink[0] = !oneIsInk(luminances);
            ink[1] = !ink[0];
            return ink;
        }
        std::transform(luminances.begin(), luminances.end(), ink.begin(), [](int value) { return value < 127500; });
        return ink;
    }
    for (int i = 0; i < entries; ++i)
        ink[std::size_t(i)] = (2 * i < entries - 1) != (layout.photometric == PHOTOMETRIC_MINISWHITE);
    return ink;
}

// A sample of 1, 2, 4 or 8 bits out of a row of them.
int sampleAt(const std::uint8_t* row, int index, int bits)
{
    if (bits == 8)
        return row[index];
    const int perByte = 8 / bits;
    return row[index / perByte] >> (8 - bits - index % perByte * bits) & ((1 << bits) - 1);
}

// A sample of any depth up to 16 bits; rows of those are in the machine's byte order.
std::int64_t deepSampleAt(const std::uint8_t* row, int index, int bits)
{
    if (bits <= 8)
        return sampleAt(row, index, bits);
    std::uint16_t sample = 0;
    std::memcpy(&sample, row + std::ptrdiff_t(2) * index, sizeof sample);
    return sample;
}

// Whether each pixel's second sample is its opacity, and of which kind; libtiff's conversion leaves it out for greys
// and palettes.
std::optional<std::uint16_t> opacityKind(const TiffHandle& tiff, const Layout& layout)
{
    std::uint16_t count = 0;
    std::uint16_t* kinds = nullptr;
    if (layout.samplesPerPixel != 2 || layout.planes ||
        !TIFFGetField(tiff.get(), TIFFTAG_EXTRASAMPLES, &count, &kinds) || count != 1 ||
        kinds[0] == EXTRASAMPLE_UNSPECIFIED)
        return std::nullopt;
    return kinds[0];
}

// In what follows `full` is the largest value of a sample and the paper shines through where the opacity is less.

RowConverter greyWithOpacityConverter(const Layout& layout, bool multiplied)
{
    const int bits = layout.bitsPerSample;
    const bool inverted = layout.photometric == PHOTOMETRIC_MINISWHITE;
    return [bits, multiplied, inverted](std::uint64_t* row, const std::uint8_t* pixels, int width) {
        const std::int64_t full = (std::int64_t(1) << bits) - 1;
        fillRow(row, width, [&](int x) {
            const std::int64_t stored = deepSampleAt(pixels, 2 * x, bits);
            const std::int64_t opacity = deepSampleAt(pixels, 2 * x + 1, bits);
            const std::int64_t share = multiplied ? stored * full : stored * opacity; // of full squared
            const std::int64_t own = inverted ? std::max<std::int64_t>(0, opacity * full - share) : share;
            return 2 * (own + (full - opacity) * full) < full * full;
        });
    };
}

RowConverter paletteWithOpacityConverter(const TiffHandle& tiff, const Layout& layout)
{
    const int bits = layout.bitsPerSample;
    return [bits, luminances = paletteLuminances(tiff, 1 << bits)](std::uint64_t* row, const std::uint8_t* pixels,
                                                                   int width) {
        constexpr std::int64_t white = 255000;
        const std::int64_t full = (1 << bits) - 1;
        fillRow(row, width, [&](int x) {
            const std::int64_t own = luminances[std::size_t(sampleAt(pixels, 2 * x, bits))];
            const std::int64_t opacity = sampleAt(pixels, 2 * x + 1, bits);
            return 2 * (own * opacity + white * (full - opacity)) < white * full;
        });
    };
}

// Empty when the pixels are not of the plain kinds; libtiff's conversion to colours then does the work.
RowConverter plainConverter(const TiffHandle& tiff, const Layout& layout)
{
    const bool grey = layout.photometric == PHOTOMETRIC_MINISWHITE || layout.photometric == PHOTOMETRIC_MINISBLACK;
    const bool palette = layout.photometric == PHOTOMETRIC_PALETTE;
    const int bits = layout.bitsPerSample;
    const bool small = bits == 1 || bits == 2 || bits == 4 || bits == 8;
    if (const auto kind = opacityKind(tiff, layout)) {
        if (grey && (small || bits == 16))
            return greyWithOpacityConverter(layout, *kind == EXTRASAMPLE_ASSOCALPHA);
        if (palette && small)
            return paletteWithOpacityConverter(tiff, layout);
    }
    if (!small)
        return {};
    if (layout.samplesPerPixel == 1 && (grey || palette)) {
        std::vector<bool> ink = inkTable(tiff, layout);
        if (bits == 1) {
            return [inverted = bool(ink[0])](std::uint64_t* row, const std::uint8_t* pixels, int width) {
                wordsFromBytes(row, pixels, width, inverted);
            };
        }
        return [bits, ink = std::move(ink)](std::uint64_t* row, const std::uint8_t* pixels, int width) {
            fillRow(row, width, [&](int x) { return ink[std::size_t(sampleAt(pixels, x, bits))]; });
        };
    }
    if (layout.photometric == PHOTOMETRIC_RGB && layout.samplesPerPixel == 3 && !layout.planes) {
        return [bits](std::uint64_t* row, const std::uint8_t* pixels, int width) {
            const int scale = 255 / ((1 << bits) - 1);
            fillRow(row, width, [&](int x) {
                return isDark(sampleAt(pixels, 3 * x, bits) * scale, sampleAt(pixels, 3 * x + 1, bits) * scale,
                              sampleAt(pixels, 3 * x + 2, bits) * scale);
            });
        };
    }
    return {};
}

std::uint32_t rowsPerStrip(const TiffHandle& tiff, const Layout& layout)
{
    return std::clamp<std::uint32_t>(tiff.longTag(TIFFTAG_ROWSPERSTRIP, UINT32_MAX), 1,
                                     std::uint32_t(layout.stored.height));
}

// The codings that we decode ourselves.
std::optional<FaxCoding> faxCoding(const TiffHandle& tiff, const Layout& layout)
{
    if (layout.bitsPerPixel() != 1 || layout.tiled)
        return std::nullopt;
    switch (layout.compression) {
    case COMPRESSION_CCITTFAX4:
        return FaxCoding::Group4;
    case COMPRESSION_CCITTFAX3:
        return tiff.longTag(TIFFTAG_GROUP3OPTIONS, 0) & GROUP3OPT_2DENCODING ? FaxCoding::Group3TwoDimensional
                                                                             : FaxCoding::Group3OneDimensional;
    default:
        return std::nullopt;
    }
}

FaxStream rawStrip(TiffHandle& tiff, int strip, std::uint64_t size, bool reversed)
{
    FaxStream bytes(size);
    if (TIFFReadRawStrip(tiff.get(), std::uint32_t(strip), bytes.data(), tmsize_t(size)) != tmsize_t(size))
        tiff.fail(damaged);
    if (reversed)
        TIFFReverseBits(bytes.data(), tmsize_t(size));
    return bytes;
}

void readFaxStrips(TiffHandle& tiff, const Layout& layout, FaxCoding coding, ByteSource& source, Bitmap& bitmap)
{
    // As many strips together as keep the cores at work; a broken directory may let all of them be the whole file.
    constexpr std::uint64_t worthTogether = std::uint64_t(1) << 24;
    const int stripRows = int(rowsPerStrip(tiff, layout));
    const int count = (layout.stored.height + stripRows - 1) / stripRows;
    const bool inverted = inkTable(tiff, layout)[0];
    const bool reversed = tiff.shortTag(TIFFTAG_FILLORDER, FILLORDER_MSB2LSB) == FILLORDER_LSB2MSB;
    for (int first = 0; first < count;) {
        std::vector<FaxStream> strips;
        for (std::uint64_t together = 0; first + int(strips.size()) < count && together < worthTogether;) {
            const int strip = first + int(strips.size());
            const std::uint64_t size = TIFFRawStripSize64(tiff.get(), std::uint32_t(strip));
            if (size == 0 || size > source.size())
                tiff.fail(damaged);
            strips.push_back(rawStrip(tiff, strip, size, reversed));
            together += size;
        }
        inTurns(int(strips.size()), [&](int i) {
            const int top = (first + i) * stripRows;
            decodeFax(strips[std::size_t(i)], coding, bitmap, top, std::min(stripRows, layout.stored.height - top),
                      inverted);
        });
        first += int(strips.size());
    }
}

void readStrips(TiffHandle& tiff, const Layout& layout, const RowConverter& convert, Bitmap& bitmap)
{
    // Whole strips, since rows may run into each other there, unless a strip is as large as an image.
    constexpr tmsize_t largestStrip = 1 << 24;
    const std::uint32_t stripRows = rowsPerStrip(tiff, layout);
    const tmsize_t rowBytes = TIFFScanlineSize(tiff.get());
    const bool byStrip = rowBytes * tmsize_t(stripRows) <= largestStrip;
    std::vector<std::uint8_t> bytes(std::size_t(byStrip ? rowBytes * tmsize_t(stripRows) : rowBytes));
    for (std::uint32_t y = 0; y < std::uint32_t(layout.stored.height); ++y) {
        const std::uint32_t rowInStrip = y % stripRows;
        if (byStrip && rowInStrip == 0) {
            const tmsize_t wanted = rowBytes * tmsize_t(std::min(stripRows, std::uint32_t(layout.stored.height) - y));
            if (TIFFReadEncodedStrip(tiff.get(), y / stripRows, bytes.data(), wanted) != wanted || tiff.faulty())
                tiff.fail(damaged);
        } else if (!byStrip) {
            if (TIFFReadScanline(tiff.get(), bytes.data(), y) != 1 || tiff.faulty())
                tiff.fail(damaged);
        }
        convert(bitmap.row(int(y)), bytes.data() + (byStrip ? rowBytes * tmsize_t(rowInStrip) : 0), bitmap.width());
    }
}

Size tileSize(const TiffHandle& tiff)
{
    // A tile is a piece of the image and its borders; larger ones are a slip or a trap.
    constexpr std::uint64_t largestTile = std::uint64_t(1) << 24;
    const std::uint64_t width = tiff.longTag(TIFFTAG_TILEWIDTH, 0);
    const std::uint64_t height = tiff.longTag(TIFFTAG_TILELENGTH, 0);
    if (width == 0 || height == 0 || width > largestTile || height > largestTile || width * height > largestTile) {
        throw ImagingError("The TIFF file claims tiles of " + std::to_string(width) + " x " + std::to_string(height) +
                           " pixels.");
    }
    return {int(width), int(height)};
}

void readTiles(TiffHandle& tiff, const RowConverter& convert, Bitmap& bitmap)
{
    const Size tile = tileSize(tiff);
    const tmsize_t rowBytes = TIFFTileRowSize(tiff.get());
    const tmsize_t tileBytes = TIFFTileSize(tiff.get());
    if (tileBytes <= 0 || tileBytes / tile.height < rowBytes)
        tiff.fail(damaged);
    std::vector<std::uint8_t> bytes(std::size_t(tileBytes), 0);
    std::vector<std::uint64_t> bits((std::size_t(tile.width) + 63) / 64);
    for (int top = 0; top < bitmap.height(); top += tile.height) {
        for (int left = 0; left < bitmap.width(); left += tile.width) {
            if (TIFFReadTile(tiff.get(), bytes.data(), std::uint32_t(left), std::uint32_t(top), 0, 0) < 0 ||
                tiff.faulty())
                tiff.fail(damaged);
            const int width = std::min(tile.width, bitmap.width() - left);
            const int rows = std::min(tile.height, bitmap.height() - top);
            for (int y = 0; y < rows; ++y) {
                convert(bits.data(), bytes.data() + rowBytes * y, width);
                addBits(bitmap.row(top + y), left, bits.data(), width);
            }
        }
    }
}

// The piece of an image that libtiff converts at once, checked before memory is asked for.
Size colourPiece(const TiffHandle& tiff, const Layout& layout, const ByteSource& source)
{
    constexpr std::uint64_t largestPiece = 100'000'000; // 400 MB as colours, and as much again as they are stored
    constexpr std::uint64_t highestCompression = 1 << 15;
    const Size piece = layout.tiled ? tileSize(tiff) : Size{layout.stored.width, int(rowsPerStrip(tiff, layout))};
    const std::uint64_t pixels = std::uint64_t(piece.width) * std::uint64_t(piece.height);
    if (pixels > largestPiece)
        throw ImagingError("The TIFF colour image is too large to be read in one piece.");
    if (pixels * std::uint64_t(layout.bitsPerPixel()) / 8 > source.size() * highestCompression)
        throw ImagingError("The TIFF file is too short for its image.");
    return piece;
}

// Every other kind of pixel, through libtiff's conversion to red, green, blue and opacity.
void readColours(TiffHandle& tiff, const Layout& layout, const ByteSource& source, Bitmap& bitmap)
{
    char reason[1024] = "";
    if (!TIFFRGBAImageOK(tiff.get(), reason))
        throw ImagingError(std::string("TIFF images of this kind are not read: ") + reason + ".");
    tiff.setTag(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT); // turning is left to upright()
    const Size piece = colourPiece(tiff, layout, source);
    const auto colours =
        std::make_unique_for_overwrite<std::uint32_t[]>(std::size_t(piece.width) * std::size_t(piece.height));
    std::vector<std::uint64_t> bits((std::size_t(piece.width) + 63) / 64);
    for (int top = 0; top < bitmap.height(); top += piece.height) {
        for (int left = 0; left < bitmap.width(); left += piece.width) {
            const int stopAtErrors = 1;
            const int done = layout.tiled
                                 ? TIFFReadRGBATileExt(tiff.get(), std::uint32_t(left), std::uint32_t(top),
                                                       colours.get(), stopAtErrors)
                                 : TIFFReadRGBAStripExt(tiff.get(), std::uint32_t(top), colours.get(), stopAtErrors);
            if (!done || tiff.faulty())
                tiff.fail("The TIFF colour image can't be read");
            const int width = std::min(piece.width, bitmap.width() - left);
            const int rows = std::min(piece.height, bitmap.height() - top);
            for (int y = 0; y < rows; ++y) {
                // The bottom row comes first: of a tile always its full height, of a strip the rows that there are.
                const int fromBottom = (layout.tiled ? piece.height : rows) - 1 - y;
                const std::uint32_t* pixels = colours.get() + std::ptrdiff_t(fromBottom) * piece.width;
                fillRow(bits.data(), width, [&](int x) {
                    // Colours come already multiplied with their opacity: add what the paper lets shine through.
                    const int paper = 255 - int(TIFFGetA(pixels[x]));
                    return isDark(int(TIFFGetR(pixels[x])) + paper, int(TIFFGetG(pixels[x])) + paper,
                                  int(TIFFGetB(pixels[x])) + paper);
                });
                addBits(bitmap.row(top + y), left, bits.data(), width);
            }
        }
    }
}

// libtiff takes pieces that the directory does not tell of for ones at the beginning of the file.
void refuseMissingPieces(const TiffHandle& tiff, const Layout& layout)
{
    constexpr std::uint64_t headerSize = 8;
    if (layout.compression == COMPRESSION_OJPEG) // its data may lie behind tags of their own
        return;
    const std::uint32_t count = layout.tiled ? TIFFNumberOfTiles(tiff.get()) : TIFFNumberOfStrips(tiff.get());
    for (std::uint32_t piece = 0; piece < count; ++piece) {
        if (TIFFGetStrileOffset(tiff.get(), piece) < headerSize) {
            throw ImagingError("The TIFF file does not have all of its image: part " + std::to_string(piece + 1) +
                               " of " + std::to_string(count) + " is missing.");
        }
    }
}

bool recognisesTiff(std::span<const std::byte> head)
{
    static constexpr std::array<std::array<unsigned char, 4>, 4> beginnings = {
        {{'I', 'I', 42, 0}, {'M', 'M', 0, 42}, {'I', 'I', 43, 0}, {'M', 'M', 0, 43}}};
    return head.size() >= 4 && std::any_of(beginnings.begin(), beginnings.end(), [&](const auto& beginning) {
               return std::equal(beginning.begin(), beginning.end(), head.begin(),
                                 [](unsigned char wanted, std::byte found) { return std::byte(wanted) == found; });
           });
}

} // namespace

RasterInfo inspectTiff(ByteSource& source)
{
    return infoOf(layoutOf(TiffHandle(source)));
}

RasterFile readTiff(ByteSource& source)
{
    TiffHandle tiff(source);
    const Layout layout = layoutOf(tiff);
    if (!TIFFIsCODECConfigured(std::uint16_t(layout.compression)))
        throw ImagingError("TIFF files with compression " + std::to_string(layout.compression) + " are not read.");
    // The other decoder that libtiff may have been built with takes some data that are cut off for whole.
    if (layout.compression == COMPRESSION_ADOBE_DEFLATE || layout.compression == COMPRESSION_DEFLATE)
        tiff.setTag(TIFFTAG_DEFLATE_SUBCODEC, DEFLATE_SUBCODEC_ZLIB);
    refuseMissingPieces(tiff, layout);
    tiff.forgetComplaints(); // of tags that the pixels do not need
    const RowConverter convert = plainConverter(tiff, layout);
    const bool pieced = !convert || layout.tiled; // pieces are added to paper, rows of strips are written whole
    Bitmap bitmap = pieced ? Bitmap(layout.stored) : Bitmap::uninitialized(layout.stored);
    if (!convert) {
        readColours(tiff, layout, source, bitmap);
    } else if (layout.tiled) {
        readTiles(tiff, convert, bitmap);
    } else if (const auto coding = faxCoding(tiff, layout)) {
        readFaxStrips(tiff, layout, *coding, source, bitmap);
    } else {
        readStrips(tiff, layout, convert, bitmap);
    }
    return {upright(std::move(bitmap), layout.orientation), infoOf(layout)};
}

const RasterCodec tiffCodec{recognisesTiff, inspectTiff, readTiff, writeTiff};

} // namespace imaging
