#include "standin/afx/afx_frame.h"
#include "standin/afx/afx_view.h"

IMPLEMENT_DYNAMIC(CView, CWnd)

BEGIN_MESSAGE_MAP(CView, CWnd)
ON_WM_PAINT()
ON_WM_DESTROY()
ON_WM_MOUSEACTIVATE()
END_MESSAGE_MAP()

CView::~CView() = default;

BOOL CView::PreCreateWindow(CREATESTRUCT& cs)
{
    if (!cs.lpszClass) {
        cs.lpszClass = AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    }
    return CWnd::PreCreateWindow(cs);
}

void CView::PostNcDestroy()
{
    delete this;
}

void CView::OnDestroy()
{
    CFrameWnd* frame = GetParentFrame();
    if (frame && frame->GetActiveView() == this)
        frame->SetActiveView(nullptr);
    CWnd::OnDestroy();
}

BOOL CView::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    return CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CView::OnInitialUpdate()
{
    Invalidate();
}

void CView::OnPrepareDC(CDC*) {}

void CView::OnPaint()
{
    CPaintDC context(this);
    OnPrepareDC(&context);
    OnDraw(&context);
}

void CView::OnActivateView(BOOL bActivate, CView*, CView*)
{
    // A frame that is not the active window is not brought to the front by that.
    if (bActivate && ::GetActiveWindow() == GetTopLevelParent()->m_hWnd && !GetTopLevelParent()->IsIconic())
        SetFocus();
}

int CView::OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message)
{
    const int result = CWnd::OnMouseActivate(pDesktopWnd, nHitTest, message);
    CFrameWnd* frame = GetParentFrame();
    if (frame && result != MA_NOACTIVATE && result != MA_NOACTIVATEANDEAT) {
        if (frame->GetActiveView() != this) {
            frame->SetActiveView(this);
        } else {
            OnActivateView(TRUE, this, this);
        }
    }
    return result;
}
