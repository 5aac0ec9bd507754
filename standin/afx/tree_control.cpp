// CTreeCtrl over the operating system's tree.
#include "standin/afx/afx_controls.h"

IMPLEMENT_DYNAMIC(CTreeCtrl, CWnd)

namespace {

HTREEITEM insertItem(CTreeCtrl& tree, UINT mask, LPCWSTR text, int image, int selectedImage, HTREEITEM parent,
                     HTREEITEM after)
{
    TVINSERTSTRUCTW insert{};
    insert.hParent = parent;
    insert.hInsertAfter = after;
    insert.item.mask = mask;
    insert.item.pszText = const_cast<LPWSTR>(text);
    insert.item.iImage = image;
    insert.item.iSelectedImage = selectedImage;
    return tree.InsertItem(&insert);
}

} // namespace

BOOL CTreeCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, WC_TREEVIEWW, nullptr, dwStyle | WS_CHILD, rect, pParentWnd, nID);
}

UINT CTreeCtrl::GetCount() const
{
    return static_cast<UINT>(SendMessage(TVM_GETCOUNT, 0, 0));
}

HIMAGELIST CTreeCtrl::SetImageList(CImageList* pImageList, int nImageListType)
{
    return reinterpret_cast<HIMAGELIST>(
        SendMessage(TVM_SETIMAGELIST, static_cast<WPARAM>(nImageListType),
                    reinterpret_cast<LPARAM>(pImageList ? pImageList->m_hImageList : nullptr)));
}

BOOL CTreeCtrl::GetItem(TVITEMW* pItem) const
{
    return static_cast<BOOL>(SendMessage(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(pItem)));
}

BOOL CTreeCtrl::SetItem(TVITEMW* pItem)
{
    return static_cast<BOOL>(SendMessage(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(pItem)));
}

CString CTreeCtrl::GetItemText(HTREEITEM hItem) const
{
    CString text;
    TVITEMW item{};
    item.hItem = hItem;
    item.mask = TVIF_TEXT;
    // The control does not tell a text's length: the room grows until the text fits.
    for (int room = 128;; room *= 2) {
        item.pszText = text.GetBufferSetLength(room);
        item.cchTextMax = room;
        if (!GetItem(&item))
            return {};
        text = CString(item.pszText);
        if (text.GetLength() < room - 1)
            return text;
    }
}

BOOL CTreeCtrl::SetItemText(HTREEITEM hItem, LPCWSTR lpszItem)
{
    TVITEMW item{};
    item.hItem = hItem;
    item.mask = TVIF_TEXT;
    item.pszText = const_cast<LPWSTR>(lpszItem);
    return SetItem(&item);
}

BOOL CTreeCtrl::GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const
{
    TVITEMW item{};
    item.hItem = hItem;
    item.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    if (!GetItem(&item))
        return FALSE;
    nImage = item.iImage;
    nSelectedImage = item.iSelectedImage;
    return TRUE;
}

DWORD_PTR CTreeCtrl::GetItemData(HTREEITEM hItem) const
{
    TVITEMW item{};
    item.hItem = hItem;
    item.mask = TVIF_PARAM;
    return GetItem(&item) ? static_cast<DWORD_PTR>(item.lParam) : 0;
}

BOOL CTreeCtrl::SetItemData(HTREEITEM hItem, DWORD_PTR dwData)
{
    TVITEMW item{};
    item.hItem = hItem;
    item.mask = TVIF_PARAM;
    item.lParam = static_cast<LPARAM>(dwData);
    return SetItem(&item);
}

UINT CTreeCtrl::GetItemState(HTREEITEM hItem, UINT nStateMask) const
{
    return static_cast<UINT>(
        SendMessage(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(hItem), static_cast<LPARAM>(nStateMask)));
}

BOOL CTreeCtrl::ItemHasChildren(HTREEITEM hItem) const
{
    return GetChildItem(hItem) != nullptr;
}

HTREEITEM CTreeCtrl::GetNextItem(HTREEITEM hItem, UINT nCode) const
{
    return reinterpret_cast<HTREEITEM>(SendMessage(TVM_GETNEXTITEM, nCode, reinterpret_cast<LPARAM>(hItem)));
}

HTREEITEM CTreeCtrl::GetChildItem(HTREEITEM hItem) const
{
    return GetNextItem(hItem, TVGN_CHILD);
}

HTREEITEM CTreeCtrl::GetNextSiblingItem(HTREEITEM hItem) const
{
    return GetNextItem(hItem, TVGN_NEXT);
}

HTREEITEM CTreeCtrl::GetParentItem(HTREEITEM hItem) const
{
    return GetNextItem(hItem, TVGN_PARENT);
}

HTREEITEM CTreeCtrl::GetSelectedItem() const
{
    return GetNextItem(nullptr, TVGN_CARET);
}

HTREEITEM CTreeCtrl::GetRootItem() const
{
    return GetNextItem(nullptr, TVGN_ROOT);
}

HTREEITEM CTreeCtrl::InsertItem(LPTVINSERTSTRUCTW lpInsertStruct)
{
    return reinterpret_cast<HTREEITEM>(SendMessage(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(lpInsertStruct)));
}

HTREEITEM CTreeCtrl::InsertItem(LPCWSTR lpszItem, HTREEITEM hParent, HTREEITEM hInsertAfter)
{
    return insertItem(*this, TVIF_TEXT, lpszItem, 0, 0, hParent, hInsertAfter);
}

HTREEITEM CTreeCtrl::InsertItem(LPCWSTR lpszItem, int nImage, int nSelectedImage, HTREEITEM hParent,
                                HTREEITEM hInsertAfter)
{
    return insertItem(*this, TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE, lpszItem, nImage, nSelectedImage, hParent,
                      hInsertAfter);
}

BOOL CTreeCtrl::DeleteItem(HTREEITEM hItem)
{
    return static_cast<BOOL>(SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(hItem)));
}

BOOL CTreeCtrl::DeleteAllItems()
{
    return static_cast<BOOL>(SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT)));
}

BOOL CTreeCtrl::Expand(HTREEITEM hItem, UINT nCode)
{
    return static_cast<BOOL>(SendMessage(TVM_EXPAND, nCode, reinterpret_cast<LPARAM>(hItem)));
}

BOOL CTreeCtrl::SelectItem(HTREEITEM hItem)
{
    return static_cast<BOOL>(SendMessage(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(hItem)));
}

BOOL CTreeCtrl::EnsureVisible(HTREEITEM hItem)
{
    return static_cast<BOOL>(SendMessage(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(hItem)));
}
