// The area tool.

#include "tests/module/mouse_tools/mouse_fixture.h"
#include "tools/CRasArrowTool.h"
#include "tools/ToolMessageHook.h"
#include "tools/ViewDrawing.h"

namespace {

using test::blank;
using test::Picture;
using test::pictureInDrawing;

class Area : public test::MouseFixture
{
protected:
    HCURSOR cursorAt(CPoint point, UINT flags = 0)
    {
        move(point, flags);
        move(point, flags); // the cursor follows one move behind
        return GetCursor();
    }
    static HCURSOR cursor(UINT id) { return LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id)); }
};

TEST_F(Area, RectanglesAreCombinedByShiftAndCtrl)
{
    struct Case
    {
        const char* what;
        UINT flags;
        std::string wanted;
    };
    const Case cases[] = {
        {"a plain drag begins anew", 0, "15,12-25,20"},
        {"Shift adds", MK_SHIFT, "10,10-20,12 10,12-25,15 15,15-25,20"},
        {"Ctrl takes away", MK_CONTROL, "10,10-20,12 10,12-15,15"},
        {"both add", MK_SHIFT | MK_CONTROL, "10,10-20,12 10,12-25,15 15,15-25,20"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        CAcraster& raster = openRaster();
        SelectAreaCommand();
        drag(at(20, 15), at(10, 10)); // any two corners will do
        EXPECT_EQ(regionOf(raster), "10,10-20,15");
        // From the upper right, which lies beside the area.
        move(at(25, 12), row.flags);
        drag(at(25, 12), at(15, 20), row.flags);
        EXPECT_EQ(regionOf(raster), row.wanted);
        EXPECT_EQ(selected(raster), 1);
        delete g_pArxApp->m_pTool;
        EXPECT_EQ(regionOf(raster), row.wanted) << "the area outlives the tool";
        closeRaster();
    }
}

TEST_F(Area, ADragOfLessThanFourViewPixelsEitherWaySelectsNothing)
{
    struct Case
    {
        int dx, dy;
        int selected;
    };
    CAcraster& raster = openRaster();
    SelectAreaCommand();
    for (const Case& row : {Case{3, 40, 0}, Case{40, 3, 0}, Case{-40, -3, 0}, Case{4, 4, 1}, Case{-4, -4, 1}}) {
        drag(at(10, 10), at(10, 10) + CSize(row.dx, row.dy));
        EXPECT_EQ(selected(raster), row.selected) << row.dx << "," << row.dy;
        deselect(raster);
    }
}

TEST_F(Area, AClickBesideTheAreaDropsIt)
{
    CAcraster& raster = openRaster();
    SelectAreaCommand();
    drag(at(10, 10), at(20, 15));
    move(at(50, 40));
    drag(at(50, 40), at(50, 40), MK_SHIFT);
    EXPECT_EQ(selected(raster), 1) << "Shift and Ctrl keep it";
    drag(at(50, 40), at(50, 40), MK_CONTROL);
    EXPECT_EQ(selected(raster), 1);
    drag(at(50, 40), at(50, 40));
    EXPECT_EQ(selected(raster), 0);
}

TEST_F(Area, TheCursorTellsWhatADragWillDo)
{
    openRaster();
    SelectAreaCommand();
    EXPECT_EQ(cursorAt(at(12, 12), MK_SHIFT), cursor(9800)) << "without an area there is nothing to add to";
    drag(at(10, 10), at(20, 15));
    EXPECT_EQ(cursorAt(at(40, 40)), cursor(9800));
    EXPECT_EQ(cursorAt(at(12, 12)), cursor(9818));
    EXPECT_EQ(cursorAt(at(12, 12), MK_SHIFT), cursor(9821));
    EXPECT_EQ(cursorAt(at(12, 12), MK_CONTROL), cursor(9822));
    EXPECT_EQ(cursorAt(at(12, 12), MK_SHIFT | MK_CONTROL), cursor(9821));
    EXPECT_EQ(cursorAt(at(19, 14)), cursor(9818));
    EXPECT_EQ(cursorAt(at(20, 14)), cursor(9800)) << "right and bottom lie outside";
}

TEST_F(Area, AnAreaIsMovedByPixelsAndMayLeaveTheImage)
{
    CAcraster& raster = openRaster(Picture(60, std::string(80, '#')));
    SelectAreaCommand();
    drag(at(10, 10), at(20, 15));
    move(at(12, 12));
    // From the last view pixel of one image pixel to the first of another.
    drag(at(12, 12) + CSize(1, 1), at(15, 14) - CSize(2, 2));
    EXPECT_EQ(regionOf(raster), "13,12-23,17");
    move(at(14, 13));
    drag(at(14, 13), at(14, 13) + CSize(3, 3));
    EXPECT_EQ(regionOf(raster), "13,12-23,17") << "too short for a move";
    drag(at(14, 13), at(4, 1));
    EXPECT_EQ(regionOf(raster), "3,0-13,5");
    move(at(4, 1));
    drag(at(4, 1), at(0, 1));
    EXPECT_EQ(regionOf(raster), "-1,0-9,5");
    EXPECT_EQ(pictureInDrawing(0), Picture(60, std::string(80, '#'))) << "no pixel moves with it";
}

TEST_F(Area, TheRubberBandErasesItself)
{
    openRaster();
    SelectAreaCommand();
    press(at(10, 10));
    const auto before = viewPixels();
    move(at(40, 30));
    EXPECT_TRUE(viewPixels() != before);
    move(at(20, 50));
    move(at(10, 10));
    EXPECT_TRUE(viewPixels() == before);
    release(at(10, 10));
}

TEST_F(Area, TheMovedFrameErasesItself)
{
    openRaster();
    SelectAreaCommand();
    drag(at(10, 10), at(20, 15));
    drag(at(16, 13), at(30, 25), MK_SHIFT);
    move(at(12, 12));
    press(at(12, 12));
    const auto before = viewPixels();
    move(at(12, 12) + CSize(3, 3));
    EXPECT_TRUE(viewPixels() == before) << "too short for a frame";
    move(at(40, 30));
    EXPECT_TRUE(viewPixels() != before) << "no frame was drawn";
    move(at(25, 41));
    move(at(12, 12));
    EXPECT_TRUE(viewPixels() == before) << "the frame left something behind";
    release(at(12, 12));
}

TEST_F(Area, AFrameInXorModeTurnsOverWhatLiesBelow)
{
    openRaster();
    CClientDC context(&view());
    // Half of the ground is gray, so that a frame that copies would be found out.
    CBrush gray(RGB(0x40, 0x50, 0x60));
    const CRect half(0, 0, 200, 300);
    context.FillRect(half, &gray);
    const auto before = viewPixels();
    CRgn region;
    region.CreateRectRgn(100, 100, 300, 200);
    context.SetROP2(R2_COPYPEN);
    FrameRegionWithPattern(context, region, IDB_SELECTION_PATTERN, CPoint(0, 0), 1);
    const auto copied = viewPixels();
    RedrawView(&view());
    context.FillRect(half, &gray);
    context.SetROP2(R2_XORPEN);
    FrameRegionWithPattern(context, region, IDB_SELECTION_PATTERN, CPoint(0, 0), 1);
    const auto turned = viewPixels();
    int red = 0;
    for (size_t i = 0; i < before.size(); ++i) {
        const int x = static_cast<int>(i % 400);
        const int y = static_cast<int>(i / 400);
        const bool onFrame =
            x >= 100 && x < 300 && y >= 100 && y < 200 && (x == 100 || x == 299 || y == 100 || y == 199);
        ASSERT_EQ(turned[i], onFrame ? before[i] ^ copied[i] : before[i]) << x << "," << y;
        red += onFrame && copied[i] == RGB(255, 0, 0);
    }
    EXPECT_NEAR(red, 298, 4) << "about half of the frame's 596 pixels are red";
}

TEST_F(Area, TwoPressesOfTheButtonDropTheArea)
{
    CAcraster& raster = openRaster();
    SelectAreaCommand();
    drag(at(10, 10), at(20, 15));
    delete g_pArxApp->m_pTool;
    ButtonClickTimer = std::make_unique<CTimer>();
    LastToolIdOnClick = 3;
    SelectAreaCommand();
    EXPECT_EQ(selected(raster), 1) << "another tool's button was pressed before";
    ButtonClickTimer = std::make_unique<CTimer>();
    LastToolIdOnClick = 2;
    SelectAreaCommand();
    EXPECT_EQ(selected(raster), 0);
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
}

Picture withHole(CRect hole)
{
    Picture picture(60, std::string(80, '#'));
    for (int y = hole.top; y < hole.bottom; ++y)
        picture[y].replace(hole.left, hole.Width(), std::string(hole.Width(), '.'));
    return picture;
}

TEST_F(Area, DeleteWhitensTheAreaAndKeepsIt)
{
    CAcraster& raster = openRaster(withHole({}));
    SelectAreaCommand();
    drag(at(10, 10), at(20, 15));
    command(ID_AREA_DELETE);
    EXPECT_EQ(pictureInDrawing(0), withHole({10, 10, 20, 15}));
    EXPECT_EQ(regionOf(raster), "10,10-20,15");
    ASSERT_NE(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(raster.GetLockCount(), 0);
}

TEST_F(Area, InvertTurnsTheAreaInsideOut)
{
    CAcraster& raster = openRaster();
    SelectAreaCommand();
    drag(at(0, 0), at(70, 60));
    command(ID_AREA_INVERT);
    EXPECT_EQ(regionOf(raster), "70,0-80,60");
    command(ID_AREA_INVERT);
    EXPECT_EQ(regionOf(raster), "0,0-70,60");
}

TEST_F(Area, CutAndCopyGoToTheClipboardAndBack)
{
    Picture picture = blank(80, 60);
    picture[10].replace(10, 4, "#.##");
    picture[11].replace(10, 4, ".#.#");
    for (const UINT id : {ID_AREA_COPY, ID_AREA_CUT}) {
        SCOPED_TRACE(id);
        emptyClipboard();
        CAcraster& raster = openRaster(picture);
        SelectAreaCommand();
        drag(at(10, 10), at(14, 12));
        command(id);
        EXPECT_EQ(pictureInDrawing(0), id == ID_AREA_CUT ? blank(80, 60) : picture);
        ASSERT_TRUE(IsClipboardFormatAvailable(CF_DIB));
        raster.Lock(1);
        raster.PasteFromClipboard({30, 40}, true);
        raster.Reload();
        raster.Unlock();
        Picture wanted = id == ID_AREA_CUT ? blank(80, 60) : picture;
        wanted[40].replace(30, 4, "#.##");
        wanted[41].replace(30, 4, ".#.#");
        EXPECT_EQ(pictureInDrawing(0), wanted);
        closeRaster();
    }
}

TEST_F(Area, PasteTakesTheToolsPlaceAndAnUnknownCommandEndsIt)
{
    openRaster();
    SelectAreaCommand();
    putOnClipboard(CF_DIB, test::dibOf({"##", ".#"}));
    command(ID_AREA_PASTE);
    ASSERT_NE(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(g_pArxApp->m_pTool->ToolId(), 7);

    SelectAreaCommand();
    emptyClipboard();
    command(ID_AREA_PASTE);
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr) << "a paste that can't start ends the area tool all the same";

    SelectAreaCommand();
    command(40000);
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
}

} // namespace
