// Handles and graphics objects over many lives of each tool.

#include "tests/module/afx/gdi_count.h"
#include "tests/module/mouse_tools/mouse_fixture.h"
#include "tools/CBaseRotateTool.h"
#include "tools/CEditPasteTool.h"
#include "tools/ToolMessageHook.h"

namespace {

class ToolHandles : public test::MouseFixture
{
protected:
    // One life: a drag over the image, which every tool takes in its own way, and the end by Escape.
    void live(const std::function<void()>& start)
    {
        start();
        ASSERT_NE(g_pArxApp->m_pTool, nullptr);
        CTool* tool = g_pArxApp->m_pTool;
        tool->UpdateCursor();
        tool->OnMouseMove(at(40, 30), 0);
        tool->OnLButtonDown(at(40, 30), 0);
        tool->OnMouseMove(at(44, 33), 0);
        tool->UpdateCursor();
        delete tool;
        ASSERT_EQ(ToolHookCount, 0);
    }
    static DWORD handles()
    {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return count;
    }
};

TEST_F(ToolHandles, TwoHundredLivesOfEveryToolLeaveNothingBehind)
{
    openRaster();
    putOnClipboard(CF_DIB, test::dibOf(test::blank(8, 4)));
    struct Case
    {
        const char* what;
        std::function<void()> start;
    };
    const Case cases[] = {
        {"pen", PenCommand},
        {"eraser", EraserCommand},
        {"line", LineCommand},
        {"area", SelectAreaCommand},
        {"paste", [] { (new CEditPasteTool)->Start(); }},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        for (int i = 0; i < 5; ++i) // what is made once for all is made now
            live(row.start);
        const int objects = gdiObjects();
        const DWORD before = handles();
        for (int i = 0; i < 200; ++i)
            live(row.start);
        EXPECT_LE(gdiObjects(), objects + 3);
        EXPECT_LE(handles(), before + 3);
    }
    g_pArxApp->DropRaster();
}

} // namespace
