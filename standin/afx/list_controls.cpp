// List boxes and combination boxes.
#include "standin/afx/afx_controls.h"

IMPLEMENT_DYNAMIC(CComboBox, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)

BOOL CComboBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, WC_COMBOBOXW, nullptr, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

int CComboBox::GetCount() const
{
    return static_cast<int>(SendMessage(CB_GETCOUNT, 0, 0));
}

int CComboBox::GetCurSel() const
{
    return static_cast<int>(SendMessage(CB_GETCURSEL, 0, 0));
}

int CComboBox::SetCurSel(int nSelect)
{
    return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(nSelect), 0));
}

DWORD_PTR CComboBox::GetItemData(int nIndex) const
{
    return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, static_cast<WPARAM>(nIndex), 0));
}

int CComboBox::SetItemData(int nIndex, DWORD_PTR dwItemData)
{
    return static_cast<int>(SendMessage(CB_SETITEMDATA, static_cast<WPARAM>(nIndex), static_cast<LPARAM>(dwItemData)));
}

int CComboBox::GetLBText(int nIndex, LPWSTR lpszText) const
{
    return static_cast<int>(SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpszText)));
}

void CComboBox::GetLBText(int nIndex, CString& rString) const
{
    rString.Empty();
    const int length = GetLBTextLen(nIndex);
    if (length == CB_ERR)
        return;
    GetLBText(nIndex, rString.GetBufferSetLength(length));
    rString.ReleaseBuffer();
}

int CComboBox::GetLBTextLen(int nIndex) const
{
    return static_cast<int>(SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(nIndex), 0));
}

int CComboBox::AddString(LPCWSTR lpszString)
{
    return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszString)));
}

int CComboBox::DeleteString(UINT nIndex)
{
    return static_cast<int>(SendMessage(CB_DELETESTRING, nIndex, 0));
}

int CComboBox::InsertString(int nIndex, LPCWSTR lpszString)
{
    return static_cast<int>(
        SendMessage(CB_INSERTSTRING, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpszString)));
}

void CComboBox::ResetContent()
{
    SendMessage(CB_RESETCONTENT, 0, 0);
}

int CComboBox::FindString(int nStartAfter, LPCWSTR lpszString) const
{
    return static_cast<int>(
        SendMessage(CB_FINDSTRING, static_cast<WPARAM>(nStartAfter), reinterpret_cast<LPARAM>(lpszString)));
}

int CComboBox::FindStringExact(int nIndexStart, LPCWSTR lpszFind) const
{
    return static_cast<int>(
        SendMessage(CB_FINDSTRINGEXACT, static_cast<WPARAM>(nIndexStart), reinterpret_cast<LPARAM>(lpszFind)));
}

int CComboBox::SelectString(int nStartAfter, LPCWSTR lpszString)
{
    return static_cast<int>(
        SendMessage(CB_SELECTSTRING, static_cast<WPARAM>(nStartAfter), reinterpret_cast<LPARAM>(lpszString)));
}

BOOL CComboBox::LimitText(int nMaxChars)
{
    return static_cast<BOOL>(SendMessage(CB_LIMITTEXT, static_cast<WPARAM>(nMaxChars), 0));
}

void CComboBox::ShowDropDown(BOOL bShowIt)
{
    SendMessage(CB_SHOWDROPDOWN, static_cast<WPARAM>(bShowIt), 0);
}

int CComboBox::SetDroppedWidth(UINT nWidth)
{
    return static_cast<int>(SendMessage(CB_SETDROPPEDWIDTH, nWidth, 0));
}

BOOL CListBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, WC_LISTBOXW, nullptr, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

int CListBox::GetCount() const
{
    return static_cast<int>(SendMessage(LB_GETCOUNT, 0, 0));
}

int CListBox::GetCurSel() const
{
    return static_cast<int>(SendMessage(LB_GETCURSEL, 0, 0));
}

int CListBox::SetCurSel(int nSelect)
{
    return static_cast<int>(SendMessage(LB_SETCURSEL, static_cast<WPARAM>(nSelect), 0));
}

int CListBox::GetSel(int nIndex) const
{
    return static_cast<int>(SendMessage(LB_GETSEL, static_cast<WPARAM>(nIndex), 0));
}

int CListBox::SetSel(int nIndex, BOOL bSelect)
{
    return static_cast<int>(SendMessage(LB_SETSEL, static_cast<WPARAM>(bSelect), nIndex));
}

int CListBox::GetSelCount() const
{
    return static_cast<int>(SendMessage(LB_GETSELCOUNT, 0, 0));
}

int CListBox::GetSelItems(int nMaxItems, LPINT rgIndex) const
{
    return static_cast<int>(
        SendMessage(LB_GETSELITEMS, static_cast<WPARAM>(nMaxItems), reinterpret_cast<LPARAM>(rgIndex)));
}

DWORD_PTR CListBox::GetItemData(int nIndex) const
{
    return static_cast<DWORD_PTR>(SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(nIndex), 0));
}

int CListBox::SetItemData(int nIndex, DWORD_PTR dwItemData)
{
    return static_cast<int>(SendMessage(LB_SETITEMDATA, static_cast<WPARAM>(nIndex), static_cast<LPARAM>(dwItemData)));
}

int CListBox::GetText(int nIndex, LPWSTR lpszBuffer) const
{
    return static_cast<int>(SendMessage(LB_GETTEXT, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpszBuffer)));
}

void CListBox::GetText(int nIndex, CString& rString) const
{
    rString.Empty();
    const int length = GetTextLen(nIndex);
    if (length == LB_ERR)
        return;
    GetText(nIndex, rString.GetBufferSetLength(length));
    rString.ReleaseBuffer();
}

int CListBox::GetTextLen(int nIndex) const
{
    return static_cast<int>(SendMessage(LB_GETTEXTLEN, static_cast<WPARAM>(nIndex), 0));
}

int CListBox::GetTopIndex() const
{
    return static_cast<int>(SendMessage(LB_GETTOPINDEX, 0, 0));
}

int CListBox::SetTopIndex(int nIndex)
{
    return static_cast<int>(SendMessage(LB_SETTOPINDEX, static_cast<WPARAM>(nIndex), 0));
}

int CListBox::AddString(LPCWSTR lpszItem)
{
    return static_cast<int>(SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszItem)));
}

int CListBox::DeleteString(UINT nIndex)
{
    return static_cast<int>(SendMessage(LB_DELETESTRING, nIndex, 0));
}

int CListBox::InsertString(int nIndex, LPCWSTR lpszItem)
{
    return static_cast<int>(
        SendMessage(LB_INSERTSTRING, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpszItem)));
}

void CListBox::ResetContent()
{
    SendMessage(LB_RESETCONTENT, 0, 0);
}

int CListBox::FindString(int nStartAfter, LPCWSTR lpszItem) const
{
    return static_cast<int>(
        SendMessage(LB_FINDSTRING, static_cast<WPARAM>(nStartAfter), reinterpret_cast<LPARAM>(lpszItem)));
}

int CListBox::FindStringExact(int nIndexStart, LPCWSTR lpszFind) const
{
    return static_cast<int>(
        SendMessage(LB_FINDSTRINGEXACT, static_cast<WPARAM>(nIndexStart), reinterpret_cast<LPARAM>(lpszFind)));
}

int CListBox::SelectString(int nStartAfter, LPCWSTR lpszItem)
{
    return static_cast<int>(
        SendMessage(LB_SELECTSTRING, static_cast<WPARAM>(nStartAfter), reinterpret_cast<LPARAM>(lpszItem)));
}

int CListBox::GetItemRect(int nIndex, LPRECT lpRect) const
{
    return static_cast<int>(SendMessage(LB_GETITEMRECT, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpRect)));
}

int CListBox::SetItemHeight(int nIndex, UINT cyItemHeight)
{
    return static_cast<int>(
        SendMessage(LB_SETITEMHEIGHT, static_cast<WPARAM>(nIndex), static_cast<LPARAM>(cyItemHeight)));
}

BOOL CListBox::SetTabStops(int nTabStops, LPINT rgTabStops)
{
    return static_cast<BOOL>(
        SendMessage(LB_SETTABSTOPS, static_cast<WPARAM>(nTabStops), reinterpret_cast<LPARAM>(rgTabStops)));
}

void CListBox::DrawItem(LPDRAWITEMSTRUCT) {}

void CListBox::MeasureItem(LPMEASUREITEMSTRUCT) {}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    // The box draws itself, and its parent has no part in it.
    if (message == WM_DRAWITEM) {
        DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    } else if (message == WM_MEASUREITEM) {
        MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
    } else {
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    }
    *pResult = TRUE;
    return TRUE;
}
