#include "drawing/document.h"
#include "module/base/CArxApp.h"
#include "module/raster/CCurentRaster.h"
#include "tests/module/support/desk_fixture.h"

namespace {

using test::blank;
using test::Picture;
using test::pictureInDrawing;

const Picture threeDots = {
    "#...", //
    ".#..", //
    "...#",
};

class RasterLocks : public test::DeskFixture
{
protected:
    // Whether the definition is loaded, asked of the host itself.
    bool loaded(int index) const
    {
        ads_name name = {};
        entityName(index, name);
        AcDbObjectId id;
        acdbGetObjectId(id, name);
        AcDbRasterImage* image = nullptr;
        AcDbRasterImageDef* definition = nullptr;
        EXPECT_EQ(acdbOpenObject(image, id, AcDb::kForRead), Acad::eOk);
        EXPECT_EQ(acdbOpenObject(definition, image->imageDefId(), AcDb::kForRead), Acad::eOk);
        const bool result = definition->isLoaded();
        definition->close();
        image->close();
        return result;
    }
};

TEST_F(RasterLocks, OnlyTheLastUnlockClosesTheObjects)
{
    CAcraster& raster = openCurrent(threeDots);
    ASSERT_EQ(standin::openObjects(), 0);
    for (int count = 1; count <= 5; ++count) {
        EXPECT_EQ(raster.Lock(count == 1), 1);
        EXPECT_EQ(raster.GetLockCount(), count);
        EXPECT_EQ(standin::openObjects(), 2) << "the image and its definition";
    }
    for (int left = 4; left >= 1; --left) {
        EXPECT_EQ(raster.Unlock(), left);
        EXPECT_EQ(standin::openObjects(), 2);
    }
    EXPECT_EQ(raster.Unlock(), 0);
    EXPECT_EQ(standin::openObjects(), 0);
    EXPECT_EQ(raster.Unlock(), 0) << "one unlock too many changes nothing";
}

TEST_F(RasterLocks, AWrapperOfOpenObjectsIsNeverLocked)
{
    openDrawing({threeDots});
    ads_name name = {};
    entityName(0, name);
    CAcraster owner(name);
    AcDbRasterImageDef definition;
    definition.setSourceFileName(file("image0.tif").c_str());
    definition.load();
    const std::unique_ptr<Atil::Image> image(definition.imageCopy(true));
    {
        CAcraster wrapper(&definition, image.get());
        EXPECT_EQ(wrapper.GetLockCount(), -1);
        EXPECT_EQ(wrapper.Lock(1), 1);
        EXPECT_EQ(wrapper.GetLockCount(), -1);
        EXPECT_EQ(wrapper.Unlock(), -1);
        EXPECT_TRUE(wrapper.GetSize() == CSize(4, 3));
        EXPECT_EQ(wrapper.GetDpi(), 300);
    }
    EXPECT_EQ(standin::openObjects(), 2) << "the wrapper closed what it had not opened";
    EXPECT_EQ(image->size().width, 4) << "the wrapper freed the image of its maker";
}

TEST_F(RasterLocks, PaintingIsLostWithoutACommit)
{
    CAcraster& raster = openCurrent(threeDots);
    raster.Lock(1);
    raster.SetColor(0);
    raster.Stamp(CPoint(3, 0));
    EXPECT_TRUE(raster.IsDirty());
    raster.Unlock();
    EXPECT_EQ(pictureInDrawing(0), threeDots);
    raster.Lock(1);
    raster.Reload(true);
    raster.Unlock();
    EXPECT_EQ(pictureInDrawing(0), threeDots) << "the next lock began with the pixels of the drawing";
}

TEST_F(RasterLocks, ACommitReachesTheDrawingAndKeepsTheLock)
{
    CAcraster& raster = openCurrent(threeDots);
    raster.Lock(1);
    raster.Lock(1);
    raster.SetColor(0);
    raster.Stamp(CPoint(3, 0));
    raster.Reload(true);
    EXPECT_EQ(pictureInDrawing(0), (Picture{"#..#", ".#..", "...#"}));
    EXPECT_EQ(m_posted, std::vector<std::wstring>{L"\t"}) << "a tab makes the host refresh";
    EXPECT_EQ(raster.GetLockCount(), 2);
    EXPECT_FALSE(raster.IsDirty());
    // The work goes on with the committed pixels.
    raster.SetColor(0xFFFFFF);
    raster.Stamp(CPoint(0, 0));
    raster.Reload(true);
    EXPECT_EQ(pictureInDrawing(0), (Picture{"...#", ".#..", "...#"}));
    raster.Unlock();
    raster.Unlock();
}

TEST_F(RasterLocks, SuspendClosesTheObjectsAndKeepsTheWork)
{
    CAcraster& raster = openCurrent(threeDots);
    raster.Suspend(1);
    EXPECT_FALSE(g_pArxApp->m_bSuspended) << "an unlocked raster has nothing to suspend";

    raster.Lock(1);
    raster.SetColor(0);
    raster.Stamp(CPoint(2, 2));
    raster.Suspend(1);
    EXPECT_TRUE(g_pArxApp->m_bSuspended);
    EXPECT_EQ(standin::openObjects(), 0);
    raster.Suspend(0);
    EXPECT_FALSE(g_pArxApp->m_bSuspended);
    EXPECT_EQ(standin::openObjects(), 2);
    raster.Reload(true);
    raster.Unlock();
    EXPECT_EQ(pictureInDrawing(0), (Picture{"#...", ".#..", "..##"}));
}

TEST_F(RasterLocks, ARasterErasedWhileSuspendedHasNothingToCommitTo)
{
    openCurrent(threeDots);
    {
        const CCurentRaster guard;
        ASSERT_TRUE(guard.m_pRaster);
        guard.m_pRaster->Suspend(1);
        ASSERT_TRUE(standin::eraseEntity(test::imageHandle(0)));
        guard.m_pRaster->Suspend(0);
        guard.m_pRaster->Reload(true);
        guard.m_pRaster->ResetRegion();
        EXPECT_TRUE(guard.m_pRaster->GetSize() == CSize(0, 0));
    }
    EXPECT_EQ(standin::openObjects(), 0);
    const CCurentRaster next;
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr) << "the next lock drops what has gone";
    m_locksLeft = 1;
}

TEST_F(RasterLocks, AnErasedRasterIsDroppedByTheGuardAndAnErasedImageYieldsNone)
{
    openCurrent(threeDots);
    ads_name name = {};
    entityName(0, name);
    ASSERT_TRUE(standin::eraseEntity(test::imageHandle(0)));
    const CCurentRaster guard;
    EXPECT_EQ(guard.m_pRaster, nullptr);
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
    EXPECT_EQ(CAcraster(name).GetLockCount(), -1);
    m_locksLeft = 2; // each lock that failed leaves the document locked
}

TEST_F(RasterLocks, AGuardUnlocksOnlyTheRasterThatIsStillCurrent)
{
    openCurrent(threeDots);
    ads_name name = {};
    entityName(0, name);
    {
        const CCurentRaster guard;
        ASSERT_EQ(guard.m_pRaster, g_pArxApp->m_pRaster);
        EXPECT_EQ(guard.m_pRaster->GetLockCount(), 1);
        // Another one in its place, at the same address even; it is locked once.
        guard.m_pRaster->~CAcraster();
        new (guard.m_pRaster) CAcraster(name);
    }
    EXPECT_EQ(g_pArxApp->m_pRaster->GetLockCount(), 1) << "the guard of the old raster unlocked the new one";
    {
        const CCurentRaster guard;
        EXPECT_EQ(g_pArxApp->m_pRaster->GetLockCount(), 2);
    }
    EXPECT_EQ(g_pArxApp->m_pRaster->GetLockCount(), 1);
    DropCurrentRaster();
    const CCurentRaster none;
    EXPECT_EQ(none.m_pRaster, nullptr);
}

TEST_F(RasterLocks, ADeletedRasterGivesBackAllItsLocks)
{
    openCurrent(threeDots).Lock(1);
    g_pArxApp->m_pRaster->Lock(1);
    DropCurrentRaster();
    EXPECT_EQ(standin::openObjects(), 0);
}

TEST_F(RasterLocks, AnImageThatWasLoadedForTheRasterGoesWithItUnlessItIsKept)
{
    openDrawing({threeDots, threeDots});
    for (const int index : {0, 1}) {
        const auto* image = standin::document().find<drawing::Image>(test::imageHandle(index));
        standin::document().find<drawing::ImageDefinition>(image->definition)->loaded = false;
    }
    ASSERT_FALSE(loaded(0));
    makeCurrent(0);
    EXPECT_TRUE(loaded(0));
    DropCurrentRaster();
    EXPECT_FALSE(loaded(0));

    makeCurrent(1).KeepLoaded();
    DropCurrentRaster();
    EXPECT_TRUE(loaded(1));
    EXPECT_EQ(pictureInDrawing(1), threeDots);
}

TEST_F(RasterLocks, ASelectionIsAnythingButTheWholeImage)
{
    CAcraster& raster = openCurrent(blank(8, 4));
    raster.Lock(0);
    EXPECT_EQ(raster.HasSelection(), 0);

    raster.GetRegion().SetRectRgn(1, 0, 8, 4);
    EXPECT_EQ(raster.HasSelection(), 1) << "a part of the image";
    raster.ResetRegion();
    EXPECT_EQ(raster.HasSelection(), 0) << "the whole image again";

    // The image without its middle: the box is the image all the same.
    CRgn hole;
    hole.CreateRectRgn(2, 1, 4, 3);
    raster.GetRegion().CombineRgn(&raster.GetRegion(), &hole, RGN_DIFF);
    EXPECT_TRUE(raster.GetRegionBox() == raster.GetImageRect());
    EXPECT_EQ(raster.HasSelection(), 1);
    raster.Unlock();
}

TEST_F(RasterLocks, FileNameResolutionAndDepthComeFromTheDefinition)
{
    test::writeGrayBitmap(file("gray.bmp"), 6, 2);
    openDrawing({threeDots, blank(6, 2), threeDots}, {{}, {.file = file("gray.bmp")}, {.file = file("missing.tif")}},
                25.4 / 0.0847);
    struct Case
    {
        const char* name;
        int depth;
        int kind; // 2 for black and white
    };
    const Case cases[] = {{"image0.tif", 1, 2}, {"gray.bmp", 8, 0}, {"File not found", 1, 0}};
    for (int i = 0; i < 3; ++i) {
        CAcraster& raster = makeCurrent(i);
        raster.Lock(0);
        EXPECT_EQ(std::filesystem::path(raster.GetFileName().GetString()).filename(), cases[i].name);
        EXPECT_EQ(raster.GetColorDepth(), cases[i].depth);
        if (i != 1) {
            EXPECT_EQ(raster.GetImageKind(), cases[i].kind);
        }
        ads_name entity = {};
        raster.GetEntityName(entity);
        AcDbObjectId id;
        acdbGetObjectId(id, entity);
        EXPECT_EQ(id.handle(), test::imageHandle(i));
        if (i == 0) {
            EXPECT_EQ(raster.GetDpi(), 299) << "0.0847 mm to a pixel is 299.88 dots per inch, which is cut off";
        }
        raster.Unlock();
    }
}

} // namespace
