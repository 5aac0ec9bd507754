#include "imaging/bitmap.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "imaging/error.h"

namespace imaging {

namespace {

Size checkedSize(Size size, int margin = 0)
{
    if (size.width >= 0 && size.height >= 0 && size.empty())
        return {};
    const auto within = [margin](int side) { return std::uint64_t(std::max(1, side - margin)); };
    if (size.empty() || !Bitmap::allows(within(size.width), within(size.height))) {
        throw ImagingError("An image of " + std::to_string(size.width) + " x " + std::to_string(size.height) +
                           " pixels is beyond what can be worked on.");
    }
    return size;
}

} // namespace

Bitmap::Bitmap(Size checkedSize, Uninitialized)
    : m_size(checkedSize), m_wordsPerRow((std::ptrdiff_t(m_size.width) + 63) / 64), m_words(wordCount())
{}

Bitmap::Bitmap(Size size) : Bitmap(checkedSize(size), Uninitialized())
{
    m_words.clear();
}

Bitmap Bitmap::uninitialized(Size size)
{
    return Bitmap(checkedSize(size), Uninitialized());
}

Bitmap Bitmap::scratch(Size size, int margin)
{
    Bitmap bitmap(checkedSize(size, margin), Uninitialized());
    bitmap.m_words.clear();
    return bitmap;
}

Bitmap::Bitmap(const Bitmap& other) : Bitmap(other.m_size, Uninitialized())
{
    if (wordCount() > 0)
        std::memcpy(m_words.data(), other.m_words.data(), wordCount() * sizeof(std::uint64_t));
}

Bitmap& Bitmap::operator=(const Bitmap& other)
{
    if (this != &other)
        *this = Bitmap(other);
    return *this;
}

Bitmap::Bitmap(Bitmap&& other) noexcept
    : m_size(std::exchange(other.m_size, Size())), m_wordsPerRow(std::exchange(other.m_wordsPerRow, 0)),
      m_words(std::move(other.m_words))
{}

Bitmap& Bitmap::operator=(Bitmap&& other) noexcept
{
    m_size = std::exchange(other.m_size, Size());
    m_wordsPerRow = std::exchange(other.m_wordsPerRow, 0);
    m_words = std::move(other.m_words);
    return *this;
}

bool Bitmap::operator==(const Bitmap& other) const
{
    return m_size == other.m_size && (wordCount() == 0 || std::memcmp(m_words.data(), other.m_words.data(),
                                                                      wordCount() * sizeof(std::uint64_t)) == 0);
}

} // namespace imaging
