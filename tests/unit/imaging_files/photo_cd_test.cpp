#include <gmock/gmock.h>

#include "imaging/error.h"
#include "tests/support/test_files.h"

using namespace imaging;
using testing::HasSubstr;

namespace {

class PhotoCd : public FilesTest
{};

constexpr std::size_t sector = 2048;

} // namespace

TEST_F(PhotoCd, FilesOfImageMagickAreSeenAsItSeesThem)
{
    writeRaster(file("wide.png"), sampleBitmap(768, 512), {}, Format::Png);
    writeRaster(file("tall.png"), sampleBitmap(512, 768), {}, Format::Png);
    for (const std::string name : {"wide", "tall"}) {
        SCOPED_TRACE(name);
        runTool("convert " + name + ".png -colorspace sRGB -type TrueColor " + name + ".pcd");
        const RasterFile read = readRaster(file(name + ".pcd"));
        EXPECT_EQ(read.info.size, name == "wide" ? (Size{768, 512}) : (Size{512, 768}));
        EXPECT_EQ(inspectRaster(file(name + ".pcd")).size, read.info.size);
        EXPECT_EQ(read.info.bitsPerPixel, 24);
        EXPECT_TRUE(samePicture(sampleBitmap(read.info.size.width, read.info.size.height), read.bitmap));
        EXPECT_TRUE(samePicture(darkInPpmOf("convert " + name + ".pcd -colorspace sRGB -depth 8 -type TrueColor ppm:-"),
                                read.bitmap));
    }
}

TEST_F(PhotoCd, HandMadePacs)
{
    // 93 x 1.3584 is 126.3 and 94 x 1.3584 is 127.7: the step lies between them.
    Bytes pac(96 * sector + 768 * 512 * 3 / 2, 94);
    std::copy_n("PCD_IPI", 7, pac.begin() + sector);
    Bytes overview(5 * sector + 192 * 128 * 3 / 2, 94);
    std::copy_n("PCD_OPA", 7, overview.begin());
    const std::size_t second = 96 * sector + 768; // first pixel of the second row
    const std::size_t third = 96 * sector + 768 * 3;
    pac[second] = pac[third + 2] = 93;
    overview[5 * sector + 192 * 4 + 3] = 93; // of the fourth row

    const struct
    {
        std::uint8_t attributes;
        Size size;
        Point first, other; // where the two dark pixels, stored at 0, 1 and 2, 2, are seen
    } turns[] = {{0, {768, 512}, {0, 1}, {2, 2}},
                 {1, {512, 768}, {1, 767}, {2, 765}},
                 {2, {768, 512}, {767, 510}, {765, 509}},
                 {0xF3, {512, 768}, {510, 0}, {509, 2}}};
    for (const auto& turn : turns) {
        SCOPED_TRACE(int(turn.attributes));
        pac[0xE02] = turn.attributes;
        Bitmap expected(turn.size);
        expected.setInk(turn.first.x, turn.first.y, true);
        expected.setInk(turn.other.x, turn.other.y, true);
        EXPECT_TRUE(samePicture(expected, readRaster(asBytes(pac)).bitmap));
    }
    Bitmap expected({192, 128});
    expected.setInk(3, 3, true);
    EXPECT_TRUE(samePicture(expected, readRaster(asBytes(overview)).bitmap));

    for (Bytes whole : {pac, overview})
        for (const std::size_t missing : {std::size_t(1), whole.size() - 5000, whole.size() - 2100, whole.size() - 7}) {
            const Bytes cut(whole.begin(), whole.end() - std::ptrdiff_t(missing));
            EXPECT_NE(errorOf([&] { readRaster(asBytes(cut)); }), "");
        }
}
