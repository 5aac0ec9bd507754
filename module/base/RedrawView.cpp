#include "module/base/RedrawView.h"

void RedrawView(CWnd* view)
{
    view->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void RedrawActiveView()
{
    if (CView* view = acedGetAcadDwgView())
        RedrawView(view);
}
