#pragma once

#include <windows.h>
#include <cstdint>

#include "imaging/geometry.h"
#include "standin/desk/canvas.h"

namespace desk {

/// 32-bit pixels in memory that GDI can copy to the screen. Owns its bitmap and its device context.
class PixelBuffer
{
public:
    PixelBuffer() = default;
    ~PixelBuffer() { release(); }
    PixelBuffer(const PixelBuffer&) = delete;
    PixelBuffer& operator=(const PixelBuffer&) = delete;

    /// Makes it that large; true if it had another size, and then the pixels mean nothing. Throws std::bad_alloc.
    bool resize(imaging::Size size);
    imaging::Size size() const { return m_size; }
    std::uint32_t* pixels() { return m_pixels; }
    HDC context() const { return m_context; }
    /// Draws into the whole buffer. GDI's own drawing must be flushed before.
    Canvas canvas() { return {m_pixels, m_size, m_size.width}; }
    /// Moves the contents; what is uncovered keeps its old pixels.
    void shift(imaging::Point by);
    void copyFrom(const PixelBuffer& other, const imaging::Rect& area);

private:
    void release();

    imaging::Size m_size{0, 0};
    HDC m_context = nullptr;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_formerBitmap = nullptr;
    std::uint32_t* m_pixels = nullptr;
};

} // namespace desk
