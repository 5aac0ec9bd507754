#include <gmock/gmock.h>

#include "imaging/dib.h"
#include "imaging/error.h"
#include "tiff_bytes.h"

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
    // A small valid file of every kind. The TIFF files have their directory first, so that cutting them cuts pixels.
    std::vector<Sample> samples() const
    {
        const Bitmap picture = sampleBitmap(75, 43);
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
                TiffBytes tiff(75, 43);
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
              "-interlace PNG PNG32:", "-define png:color-type=3 -define png:bit-depth=2 PNG:"}) {
            runTool(std::string("convert plan.tif ") + kind + "sample");
            result.push_back({kind, contentOf<Bytes>(file("sample")), sampleBitmap(20, 13)});
        }
    }
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
        const std::size_t step = sample.bytes.size() < 800 ? 1 : 7;
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

    Bytes png = {0x89, 'P',  'N',  'G',  13,   10,   26,   10, 0, 0, 0, 13, 'I', 'H', 'D', 'R', 0x7F,
                 0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 1,  0, 0, 0, 0,  0,   0,   0,   0};
    EXPECT_THAT(errorOf([&] { readRaster(asBytes(png)); }), HasSubstr("PNG"));
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
