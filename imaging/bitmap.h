#pragma once

#include <cstddef>
#include <cstdint>

#include "imaging/geometry.h"
#include "imaging/word_buffer.h"

namespace imaging {

/// A 1-bit image: 1 is ink, 0 is paper. A row is a run of 64-bit words; the most significant bit of the first word is
/// the leftmost pixel, so shifting a word left moves its pixels left. The bits that pad a row's last word are zero, and
/// every operation leaves them zero: equality and the counting of ink rely on it.
/// A value type: copies are deep. A default-constructed or moved-from bitmap has no pixels.
class Bitmap
{
public:
    /// The one limit of images, whether they are read, made or written. A side has six digits, which every kind of file
    /// can tell; the pixels of the largest image, such as 65,535 by 32,767, take 256 MB.
    static constexpr int maximumSide = 999'999;
    static constexpr std::int64_t maximumPixels = std::int64_t(1) << 31;

    /// Whether an image may have this size; one without pixels may not.
    static constexpr bool allows(std::uint64_t width, std::uint64_t height)
    {
        return width > 0 && height > 0 && width <= maximumSide && height <= maximumSide &&
               width * height <= maximumPixels;
    }

    Bitmap() = default;

    /// All paper. Throws ImagingError for a negative size, one beyond the limit, and when memory does not suffice.
    explicit Bitmap(Size size);

    /// With whatever the memory holds: for an operation that writes every word, the padding included.
    static Bitmap uninitialized(Size size);

    /// All paper, for an operation's own use: may be larger than the limit by a margin of that many pixels.
    static Bitmap scratch(Size size, int margin);

    Bitmap(const Bitmap& other);
    Bitmap& operator=(const Bitmap& other);
    Bitmap(Bitmap&& other) noexcept;
    Bitmap& operator=(Bitmap&& other) noexcept;

    int width() const { return m_size.width; }
    int height() const { return m_size.height; }
    Size size() const { return m_size; }
    Rect bounds() const { return Rect::of(m_size); }
    bool empty() const { return m_size.empty(); }
    std::ptrdiff_t wordsPerRow() const { return m_wordsPerRow; }

    std::uint64_t* row(int y) { return m_words.data() + y * m_wordsPerRow; }
    const std::uint64_t* row(int y) const { return m_words.data() + y * m_wordsPerRow; }

    /// The point must lie inside.
    bool ink(int x, int y) const { return row(y)[x >> 6] >> (63 - (x & 63)) & 1; }
    void setInk(int x, int y, bool ink)
    {
        const std::uint64_t bit = std::uint64_t(1) << (63 - (x & 63));
        std::uint64_t& word = row(y)[x >> 6];
        word = ink ? word | bit : word & ~bit;
    }

    /// The bits of a row's last word that hold pixels.
    std::uint64_t lastWordMask() const { return ~std::uint64_t(0) << (-m_size.width & 63); }

    bool operator==(const Bitmap& other) const;

private:
    struct Uninitialized
    {};
    Bitmap(Size checkedSize, Uninitialized);

    std::size_t wordCount() const { return std::size_t(m_wordsPerRow) * std::size_t(m_size.height); }

    Size m_size;
    std::ptrdiff_t m_wordsPerRow = 0;
    WordBuffer m_words;
};

} // namespace imaging
