#pragma once

#include <cstddef>
#include <cstdint>

namespace imaging {

/// The memory of a bitmap: 64-bit words, uninitialised at first, owned alone. Large buffers that are given back are
/// kept for a while and used again. Throws ImagingError when memory does not suffice.
class WordBuffer
{
public:
    WordBuffer() = default;
    explicit WordBuffer(std::size_t count);
    ~WordBuffer();

    WordBuffer(WordBuffer&& other) noexcept;
    WordBuffer& operator=(WordBuffer&& other) noexcept;

    std::uint64_t* data() { return m_words; }
    const std::uint64_t* data() const { return m_words; }

    /// Sets every word to zero.
    void clear();

private:
    std::uint64_t* m_words = nullptr;
    std::size_t m_count = 0;
    std::size_t m_capacity = 0;
};

} // namespace imaging
