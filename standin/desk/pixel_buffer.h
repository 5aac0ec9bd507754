#pragma once

#include "imaging/geometry.h"
#include "standin/desk/canvas.h"

#include <cstdint>

#include <windows.h>

namespace desk {

// 32-bit pixels in memory that GDI can copy to the screen. Owns its bitmap and its device context.
class PixelBuffer
{
public:
    PixelBuffer() = default;
    ~PixelBuffer() { release(); }
    PixelBuffer(const PixelBuffer&) = delete;
    PixelBuffer& operator=(const PixelBuffer&) = delete;

    // Makes it that large; true if it had another size, and then the pixels mean nothing. Throws std::bad_alloc.
    bool resize(imaging::Size size);
    imaging::Size size() const { return size_; }
    std::uint32_t* pixels() { return pixels_; }
    HDC context() const { return context_; }
    // Draws into the whole buffer. GDI's own drawing must be flushed before.
    Canvas canvas() { return {pixels_, size_, size_.width}; }
    // Moves the contents; what is uncovered keeps its old pixels.
    void shift(imaging::Point by);
    void copyFrom(const PixelBuffer& other, const imaging::Rect& area);

private:
    void release();

    imaging::Size size_{0, 0};
    HDC context_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ formerBitmap_ = nullptr;
    std::uint32_t* pixels_ = nullptr;
};

} // namespace desk
