// Every way in which a tool ends, from every state that it can be in: nothing of it is left.
//
// Each state is given 60 lives, the first of them in turn with all endings, the rest with the quick ones. With
// HALVORAN_TOOL_LIVES set, each is given so many, all endings in turn and by the real clock.

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "module/raster/CCurentRaster.h"
#include "module/shell/CFloatingBar.h"
#include "module/start/CModuleApp.h"
#include "module/tools/CBaseRotateTool.h"
#include "module/tools/CEditPasteTool.h"
#include "module/tools/CFreeRotateTool.h"
#include "module/tools/CRasMenuTool.h"
#include "module/tools/ToolMessageHook.h"
#include "tests/module/mouse_tools/monitor_fixture.h"
#include "tests/module/support/held_objects.h"

namespace {

using test::HeldObjects;
using test::HookAndTimerWatch;

constexpr UINT unknownCommand = 40000;
// Of a view of 400 by 300.
const CPoint middle(200, 150);
const CPoint rotateBase(167, 150);

class ToolEndings;

// How far a tool has come when it ends.
struct ToolState
{
    const char* name;
    void (ToolEndings::*reach)();
    int toolId;
    bool pressed = false;       // the button is down, and the view has the mouse
    int timers = 0;             // of the tool's own
    int locksLeft = 0;          // of the raster, which an ending leaves on purpose
    bool takesCommands = false; // even those that it does not know
};

void PrintTo(const ToolState& state, std::ostream* out)
{
    *out << state.name;
}

class ToolEndings : public test::MonitorFixture, public ::testing::WithParamInterface<ToolState>
{
public:
    // --- States ---

    void pen() { PenCommand(); }
    void penStroke() { startAndDrag(PenCommand); }
    void eraser() { EraserCommand(); }
    void eraserStroke() { startAndDrag(EraserCommand); }
    void line() { LineCommand(); }
    void lineDrag() { startAndDrag(LineCommand); }
    void area() { SelectAreaCommand(); }
    void rubberBand() { startAndDrag(SelectAreaCommand); }
    void areaMove()
    {
        g_pArxApp->m_pRaster->GetRegion().SetRectRgn(10, 10, 60, 50);
        SelectAreaCommand();
        move(at(40, 30));
        press(at(40, 30));
        move(at(44, 35));
    }
    void paste() { start(new CEditPasteTool); }
    void pasteGrabbed()
    {
        paste();
        move(middle);
        press(middle);
    }
    void pasteRedrawing()
    {
        pasteGrabbed();
        move(CPoint(middle.x + 20, middle.y + 8));
    }
    void fixedRotation()
    {
        start(new CBaseRotateTool);
        move(middle);
    }
    void freeRotation()
    {
        start(new CFreeRotateTool);
        move(middle);
    }
    void freeRotationDrag()
    {
        freeRotation();
        press(rotateBase);
        move(CPoint(120, 200));
    }
    void selecting()
    {
        DropCurrentRaster();
        SelectRasterCommand();
        move(at(40, 30));
    }
    void selectingPressed()
    {
        selecting();
        press(at(40, 30));
    }
    void rasterMenu() { start(new CRasMenuTool); }

protected:
    void SetUp() override
    {
        MonitorFixture::SetUp();
        m_other.CreateEx(WS_EX_NOACTIVATE, L"STATIC", L"other", WS_POPUP, CRect(0, 0, 10, 10), nullptr, 0);
        openRaster();
        putOnClipboard(CF_DIB, test::dibOf(test::blank(40, 20)));
    }
    void TearDown() override
    {
        DropCurrentRaster();
        m_other.DestroyWindow();
        MonitorFixture::TearDown();
    }

    // --- Endings ---

    void atEscape() { escape(); }
    void atPressElsewhere() { pressOn(m_other, WM_LBUTTONDOWN); }
    void atRightPressElsewhere() { pressOn(m_other, WM_RBUTTONDOWN); }
    void atDoubleClickElsewhere() { pressOn(m_other, WM_LBUTTONDBLCLK); }
    void atPressOnToolbar()
    {
        CFloatingBar toolbar;
        toolbar.CreateEx(WS_EX_NOACTIVATE, L"STATIC", L"toolbar", WS_POPUP, CRect(0, 0, 10, 10), nullptr, 0);
        g_pArxApp->m_pToolbar = &toolbar;
        pressOn(toolbar, WM_LBUTTONDOWN);
        g_pArxApp->m_pToolbar = nullptr;
        toolbar.DestroyWindow();
    }
    void atAnotherTool()
    {
        if (g_pArxApp->m_pRaster) {
            LineCommand();
        } else {
            new CRasMenuTool;
        }
        EXPECT_NE(g_pArxApp->m_pTool, nullptr);
        EXPECT_EQ(HookAndTimerWatch::hooks(), 1) << "only the new tool's";
        EXPECT_EQ(HookAndTimerWatch::threadTimers(), 0);
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(test::toolTips(), 0);
        escape();
    }
    void atUnknownCommand()
    {
        command(unknownCommand);
        EXPECT_EQ(g_pArxApp->m_pTool != nullptr, state().takesCommands);
        if (state().takesCommands)
            escape();
    }
    void atErasureSeenByTheMonitor()
    {
        eraseImage();
        monitorTick();
        endWithoutRaster();
    }
    void atErasureSeenByTheMouse()
    {
        eraseImage();
        move(at(50, 40));
        endWithoutRaster();
    }
    void atPaperLayout()
    {
        ASSERT_TRUE(standin::setSystemVariable(L"TILEMODE", std::int16_t(0)));
        monitorTick();
        EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
        endWithoutRaster();
        ASSERT_TRUE(standin::setSystemVariable(L"TILEMODE", std::int16_t(1)));
    }
    void atOtherDrawing()
    {
        const standin::DrawingId own = standin::activeDrawing();
        ASSERT_FALSE(standin::addDrawing({}));
        monitorTick();
        EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
        EXPECT_EQ(standin::openObjects(), 0);
        endWithoutRaster();
        EXPECT_EQ(standin::documentLocks(), 0);
        standin::closeDrawing();
        EXPECT_EQ(standin::activeDrawing(), own);
    }
    void atClosedDrawing()
    {
        closeDrawing();
        move(at(50, 40));
        endWithoutRaster();
    }
    // The view goes with the drawing, and another one comes.
    void atClosedView()
    {
        closeDrawing();
        renewActiveView();
        if (state().timers == 0)
            move(at(50, 40));
        EXPECT_TRUE(test::pumpUntil([] { return !g_pArxApp->m_pTool; })) << "not even its own timer ended it";
    }
    void atStop()
    {
        delete g_pArxApp;
        g_pArxApp = new CModuleApp;
    }

    struct Ending
    {
        const char* name;
        void (ToolEndings::*end)();
        bool keepsRaster;
    };
    static constexpr Ending endings[] = {
        {"Escape", &ToolEndings::atEscape, true},
        {"a press elsewhere", &ToolEndings::atPressElsewhere, true},
        {"a right press elsewhere", &ToolEndings::atRightPressElsewhere, true},
        {"a double click elsewhere", &ToolEndings::atDoubleClickElsewhere, true},
        {"a press on the toolbar", &ToolEndings::atPressOnToolbar, true},
        {"another tool", &ToolEndings::atAnotherTool, true},
        {"an unknown command", &ToolEndings::atUnknownCommand, true},
        // Those from here on wait for a timer, or make windows anew.
        {"the image erased, seen by the monitor", &ToolEndings::atErasureSeenByTheMonitor, false},
        {"the image erased, seen by the mouse", &ToolEndings::atErasureSeenByTheMouse, false},
        {"a paper layout", &ToolEndings::atPaperLayout, false},
        {"another drawing", &ToolEndings::atOtherDrawing, false},
        {"a closed drawing", &ToolEndings::atClosedDrawing, false},
        {"a closed view", &ToolEndings::atClosedView, false},
        {"the module's stop", &ToolEndings::atStop, false},
    };

    static constexpr int quickEndings = 7;

    // One life, from the state to the ending; nothing of the tool is left then.
    void live(const Ending& ending)
    {
        SCOPED_TRACE(ending.name);
        prepare();
        (this->*state().reach)();
        expectState();
        if (HasFatalFailure())
            return;
        (this->*ending.end)();
        expectNothingLeft(ending);
        putBack();
    }
    // Some of the endings in turn, the first ones of the table.
    void liveOften(int lives, int endingCount = std::size(endings))
    {
        for (int i = 0; i < lives && !HasFailure(); ++i)
            live(endings[i % endingCount]);
    }
    static const ToolState& state() { return GetParam(); }

private:
    static void start(CTool* tool)
    {
        if (!tool->Start())
            delete tool;
    }
    template <typename Command> void startAndDrag(Command startTool)
    {
        startTool();
        move(at(40, 30));
        press(at(40, 30));
        move(at(44, 35));
    }
    void pressOn(CWnd& window, UINT message)
    {
        PostMessageW(window.m_hWnd, message, 0, MAKELPARAM(5, 5));
        test::pumpAll();
    }
    static void monitorTick()
    {
        StartMonitorTimer();
        tick();
        StopMonitorTimer();
    }

    void prepare()
    {
        if (!standin::drawingOpen())
            openRaster();
        else if (!g_pArxApp->m_pRaster)
            makeCurrent(0);
    }
    void expectState()
    {
        ASSERT_NE(g_pArxApp->m_pTool, nullptr);
        ASSERT_EQ(g_pArxApp->m_pTool->ToolId(), state().toolId);
        ASSERT_EQ(HookAndTimerWatch::hooks(), 1);
        ASSERT_EQ(HookAndTimerWatch::threadTimers(), state().timers);
        ASSERT_EQ(GetCapture(), state().pressed ? view().m_hWnd : nullptr);
        if (g_pArxApp->m_pRaster) {
            ASSERT_EQ(g_pArxApp->m_pRaster->GetLockCount(), state().locksLeft);
        }
    }
    // A stroke has the image open, and what is open the host does not erase.
    void eraseImage() { EXPECT_EQ(standin::eraseEntity(test::imageHandle(0)), state().locksLeft == 0); }
    // The tool outlives its raster, and lets go of the mouse like any other.
    void endWithoutRaster()
    {
        ASSERT_NE(g_pArxApp->m_pTool, nullptr);
        release(at(50, 40));
        EXPECT_EQ(GetCapture(), nullptr);
        escape();
    }
    void closeDrawing()
    {
        acrxEntryPoint(AcRx::kUnloadDwgMsg, nullptr);
        EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
        forgetEdits();
        standin::closeDrawing();
    }
    void expectNothingLeft(const Ending& ending)
    {
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr) << "the tool is still there";
        EXPECT_EQ(ToolHookCount, 0);
        EXPECT_EQ(HookAndTimerWatch::hooks(), 0) << "its hook is still set";
        EXPECT_EQ(HookAndTimerWatch::threadTimers(), 0) << "a timer still runs";
        EXPECT_EQ(GetCapture(), nullptr) << "the mouse is still captured";
        EXPECT_EQ(test::toolTips(), 0) << "its tip is still there";
        EXPECT_EQ(standin::selectionSets(), 0) << "its selection set was not freed";
        const CAcraster* raster = g_pArxApp->m_pRaster;
        const int locks = raster ? raster->GetLockCount() : 0;
        EXPECT_EQ(locks, ending.keepsRaster ? state().locksLeft : 0) << "locks of the raster";
        EXPECT_EQ(standin::openObjects(), locks > 0 ? 2 : 0) << "the raster's entity and its definition";
    }
    // For the next life. A lock that failed leaves the document locked.
    void putBack()
    {
        DropCurrentRaster();
        if (standin::drawingOpen() && standin::entityErased(test::imageHandle(0))) {
            EXPECT_LE(standin::documentLocks(), 1);
            while (standin::documentLocks() > 0)
                acDocManagerPtr()->unlockDocument(acDocManagerPtr()->curDocument());
            EXPECT_TRUE(standin::restoreEntity(test::imageHandle(0)));
        }
        m_posted.clear();
        ButtonClickTimer.reset();
    }

    CWnd m_other;
    HookAndTimerWatch m_watch;
};

TEST(HeldObjects, EveryKindIsCounted)
{
    const auto makeWindow = [] {
        return CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    };
    const HWND first = makeWindow(); // with which a window of the system's own may come
    const HeldObjects before = HeldObjects::now();
    const HGDIOBJ brush = CreateSolidBrush(0x123456);
    const HWND window = makeWindow();
    const BYTE mask[128] = {};
    const HCURSOR cursor = CreateCursor(nullptr, 0, 0, 32, 32, mask, mask);
    const HMENU menu = CreateMenu();
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const HeldObjects after = HeldObjects::now();
    EXPECT_GT(after.gdi, before.gdi);
    EXPECT_EQ(after.windows, before.windows + 1);
    EXPECT_EQ(after.cursors, before.cursors + 1);
    EXPECT_EQ(after.menus, before.menus + 1);
    EXPECT_EQ(after.handles, before.handles + 1);
    CloseHandle(event);
    DestroyMenu(menu);
    DestroyCursor(cursor);
    DestroyWindow(window);
    DestroyWindow(first);
    DeleteObject(brush);
}

TEST_P(ToolEndings, LeaveNothingBehind)
{
    constexpr int all = static_cast<int>(std::size(endings));
    const char* wanted = std::getenv("HALVORAN_TOOL_LIVES");
    const int lives = wanted ? std::atoi(wanted) : all;
    const int quickLives = wanted ? 0 : 60 - lives;
    std::optional<test::HastyClock> clock;
    if (!wanted)
        clock.emplace();

    liveOften(all); // what is made once for all is made now
    const HeldObjects before = HeldObjects::now();
    liveOften(lives);
    liveOften(quickLives, quickEndings);
    HeldObjects after = HeldObjects::now();
    // A request of an earlier test that no worker took lets its handles go in its own time, perhaps just now.
    after.handles = std::max(after.handles, before.handles);
    EXPECT_EQ(after, before) << "after " << lives + quickLives << " lives";
}

constexpr ToolState states[] = {
    {"Pen", &ToolEndings::pen, ToolIdPen},
    {"PenInStroke", &ToolEndings::penStroke, ToolIdPen, true, 0, 1},
    {"Eraser", &ToolEndings::eraser, ToolIdEraser},
    {"EraserInStroke", &ToolEndings::eraserStroke, ToolIdEraser, true, 0, 1},
    {"Line", &ToolEndings::line, ToolIdLine},
    {"LineInDrag", &ToolEndings::lineDrag, ToolIdLine, true},
    {"Area", &ToolEndings::area, ToolIdArea},
    {"AreaRubberBand", &ToolEndings::rubberBand, ToolIdArea, true},
    {"AreaInMove", &ToolEndings::areaMove, ToolIdArea, true},
    {"Paste", &ToolEndings::paste, ToolIdPaste},
    {"PasteGrabbed", &ToolEndings::pasteGrabbed, ToolIdPaste, true},
    {"PasteRedrawing", &ToolEndings::pasteRedrawing, ToolIdPaste, true, 1},
    {"FixedRotation", &ToolEndings::fixedRotation, ToolIdNone, false, 0, 0, true},
    {"FreeRotation", &ToolEndings::freeRotation, ToolIdFreeRotate},
    {"FreeRotationInDrag", &ToolEndings::freeRotationDrag, ToolIdFreeRotate, true},
    {"Selecting", &ToolEndings::selecting, ToolIdSelectRaster},
    {"SelectingPressed", &ToolEndings::selectingPressed, ToolIdSelectRaster},
    {"RasterMenu", &ToolEndings::rasterMenu, ToolIdNone},
};

INSTANTIATE_TEST_SUITE_P(, ToolEndings, ::testing::ValuesIn(states),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
