// The rotate tools.

#include <cmath>

#include "tests/module/mouse_tools/mouse_fixture.h"
#include "tools/CFreeRotateTool.h"
#include "tools/RotateStart.h"
#include "tools/RotationGeometry.h"
#include "workerlink/SendToWorker.h"

namespace {

using test::blank;
using test::Picture;
using test::pictureInDrawing;

class Rotation : public test::MouseFixture
{
protected:
    void startTool(int code)
    {
        StartRotateToolLater(code);
        EXPECT_TRUE(test::pumpUntil([] { return g_pArxApp->m_pTool != nullptr; }));
    }
    std::string cursorAt(CPoint point)
    {
        g_pArxApp->m_pTool->OnMouseMove(point, 0);
        g_pArxApp->m_pTool->UpdateCursor();
        const HCURSOR shown = GetCursor();
        if (shown == LoadCursorW(nullptr, IDC_ARROW))
            return "handle";
        const auto is = [shown](UINT id) {
            return shown == LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id));
        };
        return is(151) ? "outside" : is(153) ? "box" : "another";
    }
    // Runs messages until a timer that was started last has come due, and with it all that were to come before.
    static void letPass(UINT milliseconds)
    {
        static bool due;
        due = false;
        const UINT_PTR timer = SetTimer(nullptr, 0, milliseconds, [](HWND, UINT, UINT_PTR, DWORD) { due = true; });
        EXPECT_TRUE(test::pumpUntil([] { return due; }));
        KillTimer(nullptr, timer);
    }
    CView* drawingView() override { return m_noView ? nullptr : MouseFixture::drawingView(); }
    void dragTo(CPoint from, CPoint to, UINT flags = 0)
    {
        drag(from, to, flags);
        ASSERT_NE(g_pArxApp->m_pTool, nullptr);
    }

    bool m_noView = false;
};

TEST(RotationGeometry, Directions)
{
    struct Case
    {
        CPoint to;
        double wanted;
    };
    const double pi = std::acos(-1.0);
    const Case cases[] = {
        {{7, 9}, 0},   {{17, 9}, 0},           {{17, 19}, pi / 4},    {{7, 19}, pi / 2},
        {{-3, 9}, pi}, {{-3, -1}, 5 * pi / 4}, {{7, -1}, 3 * pi / 2}, {{17, -1}, 7 * pi / 4},
    };
    for (const Case& row : cases)
        EXPECT_NEAR(DirectionOf({7, 9}, row.to), row.wanted, 1e-8) << row.to.x << "," << row.to.y;
    EXPECT_NEAR(DirectionOf({-2000000000, 0}, {2000000000, 0}), 0, 1e-8) << "as far apart as points can lie";
    EXPECT_NEAR(DistanceBetween({-2000000000, 0}, {2000000000, 0}), 4e9, 1);
}

TEST(RotationGeometry, AnglesBetweenDirections)
{
    struct Case
    {
        double a, b, wanted;
    };
    const Case cases[] = {
        {0, 1, 1},
        {1, 0, 1},
        {0.5, 6.0, 6.283185308 - 5.5},
        {0, 3.141592654, 3.141592654},
        {7, 1, 7.283185308 - 7},
        {13, 0.1, 12.9 - 2 * 6.283185308},
        {2, 2, 0},
    };
    for (const Case& row : cases)
        EXPECT_NEAR(AngleBetween(row.a, row.b), row.wanted, 1e-12) << row.a << " and " << row.b;
}

TEST(RotationGeometry, PointsOnACircleRoundTowardZeroAfterHalf)
{
    struct Case
    {
        CPoint centre;
        double angle, radius;
        CPoint wanted;
    };
    const Case cases[] = {
        {{100, 50}, 0, 10, {110, 50}},          {{100, 50}, 1.570796327, 10, {100, 60}},
        {{100, 50}, 3.141592654, 10, {90, 50}}, {{100, 50}, 0.7853981635, 5, {104, 54}}, // 103.54 and 53.54
        {{0, 0}, 3.141592654, 10, {-9, 0}},                                              // -9.5, toward zero
    };
    for (const Case& row : cases)
        EXPECT_TRUE(PointAt(row.centre, row.angle, row.radius) == row.wanted) << row.angle << " " << row.radius;
}

TEST(RotationGeometry, WhichWayTheArmsOpen)
{
    const double quarter = halfTurn / 2;
    EXPECT_FALSE(TurnsBackward(0, quarter));
    EXPECT_TRUE(TurnsBackward(quarter, 0));
    EXPECT_TRUE(TurnsBackward(0.1, 6.2));
    EXPECT_FALSE(TurnsBackward(6.2, 0.1));
    EXPECT_TRUE(TurnsBackward(1, 1));
}

TEST_F(Rotation, TheSelectedAreaTurnsAboutTheClickedPoint)
{
    struct Case
    {
        int code;
        CPoint wanted; // where pixel (50, 30) goes, about (40, 30)
    };
    for (const Case& row : {Case{0, {40, 40}}, Case{1, {40, 20}}, Case{2, {30, 30}}}) {
        SCOPED_TRACE(row.code);
        CAcraster& raster = openRaster(withInk({{50, 30}, {5, 5}}));
        raster.GetRegion().SetRectRgn(48, 28, 53, 33);
        startTool(row.code);
        move(at(40, 30));
        EXPECT_EQ(GetCursor(), LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(150)));
        command(40000);
        ASSERT_NE(g_pArxApp->m_pTool, nullptr) << "commands are swallowed";
        press(at(40, 30));
        EXPECT_EQ(pictureInDrawing(0), withInk({row.wanted, {5, 5}})) << "the rest of the image stays";
        ASSERT_NE(g_pArxApp->m_pTool, nullptr);
        release(at(40, 30));
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr) << "it ends once the button is up";
        EXPECT_EQ(selected(raster), 0);
        EXPECT_EQ(raster.GetLockCount(), 0);
        closeRaster();
    }
}

TEST_F(Rotation, HandlesLieAroundTheMiddleOfTheView)
{
    view().SetWindowPos(nullptr, 0, 0, 1200, 800, SWP_NOZORDER | SWP_NOACTIVATE);
    openRaster(blank(1200, 800));
    // One view pixel to an image pixel, and corner upon corner but for half a pixel.
    m_viewState = {1200, 800, {-40 + 600.5, 30 - 400.5, 0}, 800};
    startTool(RotateFreeWhole);
    ASSERT_EQ(g_pArxApp->m_pTool->ToolId(), 9);
    struct Case
    {
        CPoint point;
        const char* wanted;
    };
    const Case cases[] = {
        // Base point (500, 400), first arm (650, 300), second arm (700, 400).
        {{500, 400}, "handle"},
        {{496, 396}, "handle"},
        {{504, 404}, "handle"},
        {{495, 400}, "box"},
        {{505, 400}, "box"},
        {{500, 395}, "box"},
        {{500, 405}, "box"},
        {{650, 300}, "handle"},
        {{646, 304}, "handle"},
        {{655, 300}, "box"},
        {{700, 400}, "handle"},
        {{704, 404}, "handle"},
        {{695, 400}, "box"},
        // The box: 5 about the handles, and half of 180 about the base point for the arc.
        {{409, 400}, "box"},
        {{408, 400}, "outside"},
        {{704, 450}, "box"},
        {{705, 400}, "outside"},
        {{600, 295}, "box"},
        {{600, 294}, "outside"},
        {{600, 490}, "box"},
        {{600, 491}, "outside"},
    };
    for (const Case& row : cases)
        EXPECT_EQ(cursorAt(row.point), row.wanted) << row.point.x << "," << row.point.y;
}

// The handles' first places in the fixture's view, pressed near enough: pixels are 4 view pixels wide.
const CPoint nearBase(165, 148);
const CPoint nearFirstArm(214, 114);
const CPoint nearSecondArm(232, 148);

TEST_F(Rotation, TheAngleRunsFromTheFirstArmToTheSecond)
{
    struct Case
    {
        const char* what;
        CPoint first, second; // image pixels, about the base point (40, 30)
        CPoint wanted;        // where pixel (40, 22) goes
    };
    const Case cases[] = {
        {"a quarter turn", {52, 30}, {40, 42}, {48, 30}},
        {"three quarters", {40, 42}, {52, 30}, {32, 30}},
        {"half a turn", {52, 30}, {28, 30}, {40, 38}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        CAcraster& raster = openRaster(withInk({{40, 22}}));
        startTool(RotateFreeWhole);
        dragTo(nearBase, at(40, 30));
        dragTo(nearFirstArm, at(row.first.x, row.first.y));
        dragTo(nearSecondArm, at(row.second.x, row.second.y));
        EXPECT_EQ(cursorAt(at(row.first.x, row.first.y)), "handle");
        EXPECT_EQ(cursorAt(at(row.second.x, row.second.y)), "handle");
        command(ID_ROTATE_START);
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
        EXPECT_EQ(pictureInDrawing(0), withInk({row.wanted}));
        EXPECT_EQ(raster.GetLockCount(), 0);
        closeRaster();
    }
}

TEST_F(Rotation, AFreeTurnOfTheAreaLeavesTheRest)
{
    CAcraster& raster = openRaster(withInk({{40, 22}, {5, 5}}));
    raster.GetRegion().SetRectRgn(38, 20, 43, 25);
    startTool(RotateFreeSelection);
    dragTo(nearBase, at(40, 30));
    dragTo(nearFirstArm, at(52, 30));
    dragTo(nearSecondArm, at(40, 42));
    command(ID_ROTATE_START);
    EXPECT_EQ(pictureInDrawing(0), withInk({{48, 30}, {5, 5}}));
    EXPECT_EQ(selected(raster), 0);
}

TEST_F(Rotation, ShiftHoldsAnArmLevelOrUprightAndAMoveOnItsAxis)
{
    openRaster();
    startTool(RotateFreeWhole);
    dragTo(nearBase, at(40, 30));
    // Upright: at most as far to the side as up or down.
    dragTo(nearFirstArm, at(45, 15), MK_SHIFT);
    EXPECT_EQ(cursorAt(at(40, 15)), "handle");
    EXPECT_EQ(cursorAt(at(45, 15)), "box");
    dragTo(nearSecondArm, at(60, 25), MK_SHIFT);
    EXPECT_EQ(cursorAt(at(60, 30)), "handle");
    // The base point stays on the level of where it was taken.
    dragTo(at(40, 30), at(33, 34), MK_SHIFT);
    EXPECT_EQ(cursorAt(at(33, 30)), "handle");
    // All of them, by the box.
    dragTo(at(44, 24), at(47, 34), MK_SHIFT);
    EXPECT_EQ(cursorAt(at(33, 40)), "handle");
    EXPECT_EQ(cursorAt(at(40, 25)), "handle");
    EXPECT_EQ(cursorAt(at(60, 40)), "handle");
}

TEST_F(Rotation, WhereHandlesOverlapTheBasePointIsTaken)
{
    openRaster(withInk({{60, 22}}));
    startTool(RotateFreeWhole);
    dragTo(nearBase, at(40, 30));
    dragTo(nearFirstArm, at(40, 30));
    dragTo(at(40, 30), at(60, 30));
    dragTo(nearSecondArm, at(60, 20));
    // About the base point (60, 30), from the first arm at (40, 30) to the second: a quarter turn.
    command(ID_ROTATE_START);
    EXPECT_EQ(pictureInDrawing(0), withInk({{68, 30}}));
}

TEST_F(Rotation, TheDragFigureErasesItself)
{
    openRaster();
    startTool(RotateFreeWhole);
    for (const CPoint grip : {nearBase, nearFirstArm, nearSecondArm, CPoint(190, 140)}) {
        SCOPED_TRACE(grip.x);
        press(grip);
        const auto before = viewPixels();
        move(CPoint(120, 200));
        EXPECT_TRUE(viewPixels() != before);
        move(CPoint(300, 90));
        move(grip);
        EXPECT_TRUE(viewPixels() == before);
        release(grip);
    }
}

TEST_F(Rotation, EscapeInADragEndsTheToolAndTheDrag)
{
    openRaster();
    startTool(RotateFreeWhole);
    const auto before = viewPixels();
    press(nearBase);
    move(CPoint(120, 200));
    escape();
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_TRUE(viewPixels() == before) << "the view is drawn anew";
}

TEST_F(Rotation, EscapeWhileTheToolSettlesEndsIt)
{
    openRaster();
    StartRotateToolLater(RotateFreeWhole);
    // Once the hook stands, the tool is at its pumping.
    static bool posted;
    posted = false;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
        if (!posted && g_pArxApp->m_pTool) {
            posted = true;
            PostMessageW(acedGetAcadDwgView()->m_hWnd, WM_LBUTTONDOWN, 0, MAKELPARAM(165, 148));
            PostMessageW(acedGetAcadDwgView()->m_hWnd, WM_KEYDOWN, VK_ESCAPE, 0);
        }
    });
    EXPECT_TRUE(test::pumpUntil([] { return posted && !g_pArxApp->m_pTool; }));
    KillTimer(nullptr, timer);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Rotation, AProgramThatIsClosedWhileTheToolSettlesHearsOfIt)
{
    openRaster();
    PostQuitMessage(7);
    new CFreeRotateTool;
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT)
        ;
    EXPECT_EQ(message.message, UINT(WM_QUIT)) << "the desk's own loop would go on for ever";
    EXPECT_EQ(message.wParam, 7u);
}

TEST_F(Rotation, ARotationThatHasNotBegunGoesWithTheModule)
{
    openRaster();
    StartRotateToolLater(RotateHalf);
    delete g_pArxApp;
    g_pArxApp = new CArxApp; // a timer that is left would start the tool here
    letPass(220);
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
}

TEST_F(Rotation, NothingIsMadeForADrawingThatWasClosedBeforeItBegins)
{
    m_noView = true;
    static int faults; // of which the system says nothing when they happen in a timer
    faults = 0;
    const PVOID watch = AddVectoredExceptionHandler(1, [](EXCEPTION_POINTERS* exception) -> LONG {
        faults += exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION;
        return EXCEPTION_CONTINUE_SEARCH;
    });
    StartRotateToolLater(RotateFreeWhole);
    letPass(220);
    RemoveVectoredExceptionHandler(watch);
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
}

TEST_F(Rotation, AWorkerThatFailsLeavesTheImage)
{
    const Picture picture = withInk({{50, 30}});
    CAcraster& raster = openRaster(picture);
    raster.GetRegion().SetRectRgn(48, 28, 53, 33);
    SetWorkerPath(file("no worker.exe").c_str());
    startTool(RotateHalf);
    drag(at(40, 30), at(40, 30));
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(pictureInDrawing(0), picture);
}

} // namespace
