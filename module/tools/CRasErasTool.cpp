#include "module/tools/CRasErasTool.h"

#include "module/base/CTempMFC.h"
#include "module/dialogs/CDErasPen.h"
#include "module/resources/resource.h"
#include "module/tools/Stroke.h"

IMPLEMENT_DYNAMIC(CRasErasTool, CRasStrokeTool)

namespace {
double lastViewKey = 0;
}

CRasErasTool::CRasErasTool() : CRasStrokeTool(IDB_CURSOR_ERASER, lastViewKey) {}

int CRasErasTool::OnLButtonDown(CPoint point, UINT /*flags*/)
{
    m_pView->SetCapture();
    BeginStroke(point);
    return 1;
}

int CRasErasTool::BrushWidth() const
{
    return EraserWidth;
}

bool CRasErasTool::AskAttributes(const CCurentRaster& /*current*/, CPoint screenPoint)
{
    const CTempMFC resources;
    CDErasPen dialog;
    dialog.m_position = screenPoint;
    dialog.m_nWidth = EraserWidth;
    if (dialog.DoModal() != IDOK)
        return false;
    EraserWidth = dialog.m_nWidth;
    return true;
}
