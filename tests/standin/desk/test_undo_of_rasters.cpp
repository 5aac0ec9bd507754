// Undo and redo of rasters in the desk's sessions, and the memory that they may take.

#include <gtest/gtest.h>

#include "drawing/document.h"
#include "imaging/raster_file.h"
#include "standin/arx/arx.h"
#include "standin/atil/atil.h"
#include "standin/desk/drawing_session.h"
#include "tests/support/files.h"
#include "tests/support/pictures.h"

namespace {

constexpr int side = 64; // pixels; a picture takes 512 bytes
constexpr std::size_t bytes = 512;

// One open drawing with a raster. Its edits are numbered pictures: number n has n pixels of ink in its first row.
class Sheet
{
public:
    explicit Sheet(const std::filesystem::path& file)
    {
        imaging::writeRaster(file, imaging::Bitmap({side, side}), {254, 254}, imaging::Format::TiffGroup4);
        standin::addDrawing({});
        m_drawing = standin::activeDrawing();
        drawing::Document& document = standin::document();
        auto definition = std::make_unique<drawing::ImageDefinition>();
        definition->path = file.string();
        drawing::ImageDefinition& added = document.addImageDefinition("sheet", std::move(definition));
        drawing::Image& image = document.addEntity(document.modelSpace(), std::make_unique<drawing::Image>());
        image.pixels = {side, side};
        document.attachDefinition(image, added);
        m_image = image.handle;
        m_definition = added.handle;
    }

    void edit(int number)
    {
        standin::activateDrawing(m_drawing);
        imaging::Bitmap picture({side, side});
        for (int x = 0; x < number; ++x)
            picture.setInk(x, 0, true);
        AcApDocument* const document = acDocManagerPtr()->curDocument();
        acDocManagerPtr()->lockDocument(document);
        AcDbRasterImageDef* definition = nullptr;
        acdbOpenObject(definition, definitionId(), AcDb::kForWrite);
        Atil::Image* image = nullptr;
        ASSERT_EQ(definition->openImage(image), Acad::eOk);
        *image = Atil::Image(std::make_shared<imaging::Bitmap>(picture), Atil::BitonalModel());
        definition->closeImage();
        definition->close();
        acDocManagerPtr()->unlockDocument(document);
        m_session.endOfCommand();
    }
    // The picture's number after it; -1 if there is nothing to be taken back.
    int undo()
    {
        standin::activateDrawing(m_drawing);
        return m_session.undo() ? shown() : -1;
    }
    int redo() { return m_session.redo() ? shown() : -1; }
    desk::EditHistory* history() { return &m_session.history(); }

private:
    AcDbObjectId definitionId() const
    {
        AcDbObjectId id;
        AcDbDictionary* names = nullptr;
        acdbOpenObject(names, AcDbRasterImageDef::imageDictionary(standin::drawingDatabase()), AcDb::kForRead);
        names->getAt(L"sheet", id);
        names->close();
        return id;
    }
    int shown() const
    {
        const auto pixels = standin::imagePixels(m_image);
        int number = 0;
        while (number < side && pixels->ink(number, 0))
            ++number;
        return number;
    }

    standin::DrawingId m_drawing = 0;
    standin::Handle m_image = 0, m_definition = 0;
    desk::DrawingSession m_session;
};

class UndoOfRasters : public testing::Test
{
protected:
    ~UndoOfRasters() override
    {
        while (standin::drawingOpen())
            standin::closeDrawing();
    }

    TemporaryFolder m_folder;
    Sheet m_one{m_folder / L"one.tif"}, m_other{m_folder / L"other.tif"};
};

TEST_F(UndoOfRasters, EachDrawingGoesBackAndForthByItself)
{
    m_one.edit(1);
    m_other.edit(5);
    m_one.edit(2);
    EXPECT_EQ(m_one.undo(), 1);
    EXPECT_EQ(m_other.undo(), 0);
    EXPECT_EQ(m_other.undo(), -1);
    EXPECT_EQ(m_other.redo(), 5);
    EXPECT_EQ(m_one.undo(), 0);
    EXPECT_EQ(m_one.redo(), 1);
    EXPECT_EQ(m_one.redo(), 2);
    EXPECT_EQ(m_one.redo(), -1);
    EXPECT_EQ(m_one.undo(), 1);
    m_one.edit(7);
    EXPECT_EQ(m_one.redo(), -1) << "a new edit forgets what was undone";
    EXPECT_EQ(m_one.undo(), 1);
}

TEST_F(UndoOfRasters, TheOldestIsForgottenFirstInWhicheverDrawing)
{
    m_one.edit(1);
    m_other.edit(2);
    m_one.edit(3);
    m_other.edit(4);
    desk::limitKeptPixels({m_one.history(), m_other.history()}, 3 * bytes);
    EXPECT_EQ(m_one.undo(), 1);
    EXPECT_EQ(m_one.undo(), -1) << "its first edit was the oldest";
    EXPECT_EQ(m_other.undo(), 2);
    EXPECT_EQ(m_other.undo(), 0);
}

TEST_F(UndoOfRasters, TheLatestEditCanBeTakenBackHoweverLargeItIs)
{
    m_other.edit(1);
    m_one.edit(2);
    desk::limitKeptPixels({m_one.history(), m_other.history()}, 1);
    EXPECT_EQ(m_other.undo(), -1);
    EXPECT_EQ(m_one.undo(), 0);
}

} // namespace
