// Handles and graphics objects over many lives of each tool.

#include "tests/module/afx/gdi_count.h"
#include "tests/module/mouse_tools/mouse_fixture.h"
#include "tools/CBaseRotateTool.h"
#include "tools/CEditPasteTool.h"
#include "tools/CFreeRotateTool.h"
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
        if (!tool->IsKindOf(RUNTIME_CLASS(CBaseRotateTool))) // a press would turn the image by the worker
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

TEST_F(ToolHandles, ManyLivesOfEveryToolLeaveNothingBehind)
{
    openRaster();
    putOnClipboard(CF_DIB, test::dibOf(test::blank(8, 4)));
    struct Case
    {
        const char* what;
        std::function<void()> start;
        int lives = 200;
    };
    const Case cases[] = {
        {"pen", PenCommand},
        {"eraser", EraserCommand},
        {"line", LineCommand},
        {"area", SelectAreaCommand},
        {"paste", [] { (new CEditPasteTool)->Start(); }},
        {"fixed rotation", [] { (new CBaseRotateTool)->Start(); }, 200},
        {"free rotation", [] { (new CFreeRotateTool)->Start(); }, 15}, // each settles for a third of a second
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        for (int i = 0; i < 5; ++i) // what is made once for all is made now
            live(row.start);
        const int objects = gdiObjects();
        const DWORD before = handles();
        for (int i = 0; i < row.lives; ++i)
            live(row.start);
        EXPECT_LE(gdiObjects(), objects + 3);
        EXPECT_LE(handles(), before + 3);
    }
    g_pArxApp->DropRaster();
}

} // namespace
