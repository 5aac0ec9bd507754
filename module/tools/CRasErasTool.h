#pragma once

#include "module/tools/CRasStrokeTool.h"

/// Paints background freehand, whatever the pen's colour is.
class CRasErasTool : public CRasStrokeTool
{
    DECLARE_DYNAMIC(CRasErasTool)

public:
    CRasErasTool();
    int ToolId() override { return ToolIdEraser; }
    int OnLButtonDown(CPoint point, UINT flags) override;

protected:
    int BrushWidth() const override;
    COLORREF BrushColor() const override { return 0xFFFFFF; }
    bool AskAttributes(const CCurentRaster& current, CPoint screenPoint) override;
};
