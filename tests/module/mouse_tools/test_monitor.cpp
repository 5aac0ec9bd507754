// The monitor timer, tick by tick.

#include <algorithm>

#include "module/start/SelectionInView.h"
#include "module/tools/RotateStart.h"
#include "tests/module/mouse_tools/monitor_fixture.h"

namespace {

class Monitor : public test::MonitorFixture
{
protected:
    void SetUp() override
    {
        MonitorFixture::SetUp();
        StartMonitorTimer();
    }
    // Eight pixels of the view's row from `x` on: 'w' white, '#' of another colour.
    std::string pattern(int x, int y)
    {
        const auto pixels = viewPixels();
        std::string text;
        for (int i = 0; i < 8; ++i)
            text += pixelOf(pixels, x + i, y) == 0xFFFFFF ? 'w' : '#';
        return text;
    }
    bool framesShown()
    {
        return std::ranges::any_of(viewPixels(), [](COLORREF pixel) { return pixel != 0xFFFFFF; });
    }
    void clearView() { view().RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); }
};

// How far a pattern has to run to the right, in steps, to become the other one.
int stepsBetween(const std::string& from, const std::string& to)
{
    for (int steps = 0; steps < 8; ++steps) {
        if (from.substr(8 - steps) + from.substr(0, 8 - steps) == to)
            return steps;
    }
    return -1;
}

TEST_F(Monitor, TheFrameOfTheRasterCrawlsOneWayAndTheSelectionsTheOther)
{
    CAcraster& raster = openRaster();
    raster.GetRegion().SetRectRgn(10, 10, 30, 30);
    tick();
    for (int i = 0; i < 9; ++i) {
        const std::string frame = pattern(100, 30);
        const std::string selection = pattern(100, 70);
        EXPECT_EQ(std::count(frame.begin(), frame.end(), '#'), 4) << frame;
        EXPECT_EQ(std::count(selection.begin(), selection.end(), '#'), 4) << selection;
        tick();
        EXPECT_EQ(stepsBetween(frame, pattern(100, 30)), 7) << "one to the left";
        EXPECT_EQ(stepsBetween(selection, pattern(100, 70)), 1) << "one to the right";
    }
    const auto pixels = viewPixels();
    const auto onEdge = [](CRect rect, CPoint point) {
        const bool inside = rect.PtInRect(point);
        rect.DeflateRect(1, 1);
        return inside && !rect.PtInRect(point);
    };
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 400; ++x) {
            const COLORREF frame = onEdge({40, 30, 360, 270}, {x, y})   ? RGB(0, 0, 255)
                                   : onEdge({80, 70, 160, 150}, {x, y}) ? RGB(255, 0, 0)
                                                                        : RGB(255, 255, 255);
            const COLORREF pixel = pixelOf(pixels, x, y);
            ASSERT_TRUE(pixel == frame || pixel == RGB(255, 255, 255)) << x << "," << y;
        }
    }
}

TEST_F(Monitor, ItSleepsDuringACommandAndGivesBackItsLocks)
{
    CAcraster& raster = openRaster();
    raster.Lock(1);
    tick();
    tick();
    EXPECT_EQ(raster.GetLockCount(), 1) << "it gives back the locks that it takes";
    raster.Unlock();
    const std::string before = pattern(100, 30);
    g_bInCommand = true;
    clearView();
    for (int i = 0; i < 3; ++i)
        tick();
    EXPECT_FALSE(framesShown());
    g_bInCommand = false;
    tick();
    EXPECT_EQ(stepsBetween(before, pattern(100, 30)), 7) << "it goes on where it stopped";
    EXPECT_EQ(raster.GetLockCount(), 0);
}

TEST_F(Monitor, ARasterThatIsGoneAndAPaperLayoutEndTheEditingInSilence)
{
    m_locksLeft = 1; // a lock that failed leaves the document locked
    openRaster();
    for (const bool erased : {false, true}) {
        SCOPED_TRACE(erased);
        standin::setSystemVariable(L"TILEMODE", std::int16_t(1));
        makeCurrent(0);
        tick();
        ASSERT_TRUE(framesShown());
        if (erased) {
            EXPECT_TRUE(standin::eraseEntity(test::imageHandle(0)));
        } else {
            EXPECT_TRUE(standin::setSystemVariable(L"TILEMODE", std::int16_t(0)));
        }
        clearView();
        tick();
        EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
        EXPECT_FALSE(framesShown());
        EXPECT_TRUE(m_alerts.empty());
    }
}

TEST_F(Monitor, AToolEndsWhenAnotherViewIsTheActiveOne)
{
    openRaster();
    PenCommand();
    tick();
    EXPECT_NE(g_pArxApp->m_pTool, nullptr);
    renewActiveView();
    tick();
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_NE(g_pArxApp->m_pRaster, nullptr) << "the drawing is the same";
}

TEST_F(Monitor, KeepsTheHandlesOfTheFreeRotationOnTheViewButInADrag)
{
    openRaster();
    const auto redPixels = [this] {
        const auto pixels = viewPixels();
        return std::count(pixels.begin(), pixels.end(), RGB(255, 0, 0));
    };
    StartRotateToolLater(RotateFreeWhole);
    ASSERT_TRUE(test::pumpUntil([&] { return redPixels() > 0; })) << "the handles are not shown";
    clearView();
    tick();
    EXPECT_GT(redPixels(), 0) << "what the host has painted over is not shown again";
    press(CPoint(165, 148)); // the base point
    EXPECT_EQ(redPixels(), 0) << "the handles at rest are left lying where the drag began";
    move(CPoint(120, 200));
    tick();
    EXPECT_EQ(redPixels(), 0) << "the drag's own figure is white on XOR, and nothing goes over it";
    release(CPoint(120, 200));
    tick();
    EXPECT_GT(redPixels(), 0);
}

TEST_F(Monitor, TheSelectionIsConvertedOnlyWhenItOrTheViewChanges)
{
    CAcraster& raster = openRaster();
    tick();
    unsigned before = SelectionConversions();
    const auto rebuilt = [&before] {
        tick();
        const unsigned count = SelectionConversions() - before;
        before += count;
        return count;
    };
    EXPECT_EQ(rebuilt(), 0u) << "nothing is selected";
    raster.GetRegion().SetRectRgn(10, 10, 30, 30);
    EXPECT_EQ(rebuilt(), 1u);
    EXPECT_EQ(rebuilt(), 0u);
    m_viewState.centre.x = 0.5; // 2 view pixels
    EXPECT_EQ(rebuilt(), 0u) << "within the tolerance";
    m_viewState.centre.x = 0.75; // 3 view pixels
    EXPECT_EQ(rebuilt(), 1u);
    EXPECT_EQ(rebuilt(), 0u);
    m_viewState.centre.x = 1.25; // another 2 from there
    EXPECT_EQ(rebuilt(), 0u);

    // A notch in the middle leaves the box as it is.
    CRgn notch;
    notch.CreateRectRgn(15, 15, 20, 20);
    raster.GetRegion().CombineRgn(&raster.GetRegion(), &notch, RGN_DIFF);
    EXPECT_EQ(rebuilt(), 1u);
    EXPECT_EQ(rebuilt(), 0u);
    // A notch elsewhere, of as many rectangles, is not noticed until the box moves.
    raster.GetRegion().SetRectRgn(10, 10, 30, 30);
    notch.SetRectRgn(16, 16, 21, 21);
    raster.GetRegion().CombineRgn(&raster.GetRegion(), &notch, RGN_DIFF);
    EXPECT_EQ(rebuilt(), 0u);

    raster.GetRegion().SetRectRgn(200, 200, 300, 300); // wholly outside the view
    EXPECT_EQ(rebuilt(), 1u);
    EXPECT_EQ(rebuilt(), 0u);
}

} // namespace
