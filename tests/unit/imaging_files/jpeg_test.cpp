#include <array>
#include <cstdio>
#include <gmock/gmock.h>
#include <jpeglib.h>

#include "imaging/error.h"
#include "tests/support/test_files.h"

using namespace imaging;
using testing::HasSubstr;

namespace {

class Jpeg : public FilesTest
{};

using Position = Bytes::iterator;

// An EXIF segment with orientation and resolution (200 x 100), in either byte order.
Bytes exifSegment(bool bigEndian, int orientation, int unit)
{
    Bytes tiff;
    const auto put = [&](std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i)
            tiff.push_back(std::uint8_t(value >> 8 * (bigEndian ? count - 1 - i : i)));
    };
    const auto entry = [&](std::uint32_t tag, std::uint32_t type, std::uint32_t value) {
        put(tag, 2);
        put(type, 2);
        put(1, 4);
        put(value, type == 3 ? 2 : 4);
        if (type == 3)
            put(0, 2);
    };
    tiff.assign(2, bigEndian ? 'M' : 'I');
    put(42, 2);
    put(8, 4);
    put(4, 2);
    entry(0x112, 3, std::uint32_t(orientation));
    entry(0x11A, 5, 62);
    entry(0x11B, 5, 70);
    entry(0x128, 3, std::uint32_t(unit));
    put(0, 4);
    for (const std::uint32_t number : {400, 2, 300, 3})
        put(number, 4);
    Bytes segment = {0xFF, 0xE1, 0, std::uint8_t(2 + 6 + tiff.size()), 'E', 'x', 'i', 'f', 0, 0};
    segment.insert(segment.end(), tiff.begin(), tiff.end());
    return segment;
}

// Where the segment of the marker begins in a file.
Position segmentOf(Bytes& bytes, std::uint8_t marker)
{
    Position at = bytes.begin() + 2;
    while (at[1] != marker && at[1] != 0xDA)
        at += 2 + (at[2] << 8 | at[3]);
    EXPECT_EQ(at[1], marker);
    return at;
}

void removeSegment(Bytes& bytes, std::uint8_t marker)
{
    const Position at = segmentOf(bytes, marker);
    bytes.erase(at, at + 2 + (at[2] << 8 | at[3]));
}

using Inks = std::array<std::uint8_t, 4>;

// Blocks of 16 x 8 pixels beside each other, by libjpeg. With Adobe's marker 255 is stored for no ink.
void saveInks(const std::filesystem::path& path, std::span<const Inks> blocks, bool adobe)
{
    std::FILE* const out = std::fopen(path.c_str(), "wb");
    ASSERT_NE(out, nullptr);
    jpeg_error_mgr errors;
    jpeg_compress_struct jpeg{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    jpeg_stdio_dest(&jpeg, out);
    jpeg.image_width = JDIMENSION(16 * blocks.size());
    jpeg.image_height = 8;
    jpeg.input_components = 4;
    jpeg.in_color_space = JCS_CMYK;
    jpeg_set_defaults(&jpeg);
    jpeg.write_Adobe_marker = adobe ? TRUE : FALSE;
    jpeg_start_compress(&jpeg, TRUE);
    Bytes row;
    for (const Inks& inks : blocks)
        for (int i = 0; i < 16; ++i)
            for (const std::uint8_t ink : inks)
                row.push_back(adobe ? std::uint8_t(255 - ink) : ink);
    for (int y = 0; y < 8; ++y) {
        JSAMPROW pixels = row.data();
        jpeg_write_scanlines(&jpeg, &pixels, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    ASSERT_EQ(std::fclose(out), 0);
}

} // namespace

TEST_F(Jpeg, FilesOfImageMagickAreSeenAsItSeesThem)
{
    saveColours("colours", 83, 41);
    const struct
    {
        const char* kind;
        int bitsPerPixel;
    } cases[] = {
        {"-quality 75", 24},
        {"-quality 30 -sampling-factor 4:2:0", 24},
        {"-quality 92 -sampling-factor 4:2:2", 24},
        {"-quality 85 -interlace JPEG", 24},
        {"-quality 85 -interlace JPEG -sampling-factor 1x1,1x1,1x1", 24},
        {"-quality 60 -colorspace Gray", 8},
        {"-quality 60 -colorspace Gray -interlace JPEG", 8},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.kind);
        runTool(std::string("convert colours ") + c.kind + " -units PixelsPerInch -density 150x75 out.jpg");
        const RasterFile read = readRaster(file("out.jpg"));
        EXPECT_TRUE(samePicture(darkInPpmOf("convert out.jpg -depth 8 -type TrueColor ppm:-"), read.bitmap));
        EXPECT_EQ(read.info.bitsPerPixel, c.bitsPerPixel);
        EXPECT_EQ(read.info.resolution, (Resolution{150, 75}));
        EXPECT_EQ(inspectRaster(file("out.jpg")).size, (Size{83, 41}));
    }
    runTool("convert colours -units PixelsPerCentimeter -density 100x50 out.jpg");
    EXPECT_EQ(inspectRaster(file("out.jpg")).resolution, (Resolution{254, 127}));
}

TEST_F(Jpeg, FourInksAreTheOtherWayRoundWithAdobesMarker)
{
    // Blocks of 16 pixels: no ink, black, cyan, magenta and yellow, all of them, yellow.
    const std::array<Inks, 6> blocks = {
        {{0, 0, 0, 0}, {0, 0, 0, 255}, {255, 0, 0, 0}, {0, 255, 255, 0}, {255, 255, 255, 255}, {0, 0, 255, 0}}};
    const auto seen = [&](const Bitmap& bitmap) {
        std::string row;
        for (int block = 0; block < 6; ++block)
            row += bitmap.ink(16 * block + 8, 4) ? '#' : '.';
        return row;
    };
    // Cyan lets green and blue through, 0.701 of the light; magenta over yellow only red, 0.299.
    const std::string expected = ".#.##.";
    for (const bool adobe : {false, true}) {
        saveInks(file("out.jpg"), blocks, adobe);
        const RasterFile read = readRaster(file("out.jpg"));
        EXPECT_EQ(read.info.bitsPerPixel, 32);
        EXPECT_EQ(seen(read.bitmap), expected) << (adobe ? "with" : "without") << " the marker";
    }
    // With the marker and as luminance and chrominances.
    runTool("convert -size 16x16 xc:'cmyk(0,0,0,0)' xc:'cmyk(0,0,0,255)' xc:'cmyk(255,0,0,0)' xc:'cmyk(0,255,255,0)' "
            "xc:'cmyk(255,255,255,255)' xc:'cmyk(0,0,255,0)' +append -colorspace CMYK -quality 95 out.jpg");
    EXPECT_EQ(seen(readRaster(file("out.jpg")).bitmap), expected);
}

TEST_F(Jpeg, IsTurnedAsItsExifBlockSays)
{
    runTool("convert -size 48x32 xc:white -fill black -draw 'rectangle 0,0 15,7' -draw 'rectangle 32,0 47,15' "
            "-colorspace Gray -quality 95 plain.jpg");
    const Bytes plain = contentOf<Bytes>(file("plain.jpg"));
    for (int orientation = 1; orientation <= 8; ++orientation)
        for (const bool bigEndian : {false, true}) {
            SCOPED_TRACE(orientation);
            Bytes bytes = plain;
            const Bytes segment = exifSegment(bigEndian, orientation, 2);
            bytes.insert(bytes.begin() + 2, segment.begin(), segment.end());
            saveBytes(file("turned.jpg"), bytes);
            const RasterFile read = readRaster(file("turned.jpg"));
            EXPECT_EQ(inspectRaster(file("turned.jpg")).size, read.bitmap.size());
            EXPECT_TRUE(samePicture(darkInPpmOf("convert turned.jpg -auto-orient -depth 8 -type TrueColor ppm:-"),
                                    read.bitmap));
        }
}

TEST_F(Jpeg, TakesTheResolutionOfTheExifBlockWhereThereIsNoOther)
{
    runTool("convert -size 8x8 xc:white -colorspace Gray -units PixelsPerInch -density 72 plain.jpg");
    const Bytes plain = contentOf<Bytes>(file("plain.jpg"));
    const auto resolution = [&](int orientation, int unit, bool keepOther) {
        Bytes bytes = plain;
        if (!keepOther)
            removeSegment(bytes, 0xE0);
        const Bytes segment = exifSegment(false, orientation, unit);
        bytes.insert(bytes.begin() + 2, segment.begin(), segment.end());
        saveBytes(file("out.jpg"), bytes);
        return inspectRaster(file("out.jpg")).resolution;
    };
    EXPECT_EQ(resolution(1, 2, false), (Resolution{200, 100}));
    EXPECT_EQ(resolution(6, 2, false), (Resolution{100, 200})) << "rows are columns";
    EXPECT_EQ(resolution(1, 3, false), (Resolution{508, 254})) << "per centimetre";
    EXPECT_EQ(resolution(1, 1, false), (Resolution{0, 0})) << "without a unit";
    EXPECT_EQ(resolution(1, 2, true), (Resolution{72, 72}));
}

TEST_F(Jpeg, ABrokenExifBlockDoesNoHarm)
{
    runTool("convert -size 8x8 xc:black -colorspace Gray plain.jpg");
    const Bytes plain = contentOf<Bytes>(file("plain.jpg"));
    const Bytes segment = exifSegment(true, 3, 2);
    for (std::size_t bit = 8 * 10; bit < 8 * segment.size(); ++bit) {
        Bytes bytes = plain;
        Bytes broken = segment;
        broken[bit / 8] ^= std::uint8_t(1 << bit % 8);
        bytes.insert(bytes.begin() + 2, broken.begin(), broken.end());
        EXPECT_EQ(rowsOf(readRaster(asBytes(bytes)).bitmap), Picture(8, "########"));
    }
}

TEST_F(Jpeg, DataThatTheDecoderMakesUpAreAnError)
{
    saveColours("colours", 200, 100);
    for (const std::string kind : {"", "-interlace JPEG"}) {
        runTool("convert colours -quality 80 " + kind + " out.jpg");
        const Bytes whole = contentOf<Bytes>(file("out.jpg"));
        Bytes ended(whole.begin(), whole.begin() + std::ptrdiff_t(whole.size() * 2 / 3));
        ended.insert(ended.end(), {0xFF, 0xD9}); // what is there looks complete
        if (kind.empty()) {
            EXPECT_THAT(errorOf([&] { readRaster(asBytes(ended)); }), HasSubstr("premature end"));
        }
        Bytes holed = whole;
        std::fill_n(holed.end() - 600, 100, std::uint8_t(0xFF));
        EXPECT_THAT(errorOf([&] { readRaster(asBytes(holed)); }), HasSubstr("JPEG"));
    }
}
