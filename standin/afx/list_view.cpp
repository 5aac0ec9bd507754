// CListCtrl over the operating system's list view.
#include "standin/afx/afx_controls.h"

IMPLEMENT_DYNAMIC(CListCtrl, CWnd)

BOOL CListCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, WC_LISTVIEWW, nullptr, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

int CListCtrl::GetItemCount() const
{
    return static_cast<int>(SendMessage(LVM_GETITEMCOUNT, 0, 0));
}

void CListCtrl::SetImageList(CImageList* pImageList, int nImageListType)
{
    SendMessage(LVM_SETIMAGELIST, static_cast<WPARAM>(nImageListType),
                reinterpret_cast<LPARAM>(pImageList ? pImageList->m_hImageList : nullptr));
}

int CListCtrl::InsertColumn(int nCol, LPCWSTR lpszColumnHeading, int nFormat, int nWidth, int nSubItem)
{
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_FMT | (nWidth == -1 ? 0U : LVCF_WIDTH) | (nSubItem == -1 ? 0U : LVCF_SUBITEM);
    column.pszText = const_cast<LPWSTR>(lpszColumnHeading);
    column.fmt = nFormat;
    column.cx = nWidth;
    column.iSubItem = nSubItem;
    return static_cast<int>(
        SendMessage(LVM_INSERTCOLUMNW, static_cast<WPARAM>(nCol), reinterpret_cast<LPARAM>(&column)));
}

int CListCtrl::InsertItem(int nItem, LPCWSTR lpszItem, int nImage)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = nItem;
    item.pszText = const_cast<LPWSTR>(lpszItem);
    item.iImage = nImage;
    return static_cast<int>(SendMessage(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

BOOL CListCtrl::SetItemText(int nItem, int nSubItem, LPCWSTR lpszText)
{
    LVITEMW item{};
    item.iSubItem = nSubItem;
    item.pszText = const_cast<LPWSTR>(lpszText);
    return static_cast<BOOL>(
        SendMessage(LVM_SETITEMTEXTW, static_cast<WPARAM>(nItem), reinterpret_cast<LPARAM>(&item)));
}

int CListCtrl::GetNextItem(int nItem, int nFlags) const
{
    return static_cast<int>(SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(nItem), MAKELPARAM(nFlags, 0)));
}

CEdit* CListCtrl::EditLabel(int nItem)
{
    return static_cast<CEdit*>(
        CEdit::FromHandle(reinterpret_cast<HWND>(SendMessage(LVM_EDITLABELW, static_cast<WPARAM>(nItem), 0))));
}
