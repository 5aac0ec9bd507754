#include "module/tools/CRasPenTool.h"

#include "module/resources/resource.h"
#include "module/tools/PenAttributes.h"
#include "module/tools/Stroke.h"

IMPLEMENT_DYNAMIC(CRasPenTool, CRasStrokeTool)

namespace {
double lastViewKey = 0;
}

CRasPenTool::CRasPenTool() : CRasStrokeTool(IDB_CURSOR_PEN, lastViewKey) {}

int CRasPenTool::OnLButtonDown(CPoint point, UINT /*flags*/)
{
    BeginStroke(point);
    m_pView->SetCapture();
    return 1;
}

int CRasPenTool::BrushWidth() const
{
    return PenWidth;
}

COLORREF CRasPenTool::BrushColor() const
{
    return PenColor;
}

bool CRasPenTool::AskAttributes(const CCurentRaster& current, CPoint screenPoint)
{
    return AskPenAttributes(current, screenPoint, PenWidth, PenColor);
}
