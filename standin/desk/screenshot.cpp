#include "standin/desk/screenshot.h"

#include "imaging/error.h"
#include "standin/desk/pixel_buffer.h"
#include "standin/desk/script_windows.h"
#include "standin/desk/text_encoding.h"

#include <algorithm>

#include <png.h>

namespace desk {
namespace {

// The window's part of the screen, frame included.
imaging::Rect placeOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return {place.left, place.top, place.right, place.bottom};
}

void copyWindow(HWND window, imaging::Point origin, PixelBuffer& target)
{
    const imaging::Rect place = placeOf(window);
    const HDC source = GetWindowDC(window);
    BitBlt(target.context(), place.left - origin.x, place.top - origin.y, place.width(), place.height(), source, 0, 0,
           SRCCOPY);
    ReleaseDC(window, source);
}

} // namespace

Picture takePicture(HWND window, DWORD threadId)
{
    // Only the inside of the main window: its title bar may belong to the screen's window manager.
    RECT client{};
    GetClientRect(window, &client);
    POINT corner{0, 0};
    ClientToScreen(window, &corner);
    imaging::Rect part = {corner.x, corner.y, corner.x + client.right, corner.y + client.bottom};
    MENUBARINFO menu{};
    menu.cbSize = sizeof(menu);
    if (GetMenuBarInfo(window, OBJID_MENU, 0, &menu) && menu.rcBar.top < part.top)
        part.top = std::max<int>(menu.rcBar.top, placeOf(window).top);

    PixelBuffer buffer;
    buffer.resize({std::max(part.width(), 1), std::max(part.height(), 1)});
    auto windows = script::topWindows(threadId);
    std::reverse(windows.begin(), windows.end());
    for (const HWND top : windows)
        copyWindow(top, {part.left, part.top}, buffer);
    GdiFlush();
    Picture picture{buffer.size(), {}};
    picture.pixels.assign(buffer.pixels(), buffer.pixels() + std::size_t(part.width()) * part.height());
    return picture;
}

void savePicture(const Picture& picture, const std::filesystem::path& path)
{
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    std::FILE* file = _wfopen(path.c_str(), L"wb");
    if (file == nullptr)
        throw imaging::ImagingError("the picture " + toUtf8(path.wstring()) + " can't be written");
    png_image description{};
    description.version = PNG_IMAGE_VERSION;
    description.width = static_cast<png_uint_32>(picture.size.width);
    description.height = static_cast<png_uint_32>(picture.size.height);
    description.format = PNG_FORMAT_RGB;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(picture.pixels.size() * 3);
    for (const std::uint32_t pixel : picture.pixels)
        for (const int shift : {16, 8, 0})
            bytes.push_back(static_cast<std::uint8_t>(pixel >> shift));
    const bool written = png_image_write_to_stdio(&description, file, 0, bytes.data(), 0, nullptr) != 0;
    if (std::fclose(file) != 0 || !written)
        throw imaging::ImagingError("the picture " + toUtf8(path.wstring()) +
                                    " can't be written: " + description.message);
}

} // namespace desk
