#include "tools/ToolMenu.h"

#include "host/CArxApp.h"

void TrackPopUp(CTool* tool, CMenu& popUp, CPoint point)
{
    CWnd* view = tool->m_pView;
    view->ClientToScreen(&point);
    tool->m_bBusy = true;
    popUp.TrackPopupMenu(TPM_RIGHTBUTTON, point.x, point.y, view);
    if (g_pArxApp->m_pTool == tool)
        tool->m_bBusy = false;
}
