#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace worker {

/// The clipboard's device-independent bitmap. Throws std::runtime_error when there is none, or when another program
/// keeps the clipboard to itself.
std::vector<std::byte> readClipboardDib();

/// Replaces what is on the clipboard by the bitmap, which stays there when the process ends. Throws std::runtime_error
/// when the clipboard can't be had.
void putDibOnClipboard(std::span<const std::byte> dib);

} // namespace worker
