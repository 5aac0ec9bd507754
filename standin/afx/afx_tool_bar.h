// CToolBar: the operating system's toolbar control as a dockable bar.
#pragma once

#include "standin/afx/afx_control_bar.h"

class HALVORAN_STANDIN_API CToolBar : public CControlBar
{
    DECLARE_DYNAMIC(CToolBar)
public:
    CToolBar();
    ~CToolBar() override;

    using CWnd::Create;
    virtual BOOL Create(CWnd* pParentWnd, DWORD dwStyle = WS_CHILD | WS_VISIBLE | CBRS_TOP, UINT nID = AFX_IDW_TOOLBAR);
    using CWnd::CreateEx;
    virtual BOOL CreateEx(CWnd* pParentWnd, DWORD dwCtrlStyle = TBSTYLE_FLAT,
                          DWORD dwStyle = WS_CHILD | WS_VISIBLE | CBRS_ALIGN_TOP, CRect rcBorders = CRect(0, 0, 0, 0),
                          UINT nID = AFX_IDW_TOOLBAR);
    /// The template (resource type 241, in 16-bit words: version 1, width and height of the images, number of entries,
    /// then the commands, 0 for a separator) and the bitmap of the same number. False when either is missing.
    BOOL LoadToolBar(LPCWSTR lpszResourceName);
    BOOL LoadToolBar(UINT nIDResource);
    BOOL LoadBitmap(UINT nIDResource);
    BOOL SetButtons(const UINT* lpIDArray, int nIDCount);
    void SetSizes(SIZE sizeButton, SIZE sizeImage);
    int GetCount() const;
    int CommandToIndex(UINT nIDFind) const;
    UINT GetItemID(int nIndex) const;
    virtual void GetItemRect(int nIndex, LPRECT lpRect) const;
    UINT GetButtonStyle(int nIndex) const;
    void SetButtonStyle(int nIndex, UINT nStyle);
    void GetButtonInfo(int nIndex, UINT& nID, UINT& nStyle, int& iImage) const;
    void SetButtonInfo(int nIndex, UINT nID, UINT nStyle, int iImage);

    CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz) override;
    CSize CalcDynamicLayout(int nLength, DWORD dwMode) override;
    void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) override;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    BOOL hitsTool(CPoint point) const override;

    afx_msg void OnNcCalcSize(BOOL bCalcValidRects, NCCALCSIZE_PARAMS* lpncsp);
    afx_msg void OnNcPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnPaint();
    afx_msg LRESULT OnNcHitTest(CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    /// The extent of the buttons in one row, or in one column.
    CSize layOut(BOOL bHorz);
    BOOL useBitmap(CBitmap& bitmap);
    void giveTipText(NMTTDISPINFOW* info) const;
    /// Sends one of the control's own messages.
    LRESULT control(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    SIZE m_sizeImage{16, 15};
    SIZE m_sizeButton{23, 22};
    CBitmap m_bitmap; // given to the control, which draws from it
};
