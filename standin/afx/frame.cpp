#include <algorithm>

#include "standin/afx/afx_app.h"
#include "standin/afx/afx_control_bar.h"
#include "standin/afx/afx_frame.h"
#include "standin/afx/afx_module.h"
#include "standin/afx/afx_view.h"

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_CLOSE()
ON_WM_SIZE()
ON_WM_ACTIVATE()
ON_WM_SETFOCUS()
ON_WM_ERASEBKGND()
ON_WM_INITMENUPOPUP()
ON_WM_MENUSELECT()
ON_MESSAGE(WM_SETMESSAGESTRING, &CFrameWnd::OnSetMessageString)
END_MESSAGE_MAP()

const CRect CFrameWnd::rectDefault(CW_USEDEFAULT, CW_USEDEFAULT, 0, 0);

CFrameWnd::~CFrameWnd()
{
    for (CControlBar* bar : m_bars)
        bar->m_pDockSite = nullptr;
    if (m_hWnd)
        DestroyWindow();
}

BOOL CFrameWnd::Create(LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                       LPCWSTR lpszMenuName, DWORD dwExStyle, CCreateContext* pContext)
{
    HMENU menu = nullptr;
    if (lpszMenuName) {
        menu = ::LoadMenuW(AfxFindResourceHandle(lpszMenuName, RT_MENU), lpszMenuName);
        if (!menu) {
            PostNcDestroy();
            return FALSE;
        }
    }
    m_strTitle = lpszWindowName;
    const bool anywhere = rect.left == CW_USEDEFAULT;
    const BOOL created =
        CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top,
                 anywhere ? CW_USEDEFAULT : rect.right - rect.left, anywhere ? CW_USEDEFAULT : rect.bottom - rect.top,
                 pParentWnd ? pParentWnd->m_hWnd : nullptr, menu, pContext);
    if (!created && menu)
        ::DestroyMenu(menu);
    return created;
}

BOOL CFrameWnd::LoadFrame(UINT nIDResource, DWORD dwDefaultStyle, CWnd* pParentWnd, CCreateContext* pContext)
{
    CString strings;
    strings.LoadString(nIDResource);
    CString title;
    AfxExtractSubString(title, strings, 0);
    const LPCWSTR name = MAKEINTRESOURCEW(nIDResource);
    const HICON icon = ::LoadIconW(AfxFindResourceHandle(name, RT_GROUP_ICON), name);
    const CString windowClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_ARROW), nullptr, icon);
    const bool hasMenu = ::FindResourceW(AfxFindResourceHandle(name, RT_MENU), name, RT_MENU) != nullptr;
    if (!Create(windowClass, title, dwDefaultStyle, rectDefault, pParentWnd, hasMenu ? name : nullptr, 0, pContext))
        return FALSE;
    m_hMenuDefault = ::GetMenu(m_hWnd);
    LoadAccelTable(name);
    return TRUE;
}

BOOL CFrameWnd::LoadAccelTable(LPCWSTR lpszResourceName)
{
    m_hAccelTable = ::LoadAcceleratorsW(AfxFindResourceHandle(lpszResourceName, RT_ACCELERATOR), lpszResourceName);
    return m_hAccelTable != nullptr;
}

BOOL CFrameWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (!cs.lpszClass) {
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_ARROW), nullptr,
                                           ::LoadIconW(nullptr, IDI_APPLICATION));
    }
    return CWnd::PreCreateWindow(cs);
}

int CFrameWnd::OnCreate(LPCREATESTRUCT lpcs)
{
    return createHelper(lpcs, static_cast<CCreateContext*>(lpcs->lpCreateParams));
}

int CFrameWnd::createHelper(LPCREATESTRUCT lpcs, CCreateContext* pContext)
{
    if (CWnd::OnCreate(lpcs) == -1 || !OnCreateClient(lpcs, pContext))
        return -1;
    PostMessage(WM_SETMESSAGESTRING, AFX_IDS_IDLEMESSAGE);
    RecalcLayout();
    return 0;
}

BOOL CFrameWnd::OnCreateClient(LPCREATESTRUCT, CCreateContext* pContext)
{
    return !pContext || !pContext->m_pNewViewClass || CreateView(pContext);
}

CWnd* CFrameWnd::CreateView(CCreateContext* pContext, UINT nID)
{
    CWnd* window = DYNAMIC_DOWNCAST(CWnd, pContext->m_pNewViewClass->CreateObject());
    if (!window ||
        !window->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(0, 0, 0, 0), this, nID, pContext))
        return nullptr; // a view that could not be made has deleted itself
    if (CView* view = DYNAMIC_DOWNCAST(CView, window)) {
        m_pViewActive = view;
        view->OnInitialUpdate();
    }
    return window;
}

void CFrameWnd::OnDestroy()
{
    if (m_hMenuDefault && m_hMenuDefault != ::GetMenu(m_hWnd))
        ::DestroyMenu(m_hMenuDefault);
    m_hMenuDefault = nullptr;
    CWnd::OnDestroy();
}

void CFrameWnd::PostNcDestroy()
{
    delete this;
}

void CFrameWnd::OnClose()
{
    DestroyWindow();
}

void CFrameWnd::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    if (nType != SIZE_MINIMIZED)
        RecalcLayout();
}

void CFrameWnd::OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized)
{
    CWnd::OnActivate(nState, pWndOther, bMinimized);
    if (nState == WA_INACTIVE || bMinimized)
        return;
    // Not every window manager keeps owned windows above the one that comes to the front.
    for (const CMiniDockFrameWnd* floating : m_floatingFrames)
        ::SetWindowPos(floating->m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (m_pViewActive)
        m_pViewActive->OnActivateView(TRUE, m_pViewActive, m_pViewActive);
}

void CFrameWnd::OnSetFocus(CWnd* pOldWnd)
{
    if (m_pViewActive) {
        m_pViewActive->SetFocus();
    } else {
        CWnd::OnSetFocus(pOldWnd);
    }
}

BOOL CFrameWnd::OnEraseBkgnd(CDC* pDC)
{
    // The view covers all of it.
    return m_pViewActive ? TRUE : CWnd::OnEraseBkgnd(pDC);
}

CFrameWnd* CFrameWnd::GetActiveFrame()
{
    return this;
}

void CFrameWnd::SetActiveView(CView* pViewNew, BOOL bNotify)
{
    CView* former = m_pViewActive;
    if (former == pViewNew)
        return;
    m_pViewActive = nullptr; // while the former view is told, there is no active one
    if (former)
        former->OnActivateView(FALSE, pViewNew, former);
    m_pViewActive = pViewNew;
    if (pViewNew && bNotify)
        pViewNew->OnActivateView(TRUE, pViewNew, former);
}

void CFrameWnd::ActivateFrame(int nCmdShow)
{
    if (nCmdShow == -1)
        nCmdShow = IsIconic() ? SW_RESTORE : IsWindowVisible() ? SW_SHOW : SW_SHOWNORMAL;
    ShowWindow(nCmdShow);
    BringWindowToTop();
}

BOOL CFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    if (m_pViewActive && m_pViewActive->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinApp* app = AfxGetApp();
    return app && app->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CFrameWnd::PreTranslateMessage(MSG* pMsg)
{
    if (CWnd::PreTranslateMessage(pMsg))
        return TRUE;
    return pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST && m_hAccelTable &&
           ::TranslateAcceleratorW(m_hWnd, m_hAccelTable, pMsg);
}

void CFrameWnd::OnInitMenuPopup(CMenu* pMenu, UINT nIndex, BOOL bSysMenu)
{
    CWnd::OnInitMenuPopup(pMenu, nIndex, bSysMenu);
    if (bSysMenu || !pMenu)
        return;
    CCmdUI state;
    state.m_pMenu = pMenu;
    state.m_nIndexMax = pMenu->GetMenuItemCount();
    for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; ++state.m_nIndex) {
        state.m_nID = pMenu->GetMenuItemID(static_cast<int>(state.m_nIndex));
        if (state.m_nID == 0 || state.m_nID == static_cast<UINT>(-1))
            continue; // separators and items that open a menu
        state.DoUpdate(this, m_bAutoMenuEnable && state.m_nID < 0xF000);
    }
}

void CFrameWnd::OnMenuSelect(UINT nItemID, UINT nFlags, HMENU)
{
    const bool closed = nFlags == 0xFFFF;
    const bool command = !closed && nItemID != 0 && !(nFlags & (MF_SEPARATOR | MF_POPUP | MF_SYSMENU));
    SetMessageText(closed ? AFX_IDS_IDLEMESSAGE : command ? nItemID : 0);
}

void CFrameWnd::SetMessageText(LPCWSTR lpszText)
{
    SendMessage(WM_SETMESSAGESTRING, 0, reinterpret_cast<LPARAM>(lpszText));
}

void CFrameWnd::SetMessageText(UINT nID)
{
    SendMessage(WM_SETMESSAGESTRING, nID);
}

void CFrameWnd::GetMessageString(UINT nID, CString& rMessage) const
{
    CString text;
    text.LoadString(nID);
    AfxExtractSubString(rMessage, text, 0);
}

CWnd* CFrameWnd::GetMessageBar()
{
    return GetDescendantWindow(AFX_IDW_STATUS_BAR, TRUE);
}

LRESULT CFrameWnd::OnSetMessageString(WPARAM wParam, LPARAM lParam)
{
    CWnd* bar = GetMessageBar();
    if (!bar)
        return 0;
    CString message(reinterpret_cast<LPCWSTR>(lParam));
    if (!lParam && wParam)
        GetMessageString(static_cast<UINT>(wParam), message);
    bar->SetWindowText(message);
    return 0;
}
