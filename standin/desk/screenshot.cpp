#include "standin/desk/screenshot.h"

#include <algorithm>
#include <png.h>

#include "imaging/error.h"
#include "standin/desk/pixel_buffer.h"
#include "standin/desk/script_windows.h"
#include "standin/text.h"

namespace desk {
namespace {

// The inside of a window, as it lies on the screen: a title bar may belong to the screen's window manager.
imaging::Rect insideOf(HWND window)
{
    RECT client{};
    GetClientRect(window, &client);
    POINT corner{0, 0};
    ClientToScreen(window, &corner);
    return {corner.x, corner.y, corner.x + client.right, corner.y + client.bottom};
}

// The inside together with the menu bar, which the window draws itself.
imaging::Rect pictured(HWND window)
{
    imaging::Rect part = insideOf(window);
    MENUBARINFO menu{};
    menu.cbSize = sizeof(menu);
    if (GetMenuBarInfo(window, OBJID_MENU, 0, &menu) && menu.rcBar.bottom > menu.rcBar.top)
        part.top = std::min<int>(part.top, menu.rcBar.top);
    return part;
}

imaging::Rect frameOf(HWND window)
{
    RECT frame{};
    GetWindowRect(window, &frame);
    return {frame.left, frame.top, frame.right, frame.bottom};
}

// `part` of the window to where it lies in a picture whose corner is that of `whole`; all on the screen.
void copyWindow(HWND window, const imaging::Rect& part, const imaging::Rect& whole, PixelBuffer& target)
{
    const imaging::Rect frame = frameOf(window);
    const imaging::Rect at = part.offset(-whole.left, -whole.top);
    const HDC source = GetWindowDC(window);
    BitBlt(target.context(), at.left, at.top, at.width(), at.height(), source, part.left - frame.left,
           part.top - frame.top, SRCCOPY);
    ReleaseDC(window, source);
}

void drawEdge(const imaging::Rect& part, const imaging::Rect& whole, PixelBuffer& target)
{
    const imaging::Rect at = part.offset(-whole.left, -whole.top);
    const RECT edge{at.left - 1, at.top - 1, at.right + 1, at.bottom + 1};
    FrameRect(target.context(), &edge, GetSysColorBrush(COLOR_BTNSHADOW));
}

void drawPointer(POINT screen, const imaging::Rect& whole, PixelBuffer& target)
{
    const HCURSOR cursor = GetCursor();
    ICONINFO info{};
    if (cursor == nullptr || !GetIconInfo(cursor, &info))
        return; // hidden
    DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr)
        DeleteObject(info.hbmColor);
    DrawIconEx(target.context(), screen.x - whole.left - static_cast<int>(info.xHotspot),
               screen.y - whole.top - static_cast<int>(info.yHotspot), cursor, 0, 0, 0, nullptr, DI_NORMAL);
}

// The lowest first. Nothing shall be missing because its turn to be painted had not come.
std::vector<HWND> paintedWindows(DWORD threadId)
{
    auto windows = script::topWindows(threadId);
    std::reverse(windows.begin(), windows.end());
    for (const HWND window : windows)
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    return windows;
}

Picture finished(PixelBuffer& buffer, const imaging::Rect& part, std::optional<POINT> pointer)
{
    if (pointer)
        drawPointer(*pointer, part, buffer);
    GdiFlush();
    Picture picture{buffer.size(), {}};
    picture.pixels.assign(buffer.pixels(), buffer.pixels() + std::size_t(buffer.size().width) * buffer.size().height);
    return picture;
}

} // namespace

Picture takePicture(HWND window, DWORD threadId, std::optional<POINT> pointer)
{
    const imaging::Rect part = pictured(window);
    PixelBuffer buffer;
    buffer.resize({std::max(part.width(), 1), std::max(part.height(), 1)});
    for (const HWND top : paintedWindows(threadId)) {
        copyWindow(top, pictured(top), part, buffer);
        if (top != window)
            drawEdge(pictured(top), part, buffer);
    }
    return finished(buffer, part, pointer);
}

Picture takeFramedPicture(const imaging::Rect& part, DWORD threadId, std::optional<POINT> pointer)
{
    PixelBuffer buffer;
    buffer.resize({std::max(part.width(), 1), std::max(part.height(), 1)});
    PatBlt(buffer.context(), 0, 0, buffer.size().width, buffer.size().height, WHITENESS);
    for (const HWND top : paintedWindows(threadId))
        copyWindow(top, frameOf(top), part, buffer);
    return finished(buffer, part, pointer);
}

void savePicture(const Picture& picture, const std::filesystem::path& path)
{
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    std::FILE* file = _wfopen(path.c_str(), L"wb");
    if (file == nullptr)
        throw imaging::ImagingError("the picture " + standin::toUtf8(path.wstring()) + " can't be written");
    png_image description{};
    description.version = PNG_IMAGE_VERSION;
    description.width = static_cast<png_uint_32>(picture.size.width);
    description.height = static_cast<png_uint_32>(picture.size.height);
    description.format = PNG_FORMAT_RGB;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(picture.pixels.size() * 3);
    for (const std::uint32_t pixel : picture.pixels) {
        for (const int shift : {16, 8, 0})
            bytes.push_back(static_cast<std::uint8_t>(pixel >> shift));
    }
    const bool written = png_image_write_to_stdio(&description, file, 0, bytes.data(), 0, nullptr) != 0;
    if (std::fclose(file) != 0 || !written) {
        throw imaging::ImagingError("the picture " + standin::toUtf8(path.wstring()) +
                                    " can't be written: " + description.message);
    }
}

} // namespace desk
