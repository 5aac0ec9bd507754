// CView: the window inside a frame that draws a document.
#pragma once

#include "standin/afx/afx_window.h"

/// The object deletes itself when its window is destroyed.
class HALVORAN_STANDIN_API CView : public CWnd
{
    DECLARE_DYNAMIC(CView)
public:
    ~CView() override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    virtual void OnInitialUpdate();

protected:
    CView() = default;
    virtual void OnDraw(CDC* pDC) = 0;
    virtual void OnPrepareDC(CDC* pDC);
    virtual void OnActivateView(BOOL bActivate, CView* pActivateView, CView* pDeactiveView);
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    void PostNcDestroy() override;

    afx_msg void OnPaint();
    afx_msg void OnDestroy();
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);

    friend class CFrameWnd;
    friend class CMDIChildWnd;
    DECLARE_MESSAGE_MAP()
};
