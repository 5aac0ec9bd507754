#include "standin/afx/afx_app.h"
#include "standin/afx/afx_command.h"
#include "standin/afx/afx_menu.h"
#include "standin/afx/afx_window.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

namespace {

// Notification codes travel in 16 bits, so both sides are compared there; the update's -1 is apart from them.
bool matches(const AFX_MSGMAP_ENTRY& entry, UINT message, int code, UINT id)
{
    if (entry.nMessage != message || id < entry.nID || id > entry.nLastID)
        return false;
    if (code == CN_UPDATE_COMMAND_UI || entry.nCode == CN_UPDATE_COMMAND_UI)
        return entry.nCode == code;
    return LOWORD(entry.nCode) == LOWORD(code);
}

} // namespace

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    AFX_MESSAGE event{WM_COMMAND, 0, 0, nID, pExtra, nullptr};
    if (nCode != CN_UPDATE_COMMAND_UI && HIWORD(nCode) == WM_NOTIFY) {
        const AFX_NOTIFY* notify = static_cast<const AFX_NOTIFY*>(pExtra);
        event.message = WM_NOTIFY;
        event.extra = notify->pNMHDR;
        event.pResult = notify->pResult;
    }
    for (const AFX_MSGMAP* map = GetMessageMap(); map; map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pfn; ++entry) {
            if (!matches(*entry, event.message, nCode, nID))
                continue;
            if (pHandlerInfo) {
                *pHandlerInfo = {this, entry->pfn};
                return TRUE;
            }
            if (!entry->pfn(this, event))
                continue;
            if (nCode == CN_UPDATE_COMMAND_UI && static_cast<CCmdUI*>(pExtra)->m_bContinueRouting) {
                static_cast<CCmdUI*>(pExtra)->m_bContinueRouting = FALSE;
                continue;
            }
            return TRUE;
        }
    }
    return FALSE;
}

void CCmdTarget::BeginWaitCursor()
{
    AfxBeginWaitCursor();
}

void CCmdTarget::EndWaitCursor()
{
    AfxEndWaitCursor();
}

void CCmdTarget::RestoreWaitCursor()
{
    AfxRestoreWaitCursor();
}

void CCmdUI::Enable(BOOL bOn)
{
    m_bEnableChanged = TRUE;
    if (m_pMenu) {
        if (!m_pSubMenu) // an item that opens a menu stays as it is
            m_pMenu->EnableMenuItem(m_nIndex, MF_BYPOSITION | (bOn ? MF_ENABLED : MF_DISABLED | MF_GRAYED));
        return;
    }
    if (!m_pOther)
        return;
    if (!bOn && ::GetFocus() == m_pOther->m_hWnd) {
        // The focus leaves a control before it is disabled, or the keyboard would be lost.
        ::SendMessageW(::GetParent(m_pOther->m_hWnd), WM_NEXTDLGCTL, 0, FALSE);
    }
    m_pOther->EnableWindow(bOn);
}

void CCmdUI::SetCheck(int nCheck)
{
    if (m_pMenu) {
        if (!m_pSubMenu)
            m_pMenu->CheckMenuItem(m_nIndex, MF_BYPOSITION | (nCheck ? MF_CHECKED : MF_UNCHECKED));
    } else if (m_pOther && (m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON)) {
        m_pOther->SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck));
    }
}

void CCmdUI::SetRadio(BOOL bOn)
{
    SetCheck(bOn ? 1 : 0);
    if (!m_pMenu || m_pSubMenu)
        return;
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE;
    ::GetMenuItemInfoW(*m_pMenu, m_nIndex, TRUE, &info);
    info.fType |= MFT_RADIOCHECK;
    ::SetMenuItemInfoW(*m_pMenu, m_nIndex, TRUE, &info);
}

void CCmdUI::SetText(LPCWSTR lpszText)
{
    if (m_pMenu) {
        if (!m_pSubMenu) {
            const UINT state = m_pMenu->GetMenuState(m_nIndex, MF_BYPOSITION);
            m_pMenu->ModifyMenu(m_nIndex, MF_BYPOSITION | MF_STRING | (state & (MF_CHECKED | MF_GRAYED | MF_DISABLED)),
                                m_nID, lpszText);
        }
    } else if (m_pOther) {
        m_pOther->SetWindowText(lpszText);
    }
}

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    if (m_nID == 0 || LOWORD(m_nID) == 0xFFFF)
        return TRUE; // separators and static texts have no state
    m_bEnableChanged = FALSE;
    const BOOL handled = pTarget->OnCmdMsg(m_nID, CN_UPDATE_COMMAND_UI, this, nullptr);
    if (bDisableIfNoHndler && !m_bEnableChanged) {
        AFX_CMDHANDLERINFO info{};
        Enable(pTarget->OnCmdMsg(m_nID, CN_COMMAND, this, &info));
    }
    return handled;
}
