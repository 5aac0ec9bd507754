#pragma once

#include "module/tools/CRasStrokeTool.h"

/// Draws freehand in the pen's width and colour.
class CRasPenTool : public CRasStrokeTool
{
    DECLARE_DYNAMIC(CRasPenTool)

public:
    CRasPenTool();
    int ToolId() override { return ToolIdPen; }
    int OnLButtonDown(CPoint point, UINT flags) override;

protected:
    int BrushWidth() const override;
    COLORREF BrushColor() const override;
    bool AskAttributes(const CCurentRaster& current, CPoint screenPoint) override;
};
