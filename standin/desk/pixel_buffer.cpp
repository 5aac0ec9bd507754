#include "standin/desk/pixel_buffer.h"

#include <cstring>
#include <new>

namespace desk {

bool PixelBuffer::resize(imaging::Size size)
{
    if (size == size_)
        return false;
    release();
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    format.bmiHeader.biWidth = size.width;
    format.bmiHeader.biHeight = -size.height; // rows from the top down
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    format.bmiHeader.biCompression = BI_RGB;
    context_ = CreateCompatibleDC(nullptr);
    void* memory = nullptr;
    bitmap_ = CreateDIBSection(context_, &format, DIB_RGB_COLORS, &memory, nullptr, 0);
    if (bitmap_ == nullptr) {
        release();
        throw std::bad_alloc();
    }
    formerBitmap_ = SelectObject(context_, bitmap_);
    pixels_ = static_cast<std::uint32_t*>(memory);
    size_ = size;
    return true;
}

void PixelBuffer::release()
{
    if (bitmap_ != nullptr) {
        SelectObject(context_, formerBitmap_);
        DeleteObject(bitmap_);
    }
    if (context_ != nullptr)
        DeleteDC(context_);
    context_ = nullptr;
    bitmap_ = nullptr;
    pixels_ = nullptr;
    size_ = {0, 0};
}

void PixelBuffer::shift(imaging::Point by)
{
    const int width = size_.width - std::abs(by.x);
    if (width <= 0 || std::abs(by.y) >= size_.height)
        return;
    const auto moveRow = [&](int y) {
        std::memmove(pixels_ + std::size_t(y) * size_.width + std::max(by.x, 0),
                     pixels_ + std::size_t(y - by.y) * size_.width + std::max(-by.x, 0), width * sizeof(*pixels_));
    };
    if (by.y > 0) {
        for (int y = size_.height - 1; y >= by.y; --y)
            moveRow(y);
    } else {
        for (int y = 0; y < size_.height + by.y; ++y)
            moveRow(y);
    }
}

void PixelBuffer::copyFrom(const PixelBuffer& other, const imaging::Rect& area)
{
    const imaging::Rect part = area.intersect(imaging::Rect::of(size_)).intersect(imaging::Rect::of(other.size_));
    for (int y = part.top; y < part.bottom; ++y) {
        std::memcpy(pixels_ + std::size_t(y) * size_.width + part.left,
                    other.pixels_ + std::size_t(y) * other.size_.width + part.left,
                    std::max(part.width(), 0) * sizeof(*pixels_));
    }
}

} // namespace desk
