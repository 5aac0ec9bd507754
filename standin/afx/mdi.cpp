// Frames of a program with several documents.
#include "standin/afx/afx_app.h"
#include "standin/afx/afx_frame.h"
#include "standin/afx/afx_module.h"
#include "standin/afx/afx_view.h"

IMPLEMENT_DYNCREATE(CMDIFrameWnd, CFrameWnd)
IMPLEMENT_DYNCREATE(CMDIChildWnd, CFrameWnd)

BEGIN_MESSAGE_MAP(CMDIFrameWnd, CFrameWnd)
ON_WM_SETFOCUS()
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CMDIChildWnd, CFrameWnd)
ON_WM_CREATE()
ON_WM_MDIACTIVATE()
END_MESSAGE_MAP()

namespace {

constexpr UINT firstChildId = 0xFF00; // of the entries that the operating system adds to the window menu

// The pop-up that holds the standard window commands gets the list of documents.
HMENU windowMenuOf(HMENU bar)
{
    for (int i = bar ? ::GetMenuItemCount(bar) - 1 : -1; i >= 0; --i) {
        const HMENU popup = ::GetSubMenu(bar, i);
        for (int item = popup ? ::GetMenuItemCount(popup) - 1 : -1; item >= 0; --item) {
            const UINT id = ::GetMenuItemID(popup, item);
            if (id >= 0xE130 && id <= 0xE13F)
                return popup;
        }
    }
    return nullptr;
}

} // namespace

BOOL CMDIFrameWnd::OnCreateClient(LPCREATESTRUCT lpcs, CCreateContext*)
{
    CMenu window;
    window.m_hMenu = windowMenuOf(::GetMenu(m_hWnd));
    const BOOL created = CreateClient(lpcs, window.m_hMenu ? &window : nullptr);
    window.m_hMenu = nullptr;
    return created;
}

BOOL CMDIFrameWnd::CreateClient(LPCREATESTRUCT, CMenu* pWindowMenu)
{
    CLIENTCREATESTRUCT client{};
    client.hWindowMenu = pWindowMenu ? pWindowMenu->m_hMenu : nullptr;
    client.idFirstChild = firstChildId;
    m_hWndMDIClient = ::CreateWindowExW(
        WS_EX_CLIENTEDGE, L"MDICLIENT", nullptr,
        WS_VISIBLE | WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL | MDIS_ALLCHILDSTYLES, 0, 0,
        0, 0, m_hWnd, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(AFX_IDW_PANE_FIRST)), AfxGetInstanceHandle(),
        &client);
    return m_hWndMDIClient != nullptr;
}

LRESULT CMDIFrameWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefFrameProcW(m_hWnd, m_hWndMDIClient, message, wParam, lParam);
}

void CMDIFrameWnd::OnSetFocus(CWnd*)
{
    Default(); // gives the focus to the active document
}

CMDIChildWnd* CMDIFrameWnd::MDIGetActive(BOOL* pbMaximized) const
{
    BOOL maximized = FALSE;
    const HWND active = reinterpret_cast<HWND>(
        ::SendMessageW(m_hWndMDIClient, WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(&maximized)));
    if (pbMaximized)
        *pbMaximized = maximized;
    return DYNAMIC_DOWNCAST(CMDIChildWnd, CWnd::FromHandlePermanent(active));
}

void CMDIFrameWnd::MDIActivate(CWnd* pWndActivate)
{
    ::SendMessageW(m_hWndMDIClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(pWndActivate->m_hWnd), 0);
}

void CMDIFrameWnd::MDIMaximize(CWnd* pWnd)
{
    ::SendMessageW(m_hWndMDIClient, WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(pWnd->m_hWnd), 0);
}

void CMDIFrameWnd::MDIRestore(CWnd* pWnd)
{
    ::SendMessageW(m_hWndMDIClient, WM_MDIRESTORE, reinterpret_cast<WPARAM>(pWnd->m_hWnd), 0);
}

CFrameWnd* CMDIFrameWnd::GetActiveFrame()
{
    CMDIChildWnd* active = MDIGetActive();
    return active ? static_cast<CFrameWnd*>(active) : this;
}

BOOL CMDIFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    CMDIChildWnd* active = MDIGetActive();
    if (active && active->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    return CFrameWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CMDIFrameWnd::PreTranslateMessage(MSG* pMsg)
{
    if (CFrameWnd::PreTranslateMessage(pMsg))
        return TRUE;
    return (pMsg->message == WM_KEYDOWN || pMsg->message == WM_SYSKEYDOWN) &&
           ::TranslateMDISysAccel(m_hWndMDIClient, pMsg);
}

BOOL CMDIChildWnd::Create(LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                          CMDIFrameWnd* pParentWnd, CCreateContext* pContext)
{
    if (!pParentWnd)
        pParentWnd = DYNAMIC_DOWNCAST(CMDIFrameWnd, AfxGetMainWnd());
    if (!pParentWnd)
        return FALSE;
    m_strTitle = lpszWindowName;
    CREATESTRUCTW create{};
    create.lpszClass = lpszClassName;
    create.lpszName = lpszWindowName;
    create.style = static_cast<LONG>(dwStyle);
    create.hInstance = AfxGetInstanceHandle();
    if (!PreCreateWindow(create)) {
        PostNcDestroy();
        return FALSE;
    }
    const bool anywhere = rect.left == CW_USEDEFAULT;
    MDICREATESTRUCTW child{};
    child.szClass = create.lpszClass;
    child.szTitle = create.lpszName;
    child.hOwner = create.hInstance;
    child.x = rect.left;
    child.y = rect.top;
    child.cx = anywhere ? CW_USEDEFAULT : rect.right - rect.left;
    child.cy = anywhere ? CW_USEDEFAULT : rect.bottom - rect.top;
    child.style = static_cast<DWORD>(create.style) & ~static_cast<DWORD>(WS_MAXIMIZE | WS_VISIBLE);
    child.lParam = reinterpret_cast<LPARAM>(pContext);
    AfxHookWindowCreate(this);
    const HWND window = reinterpret_cast<HWND>(
        ::SendMessageW(pParentWnd->m_hWndMDIClient, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&child)));
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();
    if (!window)
        return FALSE;
    // Shown only now: the window of a visible child that refuses its creation would have flashed up.
    if (create.style & WS_VISIBLE) {
        BringWindowToTop();
        ShowWindow(create.style & WS_MAXIMIZE ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
        pParentWnd->MDIActivate(this);
        ::SendMessageW(pParentWnd->m_hWndMDIClient, WM_MDIREFRESHMENU, 0, 0);
    }
    return TRUE;
}

BOOL CMDIChildWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.style |= WS_CHILD;
    return CFrameWnd::PreCreateWindow(cs);
}

int CMDIChildWnd::OnCreate(LPCREATESTRUCT lpcs)
{
    const MDICREATESTRUCTW* child = static_cast<const MDICREATESTRUCTW*>(lpcs->lpCreateParams);
    return createHelper(lpcs, reinterpret_cast<CCreateContext*>(child->lParam));
}

LRESULT CMDIChildWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefMDIChildProcW(m_hWnd, message, wParam, lParam);
}

CMDIFrameWnd* CMDIChildWnd::GetMDIFrame()
{
    const HWND client = ::GetParent(m_hWnd);
    return DYNAMIC_DOWNCAST(CMDIFrameWnd, CWnd::FromHandlePermanent(::GetParent(client)));
}

BOOL CMDIChildWnd::DestroyWindow()
{
    if (!m_hWnd)
        return FALSE;
    MDIDestroy();
    return TRUE;
}

void CMDIChildWnd::MDIDestroy()
{
    ::SendMessageW(::GetParent(m_hWnd), WM_MDIDESTROY, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CMDIChildWnd::MDIActivate()
{
    ::SendMessageW(::GetParent(m_hWnd), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CMDIChildWnd::MDIMaximize()
{
    ::SendMessageW(::GetParent(m_hWnd), WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CMDIChildWnd::MDIRestore()
{
    ::SendMessageW(::GetParent(m_hWnd), WM_MDIRESTORE, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

void CMDIChildWnd::ActivateFrame(int nCmdShow)
{
    CFrameWnd::ActivateFrame(nCmdShow);
    MDIActivate();
}

void CMDIChildWnd::OnMDIActivate(BOOL bActivate, CWnd* pActivateWnd, CWnd* pDeactivateWnd)
{
    CWnd::OnMDIActivate(bActivate, pActivateWnd, pDeactivateWnd);
    if (m_pViewActive) {
        m_pViewActive->OnActivateView(bActivate, bActivate ? m_pViewActive : nullptr,
                                      bActivate ? nullptr : m_pViewActive);
    }
}
