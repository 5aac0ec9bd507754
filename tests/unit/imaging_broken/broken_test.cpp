#include <algorithm>
#include <gmock/gmock.h>
#include <zlib.h>

#include "imaging/dib.h"
#include "imaging/error.h"
#include "tests/support/tiff_bytes.h"

// The sanitizer's own, which GCC has no header for.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void*, std::size_t),
                                                         void (*freed)(const volatile void*));

using namespace imaging;
using testing::HasSubstr;

namespace {

struct Sample
{
    std::string name;
    Bytes bytes;
    Bitmap picture;
};

class Broken : public FilesTest
{
protected:
    static constexpr int pictureRows = 20; // three strips of 8

    // A small valid file of every kind. The TIFF files have their directory first, so that cutting them cuts pixels.
    std::vector<Sample> samples() const
    {
        const Bitmap picture = sampleBitmap(75, pictureRows);
        std::vector<Sample> result;
        for (const FormatDescription& format : formatDescriptions()) {
            if (!format.writable)
                continue;
            writeRaster(file("sample"), picture, {300, 300}, format.format);
            result.push_back({std::string(format.name), contentOf<Bytes>(file("sample")), picture});
        }
        const struct
        {
            const char* name;
            int compression, group3Options;
        } kinds[] = {
            {"uncompressed", COMPRESSION_NONE, 0},    {"CCITT 1D", COMPRESSION_CCITTRLE, 0},
            {"group 3 1D", COMPRESSION_CCITTFAX3, 0}, {"group 3 2D", COMPRESSION_CCITTFAX3, GROUP3OPT_2DENCODING},
            {"group 4", COMPRESSION_CCITTFAX4, 0},    {"LZW", COMPRESSION_LZW, 0},
            {"PackBits", COMPRESSION_PACKBITS, 0},    {"deflate", COMPRESSION_ADOBE_DEFLATE, 0}};
        for (const auto& kind : kinds)
            for (const bool countKnown : {true, false}) {
                writeByLibtiff(file("sample"), picture,
                               {.compression = kind.compression, .group3Options = kind.group3Options});
                const Bytes strip = onlyStripOf(file("sample"));
                TiffBytes tiff(75, pictureRows);
                tiff.shortTag(TIFFTAG_COMPRESSION, std::uint32_t(kind.compression))
                    .shortTag(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE)
                    .longTag(TIFFTAG_STRIPBYTECOUNTS, countKnown ? std::uint32_t(strip.size()) : 0);
                if (kind.compression == COMPRESSION_CCITTFAX3)
                    tiff.longTag(TIFFTAG_GROUP3OPTIONS, std::uint32_t(kind.group3Options));
                result.push_back(
                    {std::string("TIFF ") + kind.name + ", directory first" + (countKnown ? "" : ", StripByteCounts 0"),
                     tiff.withStrip(strip), picture});
            }
        writeByLibtiff(file("sample"), picture, {.compression = COMPRESSION_CCITTFAX4, .rowsPerStrip = 8});
        result.push_back({"TIFF group 4 in strips", contentOf<Bytes>(file("sample")), picture});
        writeByLibtiff(file("sample"), picture, {.compression = COMPRESSION_LZW, .rowsPerStrip = -1});
        result.push_back({"TIFF in tiles", contentOf<Bytes>(file("sample")), picture});
        addColourSamples(result);
        return result;
    }

    // Samples that other programs make: colours, interlacing.
    void addColourSamples(std::vector<Sample>& result) const
    {
        writeByLibtiff(file("plan.tif"), sampleBitmap(20, 13), {});
        for (const char* const kind :
             {"-type TrueColor -compress zip TIFF:", "-type TrueColor -depth 8 -interlace plane -compress lzw TIFF:",
              "-type ColorSeparation -depth 8 -compress none TIFF:", "-type TrueColor BMP3:", "PNG24:",
              "-type TrueColor PCX:", "-type Palette -compress none PCX:", "-type Grayscale -quality 100 JPEG:",
              "-type TrueColor -quality 100 JPEG:", "-interlace JPEG -type TrueColor -quality 100 JPEG:",
              "-colorspace CMYK -quality 100 JPEG:", "-interlace PNG PNG32:",
              "-define png:color-type=3 -define png:bit-depth=2 PNG:"}) {
            runTool(std::string("convert plan.tif ") + kind + "sample");
            result.push_back({kind, contentOf<Bytes>(file("sample")), sampleBitmap(20, 13)});
        }
    }
};

// Tells the largest piece of memory that was asked for while it lived. The sanitizer of the native build sees them all.
class AllocationWatch
{
public:
    AllocationWatch()
    {
        static const int installed = __sanitizer_install_malloc_and_free_hooks(&note, &ignore);
        EXPECT_NE(installed, 0);
        s_largest = 0;
    }
    static std::size_t largest() { return s_largest; }

private:
    static void note(const volatile void*, std::size_t size)
    {
        if (size > s_largest)
            s_largest = size;
    }
    static void ignore(const volatile void*) {}

    static inline std::size_t s_largest = 0;
};

// Reads the bytes; whatever comes out must be either a sound image or an error in words.
std::optional<Bitmap> readOrError(const Bytes& bytes)
{
    try {
        RasterFile file = readRaster(asBytes(bytes));
        EXPECT_EQ(file.bitmap.size(), file.info.size);
        for (int y = 0; y < file.bitmap.height(); ++y)
            if (file.bitmap.row(y)[file.bitmap.wordsPerRow() - 1] & ~file.bitmap.lastWordMask()) {
                ADD_FAILURE() << "ink in the padding of row " << y;
                break;
            }
        return std::move(file.bitmap);
    } catch (const ImagingError& error) {
        EXPECT_STRNE(error.what(), "");
        return std::nullopt;
    }
}

} // namespace

TEST_F(Broken, AFileCutOffAnywhereIsAnErrorOrStillWhole)
{
    for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.name);
        for (std::size_t length = 0; length <= sample.bytes.size(); ++length) {
            const auto read = readOrError(Bytes(sample.bytes.begin(), sample.bytes.begin() + std::ptrdiff_t(length)));
            if (length == sample.bytes.size()) {
                ASSERT_TRUE(read);
            }
            if (read) {
                ASSERT_TRUE(samePicture(sample.picture, *read)) << "cut off after " << length << " bytes";
            }
        }
    }
}

TEST_F(Broken, AFlippedBitAnywhereGivesASoundImageOrAnError)
{
    for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.name);
        // All bits of short files, a sample of the long ones.
        const std::size_t step = sample.bytes.size() < 600 ? 1 : 7;
        for (std::size_t bit = 0; bit < sample.bytes.size() * 8; bit += step) {
            Bytes bytes = sample.bytes;
            bytes[bit / 8] ^= std::uint8_t(1 << bit % 8);
            readOrError(bytes);
        }
    }
}

TEST_F(Broken, AHoleOfZerosInGroup4DataIsFound)
{
    const Bitmap picture = sampleBitmap(300, 200);
    for (const Format format : {Format::TiffGroup4, Format::Cals}) {
        writeRaster(file("plan"), picture, {300, 300}, format);
        const Bytes whole = contentOf<Bytes>(file("plan"));
        const std::size_t start = format == Format::Cals ? 2048 : 8;
        for (std::size_t at = start; at + 64 < whole.size() - 400; at += 97) {
            Bytes holed = whole;
            std::fill(holed.begin() + std::ptrdiff_t(at), holed.begin() + std::ptrdiff_t(at) + 64, std::uint8_t(0));
            EXPECT_FALSE(readOrError(holed)) << "64 zero bytes at " << at << " of " << whole.size();
        }
    }
}

TEST_F(Broken, AbsurdSizesAreRefusedBeforeMemoryIsAskedFor)
{
    const auto tiff = [](std::uint32_t width, std::uint32_t height, std::uint16_t compression) {
        return TiffBytes(width, height)
            .shortTag(TIFFTAG_COMPRESSION, compression)
            .shortTag(TIFFTAG_PHOTOMETRIC, 0)
            .longTag(TIFFTAG_ROWSPERSTRIP, height)
            .longTag(TIFFTAG_STRIPBYTECOUNTS, 4)
            .withStrip({0xFF, 0xFF, 0xFF, 0xFF});
    };
    for (const std::uint16_t compression : {COMPRESSION_NONE, COMPRESSION_CCITTFAX4, COMPRESSION_CCITTFAX3,
                                            COMPRESSION_PACKBITS, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE}) {
        SCOPED_TRACE(compression);
        EXPECT_THAT(errorOf([&] { readRaster(asBytes(tiff(0xFFFFFFFF, 0xFFFFFFFF, compression))); }),
                    HasSubstr("too large"));
        EXPECT_THAT(errorOf([&] { readRaster(asBytes(tiff(1000000, 1000000, compression))); }), HasSubstr("too large"));
        EXPECT_NE(errorOf([&] { readRaster(asBytes(tiff(46000, 46000, compression))); }), "");
        EXPECT_NE(errorOf([&] { readRaster(asBytes(tiff(0, 10, compression))); }), "");
    }
    const Bytes hugeTiles = TiffBytes(100, 100)
                                .shortTag(TIFFTAG_COMPRESSION, COMPRESSION_LZW)
                                .shortTag(TIFFTAG_PHOTOMETRIC, 0)
                                .longTag(TIFFTAG_TILEWIDTH, 1 << 20)
                                .longTag(TIFFTAG_TILELENGTH, 1 << 20)
                                .withStrip({0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_NE(errorOf([&] { readRaster(asBytes(hugeTiles)); }), "");
}

TEST_F(Broken, ASmallFileGetsNoMemoryForWhatItOnlyClaims)
{
    const auto chunk = [](const std::string& type, std::uint32_t claimedLength, const Bytes& data) {
        Bytes bytes;
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes.push_back(std::uint8_t(claimedLength >> shift));
        bytes.insert(bytes.end(), type.begin(), type.end());
        bytes.insert(bytes.end(), data.begin(), data.end());
        const auto sum = std::uint32_t(crc32(0, bytes.data() + 4, uInt(bytes.size() - 4)));
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes.push_back(std::uint8_t(sum >> shift));
        return bytes;
    };
    const auto png = [&](std::uint8_t high, std::uint8_t bits, std::uint8_t colourType, std::uint8_t interlace,
                         const Bytes& rest) {
        Bytes bytes = {0x89, 'P', 'N', 'G', 13, 10, 26, 10};
        const Bytes header = chunk("IHDR", 13, {0, 0, high, 1, 0, 0, high, 1, bits, colourType, 0, 0, interlace});
        bytes.insert(bytes.end(), header.begin(), header.end());
        bytes.insert(bytes.end(), rest.begin(), rest.end());
        return bytes;
    };
    const Bytes pixels = chunk("IDAT", 4, {0x78, 0x9C, 0x63, 0x60});
    const auto tiff = [](std::uint32_t width, std::uint32_t height, std::uint32_t bits, std::uint32_t samples,
                         std::uint32_t photometric) {
        return TiffBytes(width, height)
            .shortTag(TIFFTAG_BITSPERSAMPLE, bits)
            .shortTag(TIFFTAG_SAMPLESPERPIXEL, samples)
            .shortTag(TIFFTAG_COMPRESSION, COMPRESSION_LZW)
            .shortTag(TIFFTAG_PHOTOMETRIC, photometric)
            .longTag(TIFFTAG_ROWSPERSTRIP, height)
            .longTag(TIFFTAG_STRIPBYTECOUNTS, 4);
    };
    runTool("convert -size 16x16 xc:white baseline.jpg");
    runTool("convert -size 16x16 xc:white -interlace JPEG progressive.jpg");
    const auto jpeg = [&](const std::string& name) {
        Bytes bytes = contentOf<Bytes>(file(name));
        for (std::size_t at = 0; at + 9 < bytes.size(); ++at)
            if (bytes[at] == 0xFF && (bytes[at + 1] == 0xC0 || bytes[at + 1] == 0xC2)) {
                for (const std::size_t side : {at + 5, at + 7})
                    bytes[side] = 0x80; // 32,784
                break;
            }
        return bytes;
    };
    const auto pcx = [](std::uint8_t bits, std::uint8_t planes, std::uint8_t compressed) {
        Bytes bytes(200, 0xFF);
        const Bytes header = {10, 5, compressed, bits, 0, 0, 0, 0, 0xFF, 0xFF, 0xFE, 0x7E};
        std::copy(header.begin(), header.end(), bytes.begin());
        bytes[65] = planes;
        return bytes;
    };
    const struct
    {
        const char* name;
        Bytes bytes;
    } cases[] = {
        {"a bilevel PCX of 256 MB", pcx(1, 1, 1)},
        {"colours in a PCX", pcx(8, 3, 0)},
        {"a baseline JPEG of a gigapixel", jpeg("baseline.jpg")},
        {"a progressive JPEG of a gigapixel", jpeg("progressive.jpg")},
        {"a text of 2 GB in a PNG", png(0, 1, 0, 0, chunk("tEXt", 0x7FFFFFF0, {'x'}))},
        {"a profile of 2 GB in a PNG", png(0, 1, 0, 0, chunk("iCCP", 0x7FFFFFF0, {'x'}))},
        {"pixels of 2 GB in a PNG", png(0x10, 8, 6, 0, chunk("IDAT", 0x7FFFFFF0, {0x78, 0x9C}))},
        {"an interlaced PNG of 1 GB", png(0x40, 16, 6, 1, pixels)},
        {"a bilevel PNG of 256 MB", png(0x80, 1, 0, 0, pixels)},
        {"separated colours of 4 bytes", tiff(9000, 9000, 8, 4, PHOTOMETRIC_SEPARATED).withStrip({0, 0, 0, 0})},
        {"colours of 16 bits", tiff(9000, 9000, 16, 3, PHOTOMETRIC_RGB).withStrip({0, 0, 0, 0})},
        {"large tiles", tiff(9000, 9000, 8, 3, PHOTOMETRIC_RGB)
                            .longTag(TIFFTAG_TILEWIDTH, 8192)
                            .longTag(TIFFTAG_TILELENGTH, 8192)
                            .withStrip({0, 0, 0, 0})},
    };
    constexpr std::size_t enough = 64 << 20;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const AllocationWatch watch;
        EXPECT_NE(errorOf([&] { readRaster(asBytes(c.bytes)); }), "");
        EXPECT_LT(AllocationWatch::largest(), enough);
    }
}

TEST_F(Broken, ErrorsNameTheFileAndTheFault)
{
    const struct
    {
        const char* name;
        Bytes bytes;
        const char* words;
    } cases[] = {
        {"empty.tif", {}, "empty"},
        {"letter.tif", {'D', 'e', 'a', 'r', ' ', 'S', 'i', 'r'}, "not a raster file"},
        {"BMW.txt",
         {'B', 'M', 'W', ' ', 'i', 's', ' ', 'a', ' ', 'c', 'a', 'r', ' ', 'm', 'a', 'k', 'e', 'r', '.'},
         "not a raster file"},
        {"stump.tif", {'I', 'I', 42, 0, 200, 0, 0, 0}, "TIFF"},
        {"stump.jpg", {0xFF, 0xD8, 0xFF, 0xE0, 0, 16, 'J', 'F'}, "JPEG"},
    };
    for (const auto& c : cases) {
        saveBytes(file(c.name), c.bytes);
        for (const std::string& error :
             {errorOf([&] { readRaster(file(c.name)); }), errorOf([&] { inspectRaster(file(c.name)); })}) {
            EXPECT_THAT(error, HasSubstr(file(c.name).string() + ": "));
            EXPECT_THAT(error, HasSubstr(c.words));
        }
    }
    EXPECT_THAT(errorOf([&] { readRaster(file("nowhere.tif")); }), HasSubstr("no such file"));
    EXPECT_THAT(errorOf([&] { readRaster(file("").parent_path()); }), HasSubstr("not a file"));
}
