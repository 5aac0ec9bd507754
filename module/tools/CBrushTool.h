#pragma once

#include "module/tools/CAppCursor.h"
#include "module/tools/CTool.h"

class CAcraster;
class CCurentRaster;

/// What the tools share that paint with the square stamp: a cursor that shows the stamp's size at the present zoom.
class CBrushTool : public CTool
{
    DECLARE_DYNAMIC(CBrushTool)

public:
    ~CBrushTool() override;
    int Start() override;
    void UpdateCursor() override;
    /// Asks for the brush's attributes by a dialog.
    int OnRButtonDown(CPoint point, UINT flags) override;

protected:
    /// `lastViewKey` outlives the tool: the view at which any tool of the kind last built its cursor.
    CBrushTool(UINT cursorId, double& lastViewKey);

    /// In image pixels.
    virtual int BrushWidth() const = 0;
    virtual COLORREF BrushColor() const = 0;
    /// Runs the dialog at a point of the screen and takes over what was confirmed. False if the user gave up.
    virtual bool AskAttributes(const CCurentRaster& current, CPoint screenPoint) = 0;

private:
    void RebuildCursor(const CAcraster& raster);

    CAppCursor m_cursor;
    double& m_lastViewKey;
};
