// The pen and the eraser.

#include <algorithm>
#include <stdexcept>

#include "standin/atil/image.h"
#include "tests/module/mouse_tools/mouse_fixture.h"
#include "tools/Stroke.h"

namespace {

using test::blank;
using test::Picture;
using test::pictureInDrawing;

class Strokes : public test::MouseFixture
{
protected:
    static int locks() { return g_pArxApp->m_pRaster->GetLockCount(); }

    void postCommandText(const std::wstring& text) override
    {
        if (m_refuseCommands)
            throw std::runtime_error("the host takes no command");
        MouseFixture::postCommandText(text);
    }

    bool m_refuseCommands = false;
};

// A painter in whole numbers, square by square and pixel by pixel.
class SlowPainter
{
public:
    explicit SlowPainter(Picture picture) : m_picture(std::move(picture)) {}

    void stamp(int x, int y, int side, char colour)
    {
        for (int dy = 0; dy < side; ++dy) {
            for (int dx = 0; dx < side; ++dx)
                put(x - side / 2 + dx, y - side / 2 + dy, colour);
        }
    }
    void stroke(CPoint from, CPoint to, int side, char colour)
    {
        const int width = std::abs(to.x - from.x);
        const int height = std::abs(to.y - from.y);
        const int longer = std::max(width, height);
        for (int i = 1; i <= longer; ++i)
            stamp(from.x + (to.x < from.x ? -1 : 1) * static_cast<int>(1LL * i * width / longer),
                  from.y + (to.y < from.y ? -1 : 1) * static_cast<int>(1LL * i * height / longer), side, colour);
    }
    const Picture& picture() const { return m_picture; }

private:
    void put(int x, int y, char colour)
    {
        if (y >= 0 && y < int(m_picture.size()) && x >= 0 && x < int(m_picture[0].size()))
            m_picture[y][x] = colour;
    }

    Picture m_picture;
};

TEST_F(Strokes, OffsetsAcrossAStrokeRoundDownward)
{
    openRaster();
    PenWidth = 1;
    PenCommand();
    drag(at(5, 5), at(15, 8));
    Picture wanted = blank(80, 60);
    wanted[5].replace(5, 4, "####");
    wanted[6].replace(9, 3, "###");
    wanted[7].replace(12, 3, "###");
    wanted[8][15] = '#';
    EXPECT_EQ(pictureInDrawing(0), wanted);
}

TEST_F(Strokes, EveryDirectionPaintsWhatTheSlowPainterPaints)
{
    const CPoint path[] = {{40, 30}, {50, 40}, {50, 20}, {30, 20}, {27, 31}, {44, 25}, {44, 26},
                           {0, 0},   {79, 59}, {79, 0},  {3, 41},  {10, 34}, {1, 58}};
    for (const int side : {1, 2, 3, 4, 7}) {
        SCOPED_TRACE(side);
        openRaster();
        PenWidth = side;
        PenCommand();
        SlowPainter painter(blank(80, 60));
        press(at(path[0].x, path[0].y));
        painter.stamp(path[0].x, path[0].y, side, '#');
        for (size_t i = 1; i < std::size(path); ++i) {
            move(at(path[i].x, path[i].y));
            painter.stroke(path[i - 1], path[i], side, '#');
        }
        EXPECT_EQ(pictureInDrawing(0), blank(80, 60)) << "nothing is committed before the button comes up";
        release(at(1, 58));
        EXPECT_EQ(pictureInDrawing(0), painter.picture());
        EXPECT_EQ(locks(), 0);
        closeRaster();
    }
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
        SlowPainter painter(blank(80, 60));
        CPoint last;
        for (const CPoint& point : path) {
            raster.Lock(0);
            const CPoint pixel =
                raster.ViewToPixel({point.x < 0 ? point.x + 65536 : point.x, point.y < 0 ? point.y + 65536 : point.y});
            raster.Unlock();
            if (point == path[0]) {
                press(point);
                painter.stamp(pixel.x, pixel.y, 3, '#');
            } else {
                move(point);
                painter.stroke(last, pixel, 3, '#');
            }
            last = pixel;
        }
        release(path[0]);
        EXPECT_EQ(pictureInDrawing(0), painter.picture());
        closeRaster();
    }
}

TEST_F(Strokes, AStrokeBesideTheImageShowsOnTheViewUntilTheCommit)
{
    openRaster();
    m_viewState.viewHeight = 300; // one view pixel to an image pixel, so that most of the view lies beside the image
    PenCommand();
    const auto before = viewPixels();
    press(CPoint(20, 20));
    move(CPoint(50, 20));
    auto wanted = before;
    for (int y = 19; y <= 21; ++y)
        std::fill_n(wanted.begin() + y * 400 + 19, 33, 0u);
    const auto shown = viewPixels();
    int differ = 0;
    for (size_t i = 0; i < shown.size(); ++i)
        differ += shown[i] != wanted[i];
    EXPECT_EQ(differ, 0) << "3 by 33 view pixels are black";
    release(CPoint(50, 20));
    EXPECT_EQ(pictureInDrawing(0), blank(80, 60));
}

TEST_F(Strokes, AtAZoomWhereTheImageIsAPointAStrokeIsAsQuick)
{
    openRaster();
    m_viewState = {400, 300, {0.5, -0.5, 0}, 3e8}; // a million image pixels to a view pixel
    PenCommand();
    press(CPoint(200, 150));
    move(CPoint(380, 150));
    release(CPoint(380, 150));
    Picture wanted = blank(80, 60);
    for (int y = 29; y <= 31; ++y)
        wanted[y].replace(39, 41, std::string(41, '#'));
    EXPECT_EQ(pictureInDrawing(0), wanted);
}

TEST_F(Strokes, AClickPaintsOneStampAndTheToolStaysForTheNext)
{
    openRaster();
    PenCommand();
    drag(at(0, 0), at(0, 0));
    PenWidth = 4;
    drag(at(10, 10), at(10, 10));
    SlowPainter painter(blank(80, 60));
    for (int y = 0; y <= 1; ++y) {
        for (int x = 0; x <= 1; ++x)
            painter.stamp(x, y, 1, '#');
    }
    for (int y = 8; y <= 11; ++y) {
        for (int x = 8; x <= 11; ++x)
            painter.stamp(x, y, 1, '#');
    }
    EXPECT_EQ(pictureInDrawing(0), painter.picture());
    ASSERT_NE(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(g_pArxApp->m_pTool->ToolId(), 3);
}

TEST_F(Strokes, TheViewShowsTheStampAtOnce)
{
    openRaster();
    PenCommand();
    press(at(10, 10));
    const auto pixels = viewPixels();
    // Pixels 9 to 11 both ways.
    EXPECT_EQ(pixelOf(pixels, 76, 66), 0u);
    EXPECT_EQ(pixelOf(pixels, 87, 77), 0u);
    EXPECT_EQ(pixelOf(pixels, 75, 66), 0xFFFFFFu);
    EXPECT_EQ(pixelOf(pixels, 88, 77), 0xFFFFFFu);
    EXPECT_EQ(pixelOf(pixels, 87, 78), 0xFFFFFFu);
    EXPECT_EQ(GetCapture(), view().m_hWnd);
    EXPECT_EQ(locks(), 1) << "one lock for the whole stroke";
    release(at(10, 10));
    EXPECT_EQ(GetCapture(), nullptr);
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
        EXPECT_EQ(Atil::Image::wholeCopies(), before + 1) << "moves copy nothing";
        release(at(50, 10));
        EXPECT_EQ(Atil::Image::wholeCopies(), before + 1) << "nor does the commit";
    }
}

TEST_F(Strokes, AStampIsNoWiderOnScreenThanTheLargestCursor)
{
    struct Case
    {
        double viewHeight; // drawing units for 300 view pixels
        int side;
    };
    const Case cases[] = {
        {300, 10}, // 31 image pixels
        {30, 3},   // 3.1
        {60, 6},   // 6.2
        {7.5, 0},  // 0.775
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.viewHeight);
        openRaster();
        // The view's top left corner lies just inside image pixel (20, 20).
        const double unit = row.viewHeight / 300;
        m_viewState = {400, 300, {-19.9 + 200 * unit, 9.9 - 150 * unit, 0}, row.viewHeight};
        PenWidth = 10;
        PenCommand();
        const int reach = std::min(200, static_cast<int>(20 / unit)); // 20 pixels further, or the view's middle
        const CPoint middle(reach, reach);
        drag(middle, middle);
        int ink = 0;
        for (const std::string& line : pictureInDrawing(0))
            ink += static_cast<int>(std::count(line.begin(), line.end(), '#'));
        EXPECT_EQ(ink, row.side * row.side);
        closeRaster();
    }
}

TEST_F(Strokes, TheCursorsSquareStopsAtTheCursorsSize)
{
    CAcraster& raster = openRaster();
    raster.Lock(0);
    EXPECT_EQ(CursorHalfSize(raster, 10), 15) << "40 view pixels";
    EXPECT_EQ(CursorHalfSize(raster, 3), 6);
    EXPECT_EQ(CursorHalfSize(raster, 7), 14);
    EXPECT_EQ(CursorHalfSize(raster, 8), 15);
    m_viewState.viewHeight = 600; // half a view pixel to an image pixel
    EXPECT_EQ(CursorHalfSize(raster, 2), 0);
    EXPECT_EQ(CursorHalfSize(raster, 10), 2);
    m_viewState = {400, 300, {-35, 25, 0}, 1e-8}; // the middle of the ten pixels, far beyond what an int can count
    EXPECT_EQ(CursorHalfSize(raster, 10), 15);
    raster.Unlock();
}

TEST_F(Strokes, TheEraserPaintsBackgroundWhateverThePensColourIs)
{
    const Picture black(60, std::string(80, '#'));
    openRaster(black);
    EraserWidth = 4;
    EraserCommand();
    drag(at(20, 20), at(24, 30));
    SlowPainter painter(black);
    painter.stamp(20, 20, 4, '.');
    painter.stroke({20, 20}, {24, 30}, 4, '.');
    EXPECT_EQ(pictureInDrawing(0), painter.picture());
    EXPECT_EQ(g_pArxApp->m_pTool->ToolId(), 5);
}

TEST_F(Strokes, AWhitePenErases)
{
    openRaster(Picture(60, std::string(80, '#')));
    PenColor = 0xFFFFFF;
    PenCommand();
    drag(at(20, 20), at(20, 20));
    SlowPainter painter(Picture(60, std::string(80, '#')));
    painter.stamp(20, 20, 3, '.');
    EXPECT_EQ(pictureInDrawing(0), painter.picture());
}

TEST_F(Strokes, MovesWithoutTheButtonPaintNothing)
{
    openRaster();
    PenCommand();
    move(at(10, 10));
    move(at(20, 20));
    release(at(20, 20));
    EXPECT_EQ(pictureInDrawing(0), blank(80, 60));
    EXPECT_EQ(locks(), 0);
}

TEST_F(Strokes, APenThatEndsInMidStrokeLeavesItsLockAndItsStamps)
{
    openRaster();
    PenCommand();
    press(at(10, 10));
    escape();
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(locks(), 1);
    EXPECT_EQ(pictureInDrawing(0), blank(80, 60)) << "the stamps are not committed";

    // The next stroke works on the same copy, so its commit brings them along.
    PenCommand();
    drag(at(40, 40), at(40, 40));
    SlowPainter painter(blank(80, 60));
    painter.stamp(10, 10, 3, '#');
    painter.stamp(40, 40, 3, '#');
    EXPECT_EQ(pictureInDrawing(0), painter.picture());
    EXPECT_EQ(locks(), 1);
    g_pArxApp->DropRaster();
    EXPECT_EQ(standin::openObjects(), 0) << "the lock goes with the raster";
}

TEST_F(Strokes, ARasterThatGoesInMidStrokeEndsInSilence)
{
    openRaster();
    PenCommand();
    press(at(10, 10));
    g_pArxApp->DropRaster();
    move(at(20, 20));
    release(at(20, 20));
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
    EXPECT_TRUE(m_posted.empty()) << "a commit has the host refresh";
    ASSERT_NE(g_pArxApp->m_pTool, nullptr);
    press(at(20, 20));
    release(at(20, 20));
    EXPECT_EQ(m_alerts.size(), 0u);
}

TEST_F(Strokes, AStrokeWhoseEndWasMissedDoesNotReachForARasterThatHasGone)
{
    openRaster();
    PenCommand();
    press(at(10, 10)); // the release goes to another program
    makeCurrent(0);
    press(at(20, 20));
    release(at(20, 20));
    SlowPainter painter(blank(80, 60));
    painter.stamp(20, 20, 3, '#');
    EXPECT_EQ(pictureInDrawing(0), painter.picture());
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

TEST_F(Strokes, WithoutARasterNoToolStarts)
{
    openDrawing({});
    for (const auto start : {PenCommand, EraserCommand, LineCommand, SelectAreaCommand}) {
        start();
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    }
}

} // namespace
