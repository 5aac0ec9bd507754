#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>

#include "imaging/error.h"
#include "tests/support/tiff_bytes.h"

using namespace imaging;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

class Writing : public FilesTest
{};

std::vector<FormatDescription> writableFormats()
{
    std::vector<FormatDescription> formats;
    for (const FormatDescription& description : formatDescriptions())
        if (description.writable)
            formats.push_back(description);
    return formats;
}

// While it lives, files can't grow beyond the limit, as on a full disk.
class DiskLimit
{
public:
    explicit DiskLimit(rlim_t bytes)
    {
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limited{bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~DiskLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};

} // namespace

TEST_F(Writing, AnotherProgramSeesThePictureAndTheResolution)
{
    for (const FormatDescription& format : writableFormats())
        for (const int width : {1, 63, 64, 65, 611}) {
            SCOPED_TRACE(testing::Message() << format.name << ", " << width << " wide");
            const Bitmap seen = sampleBitmap(width, 1100); // more than one strip of each kind
            const std::string name = "out." + std::string(format.extensions[0]);
            writeRaster(file(name), seen, {300, 300}, format.format);
            // ImageMagick takes a 1 in a bilevel PCX for black whatever the palette says.
            const bool pcx = format.format == Format::Pcx;
            ASSERT_TRUE(samePicture(seen, pcx ? darkInPpmOf("pcxtoppm " + name) : seenByImageMagick(name)));
            if (width == 611) { // the width makes no difference
                const double dots = std::stod(runTool("identify -units PixelsPerInch -format '%x' " + name));
                EXPECT_NEAR(dots, 300, 0.01);
            }
            const RasterFile read = readRaster(file(name));
            EXPECT_TRUE(samePicture(seen, read.bitmap));
            EXPECT_EQ(read.info.resolution, (Resolution{300, 300})) << "whole dots per inch must come back whole";
            EXPECT_EQ(read.info.format, format.format);
        }
}

TEST_F(Writing, TheLongestSidesComeBackFromEveryFormat)
{
    const int side = Bitmap::maximumSide;
    for (const Size size : {Size{side, 2}, Size{2, side}}) {
        Bitmap bitmap(size);
        bitmap.setInk(size.width - 1, size.height - 1, true);
        for (const FormatDescription& format : writableFormats()) {
            if (format.format == Format::Pcx) // whose sides have 16 bits
                continue;
            writeRaster(file("out"), bitmap, {}, format.format);
            EXPECT_TRUE(readRaster(file("out")).bitmap == bitmap) << format.name;
        }
    }
}

TEST_F(Writing, TiffTagsAreThoseOfAScanner)
{
    const struct
    {
        Format format;
        const char* compression;
    } cases[] = {{Format::TiffGroup4, "CCITT Group 4"},
                 {Format::TiffUncompressed, "None"},
                 {Format::TiffPackBits, "PackBits"},
                 {Format::TiffDeflate, "AdobeDeflate"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.compression);
        writeRaster(file("out.tif"), sampleBitmap(611, 1100), {200, 100}, c.format);
        const std::string tags = runTool("tiffinfo out.tif");
        for (const std::string& line :
             {std::string("Image Width: 611 Image Length: 1100"), std::string("Resolution: 200, 100 pixels/inch"),
              std::string("Bits/Sample: 1"), std::string("Compression Scheme: ") + c.compression,
              std::string("Photometric Interpretation: min-is-white"), std::string("FillOrder: msb-to-lsb"),
              std::string("Orientation: row 0 top, col 0 lhs"), std::string("Samples/Pixel: 1")})
            EXPECT_THAT(tags, HasSubstr(line));
        EXPECT_THAT(runTool("tiffcp -c lzw out.tif copy.tif"), Not(HasSubstr("arning")));
        EXPECT_TRUE(samePicture(sampleBitmap(611, 1100), readRaster(file("copy.tif")).bitmap));
    }
}

TEST_F(Writing, UnknownAndUnequalResolutions)
{
    const Bitmap bitmap = sampleBitmap(20, 20);
    for (const FormatDescription& format : writableFormats()) {
        SCOPED_TRACE(format.name);
        writeRaster(file("out"), bitmap, {0, 0}, format.format);
        EXPECT_EQ(inspectRaster(file("out")).resolution, (Resolution{0, 0}));
        writeRaster(file("out"), bitmap, {204, 98}, format.format);
        const bool oneNumber = format.format == Format::Cals;
        EXPECT_EQ(inspectRaster(file("out")).resolution, (Resolution{204, oneNumber ? 204.0 : 98.0}));
    }
}

TEST_F(Writing, AFullDiskLeavesTheTargetWholeAndNothingElse)
{
    const Bytes old = {'o', 'l', 'd'};
    for (const FormatDescription& format : writableFormats()) {
        SCOPED_TRACE(format.name);
        const auto target = file("plan");
        std::filesystem::remove(target);
        writeRaster(target, sampleBitmap(300, 200), {300, 300}, format.format);
        const rlim_t size = std::filesystem::file_size(target);
        saveBytes(target, old);
        for (rlim_t limit = 0; limit < size; limit += 1 + size / 23) {
            std::string error;
            {
                const DiskLimit full(limit);
                try {
                    writeRaster(target, sampleBitmap(300, 200), {300, 300}, format.format);
                } catch (const ImagingError& caught) {
                    error = caught.what();
                }
            }
            ASSERT_THAT(error, HasSubstr(target.string())) << "at " << limit << " of " << size << " bytes";
            ASSERT_THAT(error, HasSubstr("ile too large"));
            ASSERT_EQ(contentOf<Bytes>(target), old);
            ASSERT_THAT(m_folder.names(), ElementsAre("plan"));
        }
    }
}

TEST_F(Writing, TargetsThatCannotBeReplacedStayAsTheyAre)
{
    const Bitmap bitmap = sampleBitmap(20, 20);
    const auto write = [&](const std::filesystem::path& path, Format format) {
        return errorOf([&] { writeRaster(path, bitmap, {}, format); });
    };
    EXPECT_THAT(write(file("missing") / "plan.tif", Format::TiffGroup4), HasSubstr("plan.tif: "));
    EXPECT_FALSE(std::filesystem::exists(file("missing")));

    std::filesystem::create_directory(file("folder"));
    EXPECT_THAT(write(file("folder"), Format::Png), HasSubstr("not a file"));

    saveBytes(file("protected.tif"), {'o', 'l', 'd'});
    std::filesystem::permissions(file("protected.tif"), std::filesystem::perms::owner_read);
    EXPECT_THAT(write(file("protected.tif"), Format::TiffGroup4), HasSubstr("write-protected"));
    EXPECT_EQ(contentOf<Bytes>(file("protected.tif")), (Bytes{'o', 'l', 'd'}));

    saveBytes(file("plan.tif"), {'o', 'l', 'd'});
    EXPECT_THAT(write(file("plan.tif"), Format::TiffOther), HasSubstr("read, not written"));
    EXPECT_THAT(errorOf([&] { writeRaster(file("plan.tif"), Bitmap(), {}, Format::Bmp); }), HasSubstr("no image"));
    EXPECT_EQ(contentOf<Bytes>(file("plan.tif")), (Bytes{'o', 'l', 'd'}));
    EXPECT_THAT(m_folder.names(), ElementsAre("folder", "plan.tif", "protected.tif"));
}

TEST(Formats, NumbersExchangedWithTheModule)
{
    EXPECT_EQ(formatCode(Format::TiffGroup4), 29u);
    EXPECT_EQ(formatCode(Format::Cals), 50u);
    EXPECT_EQ(formatFromCode(0), std::nullopt);
    EXPECT_EQ(formatFromCode(30), std::nullopt);
    for (const FormatDescription& description : formatDescriptions())
        EXPECT_EQ(formatFromCode(formatCode(description.format)), description.format);
}
