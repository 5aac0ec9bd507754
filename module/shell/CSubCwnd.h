#pragma once

#include "platform/platform.h"

/// Puts a window procedure in front of a window's own, for as long as the object lives. The procedure finds the
/// window's own one in the window's user data.
class CSubCwnd
{
public:
    CSubCwnd(HWND window, WNDPROC procedure);
    /// Puts back what was there before.
    virtual ~CSubCwnd();
    CSubCwnd(const CSubCwnd&) = delete;
    CSubCwnd& operator=(const CSubCwnd&) = delete;

    HWND m_hWnd;
    LONG_PTR m_nOldUserData;
    WNDPROC m_pOldProcedure;
};
