#pragma once

#include <memory>

#include "module/shell/CSubCwnd.h"
#include "platform/platform.h"

/// A toolbar that may put a window procedure of the module's in front of the floating frame around it.
class CFloatingBar : public CToolBar
{
public:
    CFloatingBar() = default;
    ~CFloatingBar() override;

    /// The procedure finds the frame's own one as CSubCwnd says. Nothing happens while there is one already.
    void HookFrame(HWND frame, WNDPROC procedure);
    /// Gives the frame its own procedure back, if it has another one.
    void UnhookFrame() { m_pFrameHook.reset(); }
    bool IsFrameHooked() const { return m_pFrameHook != nullptr; }

private:
    std::unique_ptr<CSubCwnd> m_pFrameHook;
};
