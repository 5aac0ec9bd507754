#include "standin/desk/drawing_view.h"

#include <algorithm>
#include <cmath>
#include <windowsx.h>

#include "standin/desk/crosshair.h"
#include "standin/desk/stopwatch.h"
#include "standin/host.h"

namespace desk {
namespace {

constexpr double wheelStep = 1.25;
// A press of an arrow key moves the drawing by this share of the view's height.
constexpr int arrowShare = 8;

Vec2 pointOf(LPARAM lParam)
{
    return {double(GET_X_LPARAM(lParam)), double(GET_Y_LPARAM(lParam))};
}

} // namespace

DrawingView::DrawingView(Editor& editor, const Palette& palette, std::function<void(wchar_t)> typed,
                         std::function<void(Vec2 view)> hovered)
    : m_editor(editor), m_palette(palette), m_typed(std::move(typed)), m_hovered(std::move(hovered)),
      m_painter(standin::imagePixels, editor.fonts()), m_crosshair(makeCrosshair()),
      m_hand(LoadCursorW(nullptr, IDC_SIZEALL))
{}

DrawingView::~DrawingView()
{
    DestroyCursor(m_crosshair);
}

BOOL DrawingView::PreCreateWindow(CREATESTRUCT& cs)
{
    if (!CView::PreCreateWindow(cs))
        return FALSE;
    // No background brush: the view paints every pixel itself. Double clicks come as such.
    cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW);
    cs.dwExStyle &= ~WS_EX_CLIENTEDGE;
    cs.style &= ~WS_BORDER;
    return TRUE;
}

void DrawingView::repaintScene()
{
    m_pictureStale = true;
    Invalidate(FALSE);
}

void DrawingView::repaintOverlay()
{
    Invalidate(FALSE);
}

void DrawingView::setPalette(const Palette& palette)
{
    m_palette = palette;
    repaintScene();
}

void DrawingView::zoomAt(Vec2 view, double factor)
{
    m_editor.views().change([&](ViewTransform& transform) { transform.zoomAbout(view, factor); });
}

// --- Painting ---

void DrawingView::OnDraw(CDC* pDC)
{
    CRect dirty;
    pDC->GetClipBox(&dirty);
    const imaging::Rect area = imaging::Rect{dirty.left, dirty.top, dirty.right, dirty.bottom}.intersect(
        imaging::Rect::of(m_editor.view().client()));
    if (area.empty())
        return;
    const Stopwatch watch;
    GdiFlush();
    updatePicture();
    m_frame.resize(m_picture.size());
    m_frame.copyFrom(m_picture, area);
    Canvas canvas = m_frame.canvas();
    canvas.setClip(area);
    drawOverlay(canvas);
    BitBlt(pDC->GetSafeHdc(), area.left, area.top, area.width(), area.height(), m_frame.context(), area.left, area.top,
           SRCCOPY);
    const double milliseconds = watch.milliseconds();
    ++m_times.frames;
    m_times.total += milliseconds;
    m_times.longest = std::max(m_times.longest, milliseconds);
}

void DrawingView::updatePicture()
{
    const ViewTransform& view = m_editor.view();
    if (m_picture.resize(view.client()))
        m_pictureStale = true;
    if (m_pictureStale) {
        paintArea(imaging::Rect::of(view.client()));
    } else if (!(view == m_pictureView)) {
        if (const auto pan = panBetween(m_pictureView, view)) {
            paintStrips(*pan);
        } else {
            paintArea(imaging::Rect::of(view.client()));
        }
    }
    m_pictureStale = false;
    m_pictureView = view;
}

void DrawingView::paintArea(const imaging::Rect& area)
{
    if (area.empty())
        return;
    Canvas canvas = m_picture.canvas();
    canvas.setClip(area);
    m_painter.paint(canvas, m_editor.scene(), m_editor.view(), m_palette, standin::imageFramesShown());
}

void DrawingView::paintStrips(imaging::Point pan)
{
    const imaging::Size client = m_picture.size();
    m_picture.shift(pan);
    if (pan.y > 0) {
        paintArea({0, 0, client.width, pan.y});
    } else {
        paintArea({0, client.height + pan.y, client.width, client.height});
    }
    if (pan.x > 0) {
        paintArea({0, 0, pan.x, client.height});
    } else {
        paintArea({client.width + pan.x, 0, client.width, client.height});
    }
}

void DrawingView::drawOverlay(Canvas& canvas)
{
    const ViewTransform& view = m_editor.view();
    if (!m_editor.selection().entities().empty())
        m_painter.paintSelected(canvas, m_editor.scene(), view, m_palette, m_editor.selection().entities());
    const auto& pending = m_editor.pending();
    for (std::size_t i = 1; i < pending.size(); ++i)
        canvas.line(view.toView(pending[i - 1]), view.toView(pending[i]), m_palette.band);
    if (const auto overlay = m_editor.overlay())
        drawRubber(canvas, view, m_palette, *overlay);
}

// --- Input ---

LRESULT DrawingView::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ERASEBKGND:
        return TRUE;
    case WM_SIZE:
        m_editor.views().resize({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        Invalidate(FALSE);
        return 0;
    case WM_SETCURSOR:
        // The cursor is set with each mouse move that gets here, so that a tool's cursor is left alone.
        if (LOWORD(lParam) == HTCLIENT)
            return TRUE;
        break;
    case WM_MOUSEMOVE:
        onMouseMove(pointOf(lParam));
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        SetFocus();
        m_editor.leftDown(pointOf(lParam), (wParam & MK_SHIFT) != 0);
        return 0;
    case WM_LBUTTONUP:
        m_editor.leftUp(pointOf(lParam));
        return 0;
    case WM_RBUTTONUP:
        if (m_editor.commandRunning())
            m_editor.enterKey();
        return 0;
    case WM_MBUTTONDOWN:
        beginPan(pointOf(lParam));
        return 0;
    case WM_MBUTTONDBLCLK:
        m_editor.zoomExtents();
        return 0;
    case WM_MBUTTONUP:
        m_pan.reset();
        return 0;
    case WM_CAPTURECHANGED:
        m_pan.reset();
        break;
    case WM_MOUSEWHEEL: {
        CPoint at(lParam);
        ScreenToClient(&at);
        zoomAt({double(at.x), double(at.y)}, std::pow(wheelStep, GET_WHEEL_DELTA_WPARAM(wParam) / double(WHEEL_DELTA)));
        return 0;
    }
    case WM_KEYDOWN:
        if (onKeyDown(wParam))
            return 0;
        break;
    case WM_CHAR:
        if (wParam != VK_ESCAPE)
            m_typed(static_cast<wchar_t>(wParam));
        return 0;
    }
    return CView::WindowProc(message, wParam, lParam);
}

bool DrawingView::onKeyDown(WPARAM key)
{
    const int step = m_editor.view().client().height / arrowShare;
    const auto pan = [&](int dx, int dy) {
        m_editor.views().change([&](ViewTransform& view) { view.pan(dx, dy); });
        return true;
    };
    switch (key) {
    case VK_LEFT:
        return pan(step, 0);
    case VK_RIGHT:
        return pan(-step, 0);
    case VK_UP:
        return pan(0, step);
    case VK_DOWN:
        return pan(0, -step);
    case VK_DELETE:
        if (!m_editor.selection().entities().empty() && !m_editor.commandRunning())
            m_editor.post(L"erase ");
        return true;
    case VK_ESCAPE:
        m_editor.escapeKey();
        return true;
    default:
        return false;
    }
}

void DrawingView::onMouseMove(Vec2 view)
{
    ++m_mouseMoves;
    ::SetCursor(m_pan ? m_hand : m_crosshair);
    m_hovered(view);
    m_editor.mouseMove(view);
}

void DrawingView::beginPan(Vec2 view)
{
    m_panFrom = view;
    m_pan.reset(); // of a button whose release went to another window
    m_pan = std::make_unique<HeldPan>(m_hWnd, [this](POINT at) { panTo({double(at.x), double(at.y)}); });
    ::SetCursor(m_hand);
}

void DrawingView::panTo(Vec2 view)
{
    const Vec2 moved = view - m_panFrom;
    m_panFrom = view;
    m_editor.views().change(
        [&](ViewTransform& transform) { transform.pan(static_cast<int>(moved.x), static_cast<int>(moved.y)); });
    UpdateWindow();
}

} // namespace desk
