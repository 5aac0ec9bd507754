#pragma once

#include <cstdint>
#include <string_view>

namespace imaging {

/// A code ready to be written: its bits are the lowest ones of a number.
struct FaxCode
{
    std::uint16_t bits = 0;
    std::uint16_t length = 0;

    constexpr FaxCode() = default;
    explicit constexpr FaxCode(std::string_view digits) : length(std::uint16_t(digits.size()))
    {
        for (const char digit : digits)
            bits = std::uint16_t(bits << 1 | (digit == '1'));
    }
};

/// Writes codes into memory, most significant bit first. The caller sees to it that there is room, up to three bytes
/// more than the codes take.
class FaxBitWriter
{
public:
    explicit FaxBitWriter(std::uint8_t* target) : m_end(target) {}

    void put(FaxCode code)
    {
        m_bits = m_bits << code.length | code.bits;
        m_waiting += code.length;
        if (m_waiting >= 32) {
            m_waiting -= 32;
            store(std::uint32_t(m_bits >> m_waiting));
        }
    }

    /// Behind the last whole byte, after which less than four wait to be written.
    std::uint8_t* end() const { return m_end; }

    /// Goes on at another place, such as the beginning of a buffer that has been emptied.
    void moveTo(std::uint8_t* target) { m_end = target; }

    /// Writes what waits, with zeros behind it to the end of a byte.
    void finish()
    {
        m_bits <<= 32 - m_waiting;
        const int bytes = (m_waiting + 7) / 8;
        store(std::uint32_t(m_bits));
        m_end -= 4 - bytes;
        m_waiting = 0;
    }

private:
    void store(std::uint32_t word)
    {
        for (int shift = 24; shift >= 0; shift -= 8)
            *m_end++ = std::uint8_t(word >> shift);
    }

    std::uint8_t* m_end;
    std::uint64_t m_bits = 0; // the lowest ones wait to be written
    int m_waiting = 0;        // less than 32
};

} // namespace imaging
