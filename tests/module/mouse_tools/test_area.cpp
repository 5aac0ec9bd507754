// The area tool. What its drags, keys and menu do to selection, image and clipboard is played and checked to the pixel
// in the sessions.

#include "module/base/RedrawView.h"
#include "module/tools/CRasArrowTool.h"
#include "module/tools/ToolMessageHook.h"
#include "module/tools/ViewDrawing.h"
#include "tests/module/mouse_tools/mouse_fixture.h"

namespace {

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

TEST_F(Area, WhatADragDrawsErasesItself)
{
    openRaster();
    SelectAreaCommand();
    expectDragErasesItself(at(10, 10), CSize(3, 3)); // the rubber band
    drag(at(10, 10), at(20, 15));
    drag(at(16, 13), at(30, 25), MK_SHIFT);
    move(at(12, 12));
    expectDragErasesItself(at(12, 12), CSize(3, 3)); // the frame of the area that is moved
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

TEST_F(Area, PasteTakesTheToolsPlace)
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
}

TEST_F(Area, ACopyIsABitmapOfOneBitForAnyProgram)
{
    using test::bytesOf;
    using test::little;
    using test::operator+;
    test::Picture picture = test::blank(80, 60);
    picture[10].replace(10, 5, "#.##.");
    picture[11].replace(10, 5, ".#.##");
    picture[12].replace(10, 5, "#####");
    // 300 dots per inch are 11811 per metre; the bottom row comes first, each row filled up to 4 bytes.
    const test::DibBytes wanted = little(40) + little(5) + little(3) + bytesOf({1, 0, 1, 0}) + little(BI_RGB) +
                                  little(12) + little(11811) + little(11811) + little(2) + little(0) +
                                  bytesOf({0, 0, 0, 0, 255, 255, 255, 0}) + //
                                  bytesOf({0b00011000, 0, 0, 0}) +          // ###..
                                  bytesOf({0b10100000, 0, 0, 0}) +          // .#.##
                                  bytesOf({0b01001000, 0, 0, 0});           // #.##.
    for (const UINT id : {ID_AREA_COPY, ID_AREA_CUT}) {
        SCOPED_TRACE(id);
        emptyClipboard();
        openRaster(picture);
        SelectAreaCommand();
        drag(at(10, 10), at(15, 13));
        // Without the lower right corner, which is paper in the copy.
        move(at(15, 13), MK_CONTROL);
        drag(at(15, 13), at(13, 12), MK_CONTROL);
        command(id);
        test::DibBytes found = bitmapOnClipboard();
        ASSERT_GE(found.size(), wanted.size());
        found.resize(wanted.size()); // the system rounds the block's size up
        EXPECT_EQ(found, wanted);
        closeRaster();
    }
}

} // namespace
