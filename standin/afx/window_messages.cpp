// CWnd: the way of a message from the window procedure to its handler.
#include "standin/afx/afx_app.h"
#include "standin/afx/afx_controls.h"
#include "standin/afx/afx_exception.h"
#include "standin/afx/afx_window.h"
#include "standin/afx/state.h"

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
ON_WM_NCDESTROY()
ON_WM_DRAWITEM()
ON_WM_MEASUREITEM()
END_MESSAGE_MAP()

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    CWnd* window = CWnd::FromHandlePermanent(hWnd);
    return window ? AfxCallWndProc(window, hWnd, nMsg, wParam, lParam) : ::DefWindowProcW(hWnd, nMsg, wParam, lParam);
}

namespace {

LRESULT reportException(CException* problem, const MSG& message)
{
    CWinThread* thread = AfxGetThread();
    if (thread)
        return thread->ProcessWndProcException(problem, &message);
    if (!problem->IsKindOf(RUNTIME_CLASS(CUserException)))
        problem->ReportError(MB_ICONSTOP);
    return 0;
}

} // namespace

LRESULT AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    afx::ThreadState& state = afx::threadState();
    const MSG former = state.m_lastSentMsg;
    MSG message{};
    message.hwnd = hWnd;
    message.message = nMsg;
    message.wParam = wParam;
    message.lParam = lParam;
    state.m_lastSentMsg = message;
    LRESULT result = 0;
    // An exception must not leave a window procedure: the frames above belong to the operating system.
    try {
        result = pWnd->WindowProc(nMsg, wParam, lParam);
    } catch (CException* problem) {
        result = reportException(problem, message);
        problem->Delete();
    } catch (const std::exception& problem) {
        AfxMessageBox(CString(problem.what()), MB_ICONSTOP);
        result = nMsg == WM_CREATE ? -1 : 0;
    }
    state.m_lastSentMsg = former;
    return result;
}

const MSG* CWnd::GetCurrentMessage()
{
    return &afx::threadState().m_lastSentMsg;
}

LRESULT CWnd::Default()
{
    const MSG& message = afx::threadState().m_lastSentMsg;
    return DefWindowProc(message.message, message.wParam, message.lParam);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    return OnWndMsg(message, wParam, lParam, &result) ? result : DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const WNDPROC super = *GetSuperWndProcAddr();
    return super ? ::CallWindowProcW(super, m_hWnd, message, wParam, lParam)
                 : ::DefWindowProcW(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam))
            return FALSE;
        *pResult = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY)
        return lParam && OnNotify(wParam, lParam, pResult);
    for (const AFX_MSGMAP* map = GetMessageMap(); map; map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pfn; ++entry) {
            if (entry->nMessage != message)
                continue;
            *pResult = entry->pfn(this, {message, wParam, lParam, 0, nullptr, pResult});
            return TRUE;
        }
    }
    return FALSE;
}

namespace {

// Finds out whether a command is enabled, without changing anything.
class CommandTest : public CCmdUI
{
public:
    explicit CommandTest(UINT id) { m_nID = id; }
    void Enable(BOOL bOn) override
    {
        m_bEnableChanged = TRUE;
        m_enabled = bOn;
    }
    void SetCheck(int) override {}
    void SetRadio(BOOL) override {}
    void SetText(LPCWSTR) override {}
    BOOL m_enabled = TRUE;
};

} // namespace

BOOL CWnd::OnChildNotify(UINT, WPARAM, LPARAM, LRESULT*)
{
    return FALSE;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT id = LOWORD(wParam);
    const HWND control = reinterpret_cast<HWND>(lParam);
    int code = HIWORD(wParam);
    if (!control) {
        // From a menu or an accelerator: a command that is disabled at this moment is swallowed.
        code = CN_COMMAND;
        CommandTest test(id);
        OnCmdMsg(id, CN_UPDATE_COMMAND_UI, &test, nullptr);
        if (!test.m_enabled)
            return TRUE;
    } else {
        if (afx::threadState().lockedOut == m_hWnd)
            return TRUE;
        LRESULT result = 0;
        CWnd* child = FromHandlePermanent(control);
        if (child && child->OnChildNotify(WM_COMMAND, wParam, lParam, &result))
            return TRUE;
        if (id == 0)
            return FALSE;
    }
    return OnCmdMsg(id, code, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    NMHDR* header = reinterpret_cast<NMHDR*>(lParam);
    if (afx::threadState().lockedOut == m_hWnd)
        return TRUE;
    CWnd* child = FromHandlePermanent(header->hwndFrom);
    if (child && child->OnChildNotify(WM_NOTIFY, wParam, lParam, pResult))
        return TRUE;
    AFX_NOTIFY notify{pResult, header};
    return OnCmdMsg(static_cast<UINT>(header->idFrom), static_cast<int>(MAKELONG(header->code, WM_NOTIFY)), &notify,
                    nullptr);
}

void CWnd::OnDrawItem(int nIDCtl, LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    LRESULT result = 0;
    CWnd* child = lpDrawItemStruct->CtlType == ODT_MENU ? nullptr : FromHandlePermanent(lpDrawItemStruct->hwndItem);
    if (!child || !child->OnChildNotify(WM_DRAWITEM, static_cast<WPARAM>(nIDCtl),
                                        reinterpret_cast<LPARAM>(lpDrawItemStruct), &result))
        Default();
}

void CWnd::OnMeasureItem(int nIDCtl, LPMEASUREITEMSTRUCT lpMeasureItemStruct)
{
    LRESULT result = 0;
    CWnd* child =
        lpMeasureItemStruct->CtlType == ODT_MENU ? nullptr : FromHandlePermanent(::GetDlgItem(m_hWnd, nIDCtl));
    if (!child || !child->OnChildNotify(WM_MEASUREITEM, static_cast<WPARAM>(nIDCtl),
                                        reinterpret_cast<LPARAM>(lpMeasureItemStruct), &result))
        Default();
}

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg)
{
    for (HWND window = pMsg->hwnd; window; window = ::GetParent(window)) {
        CWnd* object = FromHandlePermanent(window);
        if (object && object->PreTranslateMessage(pMsg))
            return TRUE;
        if (window == hWndStop)
            break;
    }
    return FALSE;
}

void CWnd::SendMessageToDescendants(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    for (HWND child = ::GetTopWindow(hWnd); child;) {
        const HWND next = ::GetNextWindow(child, GW_HWNDNEXT);
        ::SendMessageW(child, message, wParam, lParam);
        if (::IsWindow(child))
            SendMessageToDescendants(child, message, wParam, lParam);
        child = next;
    }
}

// --- the default handlers

int CWnd::OnCreate(LPCREATESTRUCT)
{
    return static_cast<int>(Default());
}

BOOL CWnd::OnQueryEndSession()
{
    return static_cast<BOOL>(Default());
}

BOOL CWnd::OnEraseBkgnd(CDC*)
{
    return static_cast<BOOL>(Default());
}

LRESULT CWnd::OnNcHitTest(CPoint)
{
    return Default();
}

BOOL CWnd::OnNcActivate(BOOL)
{
    return static_cast<BOOL>(Default());
}

int CWnd::OnMouseActivate(CWnd*, UINT, UINT)
{
    return static_cast<int>(Default());
}

BOOL CWnd::OnSetCursor(CWnd*, UINT, UINT)
{
    return static_cast<BOOL>(Default());
}

BOOL CWnd::OnMouseWheel(UINT, short, CPoint)
{
    return static_cast<BOOL>(Default());
}

UINT CWnd::OnGetDlgCode()
{
    return static_cast<UINT>(Default());
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd*, UINT)
{
    return reinterpret_cast<HBRUSH>(Default());
}

BOOL CWnd::OnQueryNewPalette()
{
    return static_cast<BOOL>(Default());
}

#define DEFAULT_HANDLER(declaration)                                                                                   \
    void CWnd::declaration                                                                                             \
    {                                                                                                                  \
        Default();                                                                                                     \
    }

DEFAULT_HANDLER(OnDestroy())
DEFAULT_HANDLER(OnClose())
DEFAULT_HANDLER(OnEndSession(BOOL))
DEFAULT_HANDLER(OnPaint())
DEFAULT_HANDLER(OnNcPaint())
DEFAULT_HANDLER(OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS*))
DEFAULT_HANDLER(OnNcLButtonDown(UINT, CPoint))
DEFAULT_HANDLER(OnNcLButtonDblClk(UINT, CPoint))
DEFAULT_HANDLER(OnSize(UINT, int, int))
DEFAULT_HANDLER(OnMove(int, int))
DEFAULT_HANDLER(OnGetMinMaxInfo(MINMAXINFO*))
DEFAULT_HANDLER(OnWindowPosChanging(WINDOWPOS*))
DEFAULT_HANDLER(OnWindowPosChanged(WINDOWPOS*))
DEFAULT_HANDLER(OnShowWindow(BOOL, UINT))
DEFAULT_HANDLER(OnEnable(BOOL))
DEFAULT_HANDLER(OnActivate(UINT, CWnd*, BOOL))
DEFAULT_HANDLER(OnActivateApp(BOOL, DWORD))
DEFAULT_HANDLER(OnSetFocus(CWnd*))
DEFAULT_HANDLER(OnKillFocus(CWnd*))
DEFAULT_HANDLER(OnCaptureChanged(CWnd*))
DEFAULT_HANDLER(OnCancelMode())
DEFAULT_HANDLER(OnTimer(UINT_PTR))
DEFAULT_HANDLER(OnMouseMove(UINT, CPoint))
DEFAULT_HANDLER(OnLButtonDown(UINT, CPoint))
DEFAULT_HANDLER(OnLButtonUp(UINT, CPoint))
DEFAULT_HANDLER(OnLButtonDblClk(UINT, CPoint))
DEFAULT_HANDLER(OnRButtonDown(UINT, CPoint))
DEFAULT_HANDLER(OnRButtonUp(UINT, CPoint))
DEFAULT_HANDLER(OnRButtonDblClk(UINT, CPoint))
DEFAULT_HANDLER(OnMButtonDown(UINT, CPoint))
DEFAULT_HANDLER(OnMButtonUp(UINT, CPoint))
DEFAULT_HANDLER(OnMButtonDblClk(UINT, CPoint))
DEFAULT_HANDLER(OnMouseLeave())
DEFAULT_HANDLER(OnContextMenu(CWnd*, CPoint))
DEFAULT_HANDLER(OnKeyDown(UINT, UINT, UINT))
DEFAULT_HANDLER(OnKeyUp(UINT, UINT, UINT))
DEFAULT_HANDLER(OnChar(UINT, UINT, UINT))
DEFAULT_HANDLER(OnSysKeyDown(UINT, UINT, UINT))
DEFAULT_HANDLER(OnSysKeyUp(UINT, UINT, UINT))
DEFAULT_HANDLER(OnSysCommand(UINT, LPARAM))
DEFAULT_HANDLER(OnHScroll(UINT, UINT, CScrollBar*))
DEFAULT_HANDLER(OnVScroll(UINT, UINT, CScrollBar*))
DEFAULT_HANDLER(OnInitMenuPopup(CMenu*, UINT, BOOL))
DEFAULT_HANDLER(OnMenuSelect(UINT, UINT, HMENU))
DEFAULT_HANDLER(OnSysColorChange())
DEFAULT_HANDLER(OnPaletteChanged(CWnd*))
DEFAULT_HANDLER(OnDropFiles(HDROP))
DEFAULT_HANDLER(OnMDIActivate(BOOL, CWnd*, CWnd*))

#undef DEFAULT_HANDLER
