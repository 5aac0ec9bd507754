// Frames, documents inside them, and bars at their edges.
#include "driver.h"
#include "extension_in_chain.h"

namespace {

class Sheet : public CView
{
    DECLARE_DYNCREATE(Sheet)
public:
    int drawn = 0;
    int commands = 0;

protected:
    void OnDraw(CDC*) override { ++drawn; }
    void OnZoom() { ++commands; }
    DECLARE_MESSAGE_MAP()
};

IMPLEMENT_DYNCREATE(Sheet, CView)

BEGIN_MESSAGE_MAP(Sheet, CView)
ON_COMMAND(32900, &Sheet::OnZoom)
END_MESSAGE_MAP()

class Desk : public CMDIFrameWnd
{
public:
    int commands = 0;

protected:
    void OnNew() { ++commands; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Desk, CMDIFrameWnd)
ON_COMMAND(59999, &Desk::OnNew)
END_MESSAGE_MAP()

CRect placeIn(CWnd& frame, CWnd& window)
{
    CRect rect;
    window.GetWindowRect(&rect);
    frame.ScreenToClient(&rect);
    return rect;
}

class Frame : public testing::Test
{
protected:
    void SetUp() override
    {
        frame = new Desk;
        ASSERT_TRUE(frame->Create(nullptr, L"desk", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CRect(20, 20, 620, 420)));
        app.m_pMainWnd = frame;
        frame->ShowWindow(SW_SHOWNA);
        ASSERT_TRUE(status.Create(frame));
        const UINT panes[] = {0, 17723};
        status.SetIndicators(panes, 2);
        frame->EnableDocking(CBRS_ALIGN_ANY);
        frame->RecalcLayout();
    }
    void TearDown() override
    {
        frame->DestroyWindow();
        MSG quit{};
        EXPECT_TRUE(::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE))
            << "the main window's end is the program's";
    }
    Sheet* openDocument(LPCWSTR title)
    {
        CCreateContext context;
        context.m_pNewViewClass = RUNTIME_CLASS(Sheet);
        CMDIChildWnd* child = new CMDIChildWnd;
        EXPECT_TRUE(child->Create(nullptr, title, WS_CHILD | WS_VISIBLE | WS_OVERLAPPEDWINDOW, CFrameWnd::rectDefault,
                                  frame, &context));
        return DYNAMIC_DOWNCAST(Sheet, child->GetActiveView());
    }

    CWinApp app{L"Test"};
    ExtensionInChain extension;
    Desk* frame = nullptr;
    CStatusBar status;
    CToolBar tools;
};

TEST_F(Frame, DocumentsAreOpenedActivatedAndClosed)
{
    EXPECT_EQ(frame->MDIGetActive(), nullptr);
    Sheet* first = openDocument(L"one");
    Sheet* second = openDocument(L"two");
    ASSERT_TRUE(first && second);
    EXPECT_EQ(frame->MDIGetActive()->GetActiveView(), second);
    frame->MDIActivate(first->GetParentFrame());
    EXPECT_EQ(frame->GetActiveFrame()->GetActiveView(), first);
    EXPECT_EQ(first->GetTopLevelFrame(), frame);
    EXPECT_TRUE(pumpUntil([&] { return first->drawn > 0; }));
    frame->SendMessage(WM_COMMAND, 32900);
    EXPECT_EQ(first->commands, 1) << "a command goes to the active view first";
    EXPECT_EQ(second->commands, 0);
    frame->SendMessage(WM_COMMAND, 59999);
    EXPECT_EQ(frame->commands, 1) << "and to the frame when no document takes it";
    CRect inside;
    first->GetParentFrame()->GetClientRect(&inside);
    EXPECT_EQ(placeIn(*first->GetParentFrame(), *first), inside) << "the view fills its frame";
    first->GetParentFrame()->SendMessage(WM_CLOSE);
    EXPECT_EQ(frame->MDIGetActive()->GetActiveView(), second);
}

TEST_F(Frame, BarsTakeTheEdgesAndTheDocumentsTheRest)
{
    ASSERT_TRUE(tools.CreateEx(frame, TBSTYLE_FLAT, WS_CHILD | WS_VISIBLE | CBRS_ALIGN_TOP | CBRS_SIZE_DYNAMIC,
                               CRect(0, 0, 0, 2), 59392));
    ASSERT_TRUE(tools.LoadToolBar(29999));
    tools.EnableDocking(CBRS_ALIGN_ANY);
    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_BOTTOM);
    CRect client;
    frame->GetClientRect(&client);
    const CRect statusPlace = placeIn(*frame, status);
    CRect toolsPlace = placeIn(*frame, tools);
    CWnd* inside = CWnd::FromHandle(frame->m_hWndMDIClient);
    EXPECT_EQ(statusPlace.bottom, client.bottom);
    EXPECT_EQ(statusPlace.Width(), client.Width());
    EXPECT_EQ(toolsPlace.bottom, statusPlace.top);
    EXPECT_EQ(placeIn(*frame, *inside), CRect(0, 0, client.right, toolsPlace.top));
    EXPECT_EQ(tools.GetBarStyle() & CBRS_ALIGN_ANY, static_cast<DWORD>(CBRS_ALIGN_BOTTOM));
    EXPECT_GE(toolsPlace.Height(), 22);

    frame->ShowControlBar(&tools, FALSE, FALSE);
    EXPECT_EQ(placeIn(*frame, *inside).bottom, statusPlace.top);
    frame->ShowControlBar(&tools, TRUE, FALSE);
    EXPECT_EQ(placeIn(*frame, tools), toolsPlace);

    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_LEFT);
    toolsPlace = placeIn(*frame, tools);
    EXPECT_EQ(toolsPlace.TopLeft(), CPoint(0, 0));
    EXPECT_GT(toolsPlace.Height(), toolsPlace.Width()) << "buttons stand in a column at a side";
    EXPECT_EQ(placeIn(*frame, *inside).left, toolsPlace.right);
    frame->SetWindowPos(nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOZORDER);
    frame->GetClientRect(&client);
    EXPECT_EQ(placeIn(*frame, status).bottom, client.bottom) << "the layout follows the frame's size";
}

} // namespace
