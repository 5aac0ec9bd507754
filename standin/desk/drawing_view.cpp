#include "standin/desk/drawing_view.h"

#include "standin/desk/crosshair.h"
#include "standin/desk/stopwatch.h"
#include "standin/host.h"

#include <algorithm>
#include <cmath>

#include <windowsx.h>

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
    : editor_(editor), palette_(palette), typed_(std::move(typed)), hovered_(std::move(hovered)),
      painter_(standin::imagePixels, editor.typefaces()), crosshair_(makeCrosshair()),
      hand_(LoadCursorW(nullptr, IDC_SIZEALL))
{}

DrawingView::~DrawingView()
{
    DestroyCursor(crosshair_);
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
    pictureStale_ = true;
    Invalidate(FALSE);
}

void DrawingView::repaintOverlay()
{
    Invalidate(FALSE);
}

void DrawingView::setPalette(const Palette& palette)
{
    palette_ = palette;
    repaintScene();
}

void DrawingView::zoomAt(Vec2 view, double factor)
{
    editor_.changeView([&](ViewTransform& transform) { transform.zoomAbout(view, factor); });
}

// --- Painting ---

void DrawingView::OnDraw(CDC* pDC)
{
    CRect dirty;
    pDC->GetClipBox(&dirty);
    const imaging::Rect area = imaging::Rect{dirty.left, dirty.top, dirty.right, dirty.bottom}.intersect(
        imaging::Rect::of(editor_.view().client()));
    if (area.empty())
        return;
    const Stopwatch watch;
    GdiFlush();
    updatePicture();
    frame_.resize(picture_.size());
    frame_.copyFrom(picture_, area);
    Canvas canvas = frame_.canvas();
    canvas.setClip(area);
    drawOverlay(canvas);
    BitBlt(pDC->GetSafeHdc(), area.left, area.top, area.width(), area.height(), frame_.context(), area.left, area.top,
           SRCCOPY);
    const double milliseconds = watch.milliseconds();
    ++times_.frames;
    times_.total += milliseconds;
    times_.longest = std::max(times_.longest, milliseconds);
}

void DrawingView::updatePicture()
{
    const ViewTransform& view = editor_.view();
    if (picture_.resize(view.client()))
        pictureStale_ = true;
    if (pictureStale_) {
        paintArea(imaging::Rect::of(view.client()));
    } else if (!(view == pictureView_)) {
        if (const auto pan = panBetween(pictureView_, view)) {
            paintStrips(*pan);
        } else {
            paintArea(imaging::Rect::of(view.client()));
        }
    }
    pictureStale_ = false;
    pictureView_ = view;
}

void DrawingView::paintArea(const imaging::Rect& area)
{
    if (area.empty())
        return;
    Canvas canvas = picture_.canvas();
    canvas.setClip(area);
    painter_.paint(canvas, editor_.scene(), editor_.view(), palette_, standin::imageFramesShown());
}

void DrawingView::paintStrips(imaging::Point pan)
{
    const imaging::Size client = picture_.size();
    picture_.shift(pan);
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
    const ViewTransform& view = editor_.view();
    if (!editor_.selected().empty())
        painter_.paintSelected(canvas, editor_.scene(), view, palette_, editor_.selected());
    const auto& pending = editor_.pending();
    for (std::size_t i = 1; i < pending.size(); ++i)
        canvas.line(view.toView(pending[i - 1]), view.toView(pending[i]), palette_.band);
    if (const auto overlay = editor_.overlay())
        drawRubber(canvas, view, palette_, *overlay);
}

// --- Input ---

LRESULT DrawingView::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ERASEBKGND:
        return TRUE;
    case WM_SIZE:
        editor_.resizeView({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
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
        editor_.leftDown(pointOf(lParam), (wParam & MK_SHIFT) != 0);
        return 0;
    case WM_LBUTTONUP:
        editor_.leftUp(pointOf(lParam));
        return 0;
    case WM_RBUTTONUP:
        if (editor_.commandRunning())
            editor_.enterKey();
        return 0;
    case WM_MBUTTONDOWN:
        beginPan(pointOf(lParam));
        return 0;
    case WM_MBUTTONDBLCLK:
        editor_.zoomExtents();
        return 0;
    case WM_MBUTTONUP:
        if (panFrom_)
            ReleaseCapture();
        return 0;
    case WM_CAPTURECHANGED:
        panFrom_.reset();
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
            typed_(static_cast<wchar_t>(wParam));
        return 0;
    }
    return CView::WindowProc(message, wParam, lParam);
}

bool DrawingView::onKeyDown(WPARAM key)
{
    const int step = editor_.view().client().height / arrowShare;
    const auto pan = [&](int dx, int dy) {
        editor_.changeView([&](ViewTransform& view) { view.pan(dx, dy); });
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
        if (!editor_.selected().empty() && !editor_.commandRunning())
            editor_.post(L"erase ");
        return true;
    case VK_ESCAPE:
        editor_.escapeKey();
        return true;
    default:
        return false;
    }
}

void DrawingView::onMouseMove(Vec2 view)
{
    ++mouseMoves_;
    if (panFrom_)
        panTo(view);
    ::SetCursor(panFrom_ ? hand_ : crosshair_);
    hovered_(view);
    editor_.mouseMove(view);
}

void DrawingView::beginPan(Vec2 view)
{
    SetCapture();
    panFrom_ = view;
    ::SetCursor(hand_);
}

void DrawingView::panTo(Vec2 view)
{
    const Vec2 moved = view - *panFrom_;
    panFrom_ = view;
    editor_.changeView(
        [&](ViewTransform& transform) { transform.pan(static_cast<int>(moved.x), static_cast<int>(moved.y)); });
    UpdateWindow();
}

} // namespace desk
