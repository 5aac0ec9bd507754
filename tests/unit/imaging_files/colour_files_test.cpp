// Grey and coloured files of other programs: what is darker than half becomes ink.
#include "tests/support/test_files.h"

using namespace imaging;

namespace {

class ColourFiles : public FilesTest
{};

} // namespace

TEST_F(ColourFiles, BecomeInkWhereDarkerThanHalf)
{
    // black, white, 127, 128, red, green, blue, yellow: luminances 0, 255, 127, 128, 76, 150, 29, 226
    const std::string colours = "P3 8 3 255 0 0 0 255 255 255 127 127 127 128 128 128 255 0 0 0 255 0 0 0 255 "
                                "255 255 0 255 255 255 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 "
                                "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 255 255 255\n";
    const std::string greys = "P2 8 3 255 0 255 127 128 76 150 29 226 255 0 0 0 0 0 0 0 0 0 0 0 0 0 0 255\n";
    saveBytes(file("colours"), Bytes(colours.begin(), colours.end()));
    saveBytes(file("greys"), Bytes(greys.begin(), greys.end()));
    const struct
    {
        const char* command;
        int bitsPerPixel;
    } cases[] = {
        {"colours -type TrueColor -compress none TIFF:out", 24},
        {"colours -type TrueColor -compress zip TIFF:out", 24},
        {"colours -type TrueColor -compress lzw -interlace plane TIFF:out", 24},
        {"colours -type TrueColor -depth 16 -compress zip TIFF:out", 48},
        {"colours -type TrueColor -compress zip -define tiff:tile-geometry=16x16 TIFF:out", 24},
        {"colours -type TrueColorAlpha -compress zip TIFF:out", 32},
        {"colours -type TrueColor -compress zip -orient bottom-left -flip TIFF:out", 24},
        {"colours -type Palette -compress lzw TIFF:out", 4},
        {"greys -type Grayscale -compress none TIFF:out", 8},
        {"greys -type Grayscale -depth 16 -compress zip TIFF:out", 16},
        {"greys -type Grayscale -compress rle -define tiff:rows-per-strip=1 TIFF:out", 8},
        {"colours BMP3:out", 24},
        {"colours -type TrueColor BMP2:out", 24},
        {"colours -type TrueColorAlpha BMP:out", 32},
        {"colours -type Palette -compress none BMP3:out", 4},
        {"colours PNG24:out", 24},
        {"colours PNG32:out", 32},
        {"colours PNG48:out", 48},
        {"colours PNG8:out", 8},
        {"colours -interlace PNG PNG24:out", 24},
        {"colours -interlace PNG -define png:color-type=3 -define png:bit-depth=4 PNG:out", 4},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.command);
        runTool(std::string("convert ") + c.command);
        EXPECT_EQ(inspectRaster(file("out")).bitsPerPixel, c.bitsPerPixel);
        const RasterFile read = readRaster(file("out"));
        EXPECT_EQ(rowsOf(read.bitmap), (Picture{"#.#.#.#.", ".#######", "#######."}));
        EXPECT_EQ(read.info.bitsPerPixel, c.bitsPerPixel);
    }
}

TEST_F(ColourFiles, TransparentPartsArePaper)
{
    for (const std::string format :
         {"PNG32:out", "-type TrueColorAlpha -compress zip TIFF:out",
          "-colorspace Gray -depth 8 -compress zip TIFF:out", "-colorspace Gray -depth 16 -compress zip TIFF:out",
          "-colorspace Gray -depth 16 -define tiff:alpha=associated -compress zip TIFF:out"})
        for (const bool solid : {false, true}) {
            runTool(std::string("convert -size 4x1 xc:black -alpha set -channel A -evaluate set ") +
                    (solid ? "75%" : "25%") + " +channel " + format);
            EXPECT_EQ(rowsOf(readRaster(file("out")).bitmap), Picture{solid ? "####" : "...."}) << format;
        }
}
