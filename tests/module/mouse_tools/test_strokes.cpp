// The pen, the eraser and the line. What they paint at each zoom, and however the image is placed, is played and
// checked to the pixel in the sessions; here is what only the module itself can tell.

#include <algorithm>
#include <stdexcept>

#include "module/raster/CCurentRaster.h"
#include "module/tools/Stroke.h"
#include "standin/atil/image.h"
#include "tests/module/mouse_tools/mouse_fixture.h"

namespace {

using test::blank;
using test::Picture;
using test::pictureInDrawing;

class Strokes : public test::MouseFixture
{
protected:
    void postCommandText(const std::wstring& text) override
    {
        if (m_refuseCommands)
            throw std::runtime_error("the host takes no command");
        MouseFixture::postCommandText(text);
    }

    bool m_refuseCommands = false;
};

// A painter in whole numbers, square by square and pixel by pixel, 3 pixels wide.
class SlowPainter
{
public:
    void stamp(CPoint middle)
    {
        for (int y = middle.y - 1; y <= middle.y + 1; ++y) {
            for (int x = middle.x - 1; x <= middle.x + 1; ++x) {
                if (y >= 0 && y < 60 && x >= 0 && x < 80)
                    m_picture[y][x] = '#';
            }
        }
    }
    void stroke(CPoint from, CPoint to)
    {
        const int width = std::abs(to.x - from.x);
        const int height = std::abs(to.y - from.y);
        const int longer = std::max(width, height);
        for (int i = 1; i <= longer; ++i)
            stamp({from.x + (to.x < from.x ? -1 : 1) * static_cast<int>(1LL * i * width / longer),
                   from.y + (to.y < from.y ? -1 : 1) * static_cast<int>(1LL * i * height / longer)});
    }
    const Picture& picture() const { return m_picture; }

private:
    Picture m_picture = blank(80, 60);
};

Picture stamps(std::initializer_list<CPoint> middles)
{
    SlowPainter painter;
    for (const CPoint& middle : middles)
        painter.stamp(middle);
    return painter.picture();
}

TEST_F(Strokes, AMouseHeldLeftOfOrAboveTheViewPaintsWhatLiesOnTheWayToItsLargeCoordinates)
{
    // In view pixels; what lies left of or above the view arrives 65536 further.
    const CPoint path[] = {{200, 150}, {-20, 140}, {190, 160}, {210, -1}, {195, 140}, {-3, -40}, {205, 148}};
    for (const double viewHeight : {75.0, 300.0, 1200.0}) {
        SCOPED_TRACE(viewHeight);
        CAcraster& raster = openRaster();
        m_viewState = {400, 300, {0.5, -0.5, 0}, viewHeight};
        PenCommand();
        SlowPainter painter;
        CPoint last;
        for (const CPoint& point : path) {
            raster.Lock(0);
            const CPoint pixel =
                raster.ViewToPixel({point.x < 0 ? point.x + 65536 : point.x, point.y < 0 ? point.y + 65536 : point.y});
            raster.Unlock();
            if (point == path[0]) {
                press(point);
                painter.stamp(pixel);
            } else {
                move(point);
                painter.stroke(last, pixel);
            }
            last = pixel;
        }
        EXPECT_EQ(pictureInDrawing(0), blank(80, 60)) << "nothing is committed before the button comes up";
        release(path[0]);
        EXPECT_EQ(pictureInDrawing(0), painter.picture());
        EXPECT_EQ(locks(), 0);
        closeRaster();
    }
}

TEST_F(Strokes, AStrokeShowsOnTheViewAtOnceEvenBesideTheImage)
{
    openRaster();
    m_viewState.viewHeight = 300; // one view pixel to an image pixel, so that most of the view lies beside the image
    PenCommand();
    auto wanted = viewPixels();
    press(CPoint(20, 20));
    EXPECT_EQ(GetCapture(), view().m_hWnd);
    EXPECT_EQ(locks(), 1) << "one lock for the whole stroke";
    move(CPoint(380, 20));
    for (int y = 19; y <= 21; ++y)
        std::fill_n(wanted.begin() + y * 400 + 19, 363, 0u);
    EXPECT_TRUE(viewPixels() == wanted) << "3 by 363 view pixels are black";
    release(CPoint(380, 20));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(pictureInDrawing(0), blank(80, 60));
}

TEST_F(Strokes, AtAZoomWhereTheImageIsAPointAStrokeIsAsQuick)
{
    openRaster();
    m_viewState = {400, 300, {0.5, -0.5, 0}, 3e8}; // a million image pixels to a view pixel
    PenCommand();
    drag(CPoint(200, 150), CPoint(380, 150));
    Picture wanted = blank(80, 60);
    for (int y = 29; y <= 31; ++y)
        wanted[y].replace(39, 41, std::string(41, '#'));
    EXPECT_EQ(pictureInDrawing(0), wanted);
}

TEST_F(Strokes, AStampHasTheWidthAndTheColourOfTheMoment)
{
    openRaster();
    PenCommand();
    drag(at(10, 10), at(10, 10));
    PenWidth = 2;
    PenColor = 0xFFFFFF;
    drag(at(10, 10), at(10, 10));
    EXPECT_EQ(pictureInDrawing(0), withInk({{11, 9}, {11, 10}, {9, 11}, {10, 11}, {11, 11}}));
}

TEST_F(Strokes, TheCursorsSquareStopsAtTheCursorsSizeAtTheNearestZoomToo)
{
    CAcraster& raster = openRaster();
    raster.Lock(0);
    EXPECT_EQ(CursorHalfSize(raster, 7), 14);
    EXPECT_EQ(CursorHalfSize(raster, 8), 15);
    m_viewState = {400, 300, {-35, 25, 0}, 1e-8}; // the middle of the ten pixels, far beyond what an int can count
    EXPECT_EQ(CursorHalfSize(raster, 10), 15);
    raster.Unlock();
}

TEST_F(Strokes, TheImageIsCopiedOnceForAStrokeHoweverLongItIs)
{
    openRaster();
    g_pArxApp->m_pRaster->KeepLoaded();
    for (const auto start : {PenCommand, EraserCommand}) {
        start();
        const std::uint64_t before = Atil::Image::wholeCopies();
        press(at(10, 10));
        EXPECT_EQ(Atil::Image::wholeCopies(), before + 1) << "the working image becomes its own at the first stamp";
        for (int i = 11; i < 50; ++i)
            move(at(i, 10 + i % 7));
        release(at(50, 10));
        EXPECT_EQ(Atil::Image::wholeCopies(), before + 1) << "neither moves nor the commit copy anything";
    }
}

TEST_F(Strokes, APenThatEndsInMidStrokeLeavesItsLockAndItsStamps)
{
    openRaster();
    PenCommand();
    press(at(10, 10));
    escape();
    EXPECT_EQ(locks(), 1);
    EXPECT_EQ(pictureInDrawing(0), blank(80, 60)) << "the stamps are not committed";

    // The next stroke works on the same copy, so its commit brings them along.
    PenCommand();
    drag(at(40, 40), at(40, 40));
    EXPECT_EQ(pictureInDrawing(0), stamps({{10, 10}, {40, 40}}));
    EXPECT_EQ(locks(), 1);
    DropCurrentRaster();
    EXPECT_EQ(standin::openObjects(), 0) << "the lock goes with the raster";
}

TEST_F(Strokes, ARasterThatGoesInMidStrokeEndsInSilence)
{
    openRaster();
    PenCommand();
    press(at(10, 10));
    DropCurrentRaster();
    move(at(20, 20));
    release(at(20, 20));
    EXPECT_TRUE(m_posted.empty()) << "a commit has the host refresh";
    ASSERT_NE(g_pArxApp->m_pTool, nullptr);
    drag(at(20, 20), at(20, 20));
    EXPECT_EQ(m_alerts.size(), 0u);
}

TEST_F(Strokes, AStrokeWhoseEndWasMissedDoesNotReachForARasterThatHasGone)
{
    openRaster();
    PenCommand();
    press(at(10, 10)); // the release goes to another program
    makeCurrent(0);
    drag(at(20, 20), at(20, 20));
    EXPECT_EQ(pictureInDrawing(0), stamps({{20, 20}}));
    EXPECT_EQ(locks(), 0);
}

TEST_F(Strokes, ACommitThatFailsGivesTheLockBack)
{
    openRaster();
    PenCommand();
    press(at(10, 10));
    m_refuseCommands = true;
    EXPECT_THROW(g_pArxApp->m_pTool->OnLButtonUp(at(10, 10), 0), std::runtime_error);
    m_refuseCommands = false;
    EXPECT_EQ(locks(), 0);
}

TEST_F(Strokes, ALineThatIsAClickOrAShakeOfTheHandCommitsNothing)
{
    openRaster();
    LineWidth = 1;
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
    EXPECT_EQ(locks(), 0);

    // Nor does it lock anything, by which it would find out that the image has gone.
    standin::eraseEntity(test::imageHandle(0));
    drag(at(20, 10), at(20, 10) + CSize(3, 0));
    EXPECT_NE(g_pArxApp->m_pRaster, nullptr);
    DropCurrentRaster();
}

TEST_F(Strokes, TheBandOfALineErasesItself)
{
    openRaster();
    LineCommand();
    expectDragErasesItself(at(20, 10), CSize(3, 3));
}

TEST_F(Strokes, WithoutARasterNoToolStarts)
{
    openDrawing({});
    for (const auto start : {PenCommand, EraserCommand, LineCommand, SelectAreaCommand}) {
        start();
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    }
}

} // namespace
