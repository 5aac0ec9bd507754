#pragma once

#include <memory>

#include "module/tools/CTool.h"
#include "module/tools/CTwoPointDrag.h"

/// Selects an area of the current raster: rectangles that are dragged out make up the raster's region, with Shift added
/// and with Ctrl taken away; the region can be moved, and its pixels cut, copied and deleted. The region belongs to the
/// raster and outlives the tool.
class CRasArrowTool : public CTool
{
    DECLARE_DYNAMIC(CRasArrowTool)

public:
    CRasArrowTool();
    ~CRasArrowTool() override;
    int Start() override;
    int ToolId() override;
    void UpdateCursor() override;
    int OnLButtonDown(CPoint point, UINT flags) override;
    int OnRButtonDown(CPoint point, UINT flags) override;
    int OnLButtonUp(CPoint point, UINT flags) override;
    int OnMouseMove(CPoint point, UINT flags) override;
    int OnCommand(UINT id) override;

private:
    enum State : unsigned
    {
        StateSelection = 1,  // there is a selection
        StateRubberBand = 2, // a rectangle is being dragged out
        StateMove = 4,       // the selection is being moved
    };

    void DrawFigure(CDC& view);
    void DrawMovedFrame(CDC& view);
    void ChooseCursor(CPoint point, UINT flags);
    void CombineDraggedRectangle(const CTwoPointDrag& drag, UINT flags);
    void MoveRegion(const CTwoPointDrag& drag);

    CPen m_xorPen;
    std::unique_ptr<CTwoPointDrag> m_pDrag; // of either kind; there from button-down to button-up
    unsigned m_state = 0;
    UINT m_cursorId;
    std::unique_ptr<CRgn> m_pMovedRegion; // the region in view space, during a move
};
