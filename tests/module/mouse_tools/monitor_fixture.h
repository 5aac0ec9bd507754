// The mouse's desk with a frame window around the view, in which the monitor timer finds it.
#pragma once

#include "module/start/MonitorTimer.h"
#include "tests/module/mouse_tools/mouse_fixture.h"

namespace test {

class MonitorFixture : public MouseFixture
{
protected:
    void SetUp() override;
    void TearDown() override;
    CMDIFrameWnd* frame() override { return m_frame; }

    // Another window in the place of the view, and the frame's active one.
    void renewActiveView();
    // Runs messages up to and with one tick of a timer without a window.
    static void tick();

private:
    void activateView(CView* view);

    CMDIFrameWnd* m_frame = nullptr;
};

} // namespace test
