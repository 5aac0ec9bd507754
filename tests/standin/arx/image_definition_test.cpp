#include <fstream>

#include "tests/standin/arx/drawing_fixture.h"

namespace {

class ImageDefinitionTest : public DrawingTest
{
protected:
    std::string raster(const char* name = "sheet.tif") { return writeRaster(name, drawn({"#..#", ".##."})).string(); }
};

drawing::ImageDefinition& recordOf(const AcDbRasterImageDef& definition)
{
    return *standin::document().find<drawing::ImageDefinition>(definition.objectId().handle());
}

struct Watcher final : AcDbRasterImageDefTransReactor
{
    Adesk::Boolean onDeleteImage(const AcDbRasterImageDef* definition, const Atil::Image* image) override
    {
        ++calls;
        modified = definition->imageModified();
        width = image->size().width;
        inked = image->pixels()->ink(1, 0);
        return false;
    }
    int calls = 0;
    bool modified = false;
    int width = 0;
    bool inked = false;
};

// Makes pixel (1, 0) ink, through the host's image calls.
void ink(AcDbRasterImageDef& definition)
{
    Atil::Image* image = nullptr;
    ASSERT_EQ(definition.openImage(image), Acad::eOk);
    const Atil::BitonalModel model;
    Atil::ImagePixel pixel;
    pixel.value.bitonal = 255;
    Atil::Image stamp(Atil::Size(1, 1), &model, pixel, Atil::kDefaultTileSize);
    const std::unique_ptr<Atil::RowProviderInterface> rows(stamp.read(Atil::Size(1, 1), Atil::Offset(0, 0)));
    image->paste(rows.get(), Atil::Offset(1, 0), false);
    ASSERT_EQ(definition.closeImage(), Acad::eOk);
}

TEST_F(ImageDefinitionTest, AStandAloneDefinitionReadsAFile)
{
    AcDbRasterImageDef definition;
    definition.setSourceFileName(std::filesystem::path(raster()).c_str());
    EXPECT_FALSE(definition.isLoaded());
    EXPECT_EQ(definition.load(), Acad::eOk);
    EXPECT_EQ(definition.colorDepth(), 1);
    EXPECT_EQ(definition.size().x, 4);
    EXPECT_EQ(definition.size().y, 2);
    EXPECT_NEAR(definition.resolutionMMPerPixel().x, 0.1, 1e-12) << "254 dots per inch";
    Atil::Image* image = nullptr;
    ASSERT_EQ(definition.openImage(image), Acad::eOk);
    EXPECT_EQ(*image->pixels(), drawn({"#..#", ".##."}));
    EXPECT_EQ(image->dataModel().dataModelType(), Atil::DataModelAttributes::kBitonalModel);
    EXPECT_EQ(definition.closeImage(), Acad::eOk);
    EXPECT_TRUE(standin::breaches().empty());
}

TEST_F(ImageDefinitionTest, IsLoadedAsTheDrawingSaysBeforeItsPixelsAreRead)
{
    std::ofstream(folder / "text.tif") << "this is no raster";
    struct
    {
        const char* what;
        std::string file;
        bool recorded;
        bool loaded;
        bool afterReading;
    } const table[] = {
        {"loaded", raster(), true, true, true},
        {"unloaded", raster(), false, false, false},
        {"loaded, of a file that has gone", "missing.tif", true, false, false},
        {"loaded, of a file that is none", (folder / "text.tif").string(), true, true, false},
    };
    const DocumentLock lock;
    for (const auto& row : table) {
        SCOPED_TRACE(row.what);
        auto* definition = openDefinition(addImage(row.file));
        recordOf(*definition).loaded = row.recorded;
        EXPECT_EQ(definition->isLoaded(), row.loaded);
        EXPECT_EQ(definition->pixels(), nullptr) << "nobody has asked for them";
        const std::unique_ptr<Atil::Image> copy(definition->imageCopy(false));
        EXPECT_EQ(copy != nullptr, row.afterReading);
        EXPECT_EQ(definition->isLoaded(), row.afterReading);
        EXPECT_EQ(recordOf(*definition).loaded, row.recorded);
        definition->close();
    }
}

TEST_F(ImageDefinitionTest, AnUnloadingForNowLeavesTheRecord)
{
    const standin::Handle handle = addImage(raster());
    const DocumentLock lock;
    auto* definition = openDefinition(handle);
    EXPECT_EQ(definition->unload(false), Acad::eOk);
    EXPECT_FALSE(definition->isLoaded());
    EXPECT_TRUE(recordOf(*definition).loaded);
    EXPECT_EQ(standin::imagePixels(handle), nullptr);
    EXPECT_EQ(definition->load(), Acad::eOk);
    EXPECT_NE(standin::imagePixels(handle), nullptr);
    definition->close();
}

TEST_F(ImageDefinitionTest, OnlyWritingModifiesTheImage)
{
    const DocumentLock lock;
    auto* definition = openDefinition(addImage(raster()));
    Atil::Image* image = nullptr;
    ASSERT_EQ(definition->openImage(image), Acad::eOk);
    definition->closeImage();
    EXPECT_FALSE(definition->imageModified()) << "it was only looked at";
    ink(*definition);
    EXPECT_TRUE(definition->imageModified());
    definition->setImageModified(false);
    EXPECT_FALSE(definition->imageModified());
    ink(*definition);
    EXPECT_TRUE(definition->imageModified()) << "written once more";
    definition->unload(true);
    EXPECT_FALSE(definition->imageModified());
    definition->load();
    EXPECT_FALSE(definition->imageModified());
    const AcDbObjectId id = definition->objectId();
    definition->close();
    EXPECT_TRUE(standin::breaches().empty());

    definition = open<AcDbRasterImageDef>(id, AcDb::kForRead);
    definition->setImageModified(true);
    EXPECT_FALSE(definition->imageModified());
    EXPECT_EQ(standin::breaches().size(), 1u) << "it was open for read";
    definition->close();
}

TEST_F(ImageDefinitionTest, WholeDotsPerInchSurviveTheWayThroughMillimetres)
{
    // The module cuts 25.4 / resolution to a whole number; 87 and 174 are among those that plain division gets wrong.
    for (const int dotsPerInch : {72, 87, 100, 174, 200, 300, 400, 600, 1200}) {
        AcDbRasterImageDef definition;
        definition.setSourceFileName(writeRaster("dpi.tif", drawn({"#"}), dotsPerInch).c_str());
        EXPECT_EQ(int(25.4 / definition.resolutionMMPerPixel().x), dotsPerInch);
    }
}

// A JPEG of 8 x 8 black pixels in grey, as ImageMagick wrote it.
constexpr std::string_view blackJpeg =
    "ffd8ffe000104a46494600010100000100010000ffdb00430001010101010101010101010101010101010101010101010101"
    "010101010101010101010101010101010101010101010101010101010101010101010101010101ffc0000b08000800080101"
    "1100ffc4001400010000000000000000000000000000000bffc40014100100000000000000000000000000000000ffda0008"
    "010100003f003ff7ffd9";

std::string fromHex(std::string_view digits)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes.push_back(char(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16)));
    return bytes;
}

TEST_F(ImageDefinitionTest, ColoursAreReportedAsTheyAreStored)
{
    std::string pcx(128, '\0'); // two pixels, red and white, in three planes of 8 bits
    pcx.replace(0, 4, std::string("\x0A\x05\x00\x08", 4));
    pcx[8] = 1;
    pcx[65] = 3;
    pcx[66] = 2;
    pcx += "\xFF\xFF";
    pcx += std::string("\0\xFF", 2) + std::string("\0\xFF", 2);
    std::string photoCd(96 * 2048 + 768 * 512 * 3 / 2, '\0');
    photoCd.replace(2048, 7, "PCD_IPI");
    photoCd[0xE02] = 1; // stands upright after a quarter turn
    const struct
    {
        const char* name;
        std::string bytes;
        int depth, width, height;
    } cases[] = {
        {"grey.jpg", fromHex(blackJpeg), 8, 8, 8},
        {"colours.pcx", pcx, 24, 2, 1},
        {"photo.pcd", photoCd, 24, 512, 768},
    };
    for (const auto& c : cases) {
        const std::filesystem::path file = folder / c.name;
        std::ofstream(file, std::ios::binary) << c.bytes;
        AcDbRasterImageDef definition;
        definition.setSourceFileName(file.c_str());
        EXPECT_EQ(definition.load(), Acad::eOk) << c.name;
        EXPECT_EQ(definition.colorDepth(), c.depth) << c.name;
        EXPECT_EQ(definition.size().x, c.width) << c.name;
        EXPECT_EQ(definition.size().y, c.height) << c.name;
        Atil::Image* image = nullptr;
        ASSERT_EQ(definition.openImage(image), Acad::eOk);
        EXPECT_TRUE(image->pixels()->ink(0, 0)) << c.name;
        EXPECT_EQ(definition.closeImage(), Acad::eOk);
    }
}

TEST_F(ImageDefinitionTest, WhatCannotBeLoaded)
{
    AcDbRasterImageDef missing;
    missing.setSourceFileName(L"no such file.tif");
    EXPECT_EQ(missing.load(), Acad::eFileNotFound);
    EXPECT_STREQ(missing.activeFileName(), L"");
    EXPECT_EQ(missing.colorDepth(), 1) << "a definition whose file is missing counts as bitonal";

    const std::filesystem::path text = folder / "text.tif";
    std::ofstream(text) << "this is no raster";
    AcDbRasterImageDef broken;
    broken.setSourceFileName(text.c_str());
    EXPECT_EQ(broken.load(), Acad::eFileAccessErr);
    EXPECT_FALSE(broken.isLoaded());
    Atil::Image* image = nullptr;
    EXPECT_EQ(broken.openImage(image), Acad::eNotApplicable);
    EXPECT_EQ(broken.imageCopy(true), nullptr);
}

TEST_F(ImageDefinitionTest, FilesAreFoundBesideTheDrawing)
{
    raster("plans/sheet.tif");
    raster("moved.tif");
    ASSERT_EQ(standin::saveDrawing(folder / "site.dxf"), std::nullopt);
    struct
    {
        const char* stored;
        std::filesystem::path expected;
    } const table[] = {
        {"plans\\sheet.tif", folder / "plans" / "sheet.tif"},
        {"moved.tif", folder / "moved.tif"},
        {"C:\\elsewhere\\moved.tif", folder / "moved.tif"},
        {"nowhere.tif", {}},
    };
    const DocumentLock lock;
    for (const auto& row : table) {
        auto* definition = openDefinition(addImage(row.stored), AcDb::kForRead);
        EXPECT_EQ(std::filesystem::path(definition->activeFileName()), row.expected) << row.stored;
        definition->close();
    }
}

TEST_F(ImageDefinitionTest, CopiesShareTheirPixelsUntilOneIsWritten)
{
    const DocumentLock lock;
    auto* definition = openDefinition(addImage(raster()));
    const std::unique_ptr<Atil::Image> copy(definition->imageCopy(true));
    EXPECT_EQ(copy->pixels(), definition->pixels());
    const auto painted = definition->pixels();
    ink(*definition);
    EXPECT_TRUE(definition->imageModified());
    EXPECT_NE(definition->pixels(), painted) << "what is being painted must not change under the painter";
    EXPECT_EQ(*copy->pixels(), drawn({"#..#", ".##."}));
    EXPECT_EQ(*definition->pixels(), drawn({"##.#", ".##."}));
    definition->close();
}

TEST_F(ImageDefinitionTest, TheImageIsAnnouncedBeforeItGoes)
{
    const standin::Handle handle = addImage(raster());
    Watcher watcher;
    {
        const DocumentLock lock;
        auto* definition = openDefinition(handle);
        definition->load();
        definition->addReactor(&watcher);
        ink(*definition);
        EXPECT_EQ(definition->unload(true), Acad::eOk);
        EXPECT_EQ(watcher.calls, 1);
        EXPECT_TRUE(watcher.modified);
        EXPECT_TRUE(watcher.inked) << "the pixels as they stood";
        EXPECT_EQ(watcher.width, 4);
        EXPECT_EQ(definition->unload(true), Acad::eOk);
        EXPECT_EQ(watcher.calls, 1) << "there was nothing left to announce";
        EXPECT_FALSE(recordOf(*definition).loaded);
        EXPECT_EQ(definition->load(), Acad::eOk);
        EXPECT_EQ(*definition->pixels(), drawn({"#..#", ".##."})) << "as in the file";
        definition->close();
    }
    standin::closeDrawing();
    EXPECT_EQ(watcher.calls, 2) << "the drawing's closing lets go of the image too";
    EXPECT_TRUE(standin::breaches().empty());
}

TEST_F(ImageDefinitionTest, OpeningTheImageIsStrict)
{
    const DocumentLock lock;
    auto* definition = openDefinition(addImage(raster()));
    definition->load();
    Atil::Image* image = nullptr;
    EXPECT_EQ(definition->closeImage(), Acad::eNotOpenForWrite);
    EXPECT_EQ(definition->openImage(image), Acad::eOk);
    EXPECT_EQ(definition->openImage(image), Acad::eWasOpenForWrite);
    EXPECT_EQ(definition->unload(true), Acad::eWasOpenForWrite);
    EXPECT_EQ(standin::breaches().size(), 3u);
    EXPECT_EQ(definition->closeImage(), Acad::eOk);
    definition->close();
}

TEST_F(ImageDefinitionTest, PaintingLoadsWhatTheDrawingShows)
{
    const standin::Handle handle = addImage(raster());
    const auto pixels = standin::imagePixels(handle);
    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(*pixels, drawn({"#..#", ".##."}));
    EXPECT_EQ(standin::imagePixels(handle), pixels) << "nothing has changed";
    EXPECT_EQ(standin::openObjects(), 0);

    const DocumentLock lock;
    auto* definition = openDefinition(handle);
    definition->unload(true);
    definition->close();
    EXPECT_EQ(standin::imagePixels(handle), nullptr) << "the drawing says that it is unloaded";
    EXPECT_EQ(standin::imagePixels(addImage("missing.tif")), nullptr);
    EXPECT_EQ(standin::imagePixels(addLine()), nullptr);
}

TEST_F(ImageDefinitionTest, AFileThatWasRefusedIsTriedAgainWhenItHasChanged)
{
    const std::filesystem::path path = folder / "late.tif";
    std::ofstream(path) << "not yet";
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    const standin::Handle handle = addImage(path.string());
    EXPECT_EQ(standin::imagePixels(handle), nullptr);
    raster("late.tif");
    EXPECT_NE(standin::imagePixels(handle), nullptr);
}

} // namespace
