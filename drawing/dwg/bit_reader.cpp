#include "drawing/dwg/bit_reader.h"

#include <algorithm>
#include <bit>

#include "drawing/error.h"

namespace drawing::dwg {

namespace {

constexpr unsigned bitsOfByte = 8;

} // namespace

Handle HandleReference::target(Handle from) const
{
    switch (kind) {
    case Reference::OneUp:
        return from + 1;
    case Reference::OneDown:
        return from - 1;
    case Reference::Up:
        return value > ~Handle(0) - from ? 0 : from + value;
    case Reference::Down:
        return value > from ? 0 : from - value;
    default:
        return value;
    }
}

BitReader::BitReader(std::string_view bytes, std::string_view what)
    : m_bytes(bytes), m_what(what), m_end(bytes.size() * bitsOfByte)
{}

void BitReader::endsTooEarly() const
{
    throw DrawingError(std::string(m_what) + " ends too early");
}

void BitReader::seek(std::size_t bit)
{
    if (bit > m_end) {
        endsTooEarly();
    }
    m_position = bit;
}

void BitReader::setEnd(std::size_t bit)
{
    if (bit < m_position || bit > m_bytes.size() * bitsOfByte) {
        endsTooEarly();
    }
    m_end = bit;
}

bool BitReader::bit()
{
    return bits(1) != 0;
}

unsigned BitReader::bits(unsigned count)
{
    if (left() < count) {
        endsTooEarly();
    }
    unsigned value = 0;
    while (count > 0) {
        const unsigned used = m_position % bitsOfByte;
        const unsigned taken = std::min(count, bitsOfByte - used);
        const auto byte = static_cast<unsigned char>(m_bytes[m_position / bitsOfByte]);
        const unsigned rest = static_cast<unsigned>(byte) & (0xFFu >> used);
        value = value << taken | rest >> (bitsOfByte - used - taken);
        m_position += taken;
        count -= taken;
    }
    return value;
}

// The lowest byte first.
template <std::size_t Size> std::uint64_t BitReader::number()
{
    if (left() < Size * bitsOfByte) {
        endsTooEarly();
    }
    const unsigned used = m_position % bitsOfByte;
    const std::size_t at = m_position / bitsOfByte;
    m_position += Size * bitsOfByte;
    std::uint64_t value = 0;
    for (std::size_t i = Size; i-- > 0;) {
        unsigned byte = static_cast<unsigned char>(m_bytes[at + i]);
        if (used > 0) {
            byte = (byte << used |
                    static_cast<unsigned>(static_cast<unsigned char>(m_bytes[at + i + 1])) >> (bitsOfByte - used)) &
                   0xFFu;
        }
        value = value << bitsOfByte | byte;
    }
    return value;
}

unsigned BitReader::rawShort()
{
    return static_cast<unsigned>(number<2>());
}

std::uint32_t BitReader::rawLong()
{
    return static_cast<std::uint32_t>(number<4>());
}

double BitReader::rawReal()
{
    return std::bit_cast<double>(number<8>());
}

std::string BitReader::raw(std::size_t bytes)
{
    if (left() / bitsOfByte < bytes) {
        endsTooEarly();
    }
    std::string result;
    if (m_position % bitsOfByte == 0) {
        result = m_bytes.substr(m_position / bitsOfByte, bytes);
        m_position += bytes * bitsOfByte;
        return result;
    }
    result.reserve(bytes);
    for (std::size_t i = 0; i < bytes; ++i) {
        result += static_cast<char>(byte());
    }
    return result;
}

int BitReader::shortNumber()
{
    switch (bits(2)) {
    case 0:
        return static_cast<std::int16_t>(rawShort());
    case 1:
        return static_cast<int>(byte());
    case 2:
        return 0;
    default:
        return 256;
    }
}

int BitReader::longNumber()
{
    switch (bits(2)) {
    case 0:
        return static_cast<std::int32_t>(rawLong());
    case 1:
        return static_cast<int>(byte());
    case 2:
        return 0;
    default:
        throw DrawingError(std::string(m_what) + " holds a number of no known form");
    }
}

double BitReader::real()
{
    switch (bits(2)) {
    case 0:
        return rawReal();
    case 1:
        return 1;
    case 2:
        return 0;
    default:
        throw DrawingError(std::string(m_what) + " holds a number of no known form");
    }
}

double BitReader::realNear(double base)
{
    const auto pattern = std::bit_cast<std::uint64_t>(base);
    switch (bits(2)) {
    case 0:
        return base;
    case 1: {
        const std::uint64_t low = rawLong();
        return std::bit_cast<double>((pattern & 0xFFFFFFFF00000000u) | low);
    }
    case 2: {
        // The middle bytes come before the lowest.
        const std::uint64_t middle = rawShort();
        const std::uint64_t low = rawLong();
        return std::bit_cast<double>((pattern & 0xFFFF000000000000u) | middle << 32 | low);
    }
    default:
        return rawReal();
    }
}

std::string BitReader::text()
{
    const auto length = static_cast<std::uint16_t>(shortNumber());
    std::string result = raw(length);
    // The host counts a closing zero in, other programs don't.
    while (!result.empty() && result.back() == '\0') {
        result.pop_back();
    }
    return result;
}

HandleReference BitReader::handle()
{
    HandleReference result;
    result.kind = static_cast<Reference>(bits(4));
    const unsigned count = bits(4);
    if (count > sizeof(Handle)) {
        throw DrawingError(std::string(m_what) + " holds a handle of too many bytes");
    }
    for (unsigned i = 0; i < count; ++i) {
        result.value = result.value << bitsOfByte | byte();
    }
    return result;
}

std::uint64_t BitReader::modularChar()
{
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
        const unsigned next = byte();
        value |= static_cast<std::uint64_t>(next & 0x7Fu) << shift;
        if ((next & 0x80u) == 0) {
            return value;
        }
    }
    throw DrawingError(std::string(m_what) + " holds a number of too many bytes");
}

std::int64_t BitReader::signedModularChar()
{
    std::int64_t value = 0;
    for (unsigned shift = 0; shift < 56; shift += 7) {
        const unsigned next = byte();
        if ((next & 0x80u) == 0) {
            value |= static_cast<std::int64_t>(next & 0x3Fu) << shift;
            return (next & 0x40u) != 0 ? -value : value;
        }
        value |= static_cast<std::int64_t>(next & 0x7Fu) << shift;
    }
    throw DrawingError(std::string(m_what) + " holds a number of too many bytes");
}

std::uint64_t BitReader::modularShort()
{
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 60; shift += 15) {
        const unsigned next = rawShort();
        value |= static_cast<std::uint64_t>(next & 0x7FFFu) << shift;
        if ((next & 0x8000u) == 0) {
            return value;
        }
    }
    throw DrawingError(std::string(m_what) + " holds a number of too many bytes");
}

} // namespace drawing::dwg
