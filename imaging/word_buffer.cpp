#include "imaging/word_buffer.h"

#include "imaging/error.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

namespace imaging {

namespace {

/// Keeps a few large buffers that have been given back. The system hands out new memory page by page at first touch,
/// which for an A0 scan takes several times as long as copying it; a buffer that has been in use costs nothing.
class IdleBuffers
{
public:
    static constexpr std::size_t worthKeeping = std::size_t(1) << 17; // words: 1 MB
    static constexpr std::size_t mostKept = std::size_t(1) << 24;     // words: 128 MB in all

    /// A buffer of at least `count` words and at most twice as many; null when there is none. Sets its capacity.
    std::uint64_t* take(std::size_t count, std::size_t& capacity)
    {
        const std::lock_guard lock(guard_);
        auto best = idle_.end();
        for (auto it = idle_.begin(); it != idle_.end(); ++it) {
            if (it->capacity >= count && it->capacity / 2 <= count &&
                (best == idle_.end() || it->capacity < best->capacity))
                best = it;
        }
        if (best == idle_.end())
            return nullptr;
        const Idle found = *best;
        idle_.erase(best);
        kept_ -= found.capacity;
        capacity = found.capacity;
        return found.words;
    }

    /// Takes a buffer over. The ones that have lain idle longest go when there are too many.
    void give(std::uint64_t* words, std::size_t capacity)
    {
        const std::lock_guard lock(guard_);
        idle_.push_back({words, capacity});
        kept_ += capacity;
        while (kept_ > mostKept)
            releaseOldest();
    }

    void releaseAll()
    {
        const std::lock_guard lock(guard_);
        while (!idle_.empty())
            releaseOldest();
    }

private:
    struct Idle
    {
        std::uint64_t* words;
        std::size_t capacity;
    };

    void releaseOldest()
    {
        kept_ -= idle_.front().capacity;
        std::free(idle_.front().words);
        idle_.erase(idle_.begin());
    }

    std::mutex guard_;
    std::vector<Idle> idle_;
    std::size_t kept_ = 0;
};

/// Never destroyed, since a static bitmap may give its buffer back at any time before the process ends.
IdleBuffers& idleBuffers()
{
    static IdleBuffers& buffers = *new IdleBuffers;
    return buffers;
}

std::uint64_t* allocate(std::size_t count)
{
    return static_cast<std::uint64_t*>(std::malloc(count * sizeof(std::uint64_t)));
}

} // namespace

WordBuffer::WordBuffer(std::size_t count) : count_(count)
{
    if (count == 0)
        return;
    if (count >= IdleBuffers::worthKeeping)
        words_ = idleBuffers().take(count, capacity_);
    if (words_)
        return;
    words_ = allocate(count);
    if (!words_) {
        idleBuffers().releaseAll();
        words_ = allocate(count);
    }
    if (!words_)
        throw ImagingError("There is not enough memory for an image of this size.");
    capacity_ = count;
}

WordBuffer::~WordBuffer()
{
    if (capacity_ < IdleBuffers::worthKeeping) {
        std::free(words_);
        return;
    }
    try {
        idleBuffers().give(words_, capacity_);
    } catch (...) { // no memory even for the note of it
        std::free(words_);
    }
}

WordBuffer::WordBuffer(WordBuffer&& other) noexcept
    : words_(std::exchange(other.words_, nullptr)), count_(std::exchange(other.count_, 0)),
      capacity_(std::exchange(other.capacity_, 0))
{}

WordBuffer& WordBuffer::operator=(WordBuffer&& other) noexcept
{
    WordBuffer moved(std::move(other));
    std::swap(words_, moved.words_);
    std::swap(count_, moved.count_);
    std::swap(capacity_, moved.capacity_);
    return *this;
}

void WordBuffer::clear()
{
    if (count_ > 0)
        std::memset(words_, 0, count_ * sizeof(std::uint64_t));
}

} // namespace imaging
