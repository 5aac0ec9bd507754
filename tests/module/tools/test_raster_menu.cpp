#include <map>

#include "module/base/CArxApp.h"
#include "module/tools/CRasMenuTool.h"
#include "module/tools/ToolMessageHook.h"
#include "tests/module/support/desk_fixture.h"

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
};

TEST_F(RasterMenu, EachItemPostsItsCommandAndEndsTheTool)
{
    const std::map<UINT, std::wstring> posted = {
        {32812, L"orvo_invert "}, {32813, L"orvo_fliph "},     {32814, L"orvo_flipv "},  {32815, L"orvo_despec "},
        {32816, L"orvo_fill "},   {32817, L"orvo_crop "},      {32818, L"orvo_change "}, {32822, L"orvo_rasprop "},
        {32823, L"orvo_rotate "}, {32825, L"orvo_rasterize "},
    };
    // No raster is current, so that of the others none has anything to do but the frames' one, 32832.
    for (UINT id = 32811; id <= 32831; ++id) {
        SCOPED_TRACE(id);
        m_posted.clear();
        EXPECT_TRUE(choose(id)) << "the host was kept from the item";
        const auto command = posted.find(id);
        const std::vector<std::wstring> none;
        EXPECT_EQ(m_posted,
                  command == posted.end() ? none : (std::vector<std::wstring>{L"CANCELCMD", command->second}));
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    }
}

TEST_F(RasterMenu, ShowAndTransparentTurnTheRastersStateOver)
{
    CAcraster& raster = openCurrent(test::blank(4, 2));
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
    int shown = 0;
    for (int time = 0; time < 2; ++time) {
        choose(32832);
        AcDbRasterVariables* variables = nullptr;
        ASSERT_EQ(AcDbRasterVariables::openRasterVariables(variables, AcDb::kForRead), Acad::eOk);
        shown += variables->imageFrame();
        variables->close();
    }
    EXPECT_EQ(shown, 1) << "off and on take turns";
    EXPECT_EQ(m_posted, (std::vector<std::wstring>{L"regen ", L"regen "}));
}

TEST_F(RasterMenu, APressInTheViewEndsTheToolWithoutAChange)
{
    openCurrent(test::blank(4, 2));
    for (const UINT press : {WM_LBUTTONDOWN, WM_RBUTTONDOWN}) {
        new CRasMenuTool;
        PostMessageW(view().m_hWnd, press, 0, 0);
        test::pumpAll();
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    }
    EXPECT_TRUE(g_pArxApp->m_pRaster);
    EXPECT_TRUE(m_posted.empty());
}

} // namespace
