// CToolTipCtrl over the operating system's tooltip window.
#include "standin/afx/afx_controls.h"
#include "standin/afx/afx_module.h"

IMPLEMENT_DYNAMIC(CToolTipCtrl, CWnd)

BOOL CToolTipCtrl::Create(CWnd* pParentWnd, DWORD dwStyle)
{
    const BOOL created = CreateEx(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | dwStyle, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, pParentWnd->m_hWnd, nullptr);
    if (created)
        SetOwner(pParentWnd);
    return created;
}

namespace {

// A tool is either a whole window, known by its handle, or a rectangle of a window, known by its number.
TTTOOLINFOW toolInfo(CWnd* window, UINT_PTR id)
{
    TTTOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V1_SIZE;
    info.hwnd = window->m_hWnd;
    info.uId = id;
    if (id == 0) {
        const HWND parent = ::GetParent(window->m_hWnd);
        info.uFlags = TTF_IDISHWND;
        info.hwnd = parent ? parent : window->m_hWnd;
        info.uId = reinterpret_cast<UINT_PTR>(window->m_hWnd);
    }
    return info;
}

LPWSTR textOrResource(UINT id)
{
    return MAKEINTRESOURCEW(id);
}

} // namespace

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, LPCWSTR lpszText, LPCRECT lpRectTool, UINT_PTR nIDTool)
{
    TTTOOLINFOW info = toolInfo(pWnd, nIDTool);
    if (lpRectTool)
        info.rect = *lpRectTool;
    info.lpszText = const_cast<LPWSTR>(lpszText);
    return static_cast<BOOL>(SendMessage(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info)));
}

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool, UINT_PTR nIDTool)
{
    TTTOOLINFOW info = toolInfo(pWnd, nIDTool);
    if (lpRectTool)
        info.rect = *lpRectTool;
    info.hinst = AfxFindResourceHandle(MAKEINTRESOURCEW((nIDText >> 4) + 1), RT_STRING);
    info.lpszText = textOrResource(nIDText);
    return static_cast<BOOL>(SendMessage(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info)));
}

void CToolTipCtrl::DelTool(CWnd* pWnd, UINT_PTR nIDTool)
{
    TTTOOLINFOW info = toolInfo(pWnd, nIDTool);
    SendMessage(TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}

void CToolTipCtrl::UpdateTipText(LPCWSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool)
{
    TTTOOLINFOW info = toolInfo(pWnd, nIDTool);
    info.lpszText = const_cast<LPWSTR>(lpszText);
    SendMessage(TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
}

void CToolTipCtrl::UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool)
{
    TTTOOLINFOW info = toolInfo(pWnd, nIDTool);
    info.hinst = AfxFindResourceHandle(MAKEINTRESOURCEW((nIDText >> 4) + 1), RT_STRING);
    info.lpszText = textOrResource(nIDText);
    SendMessage(TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
}

void CToolTipCtrl::GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool) const
{
    TTTOOLINFOW info = toolInfo(pWnd, nIDTool);
    constexpr int room = 1024;
    info.lpszText = str.GetBufferSetLength(room);
    info.lpszText[0] = L'\0';
    SendMessage(TTM_GETTEXTW, room, reinterpret_cast<LPARAM>(&info));
    str.ReleaseBuffer();
}

void CToolTipCtrl::SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect)
{
    TTTOOLINFOW info = toolInfo(pWnd, nIDTool);
    info.rect = *lpRect;
    SendMessage(TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&info));
}

void CToolTipCtrl::RelayEvent(LPMSG lpMsg)
{
    SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(lpMsg));
}

void CToolTipCtrl::Activate(BOOL bActivate)
{
    SendMessage(TTM_ACTIVATE, static_cast<WPARAM>(bActivate));
}

int CToolTipCtrl::SetMaxTipWidth(int iWidth)
{
    return static_cast<int>(SendMessage(TTM_SETMAXTIPWIDTH, 0, iWidth));
}

void CToolTipCtrl::SetDelayTime(UINT nDelay)
{
    SendMessage(TTM_SETDELAYTIME, TTDT_AUTOMATIC, MAKELPARAM(nDelay, 0));
}

void CToolTipCtrl::SetDelayTime(DWORD dwDuration, int iTime)
{
    SendMessage(TTM_SETDELAYTIME, dwDuration, MAKELPARAM(iTime, 0));
}

void CToolTipCtrl::Update()
{
    SendMessage(TTM_UPDATE);
}

void CToolTipCtrl::Pop()
{
    SendMessage(TTM_POP);
}
