#pragma once

#include <windows.h>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "imaging/geometry.h"

namespace desk {

/// A picture in colour, 0x00RRGGBB, rows from the top.
struct Picture
{
    imaging::Size size;
    std::vector<std::uint32_t> pixels;
};

/// What the window shows, and over it all dialogs, menus and floating bars of its thread, as they lie on the screen;
/// without title bars, which may belong to the screen's window manager.
/// pointer: where on the screen the thread's present mouse cursor is drawn over it, if at all. On the windows' thread.
Picture takePicture(HWND window, DWORD threadId, std::optional<POINT> pointer = std::nullopt);

/// What the thread's windows show of that part of the screen, with their frames and title bars as far as the windows
/// draw these themselves; white where no window of the thread is.
Picture takeFramedPicture(const imaging::Rect& part, DWORD threadId, std::optional<POINT> pointer = std::nullopt);

/// Writes a PNG file; folders are made where they are missing. Throws ImagingError.
void savePicture(const Picture& picture, const std::filesystem::path& path);

} // namespace desk
