#include <fstream>

#include "tests/module/arx/drawing_fixture.h"

namespace {

class ImageDefinitionTest : public DrawingTest
{
protected:
    std::string raster(const char* name = "sheet.tif") { return writeRaster(name, picture({"#..#", ".##."})).string(); }
    // An uncompressed BMP of 2 by 1 pixels.
    std::string bitmapFile(const char* name, int bitsPerPixel)
    {
        const int tableBytes = bitsPerPixel == 8 ? 256 * 4 : 0;
        const std::string pixels(8, '\0');
        const int offset = 54 + tableBytes;
        std::string file = "BM";
        const auto add = [&](unsigned value, int bytes) {
            for (int i = 0; i < bytes; ++i)
                file.push_back(char(value >> (8 * i) & 255));
        };
        add(unsigned(offset) + 8, 4), add(0, 4), add(unsigned(offset), 4);
        add(40, 4), add(2, 4), add(1, 4), add(1, 2), add(unsigned(bitsPerPixel), 2);
        add(0, 4), add(8, 4), add(11811, 4), add(11811, 4), add(0, 4), add(0, 4);
        file.append(std::size_t(tableBytes), '\x7f');
        const std::filesystem::path path = folder / name;
        std::ofstream(path, std::ios::binary) << file << pixels;
        return path.string();
    }
};

struct Watcher final : AcDbRasterImageDefTransReactor
{
    Adesk::Boolean onDeleteImage(const AcDbRasterImageDef* definition, const Atil::Image* image) override
    {
        ++calls;
        modified = definition->imageModified();
        width = image->size().width;
        inked = image->pixels()->ink(1, 0);
        if (removesItself)
            definition->removeReactor(this);
        return false;
    }
    int calls = 0;
    bool modified = false;
    int width = 0;
    bool inked = false;
    bool removesItself = false;
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
    EXPECT_EQ(*image->pixels(), picture({"#..#", ".##."}));
    EXPECT_EQ(image->dataModel().dataModelType(), Atil::DataModelAttributes::kBitonalModel);
    EXPECT_EQ(definition.closeImage(), Acad::eOk);
    EXPECT_FALSE(definition.imageModified()) << "it was only looked at";
    EXPECT_TRUE(standin::breaches().empty());
}

TEST_F(ImageDefinitionTest, WholeDotsPerInchSurviveTheWayThroughMillimetres)
{
    // The module cuts 25.4 / resolution to a whole number; 87 and 174 are among those that plain division gets wrong.
    for (const int dotsPerInch : {72, 87, 100, 174, 200, 300, 400, 600, 1200}) {
        AcDbRasterImageDef definition;
        definition.setSourceFileName(writeRaster("dpi.tif", picture({"#"}), dotsPerInch).c_str());
        EXPECT_EQ(int(25.4 / definition.resolutionMMPerPixel().x), dotsPerInch);
    }
}

TEST_F(ImageDefinitionTest, DepthsOtherThanOneBitAreReported)
{
    for (const int bits : {8, 24, 32}) {
        AcDbRasterImageDef definition;
        definition.setSourceFileName(std::filesystem::path(bitmapFile("colour.bmp", bits)).c_str());
        ASSERT_EQ(definition.load(), Acad::eOk) << bits;
        EXPECT_EQ(definition.colorDepth(), bits);
        const std::unique_ptr<Atil::Image> image(definition.imageCopy());
        EXPECT_NE(image->dataModel().dataModelType(), Atil::DataModelAttributes::kBitonalModel);
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
    EXPECT_EQ(*copy->pixels(), picture({"#..#", ".##."}));
    EXPECT_EQ(*definition->pixels(), picture({"##.#", ".##."}));
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
        EXPECT_FALSE(definition->imageModified());
        EXPECT_EQ(definition->unload(true), Acad::eOk);
        EXPECT_EQ(watcher.calls, 1) << "there was nothing left to announce";
        EXPECT_FALSE(standin::document().find<drawing::ImageDefinition>(definition->objectId().handle())->loaded);
        EXPECT_EQ(definition->load(), Acad::eOk);
        EXPECT_EQ(*definition->pixels(), picture({"#..#", ".##."})) << "as in the file";
        definition->close();
    }
    standin::closeDrawing();
    EXPECT_EQ(watcher.calls, 2) << "the drawing's closing lets go of the image too";
    EXPECT_TRUE(standin::breaches().empty());
}

TEST_F(ImageDefinitionTest, AReactorMayRemoveItselfWhenTheDefinitionIsErased)
{
    Watcher first, second;
    first.removesItself = true;
    const DocumentLock lock;
    auto* definition = openDefinition(addImage(raster()));
    definition->load();
    definition->addReactor(&first);
    definition->addReactor(&second);
    EXPECT_EQ(standin::document().imageDictionary()->entries.size(), 1u);
    EXPECT_EQ(definition->erase(), Acad::eOk);
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 1);
    EXPECT_TRUE(standin::document().imageDictionary()->entries.empty());
    EXPECT_EQ(definition->erase(false), Acad::eOk);
    EXPECT_EQ(standin::document().imageDictionary()->entries.size(), 1u);
    definition->close();
}

// Saving over the definition's own file from inside the callback unloads and loads it again.
TEST_F(ImageDefinitionTest, AReactorMayUnloadAndLoadTheImageItIsToldOf)
{
    struct Saver final : AcDbRasterImageDefTransReactor
    {
        Adesk::Boolean onDeleteImage(const AcDbRasterImageDef* told, const Atil::Image* image) override
        {
            auto* definition = const_cast<AcDbRasterImageDef*>(told);
            definition->removeReactor(this);
            EXPECT_EQ(definition->unload(true), Acad::eOk);
            EXPECT_TRUE(image->pixels()->ink(1, 0)) << "the image told of outlives the unloading";
            if (loadsAgain) {
                EXPECT_EQ(definition->load(), Acad::eOk);
            }
            return false;
        }
        bool loadsAgain = false;
    };
    const DocumentLock lock;
    auto* definition = openDefinition(addImage(raster()));
    for (const bool loadsAgain : {false, true}) {
        Saver saver;
        Watcher other;
        saver.loadsAgain = loadsAgain;
        definition->load();
        ink(*definition);
        definition->addReactor(&saver);
        definition->addReactor(&other);
        EXPECT_EQ(definition->unload(true), Acad::eOk);
        EXPECT_FALSE(definition->isLoaded());
        EXPECT_FALSE(definition->imageModified());
        EXPECT_EQ(other.calls, loadsAgain ? 2 : 1) << "once for each image that went";
        definition->removeReactor(&other);
    }
    definition->close();
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
    EXPECT_EQ(*pixels, picture({"#..#", ".##."}));
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

TEST_F(ImageDefinitionTest, TheDictionaryListsTheDefinitions)
{
    addImage("a.tif");
    addImage("b.tif");
    auto* dictionary = open<AcDbDictionary>(
        AcDbRasterImageDef::imageDictionary(acdbHostApplicationServices()->workingDatabase()), AcDb::kForRead);
    std::wstring sources;
    const DocumentLock lock;
    const std::unique_ptr<AcDbDictionaryIterator> iterator(dictionary->newIterator());
    for (; !iterator->done(); iterator->next()) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(iterator->getObject(object, AcDb::kForWrite), Acad::eOk);
        ASSERT_TRUE(object->isKindOf(AcDbRasterImageDef::desc()));
        auto* definition = static_cast<AcDbRasterImageDef*>(object);
        sources += definition->sourceFileName();
        EXPECT_EQ(definition->setSourceFileName(L"renamed.tif"), Acad::eOk);
        definition->close();
    }
    EXPECT_EQ(sources, L"a.tifb.tif");
    AcDbObjectId id;
    EXPECT_EQ(dictionary->getAt(L"IMAGE1", id), Acad::eOk);
    EXPECT_EQ(standin::document().find<drawing::ImageDefinition>(id.handle())->path, "renamed.tif");
    EXPECT_EQ(dictionary->getAt(L"image2", id), Acad::eKeyNotFound);
    dictionary->close();
}

TEST_F(ImageDefinitionTest, FramesAreASettingOfTheDrawing)
{
    AcDbRasterVariables* variables = nullptr;
    EXPECT_EQ(AcDbRasterVariables::openRasterVariables(variables, AcDb::kForRead), Acad::eKeyNotFound);
    EXPECT_TRUE(standin::imageFramesShown());
    const DocumentLock lock;
    ASSERT_EQ(AcDbRasterVariables::openRasterVariables(variables, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(variables->imageFrame(), AcDbRasterVariables::kImageFrameAbove);
    EXPECT_EQ(variables->setImageFrame(AcDbRasterVariables::kImageFrameOff), Acad::eOk);
    EXPECT_EQ(variables->setImageFrame(AcDbRasterVariables::kImageFrameInvalid), Acad::eInvalidInput);
    variables->close();
    EXPECT_FALSE(standin::imageFramesShown());
}

} // namespace
