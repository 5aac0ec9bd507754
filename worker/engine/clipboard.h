#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace worker {

/// The clipboard as the operations see it: one device-independent bitmap (a BMP file without its file header).
class Clipboard
{
public:
    virtual ~Clipboard() = default;

    /// The bitmap's bytes. Throws std::runtime_error when there is none, or when another program keeps the clipboard.
    virtual std::vector<std::byte> readDib() = 0;

    /// Replaces what is on the clipboard by the bitmap, which stays there when the process ends. Throws
    /// std::runtime_error when the clipboard can't be had.
    virtual void putDib(std::span<const std::byte> dib) = 0;
};

} // namespace worker
