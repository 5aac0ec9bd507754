#include "imaging/bitmap.h"

#include "imaging/error.h"

#include <cstring>
#include <string>
#include <utility>

namespace imaging {

namespace {

Size checkedSize(Size size)
{
    if (size.width < 0 || size.height < 0 || size.width > Bitmap::maximumSide || size.height > Bitmap::maximumSide ||
        std::int64_t(size.width) * size.height > Bitmap::maximumPixels) {
        throw ImagingError("An image of " + std::to_string(size.width) + " x " + std::to_string(size.height) +
                           " pixels is beyond what can be worked on.");
    }
    return size.empty() ? Size() : size;
}

} // namespace

Bitmap::Bitmap(Size size, Uninitialized)
    : size_(checkedSize(size)), wordsPerRow_((std::ptrdiff_t(size_.width) + 63) / 64), words_(wordCount())
{}

Bitmap::Bitmap(Size size) : Bitmap(size, Uninitialized())
{
    words_.clear();
}

Bitmap Bitmap::uninitialized(Size size)
{
    return Bitmap(size, Uninitialized());
}

Bitmap::Bitmap(const Bitmap& other) : Bitmap(other.size_, Uninitialized())
{
    if (wordCount() > 0)
        std::memcpy(words_.data(), other.words_.data(), wordCount() * sizeof(std::uint64_t));
}

Bitmap& Bitmap::operator=(const Bitmap& other)
{
    if (this != &other)
        *this = Bitmap(other);
    return *this;
}

Bitmap::Bitmap(Bitmap&& other) noexcept
    : size_(std::exchange(other.size_, Size())), wordsPerRow_(std::exchange(other.wordsPerRow_, 0)),
      words_(std::move(other.words_))
{}

Bitmap& Bitmap::operator=(Bitmap&& other) noexcept
{
    size_ = std::exchange(other.size_, Size());
    wordsPerRow_ = std::exchange(other.wordsPerRow_, 0);
    words_ = std::move(other.words_);
    return *this;
}

bool Bitmap::operator==(const Bitmap& other) const
{
    return size_ == other.size_ && (wordCount() == 0 || std::memcmp(words_.data(), other.words_.data(),
                                                                    wordCount() * sizeof(std::uint64_t)) == 0);
}

} // namespace imaging
