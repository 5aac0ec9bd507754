// The bytes of group 3 and group 4 data, most significant bit first, and the reading of their bits.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace imaging {

/// The longest stream that is written or read in one piece. With the largest bitmap beside it, it takes less than 1 GB.
inline constexpr std::uint64_t longestFaxStream = std::uint64_t(640) << 20;

/// The bytes of a stream, with zeros behind them for the reader to run into: no code consists of zeros alone.
class FaxStream
{
public:
    /// Of that many bytes, for the caller to fill. Throws ImagingError when they are more than can be read.
    explicit FaxStream(std::uint64_t size);

    std::uint8_t* data() { return m_bytes.data(); }
    const std::uint8_t* data() const { return m_bytes.data(); }
    std::size_t size() const { return m_bytes.size() - padding; }

    static constexpr std::size_t padding = 8;

private:
    std::vector<std::uint8_t> m_bytes;
};

/// Takes a stream's bits in turn; the stream must outlive it. Behind its end there are zeros without end.
class FaxBits
{
public:
    explicit FaxBits(const FaxStream& stream) : m_bytes(stream.data()), m_size(stream.size()) {}

    /// To be called before more than the bits are taken that it has made ready: 56 at least.
    void refill()
    {
        // Eight bytes are always read, of which those count that fit behind the bits at hand; the others are the same
        // ones again at the next time.
        m_bits |= loadBigEndian(m_bytes + std::min(m_next, m_size)) >> m_ready;
        m_next += std::size_t(63 - m_ready) >> 3;
        m_ready |= 56;
    }

    /// How many bits can be taken before the next refill().
    int ready() const { return m_ready; }

    /// The next bits as a number; count from 1 to what is ready.
    std::uint32_t peek(int count) const { return std::uint32_t(m_bits >> (64 - count)); }

    /// The next bits from the top of the word on. Those beyond the ready ones may be zeros or the right ones.
    std::uint64_t ahead() const { return m_bits; }

    void skip(int count)
    {
        m_bits <<= count;
        m_ready -= count;
    }

    /// Whether bits behind the stream's end have been taken.
    bool beyondEnd() const { return m_next * 8 - std::size_t(m_ready) > m_size * 8; }

private:
    static std::uint64_t loadBigEndian(const std::uint8_t* bytes)
    {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        return __builtin_bswap64(word);
    }

    const std::uint8_t* m_bytes;
    std::size_t m_size;
    std::size_t m_next = 0;   // the first byte of which no bit is ready
    std::uint64_t m_bits = 0; // the next bits, the first one topmost
    int m_ready = 0;          // how many of them count
};

} // namespace imaging
