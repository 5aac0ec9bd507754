// The user goes on to another drawing: what the module holds of the one that is left.

#include <gmock/gmock.h>

#include "drawing/document.h"
#include "module/base/CArxApp.h"
#include "module/commands/ToolCommands.h"
#include "module/raster/CCheckDef.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/CDocumentLock.h"
#include "module/raster/PendingFileSwap.h"
#include "module/tools/CTool.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"

namespace {

using test::Picture;
using test::pictureInDrawing;
using test::readPicture;

const Picture corner = {
    "##......", //
    "#.......", //
    "........",
};
const Picture flippedCorner(corner.rbegin(), corner.rend());

class OtherDrawing : public test::DeskFixture
{
protected:
    // The drawing with the picture, in which its image is current; the editor is followed.
    void openFirst()
    {
        openDrawing({corner});
        m_first = standin::activeDrawing();
        g_pArxApp->m_pReactor = new CCheckDef;
    }
    void goOn() { ASSERT_FALSE(standin::addDrawing({})); }
    void goBack() const { standin::activateDrawing(m_first); }
    // Both are closed, with nothing locked or open in either.
    void closeBoth()
    {
        EXPECT_EQ(standin::openObjects(), 0);
        EXPECT_EQ(standin::documentLocks(), 0);
        forgetEdits();
        while (standin::drawingOpen())
            standin::closeDrawing();
    }
    static void flip()
    {
        const CCurentRaster current;
        current.m_pRaster->FlipVertical();
        current.m_pRaster->Reload(true);
    }

    standin::DrawingId m_first = 0;
};

TEST_F(OtherDrawing, TheRasterOfTheOneThatWasLeftIsCurrentNoMoreAndNothingIsLocked)
{
    openFirst();
    makeCurrent(0);
    flip();
    goOn();
    {
        const CCurentRaster current;
        EXPECT_EQ(current.m_pRaster, nullptr);
    }
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
    EXPECT_EQ(standin::documentLocks(), 0);
    goBack();
    EXPECT_EQ(pictureInDrawing(0), flippedCorner) << "what was committed stays in its drawing";
    closeBoth();
}

// Typed before the monitor's next tick. Letting go of the former raster would look as if the command did nothing.
TEST_F(OtherDrawing, ARasterIsPickedAtOnceInTheOneThatFollows)
{
    openFirst();
    makeCurrent(0);
    goOn();
    SelectRasterCommand();
    ASSERT_NE(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(g_pArxApp->m_pTool->ToolId(), ToolIdSelectRaster);
    delete g_pArxApp->m_pTool;
    closeBoth();
}

TEST_F(OtherDrawing, AStrokeUnderWayLetsGoOfItsObjects)
{
    openFirst();
    makeCurrent(0);
    const auto stroke = std::make_unique<CCurentRaster>();
    ASSERT_NE(stroke->m_pRaster, nullptr);
    goOn();
    {
        const CCurentRaster current;
    }
    EXPECT_EQ(standin::openObjects(), 0);
    EXPECT_EQ(stroke->GetIfCurrent(), nullptr);
    closeBoth();
}

// It was loaded for the raster alone, and the raster goes while another document is the current one.
TEST_F(OtherDrawing, AnImageThatTheModuleLoadedIsUnloadedInItsOwnDrawing)
{
    openFirst();
    const auto* image = standin::document().find<drawing::Image>(test::imageHandle(0));
    auto* definition = standin::document().find<drawing::ImageDefinition>(image->definition);
    definition->loaded = false;
    makeCurrent(0);
    ASSERT_TRUE(definition->loaded);
    goOn();
    DropRasterOfOtherDrawing();
    EXPECT_FALSE(definition->loaded);
    closeBoth();
}

TEST_F(OtherDrawing, AnEditIsAskedAboutAndSavedWhereverItIs)
{
    openFirst();
    makeCurrent(0);
    flip();
    goOn();
    test::DialogDriver driver;
    driver.expectDialog([](HWND box) { test::press(box, IDYES); });
    driver.expectDialog([this](HWND dialog) {
        test::setName(dialog, file("image0.tif").wstring());
        test::press(dialog, IDOK);
    });
    driver.expectDialog([](HWND overwrite) { test::press(overwrite, IDYES); });
    ASSERT_FALSE(standin::saveDrawing(file("second.dxf"))) << "every saving asks, of whichever drawing";
    EXPECT_EQ(readPicture(file("image0.tif")), flippedCorner);
    goBack();
    EXPECT_EQ(pictureInDrawing(0), flippedCorner);
    closeBoth();
}

TEST_F(OtherDrawing, APostponedSwapIsCarriedOutInItsOwnDrawing)
{
    openFirst();
    ads_name name = {};
    entityName(0, name);
    AcDbObjectId id;
    acdbGetObjectId(id, name);
    AcDbRasterImage* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
    const AcDbObjectId definition = entity->imageDefId();
    entity->close();
    ASSERT_EQ(pictureInDrawing(0), corner);
    const std::filesystem::path saved = file("saved.tif");
    test::writeTiff(saved, flippedCorner, 300);
    PostponeFileSwap({CString(saved.c_str()), CString(file("image0.tif").c_str()), definition});
    goOn();
    RunPendingFileSwap();
    EXPECT_EQ(readPicture(file("image0.tif")), flippedCorner);
    EXPECT_FALSE(std::filesystem::exists(saved));
    goBack();
    EXPECT_EQ(pictureInDrawing(0), flippedCorner) << "the image was loaded anew";
    closeBoth();
}

} // namespace
