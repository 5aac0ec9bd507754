#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "imaging/bitmap.h"
#include "imaging/region.h"
#include "imaging/word_buffer.h"

namespace imaging {

/// A rectangle of pixels with paper around it, in strips eight pixels wide that run from top to bottom: a byte holds
/// eight pixels of a row, the leftmost as its most significant bit, and the next byte those below.
///
///   strip 0   strip 1                 in memory
///   abcdefgh  ABCDEFGH                abcdefgh ijklmnop ... ABCDEFGH IJKLMNOP ...
///   ijklmnop  IJKLMNOP
///
/// So sixteen pixels of a line that slants by at most 45 degrees lie in sixteen bytes of three strips.
class Strips
{
public:
    /// The part of the bitmap that is to lie with its top left pixel at `at`. Throws ImagingError when memory does not
    /// suffice.
    Strips(const Bitmap& bitmap, const Rect& part, Point at);

    /// Ink all over the region, which is not empty, and paper in the rest of the box around it. Otherwise as above.
    explicit Strips(const Region& region);

    /// Where the pixels lie, without the paper around them.
    const Rect& box() const { return m_box; }

    /// Where the first pixel of the first strip lies: positions below are counted from it. There are at least eight
    /// pixels of paper on each side of the box.
    Point origin() const { return m_origin; }

    /// Of a strip, in bytes: a multiple of 64.
    std::ptrdiff_t length() const { return m_length; }
    std::ptrdiff_t count() const { return m_count; }

    /// The byte with the pixel at column x and row y, fifteen bytes below it and as many of the next two strips may be
    /// read.
    const std::uint8_t* at(std::ptrdiff_t x, std::ptrdiff_t y) const { return m_bytes + (x >> 3) * m_length + y; }

private:
    Strips(const Rect& box, int shift);
    void clearMargins();
    void inBlocks(const std::function<void(int begin, int end)>& fill);
    void fillRows(const Bitmap& bitmap, const Rect& part, int row);

    Rect m_box;
    Point m_origin;
    std::ptrdiff_t m_count;
    std::ptrdiff_t m_length;
    WordBuffer m_memory;
    std::uint8_t* m_bytes; // its first whole line of the processor's cache
};

} // namespace imaging
