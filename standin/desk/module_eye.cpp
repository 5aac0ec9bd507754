#include "standin/desk/module_eye.h"

#include <algorithm>
#include <cmath>

#include "standin/desk/frame_pattern.h"
#include "standin/desk/module_resources.h"
#include "standin/desk/module_toolbar.h"
#include "standin/host.h"

namespace desk::script {
namespace {

// What the module shows to everybody: the patterns of its frames.
constexpr int selectionPatternBitmap = 139;
constexpr int rasterPatternBitmap = 30000;
// The frame is repainted every 50 ms: after this time every frame that is to be seen is.
constexpr DWORD framesSettle = 200;
// Handles and rubber bands may lie over a part of the frame.
constexpr double enoughOfFrame = 0.9;

std::optional<FramePattern> patternOf(int bitmapNumber)
{
    FramePattern pattern{};
    const auto picture = moduleBitmap(bitmapNumber);
    if (!picture || picture->pixels.size() != pattern.size())
        return std::nullopt;
    std::copy(picture->pixels.begin(), picture->pixels.end(), pattern.begin());
    return pattern;
}

ViewPicture pictureOf(DrawingView& view)
{
    CRect client;
    view.GetClientRect(&client);
    PixelBuffer buffer;
    buffer.resize({std::max<int>(client.Width(), 1), std::max<int>(client.Height(), 1)});
    const HDC source = ::GetDC(view.m_hWnd);
    BitBlt(buffer.context(), 0, 0, client.Width(), client.Height(), source, 0, 0, SRCCOPY);
    ::ReleaseDC(view.m_hWnd, source);
    GdiFlush();
    ViewPicture picture{buffer.size(), {}};
    picture.pixels.assign(buffer.pixels(), buffer.pixels() + std::size_t(buffer.size().width) * buffer.size().height);
    for (std::uint32_t& pixel : picture.pixels)
        pixel &= 0xFFFFFF;
    return picture;
}

// The view rectangle of a box of image pixels, reckoned as the frames are: corners rounded, then ordered.
imaging::Rect viewRect(const SceneImage& image, imaging::Size pixels, const imaging::Rect& box,
                       const ViewTransform& view)
{
    const auto corner = [&](int x, int y) {
        const Vec2 at = view.toView(image.placement.toDrawing({double(x), double(y)}, pixels));
        return imaging::Point{static_cast<int>(std::lround(at.x)), static_cast<int>(std::lround(at.y))};
    };
    const imaging::Point a = corner(box.left, box.top), b = corner(box.right, box.bottom);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

} // namespace

ToolbarButton ModuleEye::button(int id) const
{
    ToolbarButton button{};
    m_foothold.ask([&] {
        AfxGetThread()->OnIdle(0);
        button = findToolbarButton(m_foothold.threadId(), id);
    });
    return button;
}

bool ModuleEye::rasterIsCurrent() const
{
    const ToolbarButton save = button(saveRasterButton);
    return save.visible ? save.enabled : seesRasterFrame();
}

bool ModuleEye::seesRasterFrame() const
{
    m_foothold.ask([&] {
        if (m_frame.view() != nullptr)
            m_frame.view()->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    });
    Sleep(framesSettle);
    return bestFrame(rasterPatternBitmap, std::nullopt) >= enoughOfFrame;
}

double ModuleEye::bestFrame(int patternBitmap, const std::optional<imaging::Rect>& box) const
{
    double best = 0;
    m_foothold.ask([&] {
        const auto pattern = patternOf(patternBitmap);
        if (!pattern || m_frame.view() == nullptr)
            return;
        const ViewPicture picture = pictureOf(*m_frame.view());
        for (const SceneItem& item : m_frame.editor().scene().items()) {
            const auto* image = std::get_if<SceneImage>(&item.shape);
            const auto bitmap = image ? standin::imagePixels(image->image) : nullptr;
            if (!bitmap)
                continue;
            const imaging::Rect pixels = box.value_or(imaging::Rect::of(bitmap->size()));
            const imaging::Rect outline = viewRect(*image, bitmap->size(), pixels, m_frame.editor().view());
            best = std::max(best, outlineMatch(picture, outline, *pattern));
        }
    });
    return best;
}

bool ModuleEye::toolHoldsMouse() const
{
    HWND view = nullptr;
    unsigned before = 0, after = 0;
    m_foothold.ask([&] {
        if (m_frame.view() != nullptr) {
            view = m_frame.view()->m_hWnd;
            before = m_frame.view()->mouseMoves();
        }
    });
    if (view == nullptr)
        return false;
    m_hand.move(view, m_mouse, m_held);
    m_foothold.waitForPosted();
    m_foothold.ask([&] { after = m_frame.view() != nullptr ? m_frame.view()->mouseMoves() : before + 1; });
    return after == before;
}

bool ModuleEye::seesTool(int tool, std::wstring& seen) const
{
    seen = L"no tool holds the mouse";
    if (!toolHoldsMouse())
        return false;
    if (const auto number = buttonOfTool(tool)) {
        const ToolbarButton its = button(*number);
        if (its.visible) {
            seen = L"the tool's button is not pressed";
            return showsToolAtWork(its, tool);
        }
    }
    const auto found = toolByCursor(seen);
    if (found)
        seen = L"tool " + std::to_wstring(*found) + L" holds the mouse, as its cursor tells";
    return found == tool;
}

bool ModuleEye::showsToolAtWork(const ToolbarButton& its, int tool) const
{
    // With a raster the select button stays pressed; a raster is picked only while there is none.
    return its.checked && (buttonOfTool(tool) != selectRasterButton || !button(saveRasterButton).enabled);
}

std::optional<int> ModuleEye::toolByCursor(std::wstring& seen) const
{
    using Kind = ToolCursor::Kind;
    const ToolCursor here = cursorAt(m_mouse, m_held);
    if (here.kind == Kind::own)
        return here.tool;
    seen = here.kind == Kind::arrow      ? L"the cursor is the arrow, which tells no tool"
           : here.kind == Kind::moveSign ? L"the cursor is the one to move by, which several tools show"
                                         : L"the cursor is none of a tool's";
    if (here.kind == Kind::other || m_held.leftButton)
        return std::nullopt;
    // In the corners of the view the area tool shows a cursor of its own beside the selection, the free rotate tool one
    // beside its box, with the arrow on its three handles alone; the paste tool shows the arrow beside what floats.
    int arrows = here.kind == Kind::arrow, moveSigns = here.kind == Kind::moveSign;
    for (const POINT corner : corners()) {
        const ToolCursor there = cursorAt(corner, {});
        if (there.kind == Kind::own) {
            cursorAt(m_mouse, {});
            return there.tool;
        }
        arrows += there.kind == Kind::arrow;
        moveSigns += there.kind == Kind::moveSign;
    }
    cursorAt(m_mouse, {});
    return arrows > 3 && moveSigns > 0 ? std::optional(7) : std::nullopt;
}

std::vector<POINT> ModuleEye::corners() const
{
    imaging::Size size;
    m_foothold.ask([&] { size = m_frame.editor().view().client(); });
    const LONG right = size.width - 1, bottom = size.height - 1;
    return {{0, 0}, {right, 0}, {0, bottom}, {right, bottom}};
}

ToolCursor ModuleEye::cursorAt(POINT view, Held held) const
{
    HWND window = nullptr;
    m_foothold.ask([&] { window = m_frame.view() != nullptr ? m_frame.view()->m_hWnd : nullptr; });
    // A tool shows with each move what it has found at the move before.
    for (int i = 0; i < 2; ++i)
        m_hand.move(window, view, held);
    m_foothold.waitForPosted();
    ToolCursor cursor;
    m_foothold.ask([&] { cursor = toolCursor(GetCursor()); });
    return cursor;
}

bool ModuleEye::seesSelection(const imaging::Rect& pixels, std::wstring& seen) const
{
    Sleep(framesSettle);
    const double best = bestFrame(selectionPatternBitmap, pixels);
    seen = L"the selection's frame is seen along " + std::to_wstring(static_cast<int>(best * 100)) +
           L" % of that box's outline";
    return best >= enoughOfFrame;
}

bool ModuleEye::seesAnySelection() const
{
    Sleep(framesSettle);
    bool any = false;
    m_foothold.ask([&] {
        const auto pattern = patternOf(selectionPatternBitmap);
        if (pattern && m_frame.view() != nullptr)
            any = holdsPatternRun(pictureOf(*m_frame.view()), *pattern);
    });
    return any;
}

} // namespace desk::script
