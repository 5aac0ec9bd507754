#include "imaging/word_buffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

#include "imaging/error.h"

namespace imaging {

namespace {

// Keeps a few large buffers that have been given back. The system hands out new memory page by page at first touch,
// which for an A0 scan takes several times as long as copying it; a buffer that has been in use costs nothing.
class IdleBuffers
{
public:
    static constexpr std::size_t worthKeeping = std::size_t(1) << 17; // words: 1 MB
    static constexpr std::size_t mostKept = std::size_t(1) << 24;     // words: 128 MB in all

    // A buffer of at least `count` words and at most twice as many; null when there is none. Sets its capacity.
    std::uint64_t* take(std::size_t count, std::size_t& capacity)
    {
        const std::lock_guard lock(m_guard);
        auto best = m_idle.end();
        for (auto it = m_idle.begin(); it != m_idle.end(); ++it) {
            if (it->capacity >= count && it->capacity / 2 <= count &&
                (best == m_idle.end() || it->capacity < best->capacity))
                best = it;
        }
        if (best == m_idle.end())
            return nullptr;
        const Idle found = *best;
        m_idle.erase(best);
        m_kept -= found.capacity;
        capacity = found.capacity;
        return found.words;
    }

    // Takes a buffer over. The ones that have lain idle longest go when there are too many.
    void give(std::uint64_t* words, std::size_t capacity)
    {
        const std::lock_guard lock(m_guard);
        m_idle.push_back({words, capacity});
        m_kept += capacity;
        while (m_kept > mostKept)
            releaseOldest();
    }

    void releaseAll()
    {
        const std::lock_guard lock(m_guard);
        while (!m_idle.empty())
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
        m_kept -= m_idle.front().capacity;
        std::free(m_idle.front().words);
        m_idle.erase(m_idle.begin());
    }

    std::mutex m_guard;
    std::vector<Idle> m_idle;
    std::size_t m_kept = 0;
};

// Never destroyed, since a static bitmap may give its buffer back at any time before the process ends.
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

WordBuffer::WordBuffer(std::size_t count) : m_count(count)
{
    if (count == 0)
        return;
    if (count >= IdleBuffers::worthKeeping)
        m_words = idleBuffers().take(count, m_capacity);
    if (m_words)
        return;
    m_words = allocate(count);
    if (!m_words) {
        idleBuffers().releaseAll();
        m_words = allocate(count);
    }
    if (!m_words)
        throw ImagingError("There is not enough memory for an image of this size.");
    m_capacity = count;
}

WordBuffer::~WordBuffer()
{
    if (m_capacity < IdleBuffers::worthKeeping) {
        std::free(m_words);
        return;
    }
    try {
        idleBuffers().give(m_words, m_capacity);
    } catch (...) { // no memory even for the note of it
        std::free(m_words);
    }
}

WordBuffer::WordBuffer(WordBuffer&& other) noexcept
    : m_words(std::exchange(other.m_words, nullptr)), m_count(std::exchange(other.m_count, 0)),
      m_capacity(std::exchange(other.m_capacity, 0))
{}

WordBuffer& WordBuffer::operator=(WordBuffer&& other) noexcept
{
    WordBuffer moved(std::move(other));
    std::swap(m_words, moved.m_words);
    std::swap(m_count, moved.m_count);
    std::swap(m_capacity, moved.m_capacity);
    return *this;
}

void WordBuffer::clear()
{
    if (m_count > 0)
        std::memset(m_words, 0, m_count * sizeof(std::uint64_t));
}

} // namespace imaging
