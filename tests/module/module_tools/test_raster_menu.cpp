#include "host/CArxApp.h"
#include "tests/module/support/desk_fixture.h"
#include "tools/CRasMenuTool.h"
#include "tools/ToolMessageHook.h"

namespace {

class RasterMenu : public test::DeskFixture
{
protected:
    // Chooses a menu item as the menu's owner gets it, through the queue; whether the host saw it too.
    bool choose(UINT id)
    {
        new CRasMenuTool;
        // As if the last command were long ago.
        ButtonClickTimer.reset();
        test::waitForNextTimeStamp();
        PostMessageW(view().m_hWnd, WM_COMMAND, id, 0);
        bool seen = false;
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            seen = seen || message.message == WM_COMMAND;
        return seen;
    }
    int imageFrame() const
    {
        AcDbRasterVariables* variables = nullptr;
        if (AcDbRasterVariables::openRasterVariables(variables, AcDb::kForRead) != Acad::eOk)
            return -2;
        const int frame = variables->imageFrame();
        variables->close();
        return frame;
    }
};

TEST_F(RasterMenu, EachItemPostsItsCommandAndEndsTheTool)
{
    struct Case
    {
        UINT id;
        std::vector<std::wstring> posted;
    };
    const Case cases[] = {
        {32812, {L"CANCELCMD", L"orvo_invert "}},
        {32813, {L"CANCELCMD", L"orvo_fliph "}},
        {32814, {L"CANCELCMD", L"orvo_flipv "}},
        {32815, {L"CANCELCMD", L"orvo_despec "}},
        {32816, {L"CANCELCMD", L"orvo_fill "}},
        {32817, {L"CANCELCMD", L"orvo_crop "}},
        {32818, {L"CANCELCMD", L"orvo_change "}},
        {32822, {L"CANCELCMD", L"orvo_rasprop "}},
        {32823, {L"CANCELCMD", L"orvo_rotate "}},
        {32825, {L"CANCELCMD", L"orvo_rasterize "}},
        {32811, {}},
        {32819, {}},
        {32824, {}},
        {32833, {}},
        {32830, {}}, // no raster is current
        {32831, {}},
    };
    for (const Case& row : cases) {
        m_posted.clear();
        EXPECT_TRUE(choose(row.id)) << "the host was kept from item " << row.id;
        EXPECT_EQ(m_posted, row.posted) << "item " << row.id;
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr) << "item " << row.id;
    }
}

TEST_F(RasterMenu, ShowAndTransparentTurnTheRastersStateOver)
{
    openDrawing({test::blank(4, 2)});
    CAcraster& raster = makeCurrent(0);
    ASSERT_TRUE(raster.IsShown());
    ASSERT_FALSE(raster.IsTransparent());
    for (const bool on : {false, true}) {
        choose(32830);
        choose(32831);
        raster.Lock(0);
        EXPECT_EQ(raster.IsShown(), on);
        EXPECT_EQ(raster.IsTransparent(), !on);
        raster.Unlock();
    }
    EXPECT_EQ(m_posted, std::vector<std::wstring>(4, L"\t")) << "each is committed";
    EXPECT_EQ(raster.GetLockCount(), 0);
}

TEST_F(RasterMenu, ShowFramesTurnsTheDrawingsSettingOver)
{
    openDrawing({test::blank(4, 2)});
    choose(32832);
    const int first = imageFrame();
    choose(32832);
    const int second = imageFrame();
    EXPECT_EQ(first + second, 1) << "off and on take turns";
    EXPECT_EQ(m_posted, (std::vector<std::wstring>{L"regen ", L"regen "}));
}

TEST_F(RasterMenu, APressInTheViewEndsTheToolWithoutAChange)
{
    openDrawing({test::blank(4, 2)});
    makeCurrent(0);
    for (const UINT press : {WM_LBUTTONDOWN, WM_RBUTTONDOWN}) {
        auto* tool = new CRasMenuTool;
        EXPECT_EQ(tool->ToolId(), 0);
        tool->m_bBusy = true;
        PostMessageW(view().m_hWnd, press, 0, 0);
        test::pumpAll();
        EXPECT_EQ(g_pArxApp->m_pTool, tool) << "the press belongs to the menu while that is up";
        tool->m_bBusy = false;
        PostMessageW(view().m_hWnd, press, 0, 0);
        test::pumpAll();
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    }
    EXPECT_TRUE(g_pArxApp->m_pRaster);
    EXPECT_TRUE(m_posted.empty());
}

} // namespace
