#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "drawing/dwg/bit_reader.h"

namespace drawing::dwg {

/// Writes what BitReader reads, each number in the shortest form that holds it.
class BitWriter
{
public:
    std::size_t position() const { return m_bits; } // in bits
    /// All bytes; the last one is filled up with zero bits.
    const std::string& bytes() const { return m_bytes; }
    std::string takeBytes();

    void bit(bool value) { bits(value ? 1u : 0u, 1); }
    void bits(unsigned value, unsigned count); // the lowest `count`
    void byte(unsigned value) { bits(value & 0xFFu, 8); }
    void rawShort(unsigned value);
    void rawLong(std::uint32_t value);
    void rawReal(double value);
    void raw(std::string_view bytes);
    /// The first `count` bits of the bytes.
    void rawBits(std::string_view bytes, std::size_t count);
    void fillByte(); // zero bits up to the next whole byte

    void shortNumber(int value);
    void longNumber(int value);
    void real(double value);
    void realNear(double value, double base);
    /// Throws DrawingError if the text is longer than the form can hold.
    void text(std::string_view bytes);
    void handle(HandleReference reference);

    void modularChar(std::uint64_t value);
    void signedModularChar(std::int64_t value);
    void modularShort(std::uint64_t value);

    /// Puts four bytes over those that begin at `bit`.
    void overwriteLong(std::size_t bit, std::uint32_t value);

private:
    std::string m_bytes;
    std::size_t m_bits = 0;
};

} // namespace drawing::dwg
