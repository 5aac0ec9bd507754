#include "module/tools/ToolMenu.h"

#include "module/base/CArxApp.h"

void TrackToolMenu(CTool* tool, UINT menuId, CWnd& owner, CPoint point,
                   const std::function<void(CMenu& popUp)>& prepare)
{
    CMenu menu;
    if (!menu.LoadMenu(menuId))
        return;
    CMenu* popUp = menu.GetSubMenu(0);
    prepare(*popUp);
    owner.ClientToScreen(&point);
    tool->m_bBusy = true;
    const unsigned made = CTool::MadeSoFar();
    popUp->TrackPopupMenu(TPM_RIGHTBUTTON, point.x, point.y, &owner);
    if (g_pArxApp->m_pTool == tool && CTool::MadeSoFar() == made)
        tool->m_bBusy = false;
}
