// The line tool.

#include "tests/module/mouse_tools/mouse_fixture.h"
#include "tools/Stroke.h"

namespace {

using test::blank;
using test::Picture;
using test::pictureInDrawing;

class Lines : public test::MouseFixture
{
protected:
    void SetUp() override
    {
        MouseFixture::SetUp();
        LineWidth = 1;
    }
    Picture lineOf(CPoint from, CPoint to, UINT flags = 0)
    {
        openRaster();
        LineCommand();
        drag(from, to, flags);
        Picture picture = pictureInDrawing(0);
        closeRaster();
        return picture;
    }
};

TEST_F(Lines, ThePixelsOfALineComeAfterItsStart)
{
    EXPECT_EQ(
        lineOf(at(20, 10), at(30, 13)),
        withInk({{21, 10}, {22, 10}, {23, 10}, {24, 11}, {25, 11}, {26, 11}, {27, 12}, {28, 12}, {29, 12}, {30, 13}}));
    EXPECT_EQ(lineOf(at(20, 10), at(17, 7)), withInk({{19, 9}, {18, 8}, {17, 7}}));
    EXPECT_EQ(lineOf(at(20, 10), at(19, 14)), withInk({{20, 11}, {20, 12}, {20, 13}, {19, 14}}));
}

TEST_F(Lines, AWideLineCoversItsStart)
{
    LineWidth = 3;
    const Picture line = lineOf(at(20, 10), at(30, 10));
    Picture wanted = blank(80, 60);
    for (const int y : {9, 10, 11})
        wanted[y].replace(20, 12, "############");
    EXPECT_EQ(line, wanted);
}

TEST_F(Lines, ShiftHoldsTheLineLevelOrUpright)
{
    struct Case
    {
        int dx, dy; // view pixels
        Picture wanted;
    };
    const Case cases[] = {
        {12, 8, withInk({{21, 10}, {22, 10}, {23, 10}})},
        {8, 12, withInk({{20, 11}, {20, 12}, {20, 13}})},
        {12, 12, withInk({{20, 11}, {20, 12}, {20, 13}})}, // a tie
        {-12, 12, withInk({{20, 11}, {20, 12}, {20, 13}})},
        {-12, -8, withInk({{19, 10}, {18, 10}, {17, 10}})},
        {5, 5, withInk({{20, 11}})},
    };
    for (const Case& row : cases) {
        const CPoint start = at(20, 10);
        EXPECT_EQ(lineOf(start, CPoint(start.x + row.dx, start.y + row.dy), MK_SHIFT), row.wanted)
            << row.dx << "," << row.dy;
    }
}

TEST_F(Lines, AClickOrAShakeOfTheHandCommitsNothing)
{
    openRaster();
    LineCommand();
    // Three view pixels may well lead to another image pixel.
    for (const CSize shake : {CSize(0, 0), CSize(3, 0), CSize(0, 3), CSize(-3, 3)}) {
        drag(at(20, 10), at(20, 10) + shake);
        EXPECT_EQ(pictureInDrawing(0), blank(80, 60));
        EXPECT_TRUE(m_posted.empty()) << "a commit has the host refresh";
        EXPECT_EQ(GetCapture(), nullptr);
    }
    drag(at(20, 10), at(20, 10) + CSize(4, 0));
    EXPECT_EQ(pictureInDrawing(0), withInk({{21, 10}}));
    EXPECT_EQ(g_pArxApp->m_pRaster->GetLockCount(), 0);
}

TEST_F(Lines, TheRubberBandErasesItself)
{
    openRaster();
    LineCommand();
    press(at(20, 10));
    const auto before = viewPixels();
    move(at(20, 10) + CSize(3, 3));
    EXPECT_TRUE(viewPixels() == before) << "too short for a band";
    move(at(60, 33));
    const auto band = viewPixels();
    EXPECT_EQ(pixelOf(band, at(20, 10).x, at(20, 10).y), 0u) << "white turned over is black";
    move(at(10, 50));
    EXPECT_TRUE(viewPixels() != band);
    move(at(20, 10));
    EXPECT_TRUE(viewPixels() == before);
    release(at(20, 10));
}

TEST_F(Lines, AnEscapedLineIsGone)
{
    openRaster();
    LineCommand();
    press(at(20, 10));
    move(at(40, 20));
    escape();
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(pictureInDrawing(0), blank(80, 60));
}

} // namespace
