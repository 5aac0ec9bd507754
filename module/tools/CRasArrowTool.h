#pragma once

#include <cstdlib>
#include <memory>

#include "module/tools/CTool.h"

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
    void Stop() override;
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

    void DrawFeedback();
    void DrawRubberBand(CDC& view);
    void DrawMovedFrame(CDC& view);
    void ChooseCursor(CPoint point, UINT flags);
    void CombineDraggedRectangle(UINT flags);
    void MoveRegion();
    CSize DragSize() const { return CSize(std::abs(m_end.x - m_start.x), std::abs(m_end.y - m_start.y)); }

    // In view space.
    CPoint m_start;
    CPoint m_end;
    CPen m_xorPen;
    unsigned m_state = 0;
    UINT m_cursorId;
    std::unique_ptr<CRgn> m_pMovedRegion; // the region in view space, during a move
    bool m_bStarted = false;
};
