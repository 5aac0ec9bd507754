#pragma once

#include "module/raster/CCurentRaster.h"
#include "module/tools/CBrushTool.h"

/// Freehand painting: what the pen and the eraser share. A stroke runs from button-down to button-up under one lock and
/// is committed at its end; the tool stays for the next stroke.
class CRasStrokeTool : public CBrushTool
{
    DECLARE_DYNAMIC(CRasStrokeTool)

public:
    int OnLButtonUp(CPoint point, UINT flags) override;
    int OnMouseMove(CPoint point, UINT flags) override;

protected:
    using CBrushTool::CBrushTool;

    /// The lock for the whole stroke and its first stamp, at a point of the view.
    void BeginStroke(CPoint point);

private:
    bool m_bStroke = false;
    CPoint m_lastPixel; // of the image, where the stroke is at
    // Not a scoped pointer: a tool that is ended in mid-stroke leaves its lock counted, so that the raster keeps its
    // working copy with the uncommitted stamps until it is replaced.
    CCurentRaster* m_pStrokeGuard = nullptr;
};
