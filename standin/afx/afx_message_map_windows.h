// ON_WM_*: the entries of the window messages, each with the handler's fixed name and arguments.
#pragma once

#define AFX_POINT_OF_EVENT CPoint(event.lParam)

#define ON_WM_CREATE()                                                                                                 \
    AFX_WINDOW_ENTRY(WM_CREATE, return self->OnCreate(reinterpret_cast<LPCREATESTRUCT>(event.lParam));)
#define ON_WM_DESTROY() AFX_WINDOW_ENTRY(WM_DESTROY, self->OnDestroy(); return 0;)
#define ON_WM_NCDESTROY() AFX_WINDOW_ENTRY(WM_NCDESTROY, self->OnNcDestroy(); return 0;)
#define ON_WM_CLOSE() AFX_WINDOW_ENTRY(WM_CLOSE, self->OnClose(); return 0;)
#define ON_WM_QUERYENDSESSION() AFX_WINDOW_ENTRY(WM_QUERYENDSESSION, return self->OnQueryEndSession();)
#define ON_WM_ENDSESSION()                                                                                             \
    AFX_WINDOW_ENTRY(WM_ENDSESSION, self->OnEndSession(static_cast<BOOL>(event.wParam)); return 0;)
#define ON_WM_PAINT() AFX_WINDOW_ENTRY(WM_PAINT, self->OnPaint(); return 0;)
#define ON_WM_ERASEBKGND()                                                                                             \
    AFX_WINDOW_ENTRY(WM_ERASEBKGND, return self->OnEraseBkgnd(CDC::FromHandle(reinterpret_cast<HDC>(event.wParam)));)
#define ON_WM_NCPAINT() AFX_WINDOW_ENTRY(WM_NCPAINT, self->OnNcPaint(); return 0;)
#define ON_WM_NCCALCSIZE()                                                                                             \
    AFX_WINDOW_ENTRY(WM_NCCALCSIZE, self->OnNcCalcSize(static_cast<BOOL>(event.wParam),                                \
                                                       reinterpret_cast<NCCALCSIZE_PARAMS*>(event.lParam));            \
                     return 0;)
#define ON_WM_NCHITTEST() AFX_WINDOW_ENTRY(WM_NCHITTEST, return self->OnNcHitTest(AFX_POINT_OF_EVENT);)
#define ON_WM_NCLBUTTONDOWN()                                                                                          \
    AFX_WINDOW_ENTRY(WM_NCLBUTTONDOWN, self->OnNcLButtonDown(static_cast<UINT>(event.wParam), AFX_POINT_OF_EVENT);     \
                     return 0;)
#define ON_WM_NCLBUTTONDBLCLK()                                                                                        \
    AFX_WINDOW_ENTRY(WM_NCLBUTTONDBLCLK, self->OnNcLButtonDblClk(static_cast<UINT>(event.wParam), AFX_POINT_OF_EVENT); \
                     return 0;)
#define ON_WM_NCACTIVATE() AFX_WINDOW_ENTRY(WM_NCACTIVATE, return self->OnNcActivate(static_cast<BOOL>(event.wParam));)
#define ON_WM_SIZE()                                                                                                   \
    AFX_WINDOW_ENTRY(WM_SIZE, self->OnSize(static_cast<UINT>(event.wParam), static_cast<short>(LOWORD(event.lParam)),  \
                                           static_cast<short>(HIWORD(event.lParam)));                                  \
                     return 0;)
#define ON_WM_MOVE()                                                                                                   \
    AFX_WINDOW_ENTRY(WM_MOVE,                                                                                          \
                     self->OnMove(static_cast<short>(LOWORD(event.lParam)), static_cast<short>(HIWORD(event.lParam))); \
                     return 0;)
#define ON_WM_GETMINMAXINFO()                                                                                          \
    AFX_WINDOW_ENTRY(WM_GETMINMAXINFO, self->OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(event.lParam)); return 0;)
#define ON_WM_WINDOWPOSCHANGING()                                                                                      \
    AFX_WINDOW_ENTRY(WM_WINDOWPOSCHANGING, self->OnWindowPosChanging(reinterpret_cast<WINDOWPOS*>(event.lParam));      \
                     return 0;)
#define ON_WM_WINDOWPOSCHANGED()                                                                                       \
    AFX_WINDOW_ENTRY(WM_WINDOWPOSCHANGED, self->OnWindowPosChanged(reinterpret_cast<WINDOWPOS*>(event.lParam));        \
                     return 0;)
#define ON_WM_SHOWWINDOW()                                                                                             \
    AFX_WINDOW_ENTRY(WM_SHOWWINDOW,                                                                                    \
                     self->OnShowWindow(static_cast<BOOL>(event.wParam), static_cast<UINT>(event.lParam));             \
                     return 0;)
#define ON_WM_ENABLE() AFX_WINDOW_ENTRY(WM_ENABLE, self->OnEnable(static_cast<BOOL>(event.wParam)); return 0;)
#define ON_WM_ACTIVATE()                                                                                               \
    AFX_WINDOW_ENTRY(WM_ACTIVATE,                                                                                      \
                     self->OnActivate(LOWORD(event.wParam), CWnd::FromHandle(reinterpret_cast<HWND>(event.lParam)),    \
                                      HIWORD(event.wParam) != 0);                                                      \
                     return 0;)
#define ON_WM_ACTIVATEAPP()                                                                                            \
    AFX_WINDOW_ENTRY(WM_ACTIVATEAPP,                                                                                   \
                     self->OnActivateApp(static_cast<BOOL>(event.wParam), static_cast<DWORD>(event.lParam));           \
                     return 0;)
#define ON_WM_MOUSEACTIVATE()                                                                                          \
    AFX_WINDOW_ENTRY(WM_MOUSEACTIVATE,                                                                                 \
                     return self->OnMouseActivate(CWnd::FromHandle(reinterpret_cast<HWND>(event.wParam)),              \
                                                  LOWORD(event.lParam), HIWORD(event.lParam));)
#define ON_WM_SETFOCUS()                                                                                               \
    AFX_WINDOW_ENTRY(WM_SETFOCUS, self->OnSetFocus(CWnd::FromHandle(reinterpret_cast<HWND>(event.wParam))); return 0;)
#define ON_WM_KILLFOCUS()                                                                                              \
    AFX_WINDOW_ENTRY(WM_KILLFOCUS, self->OnKillFocus(CWnd::FromHandle(reinterpret_cast<HWND>(event.wParam))); return 0;)
#define ON_WM_CAPTURECHANGED()                                                                                         \
    AFX_WINDOW_ENTRY(                                                                                                  \
        WM_CAPTURECHANGED, self->OnCaptureChanged(CWnd::FromHandle(reinterpret_cast<HWND>(event.lParam))); return 0;)
#define ON_WM_CANCELMODE() AFX_WINDOW_ENTRY(WM_CANCELMODE, self->OnCancelMode(); return 0;)
#define ON_WM_SETCURSOR()                                                                                              \
    AFX_WINDOW_ENTRY(WM_SETCURSOR,                                                                                     \
                     return self->OnSetCursor(CWnd::FromHandle(reinterpret_cast<HWND>(event.wParam)),                  \
                                              static_cast<short>(LOWORD(event.lParam)), HIWORD(event.lParam));)
#define ON_WM_TIMER() AFX_WINDOW_ENTRY(WM_TIMER, self->OnTimer(static_cast<UINT_PTR>(event.wParam)); return 0;)

#define AFX_MOUSE_ENTRY(message, handler)                                                                              \
    AFX_WINDOW_ENTRY(message, self->handler(static_cast<UINT>(event.wParam), AFX_POINT_OF_EVENT); return 0;)
#define ON_WM_MOUSEMOVE() AFX_MOUSE_ENTRY(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_LBUTTONDOWN() AFX_MOUSE_ENTRY(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_MOUSE_ENTRY(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_MOUSE_ENTRY(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() AFX_MOUSE_ENTRY(WM_RBUTTONDOWN, OnRButtonDown)
#define ON_WM_RBUTTONUP() AFX_MOUSE_ENTRY(WM_RBUTTONUP, OnRButtonUp)
#define ON_WM_RBUTTONDBLCLK() AFX_MOUSE_ENTRY(WM_RBUTTONDBLCLK, OnRButtonDblClk)
#define ON_WM_MBUTTONDOWN() AFX_MOUSE_ENTRY(WM_MBUTTONDOWN, OnMButtonDown)
#define ON_WM_MBUTTONUP() AFX_MOUSE_ENTRY(WM_MBUTTONUP, OnMButtonUp)
#define ON_WM_MBUTTONDBLCLK() AFX_MOUSE_ENTRY(WM_MBUTTONDBLCLK, OnMButtonDblClk)
#define ON_WM_MOUSEWHEEL()                                                                                             \
    AFX_WINDOW_ENTRY(WM_MOUSEWHEEL,                                                                                    \
                     return self->OnMouseWheel(LOWORD(event.wParam), static_cast<short>(HIWORD(event.wParam)),         \
                                               AFX_POINT_OF_EVENT);)
#define ON_WM_MOUSELEAVE() AFX_WINDOW_ENTRY(WM_MOUSELEAVE, self->OnMouseLeave(); return 0;)
#define ON_WM_CONTEXTMENU()                                                                                            \
    AFX_WINDOW_ENTRY(WM_CONTEXTMENU,                                                                                   \
                     self->OnContextMenu(CWnd::FromHandle(reinterpret_cast<HWND>(event.wParam)), AFX_POINT_OF_EVENT);  \
                     return 0;)

#define AFX_KEY_ENTRY(message, handler)                                                                                \
    AFX_WINDOW_ENTRY(message,                                                                                          \
                     self->handler(static_cast<UINT>(event.wParam), LOWORD(event.lParam), HIWORD(event.lParam));       \
                     return 0;)
#define ON_WM_KEYDOWN() AFX_KEY_ENTRY(WM_KEYDOWN, OnKeyDown)
#define ON_WM_KEYUP() AFX_KEY_ENTRY(WM_KEYUP, OnKeyUp)
#define ON_WM_CHAR() AFX_KEY_ENTRY(WM_CHAR, OnChar)
#define ON_WM_SYSKEYDOWN() AFX_KEY_ENTRY(WM_SYSKEYDOWN, OnSysKeyDown)
#define ON_WM_SYSKEYUP() AFX_KEY_ENTRY(WM_SYSKEYUP, OnSysKeyUp)
#define ON_WM_GETDLGCODE() AFX_WINDOW_ENTRY(WM_GETDLGCODE, return self->OnGetDlgCode();)
#define ON_WM_SYSCOMMAND()                                                                                             \
    AFX_WINDOW_ENTRY(WM_SYSCOMMAND, self->OnSysCommand(static_cast<UINT>(event.wParam), event.lParam); return 0;)

#define AFX_SCROLL_ENTRY(message, handler)                                                                             \
    AFX_WINDOW_ENTRY(message, self->handler(LOWORD(event.wParam), HIWORD(event.wParam),                                \
                                            CScrollBar::FromControl(reinterpret_cast<HWND>(event.lParam)));            \
                     return 0;)
#define ON_WM_HSCROLL() AFX_SCROLL_ENTRY(WM_HSCROLL, OnHScroll)
#define ON_WM_VSCROLL() AFX_SCROLL_ENTRY(WM_VSCROLL, OnVScroll)

#define AFX_CTLCOLOR_ENTRY(ctlColorMessage)                                                                            \
    AFX_WINDOW_ENTRY(ctlColorMessage,                                                                                  \
                     return reinterpret_cast<LRESULT>(self->OnCtlColor(                                                \
                         CDC::FromHandle(reinterpret_cast<HDC>(event.wParam)),                                         \
                         CWnd::FromHandle(reinterpret_cast<HWND>(event.lParam)), event.message - WM_CTLCOLORMSGBOX));)
#define ON_WM_CTLCOLOR()                                                                                               \
    AFX_CTLCOLOR_ENTRY(WM_CTLCOLORMSGBOX)                                                                              \
    AFX_CTLCOLOR_ENTRY(WM_CTLCOLOREDIT)                                                                                \
    AFX_CTLCOLOR_ENTRY(WM_CTLCOLORLISTBOX)                                                                             \
    AFX_CTLCOLOR_ENTRY(WM_CTLCOLORBTN)                                                                                 \
    AFX_CTLCOLOR_ENTRY(WM_CTLCOLORDLG)                                                                                 \
    AFX_CTLCOLOR_ENTRY(WM_CTLCOLORSCROLLBAR)                                                                           \
    AFX_CTLCOLOR_ENTRY(WM_CTLCOLORSTATIC)

#define ON_WM_INITMENUPOPUP()                                                                                          \
    AFX_WINDOW_ENTRY(WM_INITMENUPOPUP, self->OnInitMenuPopup(CMenu::FromHandle(reinterpret_cast<HMENU>(event.wParam)), \
                                                             LOWORD(event.lParam), HIWORD(event.lParam));              \
                     return 0;)
#define ON_WM_MENUSELECT()                                                                                             \
    AFX_WINDOW_ENTRY(WM_MENUSELECT, self->OnMenuSelect(LOWORD(event.wParam), HIWORD(event.wParam),                     \
                                                       reinterpret_cast<HMENU>(event.lParam));                         \
                     return 0;)
#define ON_WM_DRAWITEM()                                                                                               \
    AFX_WINDOW_ENTRY(WM_DRAWITEM, self->OnDrawItem(static_cast<int>(event.wParam),                                     \
                                                   reinterpret_cast<LPDRAWITEMSTRUCT>(event.lParam));                  \
                     return TRUE;)
#define ON_WM_MEASUREITEM()                                                                                            \
    AFX_WINDOW_ENTRY(WM_MEASUREITEM, self->OnMeasureItem(static_cast<int>(event.wParam),                               \
                                                         reinterpret_cast<LPMEASUREITEMSTRUCT>(event.lParam));         \
                     return TRUE;)
#define ON_WM_SYSCOLORCHANGE() AFX_WINDOW_ENTRY(WM_SYSCOLORCHANGE, self->OnSysColorChange(); return 0;)
#define ON_WM_QUERYNEWPALETTE() AFX_WINDOW_ENTRY(WM_QUERYNEWPALETTE, return self->OnQueryNewPalette();)
#define ON_WM_PALETTECHANGED()                                                                                         \
    AFX_WINDOW_ENTRY(                                                                                                  \
        WM_PALETTECHANGED, self->OnPaletteChanged(CWnd::FromHandle(reinterpret_cast<HWND>(event.wParam))); return 0;)
#define ON_WM_DROPFILES()                                                                                              \
    AFX_WINDOW_ENTRY(WM_DROPFILES, self->OnDropFiles(reinterpret_cast<HDROP>(event.wParam)); return 0;)
#define ON_WM_MDIACTIVATE()                                                                                            \
    AFX_WINDOW_ENTRY(WM_MDIACTIVATE, self->OnMDIActivate(self->m_hWnd == reinterpret_cast<HWND>(event.lParam),         \
                                                         CWnd::FromHandle(reinterpret_cast<HWND>(event.lParam)),       \
                                                         CWnd::FromHandle(reinterpret_cast<HWND>(event.wParam)));      \
                     return 0;)
