#include "module/tools/CFreeRotateTool.h"

#include <algorithm>
#include <cstdlib>

#include "module/base/CArxApp.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/Coordinates.h"
#include "module/resources/resource.h"
#include "module/tools/CSelectObject.h"
#include "module/tools/RotationGeometry.h"
#include "module/tools/Stroke.h"
#include "module/tools/ToolMenu.h"
#include "module/tools/ViewDrawing.h"

IMPLEMENT_DYNAMIC(CFreeRotateTool, CTool)

namespace {

constexpr COLORREF restColor = 255; // red
constexpr COLORREF dragColor = 0xFFFFFF;
constexpr DWORD settleTime = 300; // ms
constexpr int hitDistance = 4;    // view pixels about a handle
constexpr int boxMargin = 5;      // view pixels about the box of the handles

CRect Around(CPoint center, int distance)
{
    return CRect(center.x - distance, center.y - distance, center.x + distance, center.y + distance);
}

// Works off what the thread's queue holds, for a moment or until it has ended the tool. Tells whether the tool lives.
bool Settle(const CTool* tool)
{
    const unsigned made = CTool::MadeSoFar();
    const auto lives = [&] { return g_pArxApp->m_pTool == tool && CTool::MadeSoFar() == made; };
    const DWORD start = GetTickCount();
    MSG message;
    while (lives() && GetTickCount() - start < settleTime) {
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE))
            continue;
        if (message.message == WM_QUIT)
            break; // stays in the queue for the host's own loop, which ends by it
        AfxGetThread()->PumpMessage();
    }
    return lives();
}

} // namespace

CFreeRotateTool::CFreeRotateTool() : m_cursorId(IDC_ROTATE_FREE), m_pen(PS_SOLID, 0, restColor)
{
    const CCurentRaster current;
    m_tip.Create(m_pView);
    if (current.m_pRaster)
        PlaceHandles(*current.m_pRaster);
    m_viewKey = CursorViewKey();

    if (!Settle(this))
        return; // what was queued, Escape perhaps or a command, has ended this tool, and nothing of it is left
    SaveScreen();
    m_bTransparent = true;
    m_bReady = true;
}

CFreeRotateTool::~CFreeRotateTool()
{
    m_pDrag.reset();
    ::ReleaseCapture();
    if (HasView())
        RedrawView(m_pView);
    m_tip.Destroy();
}

void CFreeRotateTool::PlaceHandles(const CAcraster& raster)
{
    CRect client;
    m_pView->GetClientRect(client);
    const int middleX = client.Width() / 2;
    const int middleY = client.Height() / 2;
    const int sixth = middleX / 6;
    const int twelfth = middleX / 12;
    m_base = raster.ViewToPixel(CPoint(middleX - sixth, middleY));
    m_firstArm = raster.ViewToPixel(CPoint(middleX + twelfth, middleY - sixth));
    m_secondArm = raster.ViewToPixel(CPoint(middleX + sixth, middleY));
}

int CFreeRotateTool::ToolId()
{
    return ToolIdFreeRotate;
}

void CFreeRotateTool::UpdateCursor()
{
    if (m_bReady)
        SetToolCursor(m_cursorId);
}

int CFreeRotateTool::PreMessage(MSG* message)
{
    if (m_bReady)
        m_tip.Relay(message);
    return 0;
}

// The box that holds the handles and the arc, in image pixels.
CRect CFreeRotateTool::HandleBox(const CAcraster& raster) const
{
    const auto [left, right] = std::minmax({m_base.x, m_firstArm.x, m_secondArm.x});
    const auto [top, bottom] = std::minmax({m_base.y, m_firstArm.y, m_secondArm.y});
    CRect view = raster.PixelToView(CRect(left, top, right, bottom));
    view.InflateRect(boxMargin, boxMargin);
    const int radius =
        TruncateToInt(0.5 * std::min(DistanceBetween(m_base, m_firstArm), DistanceBetween(m_base, m_secondArm)));
    CRect both;
    both.UnionRect(raster.ViewToPixel(view), Around(m_base, radius + 1));
    return both;
}

// The base point comes first, so it wins where handles overlap.
CFreeRotateTool::DragKind CFreeRotateTool::HandleHit(CPoint point) const
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return DragNone;
    const CAcraster& raster = *current.m_pRaster;
    if (!raster.PixelToView(HandleBox(raster)).PtInRect(point))
        return DragNone;
    const auto hits = [&](CPoint handle) {
        CRect area = Around(raster.PixelToView(handle), hitDistance);
        area.right += 1; // both edges belong to the handle's area of 9 by 9 pixels
        area.bottom += 1;
        return area.PtInRect(point);
    };
    if (hits(m_base))
        return DragBase;
    if (hits(m_firstArm))
        return DragFirstArm;
    return hits(m_secondArm) ? DragSecondArm : DragAll;
}

int CFreeRotateTool::OnMouseMove(CPoint point, UINT flags)
{
    if (!m_bReady)
        return 1;
    m_tip.Show(IDS_ROTATE_CANCEL);
    if (!m_pDrag) {
        const DragKind hit = HandleHit(point);
        m_cursorId = hit == DragNone ? IDC_ROTATE_FREE : hit == DragAll ? IDC_MOVE_IMAGE : 0;
        return 1;
    }
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    DrawDragFigure(*current.m_pRaster);
    m_pDrag->end = point;
    if (flags & MK_SHIFT)
        Snap(*current.m_pRaster);
    DrawDragFigure(*current.m_pRaster);
    return 1;
}

// A move runs along an axis from where it began; an arm stands upright or level about the base point.
void CFreeRotateTool::Snap(const CAcraster& raster)
{
    CPoint& end = m_pDrag->end;
    if (m_dragKind == DragAll || m_dragKind == DragBase) {
        const CPoint start = m_pDrag->start;
        if (std::abs(end.x - start.x) > std::abs(end.y - start.y)) {
            end.y = start.y;
        } else {
            end.x = start.x;
        }
    } else {
        const CPoint base = raster.PixelToView(m_base);
        if (std::abs(base.x - end.x) <= std::abs(base.y - end.y)) {
            end.x = base.x;
        } else {
            end.y = base.y;
        }
    }
}

// In XOR mode: drawn a second time it erases itself.
void CFreeRotateTool::DrawDragFigure(const CAcraster& raster)
{
    if (m_pDrag->end == m_pDrag->start)
        return;
    CClientDC view(m_pView);
    view.SetROP2(R2_XORPEN);
    const CSelectObject pen(view, m_pen);
    const CPoint end = m_pDrag->end;
    if (m_dragKind == DragAll) {
        const CSize offset = raster.ViewToPixel(end) - raster.ViewToPixel(m_pDrag->start);
        OffsetHandles(offset);
        DrawHandles(view);
        OffsetHandles(CSize(-offset.cx, -offset.cy));
    } else {
        if (m_dragKind == DragBase) {
            view.MoveTo(raster.PixelToView(m_firstArm));
            view.LineTo(end);
            view.LineTo(raster.PixelToView(m_secondArm));
        } else {
            view.MoveTo(raster.PixelToView(m_base));
            view.LineTo(end);
        }
        DrawHandles(view);
    }
}

void CFreeRotateTool::OffsetHandles(CSize pixels)
{
    for (CPoint* handle : {&m_base, &m_firstArm, &m_secondArm})
        *handle += pixels;
}

void CFreeRotateTool::DrawHandles(CDC& view)
{
    // The monitor's tick comes by while the tool settles. What it drew then would get into the save-under, and each
    // press would bring it back.
    if (!m_bReady)
        return;
    if (CursorViewKey() != m_viewKey) {
        m_viewKey = CursorViewKey();
        SaveScreen();
    }
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    const CPoint base = current.m_pRaster->PixelToView(m_base);
    const CPoint first = current.m_pRaster->PixelToView(m_firstArm);
    const CPoint second = current.m_pRaster->PixelToView(m_secondArm);

    const CSelectObject pen(view, m_pen);
    for (const CPoint arm : {first, second})
        DrawOutline(view, Around(arm, 3));
    view.MoveTo(base.x - 5, base.y);
    view.LineTo(base.x + 5, base.y);
    view.MoveTo(base.x, base.y - 5);
    view.LineTo(base.x, base.y + 5);
    view.MoveTo(base.x - 4, base.y);
    view.LineTo(base.x, base.y - 4);
    view.LineTo(base.x + 4, base.y);
    view.LineTo(base.x, base.y + 4);
    view.LineTo(base.x - 4, base.y);
    view.MoveTo(first);
    view.LineTo(base);
    view.LineTo(second);
    DrawArc(view, base, first, second);
}

// The direction is that of the image's pixels. Over a mirrored image the arc therefore goes the other way round; the
// first arm comes to lie on the second by either way.
void CFreeRotateTool::DrawArc(CDC& view, CPoint base, CPoint first, CPoint second)
{
    const double radius = 0.5 * std::min(DistanceBetween(base, first), DistanceBetween(base, second));
    const double firstDirection = DirectionOf(base, first);
    const double secondDirection = DirectionOf(base, second);
    const CPoint arcFirst = PointAt(base, firstDirection, radius);
    const CPoint arcSecond = PointAt(base, secondDirection, radius);
    const CRect box = Around(base, TruncateToInt(radius) + 1);

    // The head's two strokes stand at 45 degrees to either side of the arc's end.
    double headFrom = 0.7853981635;
    double headTo = 2.3561944905;
    if (m_bDirection) {
        view.Arc(box, arcFirst, arcSecond);
    } else {
        view.Arc(box, arcSecond, arcFirst);
        headFrom = 3.9269908175;
        headTo = 5.4977871445;
    }
    view.MoveTo(PointAt(arcSecond, secondDirection + headFrom, 5.0));
    view.LineTo(arcSecond);
    view.LineTo(PointAt(arcSecond, secondDirection + headTo, 5.0));
}

void CFreeRotateTool::ReplacePen(COLORREF color)
{
    m_pen.DeleteObject();
    m_pen.CreatePen(PS_SOLID, 0, color);
}

int CFreeRotateTool::OnLButtonDown(CPoint point, UINT /*flags*/)
{
    if (!m_bReady)
        return 1;
    RestoreScreen();
    m_dragKind = HandleHit(point);
    if (m_dragKind == DragNone)
        return 1;
    m_pView->SetCapture();
    ReplacePen(dragColor);
    m_pDrag = std::make_unique<Drag>(Drag{point, point});
    return 1;
}

int CFreeRotateTool::OnLButtonUp(CPoint /*point*/, UINT /*flags*/)
{
    if (!m_bReady || !m_pDrag)
        return 1;
    const CCurentRaster current;
    if (current.m_pRaster)
        DrawDragFigure(*current.m_pRaster);
    ::ReleaseCapture();
    if (current.m_pRaster)
        Drop(*current.m_pRaster);
    ReplacePen(restColor);
    m_pDrag.reset();
    m_dragKind = DragNone;
    RedrawView(m_pView);
    return 1;
}

void CFreeRotateTool::Drop(const CAcraster& raster)
{
    const CPoint start = raster.ViewToPixel(m_pDrag->start);
    const CPoint end = raster.ViewToPixel(m_pDrag->end);
    if (m_dragKind == DragAll) {
        OffsetHandles(end - start);
    } else if (m_dragKind == DragBase) {
        m_base = end;
    } else if (m_dragKind == DragFirstArm) {
        m_firstArm = end;
    } else {
        m_secondArm = end;
    }
    m_bDirection = TurnsBackward(DirectionOf(m_base, m_firstArm), DirectionOf(m_base, m_secondArm));
}

int CFreeRotateTool::OnRButtonDown(CPoint point, UINT /*flags*/)
{
    if (!m_bReady)
        return 1;
    TrackToolMenu(this, IDM_ROTATE, point, [this](CMenu& menu) {
        menu.EnableMenuItem(ID_ROTATE_TRANSPARENT, MF_BYCOMMAND | (m_bSelectedArea ? MF_ENABLED : MF_GRAYED));
        menu.CheckMenuItem(ID_ROTATE_TRANSPARENT, MF_BYCOMMAND | (m_bTransparent ? MF_CHECKED : MF_UNCHECKED));
    });
    return 1;
}

int CFreeRotateTool::OnCommand(UINT id)
{
    if (!m_bReady)
        return 1;
    if (id == ID_ROTATE_TRANSPARENT) {
        m_bTransparent = !m_bTransparent;
        return 1;
    }
    if (id == ID_ROTATE_START)
        StartRotation();
    return 0;
}

// From the first arm to the second, 0 to a full turn.
double CFreeRotateTool::SweptAngle() const
{
    const double first = DirectionOf(m_base, m_firstArm);
    const double second = DirectionOf(m_base, m_secondArm);
    const double angle = AngleBetween(first, second);
    return TurnsBackward(first, second) ? fullTurn - angle : angle;
}

void CFreeRotateTool::StartRotation()
{
    const CWaitCursor wait;
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    current.m_pRaster->Rotate(SweptAngle(), m_base, m_bSelectedArea, m_bTransparent);
    current.m_pRaster->Reload();
    current.m_pRaster->ResetRegion();
}
