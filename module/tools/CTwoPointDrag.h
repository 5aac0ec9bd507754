#pragma once

#include "module/tools/CSelectObject.h"
#include "platform/platform.h"

/// A drag between two points of the view, from the press of the button on, with the figure that is drawn in XOR mode
/// while it lasts. What draws the figure comes with each call, as `draw(CDC&)`; it has to draw the same for the same
/// two points, for a second drawing erases the first.
class CTwoPointDrag
{
public:
    /// `pen` is the figure's; view and pen outlive the drag.
    CTwoPointDrag(CWnd* view, CPen& pen, CPoint point) : m_pView(view), m_pen(pen), m_start(point), m_end(point) {}
    CTwoPointDrag(const CTwoPointDrag&) = delete;
    CTwoPointDrag& operator=(const CTwoPointDrag&) = delete;

    CPoint Start() const { return m_start; }
    CPoint End() const { return m_end; }

    /// Too little in both directions to be meant as a drag.
    bool IsShort() const;
    /// Too little in at least one direction: no rectangle.
    bool IsThin() const;

    /// The point brought to the horizontal or vertical line through the start, whichever is nearer.
    CPoint SnapToAxis(CPoint point) const;

    /// Draws the figure, or erases it.
    template <typename Draw> void DrawFigure(Draw&& draw) const
    {
        CClientDC view(m_pView);
        view.SetROP2(R2_XORPEN);
        const CSelectObject pen(view, m_pen);
        draw(view);
    }

    /// Erases the figure, moves the end, and draws it anew.
    template <typename Draw> void MoveEnd(CPoint end, Draw&& draw)
    {
        DrawFigure(draw);
        m_end = end;
        DrawFigure(draw);
    }

private:
    CWnd* m_pView;
    CPen& m_pen;
    CPoint m_start;
    CPoint m_end;
};
