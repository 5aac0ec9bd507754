// List boxes and combination boxes.
#include "standin/afx/afx_controls.h"

IMPLEMENT_DYNAMIC(CComboBox, CWnd)
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
