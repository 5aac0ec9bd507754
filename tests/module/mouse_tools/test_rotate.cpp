// The rotate tools. What they turn, by which angle and about which point is played and checked to the pixel in the
// sessions.

#include <cmath>

#include "module/start/CModuleApp.h"
#include "module/tools/CFreeRotateTool.h"
#include "module/tools/RotateStart.h"
#include "module/tools/RotationGeometry.h"
#include "tests/module/mouse_tools/mouse_fixture.h"

namespace {

using test::blank;
using test::pictureInDrawing;

const double pi = std::acos(-1.0);

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

    bool m_noView = false;
};

TEST(RotationGeometry, DirectionsAndDistances)
{
    struct Case
    {
        CPoint to; // from (7, 9)
        double wanted;
    };
    for (const Case& row : {Case{{7, 9}, 0}, Case{{17, 9}, 0}, Case{{17, 19}, pi / 4}, Case{{7, 19}, pi / 2},
                            Case{{-3, 9}, pi}, Case{{-3, -1}, 5 * pi / 4}, Case{{17, -1}, 7 * pi / 4}})
        EXPECT_NEAR(DirectionOf({7, 9}, row.to), row.wanted, 1e-8) << row.to.x << "," << row.to.y;
    EXPECT_NEAR(DirectionOf({-2000000000, 0}, {2000000000, 0}), 0, 1e-8) << "as far apart as points can lie";
    EXPECT_NEAR(DistanceBetween({-2000000000, 0}, {2000000000, 0}), 4e9, 1);
}

TEST(RotationGeometry, AnglesBetweenDirectionsAndWhichWayTheyOpen)
{
    struct Case
    {
        double a, b, angle;
        bool backward;
    };
    for (const Case& row :
         {Case{0, pi / 2, pi / 2, false}, Case{pi / 2, 0, pi / 2, true}, Case{0.1, 6.2, 2 * pi - 6.1, true},
          Case{6.2, 0.1, 2 * pi - 6.1, false}, Case{0, 3.1, 3.1, false}, Case{1, 1, 0, true}}) {
        SCOPED_TRACE(testing::Message() << row.a << " and " << row.b);
        EXPECT_NEAR(AngleBetween(row.a, row.b), row.angle, 1e-8);
        EXPECT_EQ(TurnsBackward(row.a, row.b), row.backward);
    }
    EXPECT_NEAR(AngleBetween(13, 0.1), 12.9 - 4 * pi, 1e-8) << "more than a turn";
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

TEST_F(Rotation, AFixedTurnShowsItsCursorAndEndsOnceTheButtonIsUp)
{
    openRaster().GetRegion().SetRectRgn(48, 28, 53, 33);
    startTool(RotateHalf);
    move(at(40, 30));
    EXPECT_EQ(GetCursor(), LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(150)));
    press(at(40, 30));
    EXPECT_NE(g_pArxApp->m_pTool, nullptr);
    release(at(40, 30));
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(locks(), 0);
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
        const char* wanted;
        std::vector<CPoint> points;
    };
    // Base point (500, 400), first arm (650, 300), second arm (700, 400). The box lies 5 about the handles, and half of
    // 180 about the base point for the arc.
    const Case cases[] = {
        {"handle", {{500, 400}, {496, 396}, {504, 404}, {650, 300}, {646, 304}, {700, 400}, {704, 404}}},
        {"box", {{495, 400}, {505, 400}, {500, 395}, {500, 405}, {655, 300}, {695, 400}}},
        {"box", {{409, 400}, {704, 450}, {600, 295}, {600, 490}}},
        {"outside", {{408, 400}, {705, 400}, {600, 294}, {600, 491}}},
    };
    for (const Case& row : cases) {
        for (const CPoint& point : row.points)
            EXPECT_EQ(cursorAt(point), row.wanted) << point.x << "," << point.y;
    }
}

// The handles' first places in the fixture's view, pressed near enough: pixels are 4 view pixels wide.
const CPoint nearBase(165, 148);
const CPoint nearFirstArm(214, 114);
const CPoint nearSecondArm(232, 148);

TEST_F(Rotation, TheHandlesOfAnImageThatLiesAskewCanBeGrabbed)
{
    struct Case
    {
        double ux, uy; // drawing units of the u of a pixel
        CPoint outside;
    };
    // The view is 400 by 300: base point (167, 150), first arm (216, 117), second arm (233, 150).
    for (const Case& row : {Case{0.05, 0.05, {20, 20}}, Case{-0.05, 0.05, {20, 280}}, Case{0.02, -0.07, {380, 20}}}) {
        SCOPED_TRACE(testing::Message() << row.ux << ", " << row.uy);
        openCurrent(blank(400, 400), {.x = 0, .y = -10, .unitsPerPixel = row.ux, .uy = row.uy});
        startTool(RotateFreeWhole);
        for (const CPoint& handle : {CPoint(167, 150), CPoint(216, 117), CPoint(233, 150)})
            EXPECT_EQ(cursorAt(handle), "handle") << handle.x << "," << handle.y;
        EXPECT_EQ(cursorAt({200, 140}), "box");
        EXPECT_EQ(cursorAt(row.outside), "outside");
        closeRaster();
    }
}

TEST_F(Rotation, ATipThatIsUpIsTakenDownBeforeTheScreenIsSaved)
{
    openRaster();
    startTool(RotateFreeWhole);
    const CPoint place(60, 60);
    CPoint screen = place;
    view().ClientToScreen(&screen);
    SetCursorPos(screen.x, screen.y);
    // The second move brings the first one's text to the tip, which comes up when the mouse has rested for a while.
    move(place);
    move(place);
    HWND tip = nullptr;
    EXPECT_TRUE(test::pumpUntil([&] {
        tip = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr);
        while (tip && GetWindowThreadProcessId(tip, nullptr) != GetCurrentThreadId())
            tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr);
        return tip && IsWindowVisible(tip);
    }));
    m_viewState.viewHeight *= 2; // another view: the screen is saved anew
    CClientDC context(&view());
    static_cast<CFreeRotateTool*>(g_pArxApp->m_pTool)->DrawHandles(context);
    EXPECT_FALSE(IsWindowVisible(tip));
}

TEST_F(Rotation, WhereHandlesOverlapTheBasePointIsTaken)
{
    openRaster(withInk({{60, 22}}));
    startTool(RotateFreeWhole);
    drag(nearBase, at(40, 30));
    drag(nearFirstArm, at(40, 30));
    drag(at(40, 30), at(60, 30));
    drag(nearSecondArm, at(60, 20));
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
        expectDragErasesItself(grip);
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
    g_pArxApp = new CModuleApp; // a timer that is left would start the tool here
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

} // namespace
