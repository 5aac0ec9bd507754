#include "standin/desk/module_eye.h"

#include <cmath>
#include <map>

#include "standin/desk/frame_pattern.h"
#include "standin/desk/script_windows.h"
#include "standin/host.h"

namespace desk::script {
namespace {

// What the module shows to everybody: the numbers of its toolbar's buttons, and the pattern of its selection frame.
constexpr int saveRasterButton = 40009;
const std::map<int, int> toolButtons = {{1, 32800}, {2, 32795}, {3, 32797}, {4, 32799}, {5, 32798}};
constexpr int selectionPatternBitmap = 139;
constexpr int rasterPatternBitmap = 30000;
// The frame is repainted every 50 ms: after this time every frame that is to be seen is.
constexpr DWORD framesSettle = 200;
// Handles and rubber bands may lie over a part of the frame.
constexpr double enoughOfFrame = 0.9;

std::optional<FramePattern> patternOf(int bitmapNumber)
{
    for (const auto& module : standin::loadedModules()) {
        const HMODULE handle = GetModuleHandleW(module.filename().c_str());
        const HBITMAP bitmap = LoadBitmapW(handle, MAKEINTRESOURCEW(bitmapNumber));
        if (bitmap == nullptr)
            continue;
        BITMAPINFO format{};
        format.bmiHeader = {sizeof(BITMAPINFOHEADER), 8, -8, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        FramePattern pattern{};
        const HDC screen = GetDC(nullptr);
        const int rows = GetDIBits(screen, bitmap, 0, 8, pattern.data(), &format, DIB_RGB_COLORS);
        ReleaseDC(nullptr, screen);
        DeleteObject(bitmap);
        if (rows != 8)
            continue;
        for (std::uint32_t& pixel : pattern)
            pixel &= 0xFFFFFF;
        return pattern;
    }
    return std::nullopt;
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
        const Vec2 drawing = image.position + image.u * (double(x) / pixels.width * image.pixels.width) +
                             image.v * ((1 - double(y) / pixels.height) * image.pixels.height);
        const Vec2 at = view.toView(drawing);
        return imaging::Point{static_cast<int>(std::lround(at.x)), static_cast<int>(std::lround(at.y))};
    };
    const imaging::Point a = corner(box.left, box.top), b = corner(box.right, box.bottom);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

} // namespace

bool ModuleEye::rasterIsCurrent() const
{
    ToolbarButton button{};
    m_foothold.ask([&] { button = findToolbarButton(m_foothold.threadId(), saveRasterButton); });
    return button.toolbar != nullptr ? button.enabled : seesRasterFrame();
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

bool ModuleEye::sees(int tool, std::wstring& seen) const
{
    const bool held = toolHoldsMouse();
    int pressed = 0;
    bool toolbar = false;
    const bool current = rasterIsCurrent();
    m_foothold.ask([&] {
        for (const auto& [id, number] : toolButtons) {
            const ToolbarButton button = findToolbarButton(m_foothold.threadId(), number);
            toolbar = toolbar || button.toolbar != nullptr;
            if (button.checked && (id != 1 || !current))
                pressed = id;
        }
    });
    if (held && !toolbar)
        return true; // which tool it is shows in the toolbar alone
    if (!held) {
        seen = L"no tool holds the mouse";
    } else if (pressed != 0) {
        seen = L"the button of tool " + std::to_wstring(pressed) + L" is pressed";
    } else {
        seen = L"a tool without a button holds the mouse";
    }
    return held && pressed == (toolButtons.contains(tool) ? tool : 0);
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
