#include <windows.h>
#include <gtest/gtest.h>

#include "imaging/error.h"
#include "imaging/raster_file.h"
#include "tests/support/files.h"

// Raster files under names that no single code page holds, and what Windows does about files in use.

using namespace imaging;

namespace {

class WidePaths : public testing::Test
{
protected:
    std::filesystem::path file(const wchar_t* name) const { return m_folder / name; }
    TemporaryFolder m_folder{L"halvoran \u00e4\u0436\u6f22 "};
};

Bitmap stripes(int width, int height)
{
    Bitmap bitmap({width, height});
    for (int y = 0; y < height; ++y)
        for (int x = y % 3; x < width; x += 5 + y % 7)
            bitmap.setInk(x, y, true);
    return bitmap;
}

} // namespace

TEST_F(WidePaths, EveryFormatIsWrittenReadAndReplacedUnderANameOfManyAlphabets)
{
    const auto path = file(L"Lageplan \u00d6st \u0416\u0443\u043a \u56f3\u9762.tif");
    for (const FormatDescription& format : formatDescriptions()) {
        if (!format.writable)
            continue;
        SCOPED_TRACE(format.name);
        const Bitmap bitmap = stripes(203, 1100);
        writeRaster(path, bitmap, {300, 300}, format.format);
        const RasterFile read = readRaster(path);
        EXPECT_TRUE(read.bitmap == bitmap);
        EXPECT_EQ(read.info.format, format.format);
        EXPECT_EQ(read.info.resolution, (Resolution{300, 300}));
        EXPECT_EQ(m_folder.names().size(), 1u);
    }
}

TEST_F(WidePaths, AFileThatIsHeldOrWriteProtectedKeepsItsContent)
{
    const auto path = file(L"\u56f3\u9762.tif");
    writeRaster(path, stripes(40, 30), {}, Format::TiffGroup4);
    const HANDLE held = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_THROW(writeRaster(path, stripes(50, 60), {}, Format::Png), ImagingError);
    CloseHandle(held);
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_THROW(writeRaster(path, stripes(50, 60), {}, Format::Png), ImagingError);
    EXPECT_TRUE(readRaster(path).bitmap == stripes(40, 30));
    EXPECT_EQ(m_folder.names().size(), 1u);
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    writeRaster(path, stripes(50, 60), {}, Format::Png);
    EXPECT_TRUE(readRaster(path).bitmap == stripes(50, 60));
}

TEST_F(WidePaths, ErrorsSpellTheNameInUtf8)
{
    const auto path = file(L"\u0416.png");
    std::ofstream(path, std::ios::binary) << "\x89PNG\r\n\x1a\n and no more";
    try {
        readRaster(path);
        FAIL() << "a stump of a PNG file was read";
    } catch (const ImagingError& error) {
        EXPECT_NE(std::string(error.what()).find("\xd0\x96.png: The PNG image is damaged"), std::string::npos)
            << error.what();
    }
}
