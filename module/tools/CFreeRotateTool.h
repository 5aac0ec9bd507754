#pragma once

#include <memory>

#include "module/tools/CRotateHandles.h"
#include "module/tools/CTool.h"
#include "module/tools/CTwoPointDrag.h"
#include "module/tools/FollowingTip.h"

class CAcraster;

/// Turns the raster or its selected area by any angle. Three handles lie on the view: a base point and two arms. The
/// angle is the one from the first arm to the second, shown by an arc with an arrow head; the menu starts the rotation.
class CFreeRotateTool : public CTool
{
    DECLARE_DYNAMIC(CFreeRotateTool)

public:
    /// Lets the host work off what is queued, the repaint of the view among it, for a moment.
    CFreeRotateTool();
    ~CFreeRotateTool() override;
    int ToolId() override;
    void UpdateCursor() override;
    int OnLButtonDown(CPoint point, UINT flags) override;
    int OnRButtonDown(CPoint point, UINT flags) override;
    int OnLButtonUp(CPoint point, UINT flags) override;
    int OnMouseMove(CPoint point, UINT flags) override;
    int OnCommand(UINT id) override;
    int PreMessage(MSG* message) override;

    /// 1 to turn the selected area, 0 for the whole image.
    void SetChoice(int selectedArea) { m_bSelectedArea = selectedArea != 0; }
    bool IsDragging() const { return m_pDrag != nullptr; }
    /// Handles, arms and arc, with the tool's pen and in the context's drawing mode; nothing before the tool has
    /// settled. Needs a current raster, locked.
    void DrawHandles(CDC& view);

private:
    CRotateHandles::Part HitAt(CPoint point) const;
    CPoint Snap(const CAcraster& raster, CPoint point) const;
    void DrawDragFigure(CDC& view, const CAcraster& raster);
    void StartRotation();
    void ReplacePen(COLORREF color);

    CRotateHandles m_handles;
    bool m_bSelectedArea = false;
    CRotateHandles::Part m_draggedPart = CRotateHandles::None;
    UINT m_cursorId;
    FollowingTip m_tip;
    CPen m_pen;                             // red at rest, white during a drag
    std::unique_ptr<CTwoPointDrag> m_pDrag; // there from button-down to button-up
    bool m_bTransparent = false;
    double m_viewKey = 0;
    bool m_bReady = false; // the handlers do nothing before
};
