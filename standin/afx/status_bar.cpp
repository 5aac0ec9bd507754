#include <algorithm>

#include "standin/afx/afx_control_bar.h"

IMPLEMENT_DYNAMIC(CStatusBar, CControlBar)

BEGIN_MESSAGE_MAP(CStatusBar, CControlBar)
ON_WM_SIZE()
ON_WM_PAINT()
ON_MESSAGE(WM_SETTEXT, &CStatusBar::OnSetText)
END_MESSAGE_MAP()

BOOL CStatusBar::Create(CWnd* pParentWnd, DWORD dwStyle, UINT nID)
{
    m_dwStyle = dwStyle & CBRS_ALL;
    SetBorders();
    // Placed by the frame's layout, not by the control's own habit of sitting at the bottom.
    const DWORD style = (dwStyle & ~static_cast<DWORD>(CBRS_ALL)) | WS_CHILD | CCS_NOPARENTALIGN | CCS_NOMOVEY |
                        CCS_NODIVIDER | CCS_NORESIZE | SBARS_SIZEGRIP;
    return CreateEx(0, STATUSCLASSNAMEW, nullptr, style, CRect(0, 0, 0, 0), pParentWnd, nID);
}

BOOL CStatusBar::SetIndicators(const UINT* lpIDArray, int nIDCount)
{
    m_panes.clear();
    CClientDC context(this);
    CFont* font = GetFont();
    CFont* former = font ? context.SelectObject(font) : nullptr;
    for (int i = 0; i < nIDCount; ++i) {
        Pane pane{lpIDArray[i], 0, CString()};
        if (pane.id != 0)
            pane.text.LoadString(pane.id);
        if (i > 0)
            pane.width = context.GetTextExtent(pane.text).cx + 8;
        m_panes.push_back(pane);
    }
    if (former)
        context.SelectObject(former);
    layOutPanes();
    for (int i = 0; i < nIDCount; ++i)
        SetPaneText(i, m_panes[static_cast<std::size_t>(i)].text);
    return TRUE;
}

void CStatusBar::SetPaneInfo(int nIndex, UINT nID, UINT nStyle, int cxWidth)
{
    Pane& pane = m_panes.at(static_cast<std::size_t>(nIndex));
    pane.id = nID;
    pane.width = nStyle & SBPS_STRETCH ? 0 : cxWidth;
    layOutPanes();
}

void CStatusBar::layOutPanes()
{
    if (!m_hWnd || m_panes.empty())
        return;
    CRect client;
    GetClientRect(&client);
    constexpr int sizeGrip = 16;
    int fixed = sizeGrip;
    int stretching = 0;
    for (const Pane& pane : m_panes) {
        fixed += pane.width;
        stretching += pane.width == 0;
    }
    const int share = stretching ? std::max(0, (client.Width() - fixed) / stretching) : 0;
    std::vector<int> edges;
    int edge = 0;
    for (const Pane& pane : m_panes) {
        edge += pane.width ? pane.width : share;
        edges.push_back(edge);
    }
    DefWindowProc(SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
}

void CStatusBar::GetPaneText(int nIndex, CString& rString) const
{
    rString = m_panes.at(static_cast<std::size_t>(nIndex)).text;
}

BOOL CStatusBar::SetPaneText(int nIndex, LPCWSTR lpszNewText, BOOL bUpdate)
{
    if (nIndex < 0 || static_cast<std::size_t>(nIndex) >= m_panes.size())
        return FALSE;
    m_panes[static_cast<std::size_t>(nIndex)].text = lpszNewText;
    DefWindowProc(SB_SETTEXTW, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpszNewText));
    if (bUpdate)
        UpdateWindow();
    return TRUE;
}

CSize CStatusBar::CalcFixedLayout(BOOL bStretch, BOOL)
{
    CClientDC context(this);
    CFont* font = GetFont();
    CFont* former = font ? context.SelectObject(font) : nullptr;
    TEXTMETRICW metrics{};
    context.GetTextMetrics(&metrics);
    if (former)
        context.SelectObject(former);
    return CSize(bStretch ? 32767 : 200, metrics.tmHeight + 8);
}

void CStatusBar::OnUpdateCmdUI(CFrameWnd* pTarget, BOOL)
{
    // The handler of a pane's command gives its text.
    class PaneState : public CCmdUI
    {
    public:
        explicit PaneState(CStatusBar& bar) : m_bar(bar) {}
        void Enable(BOOL) override { m_bEnableChanged = TRUE; }
        void SetCheck(int) override {}
        void SetText(LPCWSTR text) override
        {
            CString shown;
            m_bar.GetPaneText(static_cast<int>(m_nIndex), shown);
            if (shown != text)
                m_bar.SetPaneText(static_cast<int>(m_nIndex), text);
        }

    private:
        CStatusBar& m_bar;
    } state(*this);
    state.m_nIndexMax = static_cast<UINT>(m_panes.size());
    for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; ++state.m_nIndex) {
        state.m_nID = m_panes[state.m_nIndex].id;
        state.DoUpdate(pTarget, FALSE);
    }
}

void CStatusBar::OnSize(UINT nType, int cx, int cy)
{
    CControlBar::OnSize(nType, cx, cy);
    layOutPanes();
}

void CStatusBar::OnPaint()
{
    Default(); // the control paints itself
}

LRESULT CStatusBar::OnSetText(WPARAM, LPARAM lParam)
{
    if (m_panes.empty())
        return Default();
    return SetPaneText(0, reinterpret_cast<LPCWSTR>(lParam));
}
