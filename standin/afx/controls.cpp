// Labels, buttons and edit boxes, sliders and progress bars.
#include "standin/afx/afx_controls.h"

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CScrollBar, CWnd)
IMPLEMENT_DYNAMIC(CSliderCtrl, CWnd)
IMPLEMENT_DYNAMIC(CSpinButtonCtrl, CWnd)

BOOL CStatic::Create(LPCWSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, WC_STATICW, lpszText, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

HBITMAP CStatic::SetBitmap(HBITMAP hBitmap)
{
    return reinterpret_cast<HBITMAP>(SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(hBitmap)));
}

HBITMAP CStatic::GetBitmap() const
{
    return reinterpret_cast<HBITMAP>(SendMessage(STM_GETIMAGE, IMAGE_BITMAP));
}

HICON CStatic::SetIcon(HICON hIcon)
{
    return reinterpret_cast<HICON>(SendMessage(STM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(hIcon)));
}

BOOL CButton::Create(LPCWSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, WC_BUTTONW, lpszCaption, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

UINT CButton::GetState() const
{
    return static_cast<UINT>(SendMessage(BM_GETSTATE, 0, 0));
}

void CButton::SetState(BOOL bHighlight)
{
    SendMessage(BM_SETSTATE, static_cast<WPARAM>(bHighlight), 0);
}

int CButton::GetCheck() const
{
    return static_cast<int>(SendMessage(BM_GETCHECK, 0, 0));
}

void CButton::SetCheck(int nCheck)
{
    SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck), 0);
}

UINT CButton::GetButtonStyle() const
{
    return GetStyle() & 0xFFFF;
}

void CButton::SetButtonStyle(UINT nStyle, BOOL bRedraw)
{
    SendMessage(BM_SETSTYLE, nStyle, bRedraw);
}

HBITMAP CButton::SetBitmap(HBITMAP hBitmap)
{
    return reinterpret_cast<HBITMAP>(SendMessage(BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(hBitmap)));
}

HICON CButton::SetIcon(HICON hIcon)
{
    return reinterpret_cast<HICON>(SendMessage(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(hIcon)));
}

BOOL CEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, WC_EDITW, nullptr, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

int CEdit::GetLineCount() const
{
    return static_cast<int>(SendMessage(EM_GETLINECOUNT, 0, 0));
}

BOOL CEdit::GetModify() const
{
    return static_cast<BOOL>(SendMessage(EM_GETMODIFY, 0, 0));
}

void CEdit::SetModify(BOOL bModified)
{
    SendMessage(EM_SETMODIFY, static_cast<WPARAM>(bModified), 0);
}

DWORD CEdit::GetSel() const
{
    return static_cast<DWORD>(SendMessage(EM_GETSEL, 0, 0));
}

void CEdit::GetSel(int& nStartChar, int& nEndChar) const
{
    DWORD first = 0;
    DWORD last = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    nStartChar = static_cast<int>(first);
    nEndChar = static_cast<int>(last);
}

void CEdit::SetSel(DWORD dwSelection, BOOL bNoScroll)
{
    SetSel(static_cast<short>(LOWORD(dwSelection)), static_cast<short>(HIWORD(dwSelection)), bNoScroll);
}

void CEdit::SetSel(int nStartChar, int nEndChar, BOOL bNoScroll)
{
    SendMessage(EM_SETSEL, static_cast<WPARAM>(nStartChar), nEndChar);
    if (!bNoScroll)
        SendMessage(EM_SCROLLCARET);
}

void CEdit::ReplaceSel(LPCWSTR lpszNewText, BOOL bCanUndo)
{
    SendMessage(EM_REPLACESEL, static_cast<WPARAM>(bCanUndo), reinterpret_cast<LPARAM>(lpszNewText));
}

void CEdit::LimitText(int nChars)
{
    SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(nChars), 0);
}

BOOL CEdit::SetReadOnly(BOOL bReadOnly)
{
    return static_cast<BOOL>(SendMessage(EM_SETREADONLY, static_cast<WPARAM>(bReadOnly), 0));
}

void CEdit::LineScroll(int nLines, int nChars)
{
    SendMessage(EM_LINESCROLL, static_cast<WPARAM>(nChars), nLines);
}

CScrollBar* CScrollBar::FromControl(HWND hWnd)
{
    return static_cast<CScrollBar*>(CWnd::FromHandle(hWnd));
}

BOOL CSliderCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, TRACKBAR_CLASSW, nullptr, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

int CSliderCtrl::GetLineSize() const
{
    return static_cast<int>(SendMessage(TBM_GETLINESIZE, 0, 0));
}

int CSliderCtrl::SetLineSize(int nSize)
{
    return static_cast<int>(SendMessage(TBM_SETLINESIZE, 0, nSize));
}

int CSliderCtrl::GetPageSize() const
{
    return static_cast<int>(SendMessage(TBM_GETPAGESIZE, 0, 0));
}

int CSliderCtrl::SetPageSize(int nSize)
{
    return static_cast<int>(SendMessage(TBM_SETPAGESIZE, 0, nSize));
}

int CSliderCtrl::GetRangeMax() const
{
    return static_cast<int>(SendMessage(TBM_GETRANGEMAX, 0, 0));
}

int CSliderCtrl::GetRangeMin() const
{
    return static_cast<int>(SendMessage(TBM_GETRANGEMIN, 0, 0));
}

void CSliderCtrl::GetRange(int& nMin, int& nMax) const
{
    nMin = GetRangeMin();
    nMax = GetRangeMax();
}

void CSliderCtrl::SetRange(int nMin, int nMax, BOOL bRedraw)
{
    SetRangeMin(nMin, FALSE);
    SetRangeMax(nMax, bRedraw);
}

void CSliderCtrl::SetRangeMin(int nMin, BOOL bRedraw)
{
    SendMessage(TBM_SETRANGEMIN, static_cast<WPARAM>(bRedraw), nMin);
}

void CSliderCtrl::SetRangeMax(int nMax, BOOL bRedraw)
{
    SendMessage(TBM_SETRANGEMAX, static_cast<WPARAM>(bRedraw), nMax);
}

int CSliderCtrl::GetPos() const
{
    return static_cast<int>(SendMessage(TBM_GETPOS, 0, 0));
}

void CSliderCtrl::SetPos(int nPos)
{
    SendMessage(TBM_SETPOS, TRUE, nPos);
}

void CSliderCtrl::SetTicFreq(int nFreq)
{
    SendMessage(TBM_SETTICFREQ, static_cast<WPARAM>(nFreq), 0);
}

void CSliderCtrl::GetThumbRect(LPRECT lprc) const
{
    SendMessage(TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(lprc));
}

void CSliderCtrl::GetChannelRect(LPRECT lprc) const
{
    SendMessage(TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(lprc));
}

BOOL CSpinButtonCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, UPDOWN_CLASSW, nullptr, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

CWnd* CSpinButtonCtrl::SetBuddy(CWnd* pWndBuddy)
{
    return FromHandle(reinterpret_cast<HWND>(SendMessage(UDM_SETBUDDY, reinterpret_cast<WPARAM>(pWndBuddy->m_hWnd))));
}

CWnd* CSpinButtonCtrl::GetBuddy() const
{
    return FromHandle(reinterpret_cast<HWND>(SendMessage(UDM_GETBUDDY)));
}

int CSpinButtonCtrl::SetPos(int nPos)
{
    return static_cast<int>(SendMessage(UDM_SETPOS32, 0, nPos));
}

int CSpinButtonCtrl::GetPos() const
{
    return static_cast<int>(SendMessage(UDM_GETPOS32, 0, 0));
}

void CSpinButtonCtrl::SetRange(short nLower, short nUpper)
{
    SendMessage(UDM_SETRANGE, 0, MAKELPARAM(nUpper, nLower));
}

void CSpinButtonCtrl::SetRange32(int nLower, int nUpper)
{
    SendMessage(UDM_SETRANGE32, static_cast<WPARAM>(nLower), nUpper);
}
