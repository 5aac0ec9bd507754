#pragma once

#include <memory>

#include "module/tools/CBrushTool.h"

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

private:
    // In view space.
    struct EndPoints
    {
        CPoint start;
        CPoint end;
    };

    void DrawBand();
    bool IsTooShort() const;

    std::unique_ptr<EndPoints> m_pEndPoints; // there from button-down to button-up
    CPen m_xorPen;
};
