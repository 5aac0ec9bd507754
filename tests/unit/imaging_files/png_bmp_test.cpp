#include <gmock/gmock.h>

#include "imaging/dib.h"
#include "tests/support/tiff_bytes.h"

using namespace imaging;
using testing::HasSubstr;

namespace {

class PngBmp : public FilesTest
{};

void put(Bytes& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(std::uint8_t(value >> 8 * i));
}

// A header of the given size, filled as far as it goes: BITMAPCOREHEADER, BITMAPINFOHEADER, V4, V5.
Bytes dibHeader(std::uint32_t size, int width, int height, int bits, std::uint32_t compression = 0,
                std::uint32_t coloursUsed = 0, std::uint32_t opacityMask = 0)
{
    Bytes bytes;
    put(bytes, size, 4);
    const int sideBytes = size == 12 ? 2 : 4;
    put(bytes, std::uint32_t(width), sideBytes);
    put(bytes, std::uint32_t(height), sideBytes);
    put(bytes, 1, 2);
    put(bytes, std::uint32_t(bits), 2);
    if (size == 12)
        return bytes;
    put(bytes, compression, 4);
    put(bytes, 0, 4);
    put(bytes, 11811, 4);
    put(bytes, 11811, 4);
    put(bytes, coloursUsed, 4);
    put(bytes, 0, 4);
    if (size >= 52) {
        put(bytes, 0xFF0000, 4);
        put(bytes, 0x00FF00, 4);
        put(bytes, 0x0000FF, 4);
    }
    if (size >= 56)
        put(bytes, opacityMask, 4);
    bytes.resize(size, 0);
    return bytes;
}

Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

const Bytes blackWhite = {0, 0, 0, 0, 255, 255, 255, 0};
const Bytes whiteBlack = {255, 255, 255, 0, 0, 0, 0, 0};
const Bytes yellowBrown = {0, 255, 255, 0, 0, 60, 90, 0}; // blue, green, red

} // namespace

TEST_F(PngBmp, DibsOfEveryHeaderAndDepth)
{
    // Two rows of ten pixels, in file order, each filled up to four bytes.
    const Bytes rows = {0b11000000, 0b01000000, 0, 0, 0b00100000, 0, 0, 0};
    const Picture bottomUp = {"..#.......", "##.......#"};
    const Picture bottomUpInverted = {"##.#######", "..#######."};
    const Picture topDown = {"##.......#", "..#......."};
    const Bytes core3 = {0, 0, 0, 255, 255, 255};
    const Bytes masks565 = {0, 0xF8, 0, 0, 0xE0, 0x07, 0, 0, 0x1F, 0, 0, 0};
    const Bytes masks8888 = {0, 0, 0xFF, 0, 0, 0xFF, 0, 0, 0xFF, 0, 0, 0, 0, 0, 0, 0xFF};
    const Bytes black4 = {0, 0, 0, 255, 0, 0, 0, 0,
                          0, 0, 0, 127, 0, 0, 0, 128}; // opaque, gone, less and more than half
    const struct
    {
        const char* name;
        Bytes dib;
        Picture picture;
    } cases[] = {
        {"1 is black", dibHeader(40, 10, 2, 1) + whiteBlack + rows, bottomUp},
        {"0 is black", dibHeader(40, 10, 2, 1) + blackWhite + rows, bottomUpInverted},
        {"top down", dibHeader(40, 10, -2, 1) + whiteBlack + rows, topDown},
        {"brown on yellow", dibHeader(40, 10, 2, 1) + yellowBrown + rows, bottomUp},
        {"two colours counted", dibHeader(40, 10, 2, 1, 0, 2) + whiteBlack + rows, bottomUp},
        {"one colour, white: 1 is ink", dibHeader(40, 10, 2, 1, 0, 1) + Bytes{255, 255, 255, 0} + rows, bottomUp},
        {"one colour, black: 0 is ink", dibHeader(40, 10, 2, 1, 0, 1) + Bytes{0, 0, 0, 0} + rows, bottomUpInverted},
        {"OS/2 with palette entries of three bytes", dibHeader(12, 10, 2, 1) + core3 + rows, bottomUpInverted},
        {"OS/2 2.x", dibHeader(64, 10, 2, 1) + whiteBlack + rows, bottomUp},
        {"V4", dibHeader(108, 10, 2, 1) + whiteBlack + rows, bottomUp},
        {"V5", dibHeader(124, 10, -2, 1) + whiteBlack + rows, topDown},
        {"24 bits: blue, yellow, dark red",
         dibHeader(40, 3, 1, 24) + Bytes{255, 0, 0, 0, 255, 255, 0, 0, 90, 0, 0, 0},
         {"#.#"}},
        {"32 bits, the fourth byte unused", dibHeader(40, 2, 1, 32) + Bytes{0, 0, 0, 0, 255, 255, 255, 0}, {"#."}},
        {"32 bits with masks in a V5 header", dibHeader(124, 2, 1, 32, 3) + Bytes{255, 0, 0, 0, 0, 255, 0, 0}, {"#."}},
        {"32 bits with opacity in the highest eight", dibHeader(124, 4, 1, 32, 3, 0, 0xFF000000) + black4, {"#..#"}},
        {"the same with all masks behind the header", dibHeader(40, 4, 1, 32, 6) + masks8888 + black4, {"#..#"}},
        {"16 bits with opacity in the highest one",
         dibHeader(56, 2, 1, 16, 3, 0, 0x8000) + Bytes{0, 0x80, 0, 0},
         {"#."}},
        {"16 bits, five each", dibHeader(40, 2, 1, 16) + Bytes{0xFF, 0x7F, 0x1F, 0x00}, {".#"}},
        {"16 bits with masks behind the header",
         dibHeader(40, 2, 1, 16, 3) + masks565 + Bytes{0xE0, 0x07, 0x00, 0xF8},
         {".#"}},
        {"8 bits with three colours",
         dibHeader(40, 4, 1, 8, 0, 3) + Bytes{0, 0, 0, 0, 255, 255, 255, 0, 100, 100, 100, 0} + Bytes{1, 0, 2, 1},
         {".##."}},
        {"4 bits, odd width, top row first",
         dibHeader(40, 3, -2, 4, 0, 2) + whiteBlack + Bytes{0x01, 0x10, 0, 0} + Bytes{0x10, 0x00, 0, 0},
         {".##", "#.."}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(rowsOf(readDib(asBytes(c.dib))), c.picture);
    }
}

TEST_F(PngBmp, DibsThatAreNotWholeAreRefused)
{
    const Bytes whole = dibHeader(40, 10, 2, 1) + whiteBlack + Bytes{0xC0, 0x40, 0, 0, 0x20, 0, 0, 0};
    for (std::size_t length = 0; length < 40 + 8 + 6; ++length) // the last row's filling may be missing
        EXPECT_NE(errorOf([&] { readDib(asBytes(whole).first(length)); }), "") << length << " bytes";
    const struct
    {
        Bytes dib;
        const char* words;
    } cases[] = {
        {dibHeader(40, 10, 2, 8, 1) + whole, "Compressed"},
        {dibHeader(40, 10, 2, 7) + whole, "7 bits"},
        {dibHeader(40, -10, 2, 1) + whole, "damaged"},
        {dibHeader(40, 0, 2, 1) + whole, "no pixels"},
        {dibHeader(40, 2000000000, 2000000000, 24) + whole, "too large"},
        {dibHeader(40, 10, int(0x80000000), 1) + whole, "too large"},
        {dibHeader(40, 30000, 30000, 32) + whole, "cut off"},
        {dibHeader(13, 10, 10, 1) + whole, "header"},
    };
    for (const auto& c : cases)
        EXPECT_THAT(errorOf([&] { readDib(asBytes(c.dib)); }), HasSubstr(c.words));
}

TEST_F(PngBmp, WrittenDibByteForByte)
{
    Bytes expected = dibHeader(40, 10, 2, 1, 0, 2);
    expected[20] = 8; // bytes of the rows
    expected = expected + blackWhite + Bytes{0b11011111, 0b11000000, 0, 0, 0b00111111, 0b10000000, 0, 0};
    const std::vector<std::byte> dib = writeDib(drawn({"##.......#", "..#......."}), {300, 300});
    EXPECT_TRUE(std::equal(dib.begin(), dib.end(), asBytes(expected).begin(), asBytes(expected).end()));
    EXPECT_EQ(rowsOf(readDib(dib)), (Picture{"##.......#", "..#......."}));
}

TEST_F(PngBmp, OneBitFilesOfImageMagick)
{
    const Bitmap seen = sampleBitmap(131, 40);
    writeByLibtiff(file("plan.tif"), seen, {.compression = COMPRESSION_CCITTFAX4});
    for (const std::string command :
         {"-depth 1 PNG:out", "-interlace PNG PNG:out", "-define png:color-type=3 -define png:bit-depth=1 PNG:out",
          "-type Bilevel BMP3:out"}) {
        SCOPED_TRACE(command);
        runTool("convert plan.tif -units PixelsPerInch -density 300 " + command);
        const RasterFile read = readRaster(file("out"));
        EXPECT_TRUE(samePicture(seen, read.bitmap));
        EXPECT_EQ(read.info.bitsPerPixel, 1);
        EXPECT_EQ(read.info.resolution, (Resolution{300, 300}));
    }
}

TEST_F(PngBmp, InterlacedPngOfEverySmallShape)
{
    for (const Size size : {Size{1, 1}, Size{2, 5}, Size{4, 3}, Size{5, 2}, Size{9, 9}, Size{70, 17}}) {
        const Bitmap seen = sampleBitmap(size.width, size.height);
        writeByLibtiff(file("plan.tif"), seen, {.compression = COMPRESSION_CCITTFAX4});
        for (const std::string kind : {"PNG:out", "PNG24:out"}) {
            runTool("convert plan.tif -interlace PNG " + kind);
            EXPECT_TRUE(samePicture(seen, readRaster(file("out")).bitmap)) << size.width << " x " << size.height;
        }
    }
}

TEST_F(PngBmp, APngPaletteOfOneColourShowsThatColour)
{
    runTool("convert -size 9x2 xc:white -define png:color-type=3 -define png:bit-depth=1 PNG:out");
    EXPECT_NE(contentOf(file("out")).find(std::string("\0\0\0\x03PLTE", 8)), std::string::npos) << "one colour";
    EXPECT_EQ(rowsOf(readRaster(file("out")).bitmap), Picture(2, "........."));
}
