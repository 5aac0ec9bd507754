// What the desk is told of changes by modules, and how a raster is put back as it was.
#include <functional>
#include <gmock/gmock.h>

#include "tests/standin/arx/drawing_fixture.h"

namespace {

const Picture sheet = {"#..#", ".##."};
const Picture wide = {"......", "######", "......"};

class TakingBackTest : public DrawingTest
{
protected:
    // The sheet at the origin, a pixel measuring one unit, in a drawing that was just saved.
    void openSheet()
    {
        m_image = addImage(writeRaster("sheet.tif", drawn(sheet)).string());
        standin::imagePixels(m_image);
        standin::takeChanges();
    }
    void commit(const Picture& picture)
    {
        const DocumentLock lock;
        AcDbRasterImageDef* definition = openDefinition(m_image);
        Atil::Image* image = nullptr;
        ASSERT_EQ(definition->openImage(image), Acad::eOk);
        *image = Atil::Image(std::make_shared<imaging::Bitmap>(drawn(picture)), Atil::BitonalModel());
        ASSERT_EQ(definition->closeImage(), Acad::eOk);
        definition->close();
    }
    void place(double x, double y, double width, double height)
    {
        const DocumentLock lock;
        auto* image = open<AcDbRasterImage>(idOf(m_image), AcDb::kForWrite);
        ASSERT_TRUE(image->setOrientation({x, y, 0}, {width, 0, 0}, {0, height, 0}));
        image->close();
    }
    standin::Handle definitionHandle() const { return record().definition; }
    Picture shown() const { return rowsOf(*standin::imagePixels(m_image)); }
    const drawing::Image& record() const { return *standin::document().find<drawing::Image>(m_image); }
    bool counted()
    {
        AcDbRasterImageDef* definition = openDefinition(m_image, AcDb::kForRead);
        const bool modified = definition->imageModified();
        definition->close();
        return modified;
    }
    // The one raster that has changed since the last call, as it was.
    static std::shared_ptr<const standin::RasterState> changed()
    {
        const auto changes = standin::takeChanges();
        EXPECT_EQ(changes.size(), 1u);
        return changes.empty() ? nullptr : changes[0].before;
    }

    standin::Handle m_image = 0;
};

TEST_F(TakingBackTest, ARasterComesBackWithItsPixelsAndItsPlaceAndGoesForthAgain)
{
    openSheet();
    commit(wide); // and, as a crop does, the image moved after it
    place(2, 3, 6, 3);
    const auto before = changed();
    ASSERT_NE(before, nullptr);
    EXPECT_TRUE(counted());

    const auto after = standin::rasterState(definitionHandle());
    ASSERT_TRUE(standin::restoreRaster(*before));
    EXPECT_EQ(shown(), sheet);
    EXPECT_EQ(record().position, (drawing::Vector3{0, 0, 0}));
    EXPECT_EQ(record().pixels, (drawing::Vector2{4, 2}));
    EXPECT_FALSE(counted()) << "these are the pixels of the file";

    ASSERT_TRUE(standin::restoreRaster(*after));
    EXPECT_EQ(shown(), wide);
    EXPECT_EQ(record().position, (drawing::Vector3{2, 3, 0}));
    EXPECT_EQ(record().pixels, (drawing::Vector2{6, 3}));
    EXPECT_TRUE(counted());
    EXPECT_TRUE(standin::breaches().empty());
}

TEST_F(TakingBackTest, PixelsThatWereTheFilesDifferFromItOnceTheFileHasOthers)
{
    openSheet();
    commit(wide);
    const auto before = changed();
    {
        const DocumentLock lock;
        AcDbRasterImageDef* definition = openDefinition(m_image);
        writeRaster("sheet.tif", drawn(wide));
        definition->unload(false);
        definition->load();
        definition->close();
    }
    EXPECT_FALSE(counted());
    ASSERT_TRUE(standin::restoreRaster(*before));
    EXPECT_EQ(shown(), sheet);
    EXPECT_TRUE(counted());
}

TEST_F(TakingBackTest, AnImageThatWasUnloadedIsLoadedForIt)
{
    openSheet();
    commit(wide);
    const auto before = changed();
    {
        const DocumentLock lock;
        AcDbRasterImageDef* definition = openDefinition(m_image);
        definition->unload(true);
        definition->close();
    }
    ASSERT_TRUE(standin::restoreRaster(*before));
    EXPECT_EQ(shown(), sheet);
    {
        const DocumentLock lock;
        AcDbRasterImageDef* definition = openDefinition(m_image);
        definition->unload(true);
        definition->close();
    }
    std::filesystem::remove(folder / "sheet.tif");
    EXPECT_FALSE(standin::restoreRaster(*before)) << "nothing is left to load";
}

TEST_F(TakingBackTest, WhatSomebodyIsAtWorkOnStaysAsItIs)
{
    openSheet();
    commit(wide);
    const auto before = changed();
    const DocumentLock lock;
    AcDbRasterImageDef* definition = openDefinition(m_image);
    EXPECT_FALSE(standin::restoreRaster(*before));
    definition->close();
    auto* image = open<AcDbRasterImage>(idOf(m_image), AcDb::kForRead);
    EXPECT_FALSE(standin::restoreRaster(*before));
    image->close();
    EXPECT_EQ(shown(), wide);
    EXPECT_TRUE(standin::restoreRaster(*before));
}

TEST_F(TakingBackTest, OnlyWhatIsOtherThanBeforeCounts)
{
    openSheet();
    const struct
    {
        const char* what;
        std::function<void()> happen;
        std::size_t changes;
    } table[] = {
        {"opened and closed", [this] { openDefinition(m_image, AcDb::kForRead)->close(); }, 0},
        {"placed where it is", [this] { place(0, 0, 4, 2); }, 0},
        {"moved", [this] { place(1, 0, 4, 2); }, 1},
        {"moved and back", [this] { place(5, 0, 4, 2), place(1, 0, 4, 2); }, 0},
        {"committed twice", [this] { commit(wide), commit(sheet); }, 1},
        {"erased and put back", [this] { standin::eraseEntity(m_image), standin::restoreEntity(m_image); }, 2},
    };
    for (const auto& row : table) {
        row.happen();
        EXPECT_EQ(standin::takeChanges().size(), row.changes) << row.what;
    }
}

TEST_F(TakingBackTest, TellsWhatWasInsertedAndErasedInOrder)
{
    const standin::Handle line = addLine();
    {
        const DocumentLock lock;
        AcDbDatabase* const drawing = standin::drawingDatabase();
        AcDbObjectIdArray ids;
        ids.append(idOf(line));
        AcDbDatabase* copy = nullptr;
        ASSERT_EQ(drawing->wblock(copy, ids, AcGePoint3d(0, 0, 0)), Acad::eOk);
        const std::unique_ptr<AcDbDatabase> source(copy);
        ASSERT_EQ(drawing->insert(AcGeMatrix3d(), copy), Acad::eOk);
    }
    standin::eraseEntity(line);
    const auto changes = standin::takeChanges();
    ASSERT_EQ(changes.size(), 2u);
    EXPECT_EQ(changes[0].object, standin::document().modelSpace().entities.back());
    EXPECT_TRUE(changes[0].added);
    EXPECT_EQ(changes[1].object, line);
    EXPECT_FALSE(changes[1].added);
}

} // namespace
