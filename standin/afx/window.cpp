// CWnd: the object's life, from attachment to WM_NCDESTROY.
#include "standin/afx/afx_app.h"
#include "standin/afx/afx_window.h"
#include "standin/afx/state.h"

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

CWnd::~CWnd()
{
    if (m_hWnd)
        CWnd::DestroyWindow();
}

CWnd* CWnd::FromHandle(HWND hWnd)
{
    return afx::threadState().windows.any(hWnd, [=] {
        CWnd* window = new CWnd;
        window->m_hWnd = hWnd;
        return window;
    });
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd)
{
    return afx::threadState().windows.permanent(hWnd);
}

void CWnd::DeleteTempMap()
{
    afx::threadState().windows.deleteTemporary([](CWnd* window) { window->m_hWnd = nullptr; });
}

BOOL CWnd::Attach(HWND hWndNew)
{
    if (!hWndNew)
        return FALSE;
    afx::threadState().windows.setPermanent(hWndNew, this);
    m_hWnd = hWndNew;
    return TRUE;
}

HWND CWnd::Detach()
{
    const HWND handle = m_hWnd;
    if (handle)
        afx::threadState().windows.removePermanent(handle);
    m_hWnd = nullptr;
    m_pOwner = nullptr;
    return handle;
}

WNDPROC* CWnd::GetSuperWndProcAddr()
{
    return &m_pfnSuper;
}

namespace {

WNDPROC procedureOf(HWND window)
{
    return reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(window, GWLP_WNDPROC));
}

WNDPROC setProcedure(HWND window, WNDPROC procedure)
{
    return reinterpret_cast<WNDPROC>(::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

} // namespace

void CWnd::PreSubclassWindow() {}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (!Attach(hWnd))
        return FALSE;
    PreSubclassWindow();
    const WNDPROC former = setProcedure(hWnd, AfxWndProc);
    if (former != AfxWndProc)
        *GetSuperWndProcAddr() = former;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    return SubclassWindow(::GetDlgItem(pParent->m_hWnd, static_cast<int>(nID)));
}

HWND CWnd::UnsubclassWindow()
{
    if (*GetSuperWndProcAddr())
        setProcedure(m_hWnd, *GetSuperWndProcAddr());
    *GetSuperWndProcAddr() = nullptr;
    return Detach();
}

BOOL CWnd::Create(LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                  UINT nID, void* pContext)
{
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect, pParentWnd, nID, pContext);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                    CWnd* pParentWnd, UINT nID, LPVOID lpParam)
{
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, pParentWnd ? pParentWnd->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), lpParam);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle, int x, int y,
                    int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam)
{
    CREATESTRUCTW create{};
    create.dwExStyle = dwExStyle;
    create.lpszClass = lpszClassName;
    create.lpszName = lpszWindowName;
    create.style = static_cast<LONG>(dwStyle);
    create.x = x;
    create.y = y;
    create.cx = nWidth;
    create.cy = nHeight;
    create.hwndParent = hWndParent;
    create.hMenu = nIDorHMenu;
    create.hInstance = AfxGetInstanceHandle();
    create.lpCreateParams = lpParam;
    if (!PreCreateWindow(create)) {
        PostNcDestroy();
        return FALSE;
    }
    AfxHookWindowCreate(this);
    const HWND window = ::CreateWindowExW(create.dwExStyle, create.lpszClass, create.lpszName,
                                          static_cast<DWORD>(create.style), create.x, create.y, create.cx, create.cy,
                                          create.hwndParent, create.hMenu, create.hInstance, create.lpCreateParams);
    // A window that never came has sent no WM_NCDESTROY either.
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();
    return window != nullptr;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (!cs.lpszClass)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_ARROW));
    return TRUE;
}

BOOL CWnd::DestroyWindow()
{
    if (!m_hWnd)
        return FALSE;
    const HWND handle = m_hWnd;
    const bool attached = FromHandlePermanent(handle) == this;
    const BOOL destroyed = ::DestroyWindow(handle);
    // WM_NCDESTROY has detached a permanent object, and may have deleted it. A temporary one is untouched by it.
    if (!attached)
        m_hWnd = nullptr;
    return destroyed;
}

void CWnd::PostNcDestroy() {}

void CWnd::OnNcDestroy()
{
    CWinThread* thread = AfxGetThread();
    if (thread && thread->m_pMainWnd == this) {
        ::PostQuitMessage(0);
        thread->m_pMainWnd = nullptr;
    }
    if (thread && thread->m_pActiveWnd == this)
        thread->m_pActiveWnd = nullptr;

    const HWND handle = m_hWnd;
    const WNDPROC present = procedureOf(handle);
    Default();
    // Someone who subclassed the window after us keeps his procedure.
    if (procedureOf(handle) == present && *GetSuperWndProcAddr())
        setProcedure(handle, *GetSuperWndProcAddr());
    *GetSuperWndProcAddr() = nullptr;
    Detach();
    PostNcDestroy();
}
