// CWnd: parents, owners, frames, placement in the middle, states of the controls.
#include <algorithm>

#include "standin/afx/afx_dialog.h"
#include "standin/afx/afx_exception.h"
#include "standin/afx/afx_frame.h"
#include "standin/afx/afx_window.h"
#include "standin/afx/state.h"

CWnd* CWnd::GetOwner() const
{
    return m_pOwner ? m_pOwner : GetParent();
}

void CWnd::SetOwner(CWnd* pOwnerWnd)
{
    m_pOwner = pOwnerWnd;
}

CWnd* CWnd::GetTopLevelParent() const
{
    HWND top = m_hWnd;
    while (const HWND parent = ::GetParent(top))
        top = parent;
    return FromHandle(top);
}

CFrameWnd* CWnd::GetParentFrame() const
{
    for (HWND window = ::GetParent(m_hWnd); window; window = ::GetParent(window)) {
        if (CFrameWnd* frame = DYNAMIC_DOWNCAST(CFrameWnd, FromHandlePermanent(window)))
            return frame;
    }
    return nullptr;
}

CFrameWnd* CWnd::GetTopLevelFrame() const
{
    CFrameWnd* frame = DYNAMIC_DOWNCAST(CFrameWnd, FromHandlePermanent(m_hWnd));
    if (!frame)
        frame = GetParentFrame();
    while (frame) {
        CFrameWnd* next = frame->GetParentFrame();
        if (!next)
            break;
        frame = next;
    }
    return frame;
}

CWnd* CWnd::GetDescendantWindow(int nID, BOOL bOnlyPerm) const
{
    for (HWND child = ::GetTopWindow(m_hWnd); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CWnd* permanent = FromHandlePermanent(child);
        if (::GetDlgCtrlID(child) == nID && (permanent || !bOnlyPerm))
            return FromHandle(child);
        CWnd inner;
        inner.m_hWnd = child;
        CWnd* found = inner.GetDescendantWindow(nID, bOnlyPerm);
        inner.m_hWnd = nullptr;
        if (found)
            return found;
    }
    return nullptr;
}

HWND CWnd::GetSafeOwner(HWND hParent, HWND* pWndTop)
{
    HWND owner = hParent;
    if (!owner) {
        CWnd* mainWindow = AfxGetMainWnd();
        owner = mainWindow ? mainWindow->m_hWnd : nullptr;
    }
    while (owner && (::GetWindowLongPtrW(owner, GWL_STYLE) & WS_CHILD))
        owner = ::GetParent(owner);
    if (!hParent && owner)
        owner = ::GetLastActivePopup(owner);
    if (!pWndTop)
        return owner;
    // The top-level window above the owner is disabled too, so that nothing behind a modal dialog takes input.
    HWND top = owner;
    while (top && ::GetParent(top))
        top = ::GetParent(top);
    *pWndTop = nullptr;
    if (top && top != owner && ::IsWindowEnabled(top)) {
        *pWndTop = top;
        ::EnableWindow(top, FALSE);
    }
    return owner;
}

namespace {

CRect workAreaOf(HWND window)
{
    MONITORINFO info{};
    info.cbSize = sizeof info;
    ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &info);
    return info.rcWork;
}

// As near to the wanted place as keeps the whole window inside; the top left corner wins.
int fitted(int wanted, int extent, int low, int high)
{
    return std::max(low, std::min(wanted, high - extent));
}

} // namespace

void CWnd::CenterWindow(CWnd* pAlternateOwner)
{
    const bool child = (GetStyle() & WS_CHILD) != 0;
    HWND center = pAlternateOwner ? pAlternateOwner->m_hWnd
                  : child         ? ::GetParent(m_hWnd)
                                  : ::GetWindow(m_hWnd, GW_OWNER);
    if (!child && center && (!::IsWindowVisible(center) || ::IsIconic(center)))
        center = nullptr;

    CRect window;
    GetWindowRect(&window);
    CRect area;
    CRect around;
    if (child) {
        ::GetClientRect(::GetParent(m_hWnd), &area);
        ::GetClientRect(center, &around);
        ::MapWindowPoints(center, ::GetParent(m_hWnd), reinterpret_cast<POINT*>(&around), 2);
    } else {
        area = workAreaOf(center ? center : m_hWnd);
        around = area;
        if (center)
            ::GetWindowRect(center, &around);
    }
    const CPoint middle = around.CenterPoint();
    const int x = fitted(middle.x - window.Width() / 2, window.Width(), area.left, area.right);
    const int y = fitted(middle.y - window.Height() / 2, window.Height(), area.top, area.bottom);
    SetWindowPos(nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

namespace {

// Filling a control must not look like the user's own input.
class NotificationLock
{
public:
    explicit NotificationLock(HWND window) : m_former(afx::threadState().lockedOut)
    {
        afx::threadState().lockedOut = window;
    }
    ~NotificationLock() { afx::threadState().lockedOut = m_former; }
    NotificationLock(const NotificationLock&) = delete;
    NotificationLock& operator=(const NotificationLock&) = delete;

private:
    HWND m_former;
};

} // namespace

BOOL CWnd::UpdateData(BOOL bSaveAndValidate)
{
    CDataExchange exchange(this, bSaveAndValidate);
    const NotificationLock lock(m_hWnd);
    try {
        DoDataExchange(&exchange);
        return TRUE;
    } catch (CUserException* told) {
        told->Delete();
    } catch (CException* problem) {
        problem->ReportError(MB_ICONEXCLAMATION);
        problem->Delete();
    }
    return FALSE;
}

void CWnd::DoDataExchange(CDataExchange*) {}

void CWnd::UpdateDialogControls(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    for (HWND child = ::GetTopWindow(m_hWnd); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CCmdUI state;
        CWnd control;
        control.m_hWnd = child;
        state.m_nID = LOWORD(::GetDlgCtrlID(child));
        state.m_pOther = &control;
        // Only push buttons without a handler of their own are greyed.
        const LRESULT code = ::SendMessageW(child, WM_GETDLGCODE, 0, 0);
        const BOOL pushButton = (code & DLGC_BUTTON) && !(code & DLGC_RADIOBUTTON) &&
                                (::GetWindowLongPtrW(child, GWL_STYLE) & 0x0F) < BS_CHECKBOX;
        state.DoUpdate(pTarget, bDisableIfNoHndler && pushButton);
        control.m_hWnd = nullptr;
    }
}
