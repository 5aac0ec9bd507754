#pragma once

#include <memory>

#include "module/tools/CTool.h"
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
    enum DragKind
    {
        DragNone = 0,
        DragAll = 1,
        DragBase = 2,
        DragFirstArm = 3,
        DragSecondArm = 4,
    };
    // In view space.
    struct Drag
    {
        CPoint start;
        CPoint end;
    };

    void PlaceHandles(const CAcraster& raster);
    CRect HandleBox(const CAcraster& raster) const;
    DragKind HandleHit(CPoint point) const;
    void Snap(const CAcraster& raster);
    void DrawDragFigure(const CAcraster& raster);
    void DrawArc(CDC& view, CPoint base, CPoint first, CPoint second);
    void Drop(const CAcraster& raster);
    void OffsetHandles(CSize pixels);
    double SweptAngle() const;
    void StartRotation();
    void ReplacePen(COLORREF color);

    bool m_bSelectedArea = false;
    DragKind m_dragKind = DragNone;
    UINT m_cursorId;
    FollowingTip m_tip;
    std::unique_ptr<Drag> m_pDrag; // there from button-down to button-up
    CPen m_pen;                    // red at rest, white during a drag
    // In image pixels.
    CPoint m_base;
    CPoint m_firstArm;
    CPoint m_secondArm;
    bool m_bDirection = false; // which way the angle is measured; set on each drop
    bool m_bTransparent = false;
    double m_viewKey = 0;
    bool m_bReady = false; // the handlers do nothing before
};
