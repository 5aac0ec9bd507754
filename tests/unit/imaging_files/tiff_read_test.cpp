#include <gmock/gmock.h>
#include <thread>

#include "tests/support/tiff_bytes.h"

using namespace imaging;
using testing::HasSubstr;

namespace {

class TiffRead : public FilesTest
{};

struct NamedCompression
{
    const char* name;
    int compression;
    int group3Options;
    Format format;
};

constexpr NamedCompression compressions[] = {
    {"none", COMPRESSION_NONE, 0, Format::TiffUncompressed},
    {"CCITT 1D", COMPRESSION_CCITTRLE, 0, Format::TiffOther},
    {"group 3 1D", COMPRESSION_CCITTFAX3, 0, Format::TiffOther},
    {"group 3 2D with fill bits", COMPRESSION_CCITTFAX3, GROUP3OPT_2DENCODING | GROUP3OPT_FILLBITS, Format::TiffOther},
    {"group 4", COMPRESSION_CCITTFAX4, 0, Format::TiffGroup4},
    {"LZW", COMPRESSION_LZW, 0, Format::TiffOther},
    {"PackBits", COMPRESSION_PACKBITS, 0, Format::TiffPackBits},
    {"deflate", COMPRESSION_ADOBE_DEFLATE, 0, Format::TiffDeflate},
    {"old deflate", COMPRESSION_DEFLATE, 0, Format::TiffDeflate},
};

} // namespace

TEST_F(TiffRead, EveryCompressionPhotometricFillOrderOrientationAndLayoutGivesThePicture)
{
    const Bitmap seen = sampleBitmap(75, 43);
    const auto path = file("picture.tif");
    for (const NamedCompression& compression : compressions)
        for (const int photometric : {PHOTOMETRIC_MINISWHITE, PHOTOMETRIC_MINISBLACK})
            for (const int fillOrder : {FILLORDER_MSB2LSB, FILLORDER_LSB2MSB})
                for (int orientation = ORIENTATION_TOPLEFT; orientation <= ORIENTATION_LEFTBOT; ++orientation)
                    for (const int rowsPerStrip : {0, 8, -1}) {
                        SCOPED_TRACE(testing::Message() << compression.name << ", photometric " << photometric
                                                        << ", fill order " << fillOrder << ", orientation "
                                                        << orientation << ", rows per strip " << rowsPerStrip);
                        writeByLibtiff(path, seen,
                                       {compression.compression, photometric, fillOrder, orientation,
                                        compression.group3Options, rowsPerStrip});
                        const RasterFile read = readRaster(path);
                        ASSERT_TRUE(samePicture(seen, read.bitmap));
                        ASSERT_EQ(read.info.size, seen.size());
                        ASSERT_EQ(read.info.bitsPerPixel, 1);
                        ASSERT_EQ(read.info.format, compression.format);
                    }
}

TEST_F(TiffRead, FirstOfTwoPagesAtWidthsAroundTheWordEdge)
{
    const auto path = file("picture.tif");
    for (const int width : {1, 7, 8, 9, 31, 32, 33, 63, 64, 65, 127, 128, 129})
        for (const int compression : {COMPRESSION_NONE, COMPRESSION_CCITTFAX4})
            for (const int photometric : {PHOTOMETRIC_MINISWHITE, PHOTOMETRIC_MINISBLACK}) {
                const Bitmap seen = sampleBitmap(width, 5);
                writeByLibtiff(path, seen, {.compression = compression, .photometric = photometric});
                writeByLibtiff(path, sampleBitmap(90, 80), {}, true);
                ASSERT_TRUE(samePicture(seen, readRaster(path).bitmap)) << width << " pixels wide";
                ASSERT_EQ(inspectRaster(path).size, seen.size());
            }
}

TEST_F(TiffRead, ResolutionInEveryUnit)
{
    struct Case
    {
        const char* name;
        int unit;   // 0: no such tag
        float x, y; // below 0: no such tag
        Resolution expected;
    };
    const Case cases[] = {
        {"inches", RESUNIT_INCH, 300, 300, {300, 300}},
        {"no unit tag means inches", 0, 400, 400, {400, 400}},
        {"centimetres, whole dots per inch restored", RESUNIT_CENTIMETER, 118.11f, 118.11f, {300, 300}},
        {"centimetres", RESUNIT_CENTIMETER, 100, 100, {254, 254}},
        {"unequal", RESUNIT_INCH, 204, 98, {204, 98}},
        {"zero", RESUNIT_INCH, 0, 0, {0, 0}},
        {"missing", RESUNIT_INCH, -1, -1, {0, 0}},
        {"only one given stands for both", RESUNIT_INCH, 200, -1, {200, 200}},
        {"one zero", RESUNIT_INCH, 0, 240, {240, 240}},
        {"numbers without a unit tell the shape of a pixel only", RESUNIT_NONE, 300, 300, {0, 0}},
    };
    const auto path = file("resolution.tif");
    for (const Case& c : cases)
        for (const int orientation : {ORIENTATION_TOPLEFT, ORIENTATION_RIGHTTOP}) {
            SCOPED_TRACE(testing::Message() << c.name << ", orientation " << orientation);
            writeByLibtiff(path, sampleBitmap(20, 10), {.orientation = orientation});
            TIFF* tiff = TIFFOpen(path.c_str(), "r+");
            ASSERT_TRUE(tiff);
            if (c.unit != 0)
                TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, c.unit);
            if (c.x >= 0)
                TIFFSetField(tiff, TIFFTAG_XRESOLUTION, c.x);
            if (c.y >= 0)
                TIFFSetField(tiff, TIFFTAG_YRESOLUTION, c.y);
            ASSERT_TRUE(TIFFRewriteDirectory(tiff));
            TIFFClose(tiff);
            const RasterInfo info = inspectRaster(path);
            const bool turned = orientation == ORIENTATION_RIGHTTOP;
            EXPECT_DOUBLE_EQ(info.resolution.x, turned ? c.expected.y : c.expected.x);
            EXPECT_DOUBLE_EQ(info.resolution.y, turned ? c.expected.x : c.expected.y);
            EXPECT_EQ(info.size, (Size{20, 10}));
        }
}

TEST_F(TiffRead, HandMadeFilesWithFewOrFalseTags)
{
    // Two rows of 12 pixels, padded to two bytes each.
    const Bytes strip = {0b11100000, 0b00010000, 0b00000000, 0b11110000};
    const Picture inkIsOne = {"###........#", "........####"};
    const Picture inkIsZero = {"...########.", "########...."};
    const auto minimal = [](bool bigEndian, std::uint16_t photometric) {
        return TiffBytes(12, 2, bigEndian).shortTag(TIFFTAG_PHOTOMETRIC, photometric);
    };
    const auto oneRow = [](std::uint32_t width, std::uint16_t bits, std::uint16_t samples, std::uint16_t photometric) {
        return TiffBytes(width, 1)
            .shortTag(TIFFTAG_BITSPERSAMPLE, bits)
            .shortTag(TIFFTAG_SAMPLESPERPIXEL, samples)
            .shortTag(TIFFTAG_PHOTOMETRIC, photometric);
    };
    const struct
    {
        const char* name;
        Bytes bytes;
        Picture expected;
    } cases[] = {
        {"no BitsPerSample, SamplesPerPixel, Compression, RowsPerStrip",
         minimal(false, 0).longTag(TIFFTAG_STRIPBYTECOUNTS, 4).withStrip(strip), inkIsOne},
        {"the same in the other byte order", minimal(true, 0).longTag(TIFFTAG_STRIPBYTECOUNTS, 4).withStrip(strip),
         inkIsOne},
        {"black is zero", minimal(true, 1).longTag(TIFFTAG_STRIPBYTECOUNTS, 4).withStrip(strip), inkIsZero},
        {"RowsPerStrip beyond every image",
         minimal(false, 0)
             .longTag(TIFFTAG_ROWSPERSTRIP, 0xFFFFFFFF)
             .longTag(TIFFTAG_STRIPBYTECOUNTS, 4)
             .withStrip(strip),
         inkIsOne},
        {"no StripByteCounts", minimal(false, 0).withStrip(strip), inkIsOne},
        // black, red, green, blue, yellow, white: 000 100 010 001 110 111
        {"colours of one bit each",
         oneRow(6, 1, 3, PHOTOMETRIC_RGB)
             .longTag(TIFFTAG_STRIPBYTECOUNTS, 3)
             .withStrip({0b00010001, 0b00011101, 0b11000000}),
         {"##.#.."}},
        {"grey where white is zero",
         oneRow(4, 8, 1, 0).longTag(TIFFTAG_STRIPBYTECOUNTS, 4).withStrip({0, 127, 128, 255}),
         {"..##"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(rowsOf(readRaster(asBytes(c.bytes)).bitmap), c.expected);
    }
}

TEST_F(TiffRead, Group4BytesWorkedOutByHand)
{
    // Row 1: horizontal mode 001, 3 white 1000, 2 black 11, then V0. Row 2: three times V0. End of block.
    const Bytes strip = {0x31, 0xF8, 0x00, 0x80, 0x08};
    const auto tiff = [&](std::uint32_t rows) {
        return TiffBytes(8, rows) // without a photometric tag a fax image is black on white
            .shortTag(TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4)
            .longTag(TIFFTAG_STRIPBYTECOUNTS, std::uint32_t(strip.size()))
            .withStrip(strip);
    };
    EXPECT_EQ(rowsOf(readRaster(asBytes(tiff(2))).bitmap), (Picture{"...##...", "...##..."}));
    EXPECT_THAT(errorOf([&] { readRaster(asBytes(tiff(3))); }), HasSubstr("row 2"))
        << "a third row that the data do not hold must not pass as white";
}

TEST_F(TiffRead, OnePaletteBitTakesTheDarkerColourForInk)
{
    struct Case
    {
        const char* name;
        std::uint16_t first[3], second[3]; // red, green, blue
        bool oneIsInk;
    };
    const Case cases[] = {
        {"white, black", {65535, 65535, 65535}, {0, 0, 0}, true},
        {"black, white", {0, 0, 0}, {65535, 65535, 65535}, false},
        {"yellow on white", {65535, 65535, 65535}, {65535, 65535, 0}, true},
        {"entries of 8 bits only", {200, 200, 200}, {10, 10, 10}, true},
        {"two equal colours: 1 is paper", {0, 0, 0}, {0, 0, 0}, false},
    };
    const auto path = file("palette.tif");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TIFF* tiff = TIFFOpen(path.c_str(), "w");
        std::uint16_t map[3][2];
        for (int i = 0; i < 3; ++i) {
            map[i][0] = c.first[i];
            map[i][1] = c.second[i];
        }
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, 8);
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, 1);
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_PALETTE);
        TIFFSetField(tiff, TIFFTAG_COLORMAP, map[0], map[1], map[2]);
        std::uint8_t row[] = {0b11010000};
        ASSERT_GE(TIFFWriteEncodedStrip(tiff, 0, row, 1), 0);
        TIFFClose(tiff);
        EXPECT_EQ(rowsOf(readRaster(path).bitmap)[0], c.oneIsInk ? "##.#...." : "..#.####");
    }
}

TEST_F(TiffRead, SeveralThreadsReadWithoutMixingUpTheirErrors)
{
    writeByLibtiff(file("good.tif"), sampleBitmap(200, 300), {.compression = COMPRESSION_CCITTFAX3});
    Bytes broken = contentOf<Bytes>(file("good.tif"));
    std::fill(broken.begin() + 40, broken.begin() + 80, std::uint8_t(0x55));
    saveBytes(file("broken.tif"), broken);
    const std::string expected = errorOf([&] { readRaster(file("broken.tif")); });
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            for (int round = 0; round < 20; ++round)
                if (i % 2 == 0)
                    EXPECT_TRUE(samePicture(sampleBitmap(200, 300), readRaster(file("good.tif")).bitmap));
                else
                    EXPECT_EQ(errorOf([&] { readRaster(file("broken.tif")); }), expected);
        });
}

TEST_F(TiffRead, PartsThatTheDirectoryDoesNotTellOfAreMissed)
{
    const Bytes fourRows = TiffBytes(8, 4)
                               .shortTag(TIFFTAG_PHOTOMETRIC, 0)
                               .longTag(TIFFTAG_ROWSPERSTRIP, 1)
                               .longTag(TIFFTAG_STRIPBYTECOUNTS, 1)
                               .withStrip({0xFF});
    EXPECT_THAT(errorOf([&] { readRaster(asBytes(fourRows)); }), HasSubstr("part 2 of 4 is missing"));
    const Bytes threePlanes = TiffBytes(2, 1)
                                  .shortTag(TIFFTAG_BITSPERSAMPLE, 8)
                                  .shortTag(TIFFTAG_SAMPLESPERPIXEL, 3)
                                  .shortTag(TIFFTAG_PLANARCONFIG, PLANARCONFIG_SEPARATE)
                                  .shortTag(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB)
                                  .longTag(TIFFTAG_STRIPBYTECOUNTS, 2)
                                  .withStrip({0, 255});
    EXPECT_THAT(errorOf([&] { readRaster(asBytes(threePlanes)); }), HasSubstr("part 2 of 3 is missing"));
}

TEST_F(TiffRead, WarningsThatDoNoHarmRefuseNoFile)
{
    // The codes 256, 10101010, 257 of nine bits each, lowest bit first: LZW as it was before it was put into TIFF.
    const Bytes oldLzw = TiffBytes(8, 1)
                             .shortTag(TIFFTAG_PHOTOMETRIC, 0)
                             .shortTag(TIFFTAG_COMPRESSION, COMPRESSION_LZW)
                             .longTag(TIFFTAG_STRIPBYTECOUNTS, 4)
                             .withStrip({0x00, 0x55, 0x05, 0x04});
    EXPECT_EQ(rowsOf(readRaster(asBytes(oldLzw)).bitmap), Picture{"#.#.#.#."});

    runTool("convert -size 16x16 xc:white -fill black -draw 'rectangle 8,0 15,15' -type TrueColor -sampling-factor 2x2 "
            "JPEG:half");
    const Bytes jpeg = contentOf<Bytes>(file("half"));
    constexpr std::uint32_t directory = 8 + 2 + 12 * 10 + 4; // ten tags, with that of the strip
    const auto oldJpeg = [&](const Bytes& data) {
        return TiffBytes(16, 16)
            .shortTag(TIFFTAG_BITSPERSAMPLE, 8)
            .shortTag(TIFFTAG_SAMPLESPERPIXEL, 3)
            .shortTag(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_YCBCR)
            .shortTag(TIFFTAG_COMPRESSION, COMPRESSION_OJPEG)
            .longTag(TIFFTAG_STRIPBYTECOUNTS, std::uint32_t(data.size()))
            .longTag(TIFFTAG_JPEGIFOFFSET, directory)
            .longTag(TIFFTAG_JPEGIFBYTECOUNT, std::uint32_t(data.size()))
            .withStrip(data);
    };
    EXPECT_EQ(rowsOf(readRaster(asBytes(oldJpeg(jpeg))).bitmap), Picture(16, "........########"));
    EXPECT_NE(errorOf([&] {
                  readRaster(asBytes(oldJpeg({jpeg.begin(), jpeg.end() - 20})));
              }),
              "")
        << "half a picture must not pass as whole";
}

TEST_F(TiffRead, ThePaperShinesThroughWhatIsNotOpaque)
{
    const auto withOpacity = [](std::uint32_t width, std::uint32_t bits, std::uint32_t photometric, std::uint32_t kind,
                                const Bytes& pixels) {
        return TiffBytes(width, 1)
            .shortTag(TIFFTAG_BITSPERSAMPLE, bits)
            .shortTag(TIFFTAG_SAMPLESPERPIXEL, 2)
            .shortTag(TIFFTAG_PHOTOMETRIC, photometric)
            .shortTag(TIFFTAG_EXTRASAMPLES, kind)
            .longTag(TIFFTAG_STRIPBYTECOUNTS, std::uint32_t(pixels.size()))
            .withStrip(pixels);
    };
    const struct
    {
        const char* name;
        Bytes bytes;
        const char* row;
    } cases[] = {
        // Half lies between the opacities 127 and 128 of black; 90 under 200 shows 126, multiplied already 145.
        {"greys of 8 bits",
         withOpacity(6, 8, 1, EXTRASAMPLE_UNASSALPHA, {0, 255, 0, 0, 0, 128, 0, 127, 90, 200, 255, 255}), "#.#.#."},
        {"multiplied greys", withOpacity(4, 8, 1, EXTRASAMPLE_ASSOCALPHA, {0, 255, 0, 127, 90, 200, 70, 200}), "#..#"},
        {"white is zero", withOpacity(4, 8, 0, EXTRASAMPLE_UNASSALPHA, {255, 255, 255, 100, 0, 255, 255, 128}), "#..#"},
        {"greys of 4 bits", withOpacity(4, 4, 1, EXTRASAMPLE_UNASSALPHA, {0x0F, 0x00, 0x08, 0x07}), "#.#."},
        {"greys of 16 bits", withOpacity(2, 16, 1, EXTRASAMPLE_UNASSALPHA, {0, 0, 0, 0x81, 0, 0, 0, 0x7F}), "#."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(rowsOf(readRaster(asBytes(c.bytes)).bitmap)[0], c.row) << c.name;

    const auto path = file("palette.tif");
    TIFF* tiff = TIFFOpen(path.c_str(), "w");
    std::vector<std::uint16_t> dark(256, 0);
    const std::uint16_t kinds[] = {EXTRASAMPLE_UNASSALPHA};
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, 4);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, 1);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 2);
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, kinds);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_PALETTE);
    dark[7] = 65535;
    TIFFSetField(tiff, TIFFTAG_COLORMAP, dark.data(), dark.data(), dark.data());
    std::uint8_t row[] = {0, 255, 0, 127, 0, 128, 7, 255};
    ASSERT_GE(TIFFWriteEncodedStrip(tiff, 0, row, sizeof row), 0);
    TIFFClose(tiff);
    EXPECT_EQ(rowsOf(readRaster(path).bitmap), Picture{"#.#."});
}
