// CMenu: menus and pop-up menus.
#pragma once

#include "standin/afx/afx_object.h"
#include "standin/afx/afx_string.h"

class CBitmap;
class CWnd;

/// Owns its handle: the destructor destroys it, unless it was detached or set as a window's menu.
class HALVORAN_STANDIN_API CMenu : public CObject
{
    DECLARE_DYNCREATE(CMenu)
public:
    CMenu() = default;
    ~CMenu() override;

    operator HMENU() const { return m_hMenu; }
    HMENU GetSafeHmenu() const { return m_hMenu; }
    static CMenu* FromHandle(HMENU hMenu);
    static CMenu* FromHandlePermanent(HMENU hMenu);
    static void DeleteTempMap();
    BOOL Attach(HMENU hMenu);
    HMENU Detach();
    BOOL CreateMenu();
    BOOL CreatePopupMenu();
    BOOL LoadMenu(LPCWSTR lpszResourceName);
    BOOL LoadMenu(UINT nIDResource);
    BOOL DestroyMenu();

    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem = 0, LPCWSTR lpszNewItem = nullptr);
    BOOL InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCWSTR lpszNewItem = nullptr);
    BOOL ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCWSTR lpszNewItem = nullptr);
    BOOL DeleteMenu(UINT nPosition, UINT nFlags);
    /// The former state, or -1 when there is no such item.
    UINT CheckMenuItem(UINT nIDCheckItem, UINT nCheck);
    UINT EnableMenuItem(UINT nIDEnableItem, UINT nEnable);
    BOOL SetDefaultItem(UINT uItem, BOOL fByPos = FALSE);
    UINT GetMenuItemCount() const;
    UINT GetMenuItemID(int nPos) const;
    UINT GetMenuState(UINT nID, UINT nFlags) const;
    int GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const;
    CMenu* GetSubMenu(int nPos) const;
    /// With a null window the menu belongs to the active one. With TPM_RETURNCMD the command chosen.
    BOOL TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect = nullptr);

    HMENU m_hMenu = nullptr;
};
