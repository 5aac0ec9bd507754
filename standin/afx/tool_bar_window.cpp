// CToolBar: layout, edges, tips and the states of the buttons.
#include <algorithm>

#include "standin/afx/afx_module.h"
#include "standin/afx/afx_tool_bar.h"

CSize CToolBar::layOut(BOOL bHorz)
{
    const int count = GetCount();
    // So that separators lie across a column.
    ModifyStyle(bHorz ? CCS_VERT : 0, bHorz ? 0 : CCS_VERT);
    // In a column every button ends its line. The control lays itself out anew only for a new button, so that one whose
    // line changes is taken out and put in again.
    for (int i = 0; i < count; ++i) {
        TBBUTTON button{};
        control(TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        const BYTE former = button.fsState;
        button.fsState = static_cast<BYTE>(bHorz ? former & ~TBSTATE_WRAP : former | TBSTATE_WRAP);
        if (button.fsState == former)
            continue;
        control(TB_DELETEBUTTON, static_cast<WPARAM>(i));
        control(TB_INSERTBUTTONW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
    }
    CSize extent;
    for (int i = 0; i < count; ++i) {
        CRect rect;
        GetItemRect(i, &rect);
        extent.cx = std::max(extent.cx, rect.right);
        extent.cy = std::max(extent.cy, rect.bottom);
    }
    return extent;
}

CSize CToolBar::CalcFixedLayout(BOOL bStretch, BOOL bHorz)
{
    CSize size = layOut(bHorz);
    CRect inside(0, 0, 0, 0);
    CalcInsideRect(inside, bHorz); // turned inside out: its size is what the edges take
    size.cx -= inside.Width();
    size.cy -= inside.Height();
    if (bStretch)
        (bHorz ? size.cx : size.cy) = 32767;
    return size;
}

CSize CToolBar::CalcDynamicLayout(int, DWORD dwMode)
{
    return CalcFixedLayout(dwMode & LM_STRETCH, (dwMode & LM_HORZ) != 0);
}

void CToolBar::OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS* lpncsp)
{
    CRect rect(lpncsp->rgrc[0]);
    CalcInsideRect(rect, IsHorizontal());
    lpncsp->rgrc[0] = rect;
}

void CToolBar::OnNcPaint()
{
    CWindowDC context(this);
    CRect client;
    GetClientRect(&client);
    CRect window;
    GetWindowRect(&window);
    ClientToScreen(&client);
    client.OffsetRect(-window.left, -window.top);
    window.OffsetRect(-window.left, -window.top);
    context.ExcludeClipRect(&client);
    context.FillSolidRect(&window, ::GetSysColor(COLOR_BTNFACE));
    DrawBorders(&context, window);
    DrawGripper(&context, window);
}

BOOL CToolBar::OnEraseBkgnd(CDC* pDC)
{
    return CControlBar::OnEraseBkgnd(pDC);
}

void CToolBar::OnPaint()
{
    Default(); // the control paints its buttons
}

LRESULT CToolBar::OnNcHitTest(CPoint)
{
    return HTCLIENT; // so that the gripper sends ordinary mouse messages
}

BOOL CToolBar::hitsTool(CPoint point) const
{
    return control(TB_HITTEST, 0, reinterpret_cast<LPARAM>(static_cast<POINT*>(&point))) >= 0;
}

LRESULT CToolBar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NOTIFY) {
        // The control's own tip speaks to the control, not to the owner.
        NMHDR* header = reinterpret_cast<NMHDR*>(lParam);
        if (header->hwndFrom == reinterpret_cast<HWND>(control(TB_GETTOOLTIPS))) {
            if (header->code != static_cast<UINT>(TTN_GETDISPINFOW))
                return DefWindowProc(message, wParam, lParam);
            giveTipText(reinterpret_cast<NMTTDISPINFOW*>(header));
            return 0;
        }
    }
    return CControlBar::WindowProc(message, wParam, lParam);
}

void CToolBar::giveTipText(NMTTDISPINFOW* info) const
{
    // A command's string is its status text and its tip, parted by a newline.
    CString text;
    text.LoadString(static_cast<UINT>(info->hdr.idFrom));
    CString tip;
    AfxExtractSubString(tip, text, 1);
    lstrcpynW(info->szText, tip, static_cast<int>(std::size(info->szText)));
    info->lpszText = info->szText;
    info->hinst = nullptr;
}

BOOL CToolBar::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message == WM_NOTIFY && (m_dwStyle & CBRS_FLYBY) && m_pDockSite &&
        reinterpret_cast<NMHDR*>(lParam)->code == static_cast<UINT>(TBN_HOTITEMCHANGE)) {
        const NMTBHOTITEM* hot = reinterpret_cast<const NMTBHOTITEM*>(lParam);
        m_pDockSite->SetMessageText(hot->dwFlags & HICF_LEAVING ? AFX_IDS_IDLEMESSAGE : static_cast<UINT>(hot->idNew));
    }
    return CControlBar::OnChildNotify(message, wParam, lParam, pResult);
}

namespace {

class ButtonState : public CCmdUI
{
public:
    explicit ButtonState(const CToolBar& bar) : m_bar(bar) {}
    void Enable(BOOL bOn) override
    {
        m_bEnableChanged = TRUE;
        set(TBSTATE_ENABLED, bOn);
        if (!bOn)
            set(TBSTATE_PRESSED, FALSE);
    }
    void SetCheck(int nCheck) override
    {
        set(TBSTATE_CHECKED, nCheck == 1);
        set(TBSTATE_INDETERMINATE, nCheck == 2);
    }
    void SetText(LPCWSTR) override {}

private:
    // Nothing is sent when nothing changes: the bar would flicker at every idle moment.
    void set(BYTE bit, BOOL on)
    {
        const LRESULT state = m_bar.SendMessage(TB_GETSTATE, m_nID);
        const LRESULT wanted = on ? state | bit : state & ~static_cast<LRESULT>(bit);
        if (state != -1 && state != wanted)
            m_bar.SendMessage(TB_SETSTATE, m_nID, wanted);
    }
    const CToolBar& m_bar;
};

} // namespace

void CToolBar::OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler)
{
    ButtonState state(*this);
    state.m_nIndexMax = static_cast<UINT>(GetCount());
    for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; ++state.m_nIndex) {
        UINT style = 0;
        int image = 0;
        GetButtonInfo(static_cast<int>(state.m_nIndex), state.m_nID, style, image);
        if (style & TBSTYLE_SEP)
            continue;
        state.m_pOther = this;
        // A bar may know the states of its own buttons.
        if (!CWnd::OnCmdMsg(state.m_nID, CN_UPDATE_COMMAND_UI, &state, nullptr))
            state.DoUpdate(pTarget, bDisableIfNoHndler);
    }
}
