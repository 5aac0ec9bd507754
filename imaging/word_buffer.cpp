#include "imaging/word_buffer.h"

#include "imaging/error.h"

#include <cstdlib>
#include <cstring>
#include <utility>

namespace imaging {

WordBuffer::WordBuffer(std::size_t count)
{
    if (count == 0)
        return;
    words_ = static_cast<std::uint64_t*>(std::malloc(count * sizeof(std::uint64_t)));
    if (!words_)
        throw ImagingError("There is not enough memory for an image of this size.");
    count_ = count;
}

WordBuffer::~WordBuffer()
{
    std::free(words_);
}

WordBuffer::WordBuffer(WordBuffer&& other) noexcept
    : words_(std::exchange(other.words_, nullptr)), count_(std::exchange(other.count_, 0))
{}

WordBuffer& WordBuffer::operator=(WordBuffer&& other) noexcept
{
    WordBuffer moved(std::move(other));
    std::swap(words_, moved.words_);
    std::swap(count_, moved.count_);
    return *this;
}

void WordBuffer::clear()
{
    if (count_ > 0)
        std::memset(words_, 0, count_ * sizeof(std::uint64_t));
}

} // namespace imaging
