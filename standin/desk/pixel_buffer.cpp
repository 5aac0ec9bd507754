#include "standin/desk/pixel_buffer.h"

#include <cstring>
#include <new>

namespace desk {

bool PixelBuffer::resize(imaging::Size size)
{
    if (size == m_size)
        return false;
    release();
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    format.bmiHeader.biWidth = size.width;
    format.bmiHeader.biHeight = -size.height; // rows from the top down
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    format.bmiHeader.biCompression = BI_RGB;
    m_context = CreateCompatibleDC(nullptr);
    void* memory = nullptr;
    m_bitmap = CreateDIBSection(m_context, &format, DIB_RGB_COLORS, &memory, nullptr, 0);
    if (m_bitmap == nullptr) {
        release();
        throw std::bad_alloc();
    }
    m_formerBitmap = SelectObject(m_context, m_bitmap);
    m_pixels = static_cast<std::uint32_t*>(memory);
    m_size = size;
    return true;
}

void PixelBuffer::release()
{
    if (m_bitmap != nullptr) {
        SelectObject(m_context, m_formerBitmap);
        DeleteObject(m_bitmap);
    }
    if (m_context != nullptr)
        DeleteDC(m_context);
    m_context = nullptr;
    m_bitmap = nullptr;
    m_pixels = nullptr;
    m_size = {0, 0};
}

void PixelBuffer::shift(imaging::Point by)
{
    const int width = m_size.width - std::abs(by.x);
    if (width <= 0 || std::abs(by.y) >= m_size.height)
        return;
    const auto moveRow = [&](int y) {
        std::memmove(m_pixels + std::size_t(y) * m_size.width + std::max(by.x, 0),
                     m_pixels + std::size_t(y - by.y) * m_size.width + std::max(-by.x, 0), width * sizeof(*m_pixels));
    };
    if (by.y > 0) {
        for (int y = m_size.height - 1; y >= by.y; --y)
            moveRow(y);
    } else {
        for (int y = 0; y < m_size.height + by.y; ++y)
            moveRow(y);
    }
}

void PixelBuffer::copyFrom(const PixelBuffer& other, const imaging::Rect& area)
{
    const imaging::Rect part = area.intersect(imaging::Rect::of(m_size)).intersect(imaging::Rect::of(other.m_size));
    for (int y = part.top; y < part.bottom; ++y) {
        std::memcpy(m_pixels + std::size_t(y) * m_size.width + part.left,
                    other.m_pixels + std::size_t(y) * other.m_size.width + part.left,
                    std::max(part.width(), 0) * sizeof(*m_pixels));
    }
}

} // namespace desk
