// CCmdTarget: whatever can take a command; CCmdUI: the state of a command's button or menu item.
#pragma once

#include "standin/afx/afx_message_map.h"
#include "standin/afx/afx_object.h"

class CMenu;
class CWnd;

struct AFX_CMDHANDLERINFO
{
    class CCmdTarget* pTarget;
    AFX_HANDLER pmf;
};

/// What OnCmdMsg gets as pExtra for a notification; its nCode is MAKELONG(notification code, WM_NOTIFY).
struct AFX_NOTIFY
{
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

class HALVORAN_STANDIN_API CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)
public:
    CCmdTarget() = default;

    /// True when a handler took it. With pHandlerInfo the handler is only looked up, not called.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);
    void BeginWaitCursor();
    void EndWaitCursor();
    void RestoreWaitCursor();

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
    friend class CWnd;
};

class HALVORAN_STANDIN_API CCmdUI
{
public:
    CCmdUI() = default;
    virtual ~CCmdUI() = default;

    virtual void Enable(BOOL bOn = TRUE);
    virtual void SetCheck(int nCheck = 1);
    virtual void SetRadio(BOOL bOn = TRUE);
    virtual void SetText(LPCWSTR lpszText);
    void ContinueRouting() { m_bContinueRouting = TRUE; }
    /// Asks the target for the state; an item without any handler is disabled when bDisableIfNoHndler is set.
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);

    UINT m_nID = 0;
    UINT m_nIndex = 0;
    CMenu* m_pMenu = nullptr;
    CMenu* m_pSubMenu = nullptr;
    CWnd* m_pOther = nullptr;
    BOOL m_bEnableChanged = FALSE;
    BOOL m_bContinueRouting = FALSE;
    UINT m_nIndexMax = 0;
};
