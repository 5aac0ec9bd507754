#include "standin/afx/afx_menu.h"
#include "standin/afx/state.h"

IMPLEMENT_DYNCREATE(CMenu, CObject)

namespace {

// Under Wine the screen goes on showing a menu that has closed until the thread next waits for messages, so that who
// copies from the screen before, as a save-under does, would bring the menu back for good. Drawing the window over
// itself has its pixels sent to the screen again, in the wait that follows.
void CoverClosedMenu(HWND owner)
{
    RECT client;
    GetClientRect(owner, &client);
    const HDC context = GetDC(owner);
    BitBlt(context, 0, 0, client.right, client.bottom, context, 0, 0, SRCCOPY);
    ReleaseDC(owner, context);
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 0, QS_PAINT);
}

} // namespace

CMenu::~CMenu()
{
    DestroyMenu();
}

CMenu* CMenu::FromHandle(HMENU hMenu)
{
    return afx::threadState().menus.any(hMenu, [=] {
        CMenu* menu = new CMenu;
        menu->m_hMenu = hMenu;
        return menu;
    });
}

CMenu* CMenu::FromHandlePermanent(HMENU hMenu)
{
    return afx::threadState().menus.permanent(hMenu);
}

void CMenu::DeleteTempMap()
{
    afx::threadState().menus.deleteTemporary([](CMenu* menu) { menu->m_hMenu = nullptr; });
}

BOOL CMenu::Attach(HMENU hMenu)
{
    if (!hMenu)
        return FALSE;
    m_hMenu = hMenu;
    afx::threadState().menus.setPermanent(hMenu, this);
    return TRUE;
}

HMENU CMenu::Detach()
{
    const HMENU handle = m_hMenu;
    if (handle)
        afx::threadState().menus.removePermanent(handle);
    m_hMenu = nullptr;
    return handle;
}

BOOL CMenu::CreateMenu()
{
    return Attach(::CreateMenu());
}

BOOL CMenu::CreatePopupMenu()
{
    return Attach(::CreatePopupMenu());
}

BOOL CMenu::LoadMenu(LPCWSTR lpszResourceName)
{
    return Attach(::LoadMenuW(AfxFindResourceHandle(lpszResourceName, RT_MENU), lpszResourceName));
}

BOOL CMenu::LoadMenu(UINT nIDResource)
{
    return LoadMenu(MAKEINTRESOURCEW(nIDResource));
}

BOOL CMenu::DestroyMenu()
{
    return m_hMenu && ::DestroyMenu(Detach());
}

BOOL CMenu::AppendMenu(UINT nFlags, UINT_PTR nIDNewItem, LPCWSTR lpszNewItem)
{
    return ::AppendMenuW(m_hMenu, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, LPCWSTR lpszNewItem)
{
    return ::InsertMenuW(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, LPCWSTR lpszNewItem)
{
    return ::ModifyMenuW(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::DeleteMenu(UINT nPosition, UINT nFlags)
{
    return ::DeleteMenu(m_hMenu, nPosition, nFlags);
}

UINT CMenu::CheckMenuItem(UINT nIDCheckItem, UINT nCheck)
{
    return ::CheckMenuItem(m_hMenu, nIDCheckItem, nCheck);
}

UINT CMenu::EnableMenuItem(UINT nIDEnableItem, UINT nEnable)
{
    return static_cast<UINT>(::EnableMenuItem(m_hMenu, nIDEnableItem, nEnable));
}

BOOL CMenu::SetDefaultItem(UINT uItem, BOOL fByPos)
{
    return ::SetMenuDefaultItem(m_hMenu, uItem, static_cast<UINT>(fByPos));
}

UINT CMenu::GetMenuItemCount() const
{
    return static_cast<UINT>(::GetMenuItemCount(m_hMenu));
}

UINT CMenu::GetMenuItemID(int nPos) const
{
    return ::GetMenuItemID(m_hMenu, nPos);
}

UINT CMenu::GetMenuState(UINT nID, UINT nFlags) const
{
    return ::GetMenuState(m_hMenu, nID, nFlags);
}

int CMenu::GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const
{
    const int length = ::GetMenuStringW(m_hMenu, nIDItem, nullptr, 0, nFlags);
    ::GetMenuStringW(m_hMenu, nIDItem, rString.GetBuffer(length + 1), length + 1, nFlags);
    rString.ReleaseBuffer();
    return rString.GetLength();
}

CMenu* CMenu::GetSubMenu(int nPos) const
{
    return FromHandle(::GetSubMenu(m_hMenu, nPos));
}

BOOL CMenu::TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect)
{
    const HWND owner = pWnd ? pWnd->m_hWnd : ::GetActiveWindow();
    const BOOL tracked = ::TrackPopupMenu(m_hMenu, nFlags, x, y, 0, owner, lpRect);
    CoverClosedMenu(owner);
    return tracked;
}
