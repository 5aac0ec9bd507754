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

class Tools : public CToolBar
{
public:
    bool rasterIsCurrent = false;
    std::wstring heard;
    int moves = 0;

protected:
    void OnUpdateSave(CCmdUI* state)
    {
        state->Enable(rasterIsCurrent);
        state->SetCheck(rasterIsCurrent);
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_MOVE)
            ++moves;
        if (message == WM_COMMAND)
            heard += std::to_wstring(LOWORD(wParam)) + L" ";
        return CToolBar::WindowProc(message, wParam, lParam);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Tools, CToolBar)
ON_UPDATE_COMMAND_UI(32809, &Tools::OnUpdateSave)
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
    void makeTools()
    {
        ASSERT_TRUE(tools.CreateEx(frame, TBSTYLE_FLAT,
                                   WS_CHILD | WS_VISIBLE | CBRS_GRIPPER | CBRS_ALIGN_TOP | CBRS_BORDER_BOTTOM |
                                       CBRS_TOOLTIPS | CBRS_FLYBY | CBRS_SIZE_DYNAMIC,
                                   CRect(0, 0, 0, 2), 59392));
        ASSERT_TRUE(tools.LoadToolBar(29999));
        tools.EnableDocking(CBRS_ALIGN_ANY);
        tools.SetWindowText(L"HVA6");
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
    Tools tools;
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
    makeTools();
    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_BOTTOM);
    CRect client;
    frame->GetClientRect(&client);
    CRect toolsPlace = placeIn(*frame, tools);
    CWnd* inside = CWnd::FromHandle(frame->m_hWndMDIClient);
    EXPECT_EQ(toolsPlace.bottom, client.bottom);
    EXPECT_EQ(placeIn(*frame, *inside), CRect(0, 0, client.right, toolsPlace.top));
    EXPECT_EQ(tools.GetBarStyle() & CBRS_ALIGN_ANY, static_cast<DWORD>(CBRS_ALIGN_BOTTOM));
    EXPECT_GE(toolsPlace.Height(), 22);

    frame->ShowControlBar(&tools, FALSE, FALSE);
    EXPECT_EQ(placeIn(*frame, *inside).bottom, client.bottom);
    frame->ShowControlBar(&tools, TRUE, FALSE);
    EXPECT_EQ(placeIn(*frame, tools), toolsPlace);

    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_LEFT);
    toolsPlace = placeIn(*frame, tools);
    EXPECT_EQ(toolsPlace.TopLeft(), CPoint(0, 0));
    EXPECT_GT(toolsPlace.Height(), toolsPlace.Width()) << "buttons stand in a column at a side";
    EXPECT_EQ(placeIn(*frame, *inside).left, toolsPlace.right);
    frame->SetWindowPos(nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOZORDER);
    frame->GetClientRect(&client);
    EXPECT_EQ(placeIn(*frame, *inside).bottom, client.bottom) << "the layout follows the frame's size";
}

TEST_F(Frame, TheToolbarComesFromItsTemplate)
{
    makeTools();
    EXPECT_EQ(tools.GetCount(), 4);
    EXPECT_EQ(tools.GetItemID(0), 59999u);
    EXPECT_TRUE(tools.GetButtonStyle(2) & TBSTYLE_SEP);
    EXPECT_EQ(tools.CommandToIndex(32800), 3);
    UINT id = 0;
    UINT style = 0;
    int image = 0;
    tools.GetButtonInfo(3, id, style, image);
    EXPECT_EQ(image, 2) << "separators have no image";
    EXPECT_FALSE(tools.LoadToolBar(4711));
}

TEST_F(Frame, ButtonStatesFollowTheHandlersWhenIdle)
{
    makeTools();
    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_BOTTOM);
    const auto stateOf = [&](UINT id) { return tools.SendMessage(TB_GETSTATE, id); };
    app.OnIdle(0);
    EXPECT_FALSE(stateOf(32809) & TBSTATE_ENABLED);
    EXPECT_FALSE(stateOf(32809) & TBSTATE_CHECKED);
    EXPECT_TRUE(stateOf(59999) & TBSTATE_ENABLED) << "the frame has a handler";
    EXPECT_FALSE(stateOf(32800) & TBSTATE_ENABLED) << "nobody has one";
    tools.rasterIsCurrent = true;
    app.OnIdle(0);
    EXPECT_TRUE(stateOf(32809) & TBSTATE_ENABLED);
    EXPECT_TRUE(stateOf(32809) & TBSTATE_CHECKED);
}

TEST_F(Frame, AClickOnAButtonReachesTheFrame)
{
    makeTools();
    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_BOTTOM);
    app.OnIdle(0);
    const auto click = [&] {
        CRect button;
        tools.GetItemRect(0, &button);
        const LPARAM place = MAKELPARAM(button.CenterPoint().x, button.CenterPoint().y);
        tools.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, place);
        tools.SendMessage(WM_LBUTTONUP, 0, place);
    };
    click();
    EXPECT_EQ(frame->commands, 1);
    EXPECT_EQ(tools.heard, L"");
    tools.SendMessage(TB_SETPARENT, reinterpret_cast<WPARAM>(tools.m_hWnd));
    click();
    EXPECT_EQ(tools.heard, L"59999 ") << "the bar hears its own buttons once it is their parent";
    EXPECT_EQ(frame->commands, 2) << "and passes on what it does not take";
}

TEST_F(Frame, ABarFloatsAndComesBack)
{
    makeTools();
    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_BOTTOM);
    EXPECT_FALSE(tools.IsFloating());
    EXPECT_EQ(::GetParent(::GetParent(tools)), frame->m_hWnd);
    tools.moves = 0;
    frame->FloatControlBar(&tools, CPoint(200, 150));
    EXPECT_TRUE(tools.IsFloating());
    const HWND floating = ::GetParent(::GetParent(tools));
    EXPECT_NE(floating, frame->m_hWnd);
    EXPECT_TRUE(::IsWindowVisible(floating));
    EXPECT_GT(tools.moves, 0) << "the bar hears that it has moved";
    wchar_t caption[16];
    ::GetWindowTextW(floating, caption, 16);
    EXPECT_STREQ(caption, L"HVA6");
    CRect client;
    ::GetClientRect(floating, &client);
    CRect bar;
    tools.GetWindowRect(&bar);
    EXPECT_EQ(bar.Size(), client.Size()) << "the small frame fits its bar";

    ::SendMessageW(floating, WM_CLOSE, 0, 0);
    EXPECT_FALSE(tools.IsVisible());
    EXPECT_FALSE(::IsWindowVisible(floating));
    frame->ShowControlBar(&tools, TRUE, FALSE);
    EXPECT_TRUE(::IsWindowVisible(floating));

    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_TOP);
    EXPECT_FALSE(tools.IsFloating());
    EXPECT_FALSE(::IsWindow(floating)) << "the small frame goes with its last bar";
    EXPECT_EQ(placeIn(*frame, tools).top, 0);
}

TEST_F(Frame, BarsKeepTheirRowsAndPlaces)
{
    makeTools();
    Tools more;
    ASSERT_TRUE(more.CreateEx(frame, TBSTYLE_FLAT, WS_CHILD | WS_VISIBLE | CBRS_ALIGN_TOP | CBRS_SIZE_DYNAMIC,
                              CRect(0, 0, 0, 0), 59393));
    ASSERT_TRUE(more.LoadToolBar(29999));
    more.EnableDocking(CBRS_ALIGN_ANY);
    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_TOP);
    frame->DockControlBar(&more, AFX_IDW_DOCKBAR_TOP);
    const CRect first = placeIn(*frame, tools);
    CRect second = placeIn(*frame, more);
    EXPECT_EQ(second.TopLeft(), CPoint(0, first.bottom)) << "each that comes without a place has a row of its own";

    // Beside the first one, with room between them; the row that is left empty goes.
    CRect wanted(CPoint(300, first.top), second.Size());
    frame->ClientToScreen(&wanted);
    frame->DockControlBar(&more, AFX_IDW_DOCKBAR_TOP, &wanted);
    EXPECT_EQ(placeIn(*frame, more).TopLeft(), CPoint(300, 0));
    EXPECT_EQ(placeIn(*frame, tools), first);
    // In the way of each other: the second is pushed along; beyond the end it is pulled back.
    wanted.OffsetRect(first.right - 20 - 300, 0);
    frame->DockControlBar(&more, AFX_IDW_DOCKBAR_TOP, &wanted);
    EXPECT_EQ(placeIn(*frame, more).left, first.right);
    wanted.OffsetRect(2000, 0);
    frame->DockControlBar(&more, AFX_IDW_DOCKBAR_TOP, &wanted);
    CRect client;
    frame->GetClientRect(&client);
    EXPECT_EQ(placeIn(*frame, more).right, client.right);

    // A double click on the blank part floats it, another one brings it back to where it was.
    second = placeIn(*frame, more);
    CRect separator;
    more.GetItemRect(2, &separator);
    const CPoint blank = separator.CenterPoint();
    more.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(blank.x, blank.y));
    ASSERT_TRUE(more.IsFloating());
    ::SendMessageW(::GetAncestor(more, GA_ROOT), WM_NCLBUTTONDBLCLK, HTCAPTION, 0);
    EXPECT_FALSE(more.IsFloating());
    EXPECT_EQ(placeIn(*frame, more), second);

    // In front of the first row.
    wanted = CRect(CPoint(0, -40), second.Size());
    frame->ClientToScreen(&wanted);
    frame->DockControlBar(&more, AFX_IDW_DOCKBAR_TOP, &wanted);
    EXPECT_EQ(placeIn(*frame, more).TopLeft(), CPoint(0, 0));
    EXPECT_EQ(placeIn(*frame, tools).TopLeft(), CPoint(0, second.Height()));
}

TEST_F(Frame, ABarIsDraggedByItsGripper)
{
    makeTools();
    frame->DockControlBar(&tools, AFX_IDW_DOCKBAR_TOP);
    CRect bar;
    tools.GetWindowRect(&bar);
    const CPoint grip = bar.TopLeft() + CSize(3, 10);
    CRect left;
    frame->GetWindowRect(&left);
    const CPoint target(left.left + 6, left.CenterPoint().y);
    ::SetCursorPos(grip.x, grip.y);
    EXPECT_TRUE(pumpUntil([&] {
        CPoint now;
        ::GetCursorPos(&now);
        return now == grip;
    }));
    Driver driver({[&] { return ::GetCapture() == tools.m_hWnd; },
                   [&] {
                       INPUT input[2]{};
                       ::SetCursorPos(target.x, target.y);
                       input[0].type = INPUT_MOUSE;
                       input[0].mi.dwFlags = MOUSEEVENTF_LEFTUP;
                       ::SendInput(1, input, sizeof input[0]);
                       return true;
                   }});
    INPUT press{};
    press.type = INPUT_MOUSE;
    press.mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    ::SendInput(1, &press, sizeof press);
    EXPECT_TRUE(pumpUntil([&] { return (tools.GetBarStyle() & CBRS_ALIGN_ANY) == CBRS_ALIGN_LEFT; }))
        << "dropped at the left edge, the bar docks there";
}

} // namespace
