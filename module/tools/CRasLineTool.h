#pragma once

#include <memory>

#include "module/tools/CBrushTool.h"
#include "module/tools/CTwoPointDrag.h"

/// Draws a straight line, dragged out with a rubber band; Shift holds it horizontal or vertical.
class CRasLineTool : public CBrushTool
{
    DECLARE_DYNAMIC(CRasLineTool)

public:
    CRasLineTool();
    int ToolId() override { return ToolIdLine; }
    int OnLButtonDown(CPoint point, UINT flags) override;
    int OnLButtonUp(CPoint point, UINT flags) override;
    int OnMouseMove(CPoint point, UINT flags) override;

protected:
    int BrushWidth() const override;
    COLORREF BrushColor() const override;
    bool AskAttributes(const CCurentRaster& current, CPoint screenPoint) override;

private:
    void DrawLine(CPoint from, CPoint to); // between points of the view

    CPen m_xorPen;
    std::unique_ptr<CTwoPointDrag> m_pDrag; // there from button-down to button-up
};
