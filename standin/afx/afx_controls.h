// The operating system's controls.
#pragma once

#include "standin/afx/afx_image_list.h"
#include "standin/afx/afx_window.h"

class HALVORAN_STANDIN_API CStatic : public CWnd
{
    DECLARE_DYNAMIC(CStatic)
public:
    CStatic() = default;
    virtual BOOL Create(LPCWSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID = 0xFFFF);
    HBITMAP SetBitmap(HBITMAP hBitmap);
    HBITMAP GetBitmap() const;
    HICON SetIcon(HICON hIcon);
    using CWnd::Create;
};

class HALVORAN_STANDIN_API CButton : public CWnd
{
    DECLARE_DYNAMIC(CButton)
public:
    CButton() = default;
    virtual BOOL Create(LPCWSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    UINT GetState() const;
    void SetState(BOOL bHighlight);
    int GetCheck() const;
    void SetCheck(int nCheck);
    UINT GetButtonStyle() const;
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE);
    HBITMAP SetBitmap(HBITMAP hBitmap);
    HICON SetIcon(HICON hIcon);
    using CWnd::Create;
};

class HALVORAN_STANDIN_API CEdit : public CWnd
{
    DECLARE_DYNAMIC(CEdit)
public:
    CEdit() = default;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    int GetLineCount() const;
    BOOL GetModify() const;
    void SetModify(BOOL bModified = TRUE);
    DWORD GetSel() const;
    void GetSel(int& nStartChar, int& nEndChar) const;
    void SetSel(DWORD dwSelection, BOOL bNoScroll = FALSE);
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE);
    void ReplaceSel(LPCWSTR lpszNewText, BOOL bCanUndo = FALSE);
    void LimitText(int nChars = 0);
    BOOL SetReadOnly(BOOL bReadOnly = TRUE);
    void LineScroll(int nLines, int nChars = 0);
    using CWnd::Create;
};

class HALVORAN_STANDIN_API CComboBox : public CWnd
{
    DECLARE_DYNAMIC(CComboBox)
public:
    CComboBox() = default;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    int GetCount() const;
    int GetCurSel() const;
    int SetCurSel(int nSelect);
    DWORD_PTR GetItemData(int nIndex) const;
    int SetItemData(int nIndex, DWORD_PTR dwItemData);
    int GetLBText(int nIndex, LPWSTR lpszText) const;
    void GetLBText(int nIndex, CString& rString) const;
    int GetLBTextLen(int nIndex) const;
    int AddString(LPCWSTR lpszString);
    int DeleteString(UINT nIndex);
    int InsertString(int nIndex, LPCWSTR lpszString);
    void ResetContent();
    int FindString(int nStartAfter, LPCWSTR lpszString) const;
    int FindStringExact(int nIndexStart, LPCWSTR lpszFind) const;
    int SelectString(int nStartAfter, LPCWSTR lpszString);
    BOOL LimitText(int nMaxChars);
    void ShowDropDown(BOOL bShowIt = TRUE);
    int SetDroppedWidth(UINT nWidth);
    using CWnd::Create;
};

class HALVORAN_STANDIN_API CScrollBar : public CWnd
{
    DECLARE_DYNAMIC(CScrollBar)
public:
    CScrollBar() = default;
    /// The object of the control that sent a scroll message: null for a window's own scroll bar. The object may be
    /// another control's, a slider's for instance; only what CWnd offers may then be asked of it.
    static CScrollBar* FromControl(HWND hWnd);
    using CWnd::Create;
};

class HALVORAN_STANDIN_API CSliderCtrl : public CWnd
{
    DECLARE_DYNAMIC(CSliderCtrl)
public:
    CSliderCtrl() = default;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    int GetLineSize() const;
    int SetLineSize(int nSize);
    int GetPageSize() const;
    int SetPageSize(int nSize);
    int GetRangeMax() const;
    int GetRangeMin() const;
    void GetRange(int& nMin, int& nMax) const;
    void SetRange(int nMin, int nMax, BOOL bRedraw = FALSE);
    void SetRangeMin(int nMin, BOOL bRedraw = FALSE);
    void SetRangeMax(int nMax, BOOL bRedraw = FALSE);
    int GetPos() const;
    void SetPos(int nPos);
    void SetTicFreq(int nFreq);
    void GetThumbRect(LPRECT lprc) const;
    void GetChannelRect(LPRECT lprc) const;
    using CWnd::Create;
};

class HALVORAN_STANDIN_API CSpinButtonCtrl : public CWnd
{
    DECLARE_DYNAMIC(CSpinButtonCtrl)
public:
    CSpinButtonCtrl() = default;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    CWnd* SetBuddy(CWnd* pWndBuddy);
    CWnd* GetBuddy() const;
    int SetPos(int nPos);
    int GetPos() const;
    void SetRange(short nLower, short nUpper);
    void SetRange32(int nLower, int nUpper);
    using CWnd::Create;
};

class HALVORAN_STANDIN_API CListCtrl : public CWnd
{
    DECLARE_DYNAMIC(CListCtrl)
public:
    CListCtrl() = default;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    int GetItemCount() const;
    /// The list stays the caller's and must outlive the control.
    void SetImageList(CImageList* pImageList, int nImageListType);
    int InsertColumn(int nCol, LPCWSTR lpszColumnHeading, int nFormat = LVCFMT_LEFT, int nWidth = -1,
                     int nSubItem = -1);
    int InsertItem(int nItem, LPCWSTR lpszItem, int nImage);
    BOOL SetItemText(int nItem, int nSubItem, LPCWSTR lpszText);
    int GetNextItem(int nItem, int nFlags) const;
    /// The edit control, whose object is temporary.
    CEdit* EditLabel(int nItem);
    using CWnd::Create;
};

class HALVORAN_STANDIN_API CTreeCtrl : public CWnd
{
    DECLARE_DYNAMIC(CTreeCtrl)
public:
    CTreeCtrl() = default;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    UINT GetCount() const;
    /// The list stays the caller's and must outlive the control; the former one is returned as a handle.
    HIMAGELIST SetImageList(CImageList* pImageList, int nImageListType);
    BOOL GetItem(TVITEMW* pItem) const;
    BOOL SetItem(TVITEMW* pItem);
    CString GetItemText(HTREEITEM hItem) const;
    BOOL SetItemText(HTREEITEM hItem, LPCWSTR lpszItem);
    BOOL GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const;
    DWORD_PTR GetItemData(HTREEITEM hItem) const;
    BOOL SetItemData(HTREEITEM hItem, DWORD_PTR dwData);
    UINT GetItemState(HTREEITEM hItem, UINT nStateMask) const;
    BOOL ItemHasChildren(HTREEITEM hItem) const;
    HTREEITEM GetNextItem(HTREEITEM hItem, UINT nCode) const;
    HTREEITEM GetChildItem(HTREEITEM hItem) const;
    HTREEITEM GetNextSiblingItem(HTREEITEM hItem) const;
    HTREEITEM GetParentItem(HTREEITEM hItem) const;
    HTREEITEM GetSelectedItem() const;
    HTREEITEM GetRootItem() const;
    HTREEITEM InsertItem(LPTVINSERTSTRUCTW lpInsertStruct);
    HTREEITEM InsertItem(LPCWSTR lpszItem, HTREEITEM hParent = TVI_ROOT, HTREEITEM hInsertAfter = TVI_LAST);
    HTREEITEM InsertItem(LPCWSTR lpszItem, int nImage, int nSelectedImage, HTREEITEM hParent = TVI_ROOT,
                         HTREEITEM hInsertAfter = TVI_LAST);
    BOOL DeleteItem(HTREEITEM hItem);
    BOOL DeleteAllItems();
    BOOL Expand(HTREEITEM hItem, UINT nCode);
    BOOL SelectItem(HTREEITEM hItem);
    BOOL EnsureVisible(HTREEITEM hItem);
    using CWnd::Create;
};

/// The tips of a window's tools, shown when the mouse rests on one.
class HALVORAN_STANDIN_API CToolTipCtrl : public CWnd
{
    DECLARE_DYNAMIC(CToolTipCtrl)
public:
    CToolTipCtrl() = default;
    virtual BOOL Create(CWnd* pParentWnd, DWORD dwStyle = 0);
    /// Without a rectangle the tool is the whole window pWnd. Messages reach the tip through RelayEvent.
    BOOL AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool = nullptr, UINT_PTR nIDTool = 0);
    BOOL AddTool(CWnd* pWnd, LPCWSTR lpszText = LPSTR_TEXTCALLBACKW, LPCRECT lpRectTool = nullptr,
                 UINT_PTR nIDTool = 0);
    void DelTool(CWnd* pWnd, UINT_PTR nIDTool = 0);
    void UpdateTipText(LPCWSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    void UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    void GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool = 0) const;
    void SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect);
    void RelayEvent(LPMSG lpMsg);
    void Activate(BOOL bActivate);
    int SetMaxTipWidth(int iWidth);
    void SetDelayTime(UINT nDelay);
    void SetDelayTime(DWORD dwDuration, int iTime);
    void Update();
    void Pop();
    using CWnd::Create;
};
