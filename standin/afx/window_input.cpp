// CWnd: input, dialog items, relatives and scrolling, as the operating system does them.
#include "standin/afx/afx_app.h"
#include "standin/afx/afx_window.h"

namespace {

HWND handleOf(const CWnd* window)
{
    return window ? window->m_hWnd : nullptr;
}

} // namespace

BOOL CWnd::IsWindowEnabled() const
{
    return ::IsWindowEnabled(m_hWnd);
}

BOOL CWnd::EnableWindow(BOOL bEnable)
{
    return ::EnableWindow(m_hWnd, bEnable);
}

CWnd* CWnd::GetActiveWindow()
{
    return FromHandle(::GetActiveWindow());
}

CWnd* CWnd::SetActiveWindow()
{
    return FromHandle(::SetActiveWindow(m_hWnd));
}

BOOL CWnd::SetForegroundWindow()
{
    return ::SetForegroundWindow(m_hWnd);
}

CWnd* CWnd::GetForegroundWindow()
{
    return FromHandle(::GetForegroundWindow());
}

CWnd* CWnd::GetCapture()
{
    return FromHandle(::GetCapture());
}

CWnd* CWnd::SetCapture()
{
    return FromHandle(::SetCapture(m_hWnd));
}

CWnd* CWnd::GetFocus()
{
    return FromHandle(::GetFocus());
}

CWnd* CWnd::SetFocus()
{
    return FromHandle(::SetFocus(m_hWnd));
}

CWnd* CWnd::GetDesktopWindow()
{
    return FromHandle(::GetDesktopWindow());
}

int CWnd::MessageBox(LPCWSTR lpszText, LPCWSTR lpszCaption, UINT nType)
{
    return ::MessageBoxW(m_hWnd, lpszText, lpszCaption ? lpszCaption : AfxGetAppName(), nType);
}

BOOL CWnd::OpenClipboard()
{
    return ::OpenClipboard(m_hWnd);
}

CWnd* CWnd::GetDlgItem(int nID) const
{
    return FromHandle(::GetDlgItem(m_hWnd, nID));
}

void CWnd::GetDlgItem(int nID, HWND* phWnd) const
{
    *phWnd = ::GetDlgItem(m_hWnd, nID);
}

void CWnd::CheckDlgButton(int nIDButton, UINT nCheck)
{
    ::CheckDlgButton(m_hWnd, nIDButton, nCheck);
}

void CWnd::CheckRadioButton(int nIDFirstButton, int nIDLastButton, int nIDCheckButton)
{
    ::CheckRadioButton(m_hWnd, nIDFirstButton, nIDLastButton, nIDCheckButton);
}

UINT CWnd::IsDlgButtonChecked(int nIDButton) const
{
    return ::IsDlgButtonChecked(m_hWnd, nIDButton);
}

int CWnd::GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const
{
    for (int id = nIDFirstButton; id <= nIDLastButton; ++id) {
        if (IsDlgButtonChecked(id))
            return id;
    }
    return 0;
}

UINT CWnd::GetDlgItemInt(int nID, BOOL* lpTrans, BOOL bSigned) const
{
    return ::GetDlgItemInt(m_hWnd, nID, lpTrans, bSigned);
}

void CWnd::SetDlgItemInt(int nID, UINT nValue, BOOL bSigned)
{
    ::SetDlgItemInt(m_hWnd, nID, nValue, bSigned);
}

int CWnd::GetDlgItemText(int nID, LPWSTR lpStr, int nMaxCount) const
{
    return static_cast<int>(::GetDlgItemTextW(m_hWnd, nID, lpStr, nMaxCount));
}

int CWnd::GetDlgItemText(int nID, CString& rString) const
{
    CWnd* item = GetDlgItem(nID);
    rString.Empty();
    if (item)
        item->GetWindowText(rString);
    return rString.GetLength();
}

void CWnd::SetDlgItemText(int nID, LPCWSTR lpszString)
{
    ::SetDlgItemTextW(m_hWnd, nID, lpszString);
}

CWnd* CWnd::GetNextDlgGroupItem(CWnd* pWndCtl, BOOL bPrevious) const
{
    return FromHandle(::GetNextDlgGroupItem(m_hWnd, handleOf(pWndCtl), bPrevious));
}

CWnd* CWnd::GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious) const
{
    return FromHandle(::GetNextDlgTabItem(m_hWnd, handleOf(pWndCtl), bPrevious));
}

BOOL CWnd::IsChild(const CWnd* pWnd) const
{
    return ::IsChild(m_hWnd, pWnd->m_hWnd);
}

CWnd* CWnd::GetParent() const
{
    return FromHandle(::GetParent(m_hWnd));
}

CWnd* CWnd::SetParent(CWnd* pWndNewParent)
{
    return FromHandle(::SetParent(m_hWnd, handleOf(pWndNewParent)));
}

CWnd* CWnd::GetTopWindow() const
{
    return FromHandle(::GetTopWindow(m_hWnd));
}

CWnd* CWnd::GetWindow(UINT nCmd) const
{
    return FromHandle(::GetWindow(m_hWnd, nCmd));
}

CWnd* CWnd::GetLastActivePopup() const
{
    return FromHandle(::GetLastActivePopup(m_hWnd));
}

CWnd* CWnd::WindowFromPoint(POINT point)
{
    return FromHandle(::WindowFromPoint(point));
}
