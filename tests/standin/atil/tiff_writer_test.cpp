// The files that the TIFF writer makes, read back by the TIFF library itself.
#include <gtest/gtest.h>
#include <tiffio.h>

#include "imaging/bitmap.h"
#include "standin/atil/atil.h"
#include "tests/support/files.h"

namespace {

class TiffWriterTest : public ::testing::Test
{
protected:
    Atil::FileSpecifier specifier() const
    {
        const std::wstring name = path.wstring();
        return {Atil::StringBuffer(int((name.size() + 1) * sizeof(wchar_t)), name.c_str(), Atil::StringBuffer::kUTF_16),
                Atil::FileSpecifier::kFilePath};
    }

    // As the module writes its working image.
    bool write(const Atil::Image& image, int dotsPerInch, bool group4 = true)
    {
        const std::unique_ptr<Atil::RowProviderInterface> rows(image.read(image.size(), Atil::Offset(0, 0), 0));
        TiffFormatCodec codec(3);
        Atil::FileWriteDescriptor writer(&codec);
        if (!writer.setFileSpecifier(specifier()) || !writer.createImageFrame(rows->dataModel(), rows->size()))
            return false;
        using Property = Atil::FormatCodecPropertyInterface;
        if (group4) {
            const std::unique_ptr<Property> property(writer.getProperty(Property::kCompression));
            auto* compression = dynamic_cast<TiffCompression*>(property.get());
            EXPECT_TRUE(compression && compression->selectCompression(TiffCompressionType::Compression(4)));
            EXPECT_TRUE(writer.setProperty(compression));
        }
        const std::unique_ptr<Property> property(writer.getProperty(Property::kDensity));
        auto* density = dynamic_cast<Atil::FormatCodecDensity*>(property.get());
        EXPECT_NE(density, nullptr);
        density->setDensity(dotsPerInch, dotsPerInch);
        EXPECT_TRUE(writer.setProperty(density));
        return writer.writeImageFrame(rows.get());
    }

    TemporaryFolder folder;
    std::filesystem::path path = folder / "written";
};

Atil::Image picture()
{
    // 67 pixels wide, so that rows end inside a byte and inside a word; ink at (0, 0), (66, 1) and (33, 2).
    auto bitmap = std::make_shared<imaging::Bitmap>(imaging::Size{67, 3});
    bitmap->setInk(0, 0, true);
    bitmap->setInk(66, 1, true);
    bitmap->setInk(33, 2, true);
    return {bitmap, Atil::BitonalModel()};
}

TEST_F(TiffWriterTest, WritesOneBitWithItsDensity)
{
    for (const bool group4 : {true, false}) {
        std::filesystem::remove(path);
        ASSERT_TRUE(write(picture(), 299, group4));
        TIFF* tiff = TIFFOpenW(path.wstring().c_str(), "r");
        ASSERT_NE(tiff, nullptr);
        std::uint32_t width = 0, height = 0;
        std::uint16_t bits = 0, compression = 0, unit = 0, photometric = 0;
        float x = 0, y = 0;
        TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
        TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
        TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &bits);
        TIFFGetField(tiff, TIFFTAG_COMPRESSION, &compression);
        TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &photometric);
        TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &x);
        TIFFGetField(tiff, TIFFTAG_YRESOLUTION, &y);
        TIFFGetFieldDefaulted(tiff, TIFFTAG_RESOLUTIONUNIT, &unit);
        EXPECT_EQ(width, 67u);
        EXPECT_EQ(height, 3u);
        EXPECT_EQ(bits, 1);
        EXPECT_EQ(compression, group4 ? COMPRESSION_CCITTFAX4 : COMPRESSION_NONE);
        EXPECT_EQ(unit, RESUNIT_INCH);
        EXPECT_EQ(x, 299);
        EXPECT_EQ(y, 299);
        const unsigned inkBit = photometric == PHOTOMETRIC_MINISWHITE ? 1 : 0;
        for (std::uint32_t row = 0; row < 3; ++row) {
            std::uint8_t bytes[9];
            ASSERT_EQ(TIFFReadScanline(tiff, bytes, row), 1);
            for (int column = 0; column < 67; ++column) {
                const bool expected =
                    (column == 0 && row == 0) || (column == 66 && row == 1) || (column == 33 && row == 2);
                EXPECT_EQ((bytes[column / 8] >> (7 - column % 8) & 1u) == inkBit, expected) << column << ", " << row;
            }
        }
        TIFFClose(tiff);
    }
}

TEST_F(TiffWriterTest, RefusesAFileThatIsThereAndAFolderThatIsNot)
{
    std::ofstream(path) << "keep me";
    EXPECT_FALSE(write(picture(), 300));
    EXPECT_EQ(contentOf(path), "keep me");
    path = path / "deeper" / "a.tif";
    EXPECT_FALSE(write(picture(), 300));
}

TEST_F(TiffWriterTest, WritesNothingWithoutAFrameOrWithOtherRows)
{
    const Atil::Image image = picture();
    const std::unique_ptr<Atil::RowProviderInterface> rows(image.read(image.size(), Atil::Offset(0, 0), 0));
    TiffFormatCodec codec(3);
    Atil::FileWriteDescriptor writer(&codec);
    EXPECT_FALSE(writer.createImageFrame(rows->dataModel(), rows->size())) << "no file was named";
    ASSERT_TRUE(writer.setFileSpecifier(specifier()));
    EXPECT_FALSE(writer.writeImageFrame(rows.get())) << "no frame was made";
    const Atil::DataModel colour(Atil::DataModelAttributes::kRgba, Atil::DataModelAttributes::k24, 3);
    EXPECT_FALSE(writer.createImageFrame(colour, rows->size()));
    ASSERT_TRUE(writer.createImageFrame(rows->dataModel(), Atil::Size(10, 10)));
    EXPECT_FALSE(writer.writeImageFrame(rows.get())) << "the rows are of another size";
    EXPECT_FALSE(std::filesystem::exists(path));
    TiffCompression compression;
    EXPECT_FALSE(compression.selectCompression(TiffCompressionType::Compression(17)));
}

} // namespace
