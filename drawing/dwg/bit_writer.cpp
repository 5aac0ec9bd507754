#include "drawing/dwg/bit_writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "drawing/error.h"

namespace drawing::dwg {

namespace {

constexpr unsigned bitsOfByte = 8;
constexpr std::size_t longestText = 0x7FFE;

} // namespace

std::string BitWriter::takeBytes()
{
    m_bits = 0;
    return std::exchange(m_bytes, {});
}

void BitWriter::bits(unsigned value, unsigned count)
{
    while (count > 0) {
        const unsigned used = m_bits % bitsOfByte;
        if (used == 0) {
            m_bytes += '\0';
        }
        const unsigned put = std::min(count, bitsOfByte - used);
        const unsigned part = value >> (count - put) & ((1u << put) - 1);
        const auto old = static_cast<unsigned char>(m_bytes.back());
        m_bytes.back() = static_cast<char>(old | part << (bitsOfByte - used - put));
        m_bits += put;
        count -= put;
    }
}

namespace {

template <std::size_t Size> std::array<char, Size> lowestByteFirst(std::uint64_t value)
{
    std::array<char, Size> bytes{};
    for (char& byte : bytes) {
        byte = static_cast<char>(value & 0xFFu);
        value >>= bitsOfByte;
    }
    return bytes;
}

} // namespace

void BitWriter::rawShort(unsigned value)
{
    const auto bytes = lowestByteFirst<2>(value);
    raw({bytes.data(), bytes.size()});
}

void BitWriter::rawLong(std::uint32_t value)
{
    const auto bytes = lowestByteFirst<4>(value);
    raw({bytes.data(), bytes.size()});
}

void BitWriter::rawReal(double value)
{
    const auto bytes = lowestByteFirst<8>(std::bit_cast<std::uint64_t>(value));
    raw({bytes.data(), bytes.size()});
}

void BitWriter::raw(std::string_view bytes)
{
    const unsigned used = m_bits % bitsOfByte;
    m_bits += bytes.size() * bitsOfByte;
    if (used == 0) {
        m_bytes += bytes;
        return;
    }
    // Each byte fills the last one up and begins the next.
    std::size_t at = m_bytes.size();
    m_bytes.resize(at + bytes.size());
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        m_bytes[at - 1] = static_cast<char>(static_cast<unsigned char>(m_bytes[at - 1]) | byte >> used);
        m_bytes[at] = static_cast<char>(byte << (bitsOfByte - used));
        ++at;
    }
}

void BitWriter::rawBits(std::string_view bytes, std::size_t count)
{
    const std::size_t whole = count / bitsOfByte;
    raw(bytes.substr(0, whole));
    const auto rest = static_cast<unsigned>(count % bitsOfByte);
    if (rest > 0) {
        bits(static_cast<unsigned>(static_cast<unsigned char>(bytes[whole])) >> (bitsOfByte - rest), rest);
    }
}

void BitWriter::fillByte()
{
    m_bits = m_bytes.size() * bitsOfByte;
}

void BitWriter::shortNumber(int value)
{
    if (value == 0) {
        bits(2, 2);
    } else if (value == 256) {
        bits(3, 2);
    } else if (value > 0 && value < 256) {
        bits(1, 2);
        byte(static_cast<unsigned>(value));
    } else {
        bits(0, 2);
        rawShort(static_cast<unsigned>(value) & 0xFFFFu);
    }
}

void BitWriter::longNumber(int value)
{
    if (value == 0) {
        bits(2, 2);
    } else if (value > 0 && value < 256) {
        bits(1, 2);
        byte(static_cast<unsigned>(value));
    } else {
        bits(0, 2);
        rawLong(static_cast<std::uint32_t>(value));
    }
}

void BitWriter::real(double value)
{
    const auto pattern = std::bit_cast<std::uint64_t>(value);
    if (pattern == 0) {
        bits(2, 2);
    } else if (value == 1) {
        bits(1, 2);
    } else {
        bits(0, 2);
        rawReal(value);
    }
}

void BitWriter::realNear(double value, double base)
{
    const auto pattern = std::bit_cast<std::uint64_t>(value);
    const std::uint64_t difference = pattern ^ std::bit_cast<std::uint64_t>(base);
    const auto low = static_cast<std::uint32_t>(pattern);
    if (difference == 0) {
        bits(0, 2);
    } else if (difference >> 32 == 0) {
        bits(1, 2);
        rawLong(low);
    } else if (difference >> 48 == 0) {
        bits(2, 2);
        rawShort(static_cast<unsigned>(pattern >> 32) & 0xFFFFu);
        rawLong(low);
    } else {
        bits(3, 2);
        rawReal(value);
    }
}

void BitWriter::text(std::string_view bytes)
{
    if (bytes.size() > longestText) {
        throw DrawingError("a text of " + std::to_string(bytes.size()) + " bytes is too long for this form");
    }
    // The host counts a closing zero in.
    shortNumber(bytes.empty() ? 0 : static_cast<int>(bytes.size()) + 1);
    raw(bytes);
    if (!bytes.empty()) {
        byte(0);
    }
}

void BitWriter::handle(HandleReference reference)
{
    const auto count = static_cast<unsigned>((std::bit_width(reference.value) + 7) / 8);
    bits(static_cast<unsigned>(reference.kind), 4);
    bits(count, 4);
    for (unsigned i = count; i-- > 0;) {
        byte(static_cast<unsigned>(reference.value >> i * bitsOfByte) & 0xFFu);
    }
}

void BitWriter::modularChar(std::uint64_t value)
{
    while (value > 0x7F) {
        byte(static_cast<unsigned>(value & 0x7Fu) | 0x80u);
        value >>= 7;
    }
    byte(static_cast<unsigned>(value));
}

void BitWriter::signedModularChar(std::int64_t value)
{
    const bool negative = value < 0;
    auto rest = static_cast<std::uint64_t>(negative ? -value : value);
    while (rest > 0x3F) {
        byte(static_cast<unsigned>(rest & 0x7Fu) | 0x80u);
        rest >>= 7;
    }
    byte(static_cast<unsigned>(rest) | (negative ? 0x40u : 0u));
}

void BitWriter::modularShort(std::uint64_t value)
{
    while (value > 0x7FFF) {
        rawShort(static_cast<unsigned>(value & 0x7FFFu) | 0x8000u);
        value >>= 15;
    }
    rawShort(static_cast<unsigned>(value));
}

void BitWriter::overwriteLong(std::size_t bit, std::uint32_t value)
{
    const unsigned used = bit % bitsOfByte;
    std::size_t at = bit / bitsOfByte;
    for (const char each : lowestByteFirst<4>(value)) {
        const auto byte = static_cast<unsigned char>(each);
        const auto put = [&](std::size_t place, unsigned mask, unsigned part) {
            const auto old = static_cast<unsigned char>(m_bytes[place]);
            m_bytes[place] = static_cast<char>((old & ~mask) | part);
        };
        put(at, 0xFFu >> used, byte >> used);
        if (used > 0) {
            put(at + 1, 0xFF00u >> used & 0xFFu, static_cast<unsigned>(byte) << (bitsOfByte - used) & 0xFFu);
        }
        ++at;
    }
}

} // namespace drawing::dwg
