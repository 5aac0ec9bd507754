#include <gmock/gmock.h>

#include "imaging/error.h"
#include "tests/support/test_files.h"

using namespace imaging;
using testing::HasSubstr;

namespace {

class Pcx : public FilesTest
{};

struct Header
{
    int version = 5, encoding = 0, bits = 1, planes = 1, width = 8, height = 1, bytesPerPlane = 1;
    Bytes palette = {}; // 48 bytes at most
    int paletteKind = 1;
};

Bytes pcx(const Header& h, const Bytes& rows)
{
    Bytes bytes(128, 0);
    const Bytes head = {10,
                        std::uint8_t(h.version),
                        std::uint8_t(h.encoding),
                        std::uint8_t(h.bits),
                        5, // the window need not begin at 0
                        0,
                        7,
                        0,
                        std::uint8_t(5 + h.width - 1),
                        0,
                        std::uint8_t(7 + h.height - 1),
                        0};
    std::copy(head.begin(), head.end(), bytes.begin());
    std::copy(h.palette.begin(), h.palette.end(), bytes.begin() + 16);
    bytes[65] = std::uint8_t(h.planes);
    bytes[66] = std::uint8_t(h.bytesPerPlane);
    bytes[68] = std::uint8_t(h.paletteKind);
    bytes.insert(bytes.end(), rows.begin(), rows.end());
    return bytes;
}

} // namespace

TEST_F(Pcx, HandMadeFilesOfEveryKind)
{
    const Bytes blackWhite = {0, 0, 0, 255, 255, 255};
    const Bytes whiteBlack = {255, 255, 255, 0, 0, 0};
    // Of these 16, only 1, 4 and 15 are light.
    Bytes three(48, 0);
    for (const std::size_t light : {1, 4, 15})
        std::fill_n(three.begin() + std::ptrdiff_t(3 * light), 3, std::uint8_t(200));
    Bytes large(1 + 768, 0);
    large[0] = 0x0C;
    std::fill_n(large.begin() + 1 + 3 * 77, 3, std::uint8_t(255)); // 77 is white
    const auto with = [](Bytes bytes, const Bytes& tail) {
        bytes.insert(bytes.end(), tail.begin(), tail.end());
        return bytes;
    };
    const struct
    {
        const char* name;
        Bytes bytes;
        Picture picture;
        int bitsPerPixel;
    } cases[] = {
        {"1 is paper without a palette", pcx({.version = 3, .palette = whiteBlack}, {0b10110000}), {".#..####"}, 1},
        {"1 is paper in the first version", pcx({.version = 0, .palette = whiteBlack}, {0b10110000}), {".#..####"}, 1},
        {"1 is paper with an empty palette", pcx({}, {0b10110000}), {".#..####"}, 1},
        {"1 is white", pcx({.palette = blackWhite}, {0b10110000}), {".#..####"}, 1},
        {"1 is black", pcx({.version = 2, .palette = whiteBlack}, {0b10110000}), {"#.##...."}, 1},
        {"1 is black in version 4", pcx({.version = 4, .palette = whiteBlack}, {0b10110000}), {"#.##...."}, 1},
        {"odd bytes per line",
         pcx({.width = 4, .height = 2, .bytesPerPlane = 3}, {0x50, 1, 2, 0xA0, 3, 4}),
         {"#.#.", ".#.#"},
         1},
        {"runs",
         pcx({.encoding = 1, .width = 12, .height = 2, .bytesPerPlane = 2}, {0xC3, 0x0F, 0xC1, 0xC0}),
         {"####....####", "####......##"},
         1}, // the run of three goes on in the second row; 0xC0 is a run of one
        {"two planes", pcx({.planes = 2, .width = 4, .palette = three}, {0b01010000, 0b00110000}), {"#.##"}, 2},
        {"three planes",
         pcx({.planes = 3, .width = 6, .palette = three}, {0b01000000, 0b00100000, 0b00011000}),
         {"#.#..#"},
         3},
        {"four planes",
         pcx({.planes = 4, .width = 4, .palette = three}, {0b11010000, 0b10000000, 0b10100000, 0x80}),
         {"...." /* 15, 1, 4, 1 */},
         4},
        {"four packed bits",
         pcx({.bits = 4, .width = 5, .bytesPerPlane = 3, .palette = three}, {0x1F, 0x40, 0x20}),
         {"...##"},
         4},
        // 0 black, 7 light grey, 8 dark grey, 14 yellow, 15 white, 6 brown
        {"the standard colours",
         pcx({.version = 3, .bits = 4, .width = 6, .bytesPerPlane = 3}, {0x07, 0x8E, 0xF6}),
         {"#.#..#"},
         4},
        {"256 colours", with(pcx({.bits = 8, .width = 3, .bytesPerPlane = 3}, {76, 77, 78}), large), {"#.#"}, 8},
        {"greys", pcx({.bits = 8, .width = 3, .bytesPerPlane = 4, .paletteKind = 2}, {127, 128, 0, 9}), {"#.#"}, 8},
        {"greys of an older version",
         pcx({.version = 4, .bits = 8, .width = 2, .bytesPerPlane = 2}, {127, 128}),
         {"#."},
         8},
        {"red, green, blue",
         pcx({.bits = 8, .planes = 3, .width = 3, .bytesPerPlane = 4}, {255, 0, 0, 9, 0, 255, 0, 9, 0, 0, 255, 9}),
         {"#.#"},
         24},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const RasterFile read = readRaster(asBytes(c.bytes));
        EXPECT_EQ(rowsOf(read.bitmap), c.picture);
        EXPECT_EQ(read.info.bitsPerPixel, c.bitsPerPixel);
        EXPECT_EQ(read.info.format, Format::Pcx);
    }
}

TEST_F(Pcx, FilesOfOtherProgramsAreSeenAsTheySeeThem)
{
    saveColours("colours", 83, 41);
    const struct
    {
        std::string command;
        int bitsPerPixel;
    } cases[] = {
        {"convert colours -type TrueColor out.pcx", 24},
        {"convert colours -type TrueColor -compress none out.pcx", 24},
        {"convert colours -type Palette -colors 200 out.pcx", 8},
        {"convert colours -colorspace Gray out.pcx", 24},
        {"ppmtopcx -24bit colours >out.pcx", 24},
        {"pnmquant 200 colours | ppmtopcx >out.pcx", 8},
        {"pnmquant 16 colours | ppmtopcx >out.pcx", 4},
        {"pnmquant 16 colours | ppmtopcx -packed >out.pcx", 4},
        {"pnmquant 7 colours | ppmtopcx >out.pcx", 3},
        {"pnmquant 4 colours | ppmtopcx >out.pcx", 2},
        {"convert colours -threshold 50% pbm:- | ppmtopcx >out.pcx", 1},
        {"convert colours -threshold 50% pbm:- | pnminvert | ppmtopcx >out.pcx", 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.command);
        runTool("{ " + c.command + "; }");
        const RasterFile read = readRaster(file("out.pcx"));
        const bool ofImageMagick = c.command.ends_with(" out.pcx"); // netpbm reads nothing uncompressed
        EXPECT_TRUE(samePicture(
            darkInPpmOf(ofImageMagick ? "convert out.pcx -depth 8 -type TrueColor ppm:-" : "pcxtoppm out.pcx"),
            read.bitmap));
        EXPECT_EQ(read.info.bitsPerPixel, c.bitsPerPixel);
        EXPECT_EQ(inspectRaster(file("out.pcx")).bitsPerPixel, c.bitsPerPixel);
    }
    runTool("convert colours -units PixelsPerInch -density 150x75 out.pcx");
    EXPECT_EQ(inspectRaster(file("out.pcx")).resolution, (Resolution{150, 75}));
}

TEST_F(Pcx, WhatMakesNoSenseIsRefusedInWords)
{
    const Bytes row(4, 0);
    const struct
    {
        const char* words;
        Bytes bytes;
    } cases[] = {
        {"too short", pcx({.width = 9}, row)},
        {"2 planes of 8 bits", pcx({.bits = 8, .planes = 2, .bytesPerPlane = 8}, row)},
        {"no pixels", pcx({.width = 0}, row)},
        {"no pixels", pcx({.height = -3}, row)},
        {"palette is missing", pcx({.bits = 8, .bytesPerPlane = 8}, Bytes(8, 0))},
        {"cut off", pcx({.height = 5}, row)},
        {"cut off", pcx({.encoding = 1, .height = 5}, {0xC4, 0})},
    };
    for (const auto& c : cases)
        EXPECT_THAT(errorOf([&] { readRaster(asBytes(c.bytes)); }), HasSubstr(c.words));
}

TEST_F(Pcx, SidesOfMoreThan16BitsAreNotWritten)
{
    Bitmap bitmap({65536, 2});
    bitmap.setInk(65535, 1, true);
    writeRaster(file("wide.pcx"), bitmap, {}, Format::Pcx);
    EXPECT_TRUE(readRaster(file("wide.pcx")).bitmap == bitmap);
    for (const Size size : {Size{65537, 1}, Size{1, 65537}})
        EXPECT_THAT(errorOf([&] { writeRaster(file("x.pcx"), Bitmap(size), {}, Format::Pcx); }), HasSubstr("65,536"));
    EXPECT_FALSE(std::filesystem::exists(file("x.pcx")));
}
