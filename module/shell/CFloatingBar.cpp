#include "module/shell/CFloatingBar.h"

CFloatingBar::~CFloatingBar()
{
    // Before the bar's window goes, and the frame after it.
    UnhookFrame();
}

void CFloatingBar::HookFrame(HWND frame, WNDPROC procedure)
{
    if (!m_pFrameHook)
        m_pFrameHook = std::make_unique<CSubCwnd>(frame, procedure);
}
