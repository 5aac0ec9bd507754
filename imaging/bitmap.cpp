#include "imaging/bitmap.h"

#include <cstring>
#include <string>
#include <utility>

#include "imaging/error.h"

namespace imaging {

namespace {

Size checkedSize(Size size)
{
    if (size.width >= 0 && size.height >= 0 && size.empty())
        return {};
    if (size.empty() || !Bitmap::allows(std::uint64_t(size.width), std::uint64_t(size.height))) {
        throw ImagingError("An image of " + std::to_string(size.width) + " x " + std::to_string(size.height) +
                           " pixels is beyond what can be worked on.");
    }
    return size;
}

} // namespace

Bitmap::Bitmap(Size size, Uninitialized)
    : m_size(checkedSize(size)), m_wordsPerRow((std::ptrdiff_t(m_size.width) + 63) / 64), m_words(wordCount())
{}

Bitmap::Bitmap(Size size) : Bitmap(size, Uninitialized())
{
    m_words.clear();
}

Bitmap Bitmap::uninitialized(Size size)
{
    return Bitmap(size, Uninitialized());
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
