#include "module/shell/CSubCwnd.h"

CSubCwnd::CSubCwnd(HWND window, WNDPROC procedure)
    : m_hWnd(window), m_nOldUserData(GetWindowLongPtrW(window, GWLP_USERDATA)),
      m_pOldProcedure(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC)))
{
    // The user data first: the procedure may be called as soon as it is in place.
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(m_pOldProcedure));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

CSubCwnd::~CSubCwnd()
{
    SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pOldProcedure));
    SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, m_nOldUserData);
}
