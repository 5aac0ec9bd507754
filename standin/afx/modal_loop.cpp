// CWnd: the message loop of modal windows.
#include "standin/afx/afx_app.h"
#include "standin/afx/afx_window.h"
#include "standin/afx/state.h"

namespace {

bool messageWaiting(MSG& message)
{
    return ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
}

} // namespace

int CWnd::RunModalLoop(DWORD dwFlags)
{
    bool idle = true;
    LONG idleCount = 0;
    bool showWhenIdle = (dwFlags & MLF_SHOWONIDLE) && !(GetStyle() & WS_VISIBLE);
    const HWND parent = ::GetParent(m_hWnd);
    MSG message{};
    const auto show = [&] {
        if (showWhenIdle) {
            ShowWindow(SW_SHOWNORMAL);
            UpdateWindow();
            showWhenIdle = false;
        }
    };

    m_nFlags |= WF_MODALLOOP | WF_CONTINUEMODAL;
    while (ContinueModal()) {
        while (idle && !messageWaiting(message)) {
            show();
            if (!(dwFlags & MLF_NOIDLEMSG) && parent && idleCount == 0)
                ::SendMessageW(parent, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(m_hWnd));
            if ((dwFlags & MLF_NOKICKIDLE) ||
                !SendMessage(WM_KICKIDLE, MSGF_DIALOGBOX, static_cast<LPARAM>(idleCount++)))
                idle = false;
        }
        do {
            if (!AfxPumpMessage()) {
                ::PostQuitMessage(0); // the program's own loop has to see it too
                return -1;
            }
            show();
            if (!ContinueModal())
                break;
            idle = true;
            idleCount = 0;
        } while (messageWaiting(message));
    }
    m_nFlags &= ~static_cast<UINT>(WF_MODALLOOP | WF_CONTINUEMODAL);
    return m_nModalResult;
}

BOOL CWnd::ContinueModal()
{
    return (m_nFlags & WF_CONTINUEMODAL) != 0;
}

void CWnd::EndModalLoop(int nResult)
{
    m_nModalResult = nResult;
    if (m_nFlags & WF_CONTINUEMODAL) {
        m_nFlags &= ~static_cast<UINT>(WF_CONTINUEMODAL);
        PostMessage(WM_NULL); // wakes the loop
    }
}
