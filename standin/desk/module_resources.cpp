#include "standin/desk/module_resources.h"

#include "standin/host.h"

namespace desk::script {
namespace {

// What the function finds in the first of the loaded modules that has it; a value-initialised result if none has.
template <class Find> auto inModules(const Find& find)
{
    for (const auto& module : standin::loadedModules()) {
        if (const auto found = find(GetModuleHandleW(module.filename().c_str())))
            return found;
    }
    return decltype(find(HMODULE{})){};
}

} // namespace

std::optional<ResourcePicture> moduleBitmap(int number)
{
    const HBITMAP bitmap = inModules([&](HMODULE module) { return LoadBitmapW(module, MAKEINTRESOURCEW(number)); });
    BITMAP form{};
    if (bitmap == nullptr || GetObjectW(bitmap, sizeof(form), &form) == 0)
        return std::nullopt;
    ResourcePicture picture{{form.bmWidth, form.bmHeight}, {}};
    picture.pixels.resize(std::size_t(form.bmWidth) * form.bmHeight);
    BITMAPINFO format{};
    format.bmiHeader = {sizeof(BITMAPINFOHEADER), form.bmWidth, -form.bmHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HDC screen = GetDC(nullptr);
    const int rows =
        GetDIBits(screen, bitmap, 0, static_cast<UINT>(form.bmHeight), picture.pixels.data(), &format, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    DeleteObject(bitmap);
    if (rows != form.bmHeight)
        return std::nullopt;
    for (std::uint32_t& pixel : picture.pixels)
        pixel &= 0xFFFFFF;
    return picture;
}

HCURSOR moduleCursor(int number)
{
    return inModules([&](HMODULE module) { return LoadCursorW(module, MAKEINTRESOURCEW(number)); });
}

} // namespace desk::script
