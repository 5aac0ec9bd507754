#pragma once

#include <memory>

#include "tools/CAppCursor.h"
#include "tools/CTool.h"

/// Draws a straight line, dragged out with a rubber band; Shift holds it horizontal or vertical.
class CRasLineTool : public CTool
{
    DECLARE_DYNAMIC(CRasLineTool)

public:
    CRasLineTool();
    ~CRasLineTool() override;
    int Start() override;
    void Stop() override;
    int ToolId() override { return ToolIdLine; }
    void UpdateCursor() override;
    int OnLButtonDown(CPoint point, UINT flags) override;
    int OnLButtonUp(CPoint point, UINT flags) override;
    int OnMouseMove(CPoint point, UINT flags) override;

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
    CAppCursor m_cursor;
    bool m_bStarted = false;
    CPen m_xorPen;
};
