#include "module/tools/FollowingTip.h"

namespace {
constexpr int widestTip = 32767; // pixels: the most that the control takes
}

void FollowingTip::Create(CWnd* view)
{
    m_pView = view;
    m_control.Create(view, TTS_ALWAYSTIP);
    m_control.AddTool(view, L"");
    m_control.SetMaxTipWidth(widestTip);
    m_control.Activate(TRUE);
}

void FollowingTip::Destroy()
{
    m_control.DestroyWindow();
}

void FollowingTip::Show(UINT textId)
{
    CString text;
    text.LoadString(textId);
    m_control.UpdateTipText(text, m_pView);
    m_bPending = true;
}

void FollowingTip::Hide()
{
    m_control.Pop();
    m_pView->UpdateWindow();
}

void FollowingTip::Relay(MSG* message)
{
    const HWND window = message->hwnd;
    if (!m_bPending)
        message->hwnd = nullptr;
    m_control.RelayEvent(message);
    message->hwnd = window;
    m_bPending = false;
}
