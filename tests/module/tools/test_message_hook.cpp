#include "module/base/CArxApp.h"
#include "module/shell/CFloatingBar.h"
#include "module/tools/ToolMessageHook.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/held_objects.h"
#include "tests/module/tools/recording_tool.h"

std::vector<std::string> calls;

namespace {

using Calls = std::vector<std::string>;

class MessageHook : public test::DeskFixture
{
protected:
    void SetUp() override
    {
        DeskFixture::SetUp();
        calls.clear();
        ButtonClickTimer.reset();
        LastToolCommand = 0;
        // Owned by the module, as its real toolbar is.
        g_pArxApp->m_pToolbar = new CFloatingBar;
        g_pArxApp->m_pToolbar->CreateEx(0, L"STATIC", L"toolbar", WS_POPUP, CRect(0, 0, 10, 10), nullptr, 0);
        m_other.CreateEx(0, L"STATIC", L"other", WS_POPUP, CRect(0, 0, 10, 10), nullptr, 0);
        test::pumpAll();
    }
    void TearDown() override
    {
        m_other.DestroyWindow();
        DeskFixture::TearDown();
    }

    // Posts the message to the thread's queue and takes it out again; whether the host still saw it.
    bool hostSees(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        test::waitForNextTimeStamp(); // two commands of one time stamp would count as one
        EXPECT_TRUE(PostMessageW(window, message, wParam, lParam));
        bool seen = false;
        MSG taken;
        while (PeekMessageW(&taken, nullptr, 0, 0, PM_REMOVE))
            seen = seen || (taken.hwnd == window && taken.message == message);
        return seen;
    }

    CWnd m_other;
};

// The hook itself, with a time stamp of the test's choice; the code that the message has afterwards.
UINT offer(HWND window, UINT code, DWORD time, WPARAM wParam = 0, WPARAM removed = PM_REMOVE)
{
    MSG message = {};
    message.hwnd = window;
    message.message = code;
    message.wParam = wParam;
    message.time = time;
    ToolMessageHook(HC_ACTION, removed, reinterpret_cast<LPARAM>(&message));
    return message.message;
}

TEST_F(MessageHook, MessagesReachTheToolAndNotTheHost)
{
    const HWND inView = view().m_hWnd;
    const HWND onToolbar = g_pArxApp->m_pToolbar->m_hWnd;
    const HWND elsewhere = m_other.m_hWnd;
    struct Case
    {
        const char* what;
        UINT message;
        HWND window;
        bool busy;
        int answer;
        Calls wanted; // "end" when the tool ends
        bool hostSees;
    };
    const Case cases[] = {
        {"a move in the view", WM_MOUSEMOVE, inView, false, 1, {"cursor", "move 30,40 12"}, false},
        {"a move that ends the tool", WM_MOUSEMOVE, inView, false, 0, {"cursor", "move 30,40 12", "end"}, false},
        {"a move under a menu", WM_MOUSEMOVE, inView, true, 1, {}, true},
        {"a move elsewhere", WM_MOUSEMOVE, elsewhere, false, 1, {}, true},
        {"a press in the view", WM_LBUTTONDOWN, inView, false, 1, {"left down 30,40 12"}, false},
        {"a press that ends the tool", WM_LBUTTONDOWN, inView, false, 0, {"left down 30,40 12", "end"}, false},
        {"a press under a menu", WM_LBUTTONDOWN, inView, true, 0, {}, true},
        {"a press on the toolbar", WM_LBUTTONDOWN, onToolbar, false, 1, {"end"}, true},
        {"a press on the toolbar under a menu", WM_LBUTTONDOWN, onToolbar, true, 1, {}, true},
        {"a press elsewhere", WM_LBUTTONDOWN, elsewhere, false, 1, {"end"}, true},
        {"a press elsewhere under a menu", WM_LBUTTONDOWN, elsewhere, true, 1, {}, true},
        {"a release in the view", WM_LBUTTONUP, inView, false, 1, {"left up 30,40 12"}, false},
        {"a release outside, captured", WM_LBUTTONUP, elsewhere, false, 0, {"left up 30,40 12", "end"}, false},
        {"a release under a menu", WM_LBUTTONUP, inView, true, 0, {}, true},
        {"a double click", WM_LBUTTONDBLCLK, inView, false, 1, {"double 30,40 12"}, false},
        {"a double click under a menu", WM_LBUTTONDBLCLK, inView, true, 0, {"double 30,40 12", "end"}, false},
        {"a double click elsewhere", WM_LBUTTONDBLCLK, elsewhere, false, 1, {"end"}, true},
        {"a double click elsewhere under a menu", WM_LBUTTONDBLCLK, elsewhere, true, 1, {"end"}, true},
        {"a right press in the view", WM_RBUTTONDOWN, inView, false, 1, {"right down 30,40 12"}, false},
        {"a right press that ends", WM_RBUTTONDOWN, inView, false, 0, {"right down 30,40 12", "end"}, false},
        {"a right press under a menu", WM_RBUTTONDOWN, inView, true, 0, {}, true},
        {"a right press elsewhere", WM_RBUTTONDOWN, elsewhere, false, 1, {"end"}, true},
        {"a right press elsewhere under a menu", WM_RBUTTONDOWN, elsewhere, true, 1, {}, true},
        {"a right release", WM_RBUTTONUP, inView, false, 1, {"right up 30,40 12"}, false},
        {"a right release elsewhere", WM_RBUTTONUP, elsewhere, false, 1, {"right up 30,40 12"}, false},
        {"a right release under a menu", WM_RBUTTONUP, elsewhere, true, 0, {"right up 30,40 12", "end"}, false},
        {"a middle press", WM_MBUTTONDOWN, inView, false, 0, {}, true},
        {"a key", WM_KEYDOWN, inView, false, 0, {}, true},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        auto* tool = new RecordingTool;
        tool->m_bBusy = row.busy;
        tool->m_answer = row.answer;
        calls.clear();
        EXPECT_EQ(hostSees(row.window, row.message, MK_SHIFT | MK_CONTROL, MAKELPARAM(30, 40)), row.hostSees);
        EXPECT_EQ(calls, row.wanted);
        const bool ended = !row.wanted.empty() && row.wanted.back() == "end";
        EXPECT_EQ(g_pArxApp->m_pTool == nullptr, ended);
        delete g_pArxApp->m_pTool;
    }
}

TEST_F(MessageHook, EscapeEndsTheToolAndTheHostHearsItToo)
{
    new RecordingTool;
    EXPECT_TRUE(hostSees(view().m_hWnd, WM_KEYDOWN, VK_ESCAPE));
    EXPECT_EQ(calls, Calls{"end"});
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(ToolHookCount, 0);
    EXPECT_TRUE(hostSees(view().m_hWnd, WM_LBUTTONDOWN)) << "without a tool the view gets its messages again";
}

TEST_F(MessageHook, PointsLeftOfOrAboveTheViewArriveAsLargeNumbers)
{
    new RecordingTool;
    hostSees(view().m_hWnd, WM_LBUTTONUP, 0, MAKELPARAM(-2, -5));
    EXPECT_EQ(calls, Calls{"left up 65534,65531 0"});
}

TEST_F(MessageHook, AToolThatEndsItselfAtTheCursorGetsNoMove)
{
    auto* tool = new RecordingTool;
    tool->m_endAtCursor = true;
    hostSees(view().m_hWnd, WM_MOUSEMOVE);
    EXPECT_EQ(calls, (Calls{"cursor", "end"}));
}

TEST_F(MessageHook, WhatTheToolTakesFirstGoesNoFurther)
{
    auto* tool = new RecordingTool;
    tool->m_swallow = 1;
    EXPECT_FALSE(hostSees(view().m_hWnd, WM_LBUTTONDOWN));
    EXPECT_FALSE(hostSees(view().m_hWnd, WM_KEYDOWN, VK_ESCAPE));
    EXPECT_EQ(calls, Calls{});
    EXPECT_TRUE(hostSees(m_other.m_hWnd, WM_MOUSEMOVE)) << "other windows' messages are not offered";
}

TEST_F(MessageHook, AModalDialogOfTheToolKeepsItsMessages)
{
    new RecordingTool;
    ToolInputEnabled = 0;
    EXPECT_TRUE(hostSees(view().m_hWnd, WM_LBUTTONDOWN));
    EXPECT_TRUE(hostSees(m_other.m_hWnd, WM_LBUTTONDOWN));
    EXPECT_TRUE(hostSees(m_other.m_hWnd, WM_COMMAND, IDOK));
    EXPECT_EQ(calls, Calls{});
    new RecordingTool;
    EXPECT_EQ(ToolInputEnabled, 1) << "a new tool gets its input";
}

TEST_F(MessageHook, OnlyMessagesThatAreTakenFromTheQueueCount)
{
    new RecordingTool;
    EXPECT_EQ(offer(view().m_hWnd, WM_LBUTTONDOWN, 1, 0, PM_NOREMOVE), UINT(WM_LBUTTONDOWN));
    EXPECT_EQ(calls, Calls{});
    EXPECT_EQ(offer(view().m_hWnd, WM_LBUTTONDOWN, 1), UINT(WM_NULL));
    EXPECT_EQ(calls, Calls{"left down 0,0 0"});
}

TEST_F(MessageHook, ACommandThatTheToolKnowsIsNotTheHosts)
{
    auto* tool = new RecordingTool;
    EXPECT_FALSE(hostSees(m_other.m_hWnd, WM_COMMAND, MAKEWPARAM(32803, 1)));
    EXPECT_EQ(calls, Calls{"command 32803"});
    EXPECT_EQ(LastToolCommand, 32803);

    tool->m_answer = 0;
    EXPECT_TRUE(hostSees(m_other.m_hWnd, WM_COMMAND, 32804)) << "an unknown command ends the tool and then runs";
    EXPECT_EQ(calls, (Calls{"command 32803", "command 32804", "end"}));
    EXPECT_EQ(LastToolCommand, 32804);
    EXPECT_TRUE(ButtonClickTimer);
}

void letPass(int milliseconds)
{
    const int before = ButtonClickTimer->m_time.millitm - milliseconds % 1000;
    ButtonClickTimer->m_time.time -= milliseconds / 1000 + (before < 0 ? 1 : 0);
    ButtonClickTimer->m_time.millitm = static_cast<unsigned short>(before < 0 ? before + 1000 : before);
}

TEST_F(MessageHook, TheSameCommandWithinHalfASecondReachesTheToolOnce)
{
    new RecordingTool;
    EXPECT_EQ(offer(m_other.m_hWnd, WM_COMMAND, 1000, 7), UINT(WM_NULL));
    EXPECT_EQ(offer(m_other.m_hWnd, WM_COMMAND, 1001, 7), UINT(WM_NULL));
    EXPECT_EQ(calls, Calls{"command 7"});
    EXPECT_EQ(offer(m_other.m_hWnd, WM_COMMAND, 1002, 8), UINT(WM_NULL));
    EXPECT_EQ(calls, (Calls{"command 7", "command 8"})) << "another command is not held back";
    letPass(501);
    EXPECT_EQ(offer(m_other.m_hWnd, WM_COMMAND, 1503, 8), UINT(WM_NULL));
    EXPECT_EQ(calls, (Calls{"command 7", "command 8", "command 8"}));
}

TEST_F(MessageHook, ACommandThatComesTwiceWithOneTimeStampReachesTheToolOnce)
{
    new RecordingTool;
    offer(m_other.m_hWnd, WM_COMMAND, 5000, 7);
    letPass(501);
    EXPECT_EQ(offer(m_other.m_hWnd, WM_COMMAND, 5000, 8), UINT(WM_NULL));
    EXPECT_EQ(calls, Calls{"command 7"});
    EXPECT_EQ(offer(m_other.m_hWnd, WM_COMMAND, 5000, 8), UINT(WM_NULL)) << "a third one counts as a new one";
    EXPECT_EQ(calls, (Calls{"command 7", "command 8"}));
    offer(view().m_hWnd, WM_LBUTTONUP, 6000);
    offer(view().m_hWnd, WM_LBUTTONUP, 6000);
    EXPECT_EQ(calls.size(), 4u) << "other messages may share a time stamp";
}

TEST_F(MessageHook, AClickOnTheToolbarIsRemembered)
{
    auto* tool = new RecordingTool;
    tool->m_id = 2;
    hostSees(g_pArxApp->m_pToolbar->m_hWnd, WM_LBUTTONDOWN);
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(LastToolIdOnClick, 2);
    ASSERT_TRUE(ButtonClickTimer);
    EXPECT_FALSE(ButtonClickTimer->HasElapsed()) << "the next tool can see how soon it was started";

    delete new RecordingTool;
    ASSERT_TRUE(ButtonClickTimer) << "a young timer outlives the tool";
    letPass(501);
    delete new RecordingTool;
    EXPECT_FALSE(ButtonClickTimer);
}

TEST_F(MessageHook, ASelectingToolOutlivesItsClickForAMomentUnlessANewOneTakesItsPlace)
{
    const test::HookAndTimerWatch watch;
    for (const bool replaced : {false, true}) {
        SCOPED_TRACE(replaced);
        calls.clear();
        auto* tool = new RecordingTool;
        tool->m_id = ToolIdSelectRaster;
        tool->m_answer = 0;
        EXPECT_FALSE(hostSees(view().m_hWnd, WM_LBUTTONDOWN));
        EXPECT_FALSE(hostSees(view().m_hWnd, WM_LBUTTONDOWN));
        EXPECT_EQ(g_pArxApp->m_pTool, tool);
        EXPECT_EQ(test::HookAndTimerWatch::threadTimers(), 1) << "a second press starts no second timer";
        if (replaced) {
            const std::unique_ptr<RecordingTool> fresh(new RecordingTool);
            EXPECT_EQ(ToolHookCount, 1);
            EXPECT_EQ(test::HookAndTimerWatch::threadTimers(), 0) << "the old tool's timer would end the new one";
            EXPECT_EQ(calls, (Calls{"left down 0,0 0", "left down 0,0 0", "end"}));
        } else {
            EXPECT_TRUE(test::pumpUntil([] { return !g_pArxApp->m_pTool; })) << "the tool was never ended";
        }
        EXPECT_EQ(test::HookAndTimerWatch::threadTimers(), 0);
    }
}

TEST_F(MessageHook, WithoutAnAnswerOfItsOwnAToolOutlivesTheMouseAndKnowsNoCommand)
{
    const std::unique_ptr<CTool> tool(new CTool);
    for (const auto handler : {&CTool::OnLButtonDown, &CTool::OnRButtonDown, &CTool::OnLButtonUp, &CTool::OnRButtonUp,
                               &CTool::OnLButtonDblClk, &CTool::OnMouseMove})
        EXPECT_EQ((tool.get()->*handler)({}, 0), 1);
    EXPECT_EQ(tool->OnCommand(1), 0);
    EXPECT_EQ(tool->PreMessage(nullptr), 0);
}

} // namespace
