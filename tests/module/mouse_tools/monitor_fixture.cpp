#include "tests/module/mouse_tools/monitor_fixture.h"

namespace test {

void MonitorFixture::SetUp()
{
    MouseFixture::SetUp();
    m_frame = new CMDIFrameWnd;
    ASSERT_TRUE(m_frame->Create(nullptr, L"desk", WS_OVERLAPPEDWINDOW, CRect(0, 0, 300, 200)));
    auto* child = new CMDIChildWnd;
    ASSERT_TRUE(child->Create(nullptr, L"drawing", WS_CHILD | WS_VISIBLE | WS_OVERLAPPEDWINDOW, CFrameWnd::rectDefault,
                              m_frame));
    activateView(static_cast<CView*>(&view()));
}

void MonitorFixture::TearDown()
{
    StopMonitorTimer();
    g_bInCommand = false;
    activateView(nullptr);
    m_frame->DestroyWindow();
    MouseFixture::TearDown();
}

void MonitorFixture::renewActiveView()
{
    activateView(nullptr); // the frame calls the view that it has when another one becomes active
    renewView();
    activateView(static_cast<CView*>(&view()));
}

void MonitorFixture::activateView(CView* view)
{
    m_frame->MDIGetActive()->SetActiveView(view, FALSE);
}

void MonitorFixture::tick()
{
    MSG message;
    do {
        ASSERT_GT(GetMessageW(&message, nullptr, 0, 0), 0);
        DispatchMessageW(&message);
    } while (message.message != WM_TIMER || message.hwnd);
}

} // namespace test
