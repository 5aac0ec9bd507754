#pragma once

#include "raster/CCurentRaster.h"
#include "tools/CAppCursor.h"
#include "tools/CTool.h"

/// Freehand painting with the square stamp: what the pen and the eraser share. A stroke runs from button-down to
/// button-up under one lock and is committed at its end; the tool stays for the next stroke.
class CRasStrokeTool : public CTool
{
    DECLARE_DYNAMIC(CRasStrokeTool)

public:
    ~CRasStrokeTool() override;
    int Start() override;
    void Stop() override;
    void UpdateCursor() override;
    int OnLButtonUp(CPoint point, UINT flags) override;
    int OnMouseMove(CPoint point, UINT flags) override;

protected:
    /// `lastViewKey` outlives the tool: the view at which any tool of the kind last built its cursor.
    CRasStrokeTool(UINT cursorId, double& lastViewKey);

    virtual int BrushWidth() const = 0;
    virtual COLORREF BrushColor() const = 0;

    /// The lock for the whole stroke and its first stamp, at a point of the view.
    void BeginStroke(CPoint point);

private:
    bool m_bStroke = false;
    CAppCursor m_cursor;
    CPoint m_lastPixel; // of the image, where the stroke is at
    bool m_bStarted = false;
    // Not a scoped pointer: a tool that is ended in mid-stroke leaves its lock counted, so that the raster keeps its
    // working copy with the uncommitted stamps until it is replaced.
    CCurentRaster* m_pStrokeGuard = nullptr;
    double& m_lastViewKey;
};
