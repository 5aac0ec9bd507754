#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "drawing/object.h"

namespace drawing::dwg {

/// What a handle in the file says of the object that it points to. From 6 on the handle is told as a step from that of
/// the object that holds it: 6 one up, 8 one down, 0xA up and 0xC down by what follows.
enum class Reference : std::uint8_t
{
    Own = 0,
    SoftOwner = 2,
    HardOwner = 3,
    SoftPointer = 4,
    HardPointer = 5,
    OneUp = 6,
    OneDown = 8,
    Up = 0xA,
    Down = 0xC,
};

struct HandleReference
{
    Reference kind = Reference::Own;
    Handle value = 0; // or the step
    bool operator==(const HandleReference&) const = default;

    /// The handle meant in an object whose own is `from`; 0 if the step leaves the range of handles.
    Handle target(Handle from) const;
};

/// Reads the form's bits, the most significant of each byte first; numbers of several bytes begin with the lowest. Past
/// the end every call throws DrawingError.
class BitReader
{
public:
    explicit BitReader(std::string_view bytes, std::string_view what = "the file");

    std::size_t position() const { return m_position; } // in bits
    std::size_t end() const { return m_end; }
    std::size_t left() const { return m_end - m_position; }
    void seek(std::size_t bit);
    /// Nothing is read from this bit on.
    void setEnd(std::size_t bit);

    bool bit();
    unsigned bits(unsigned count); // up to 32
    unsigned byte() { return bits(8); }
    unsigned rawShort();
    std::uint32_t rawLong();
    double rawReal();
    std::string raw(std::size_t bytes);

    /// Numbers of which two bits tell how many bytes they have; the common values have none.
    int shortNumber();
    int longNumber();
    double real();
    /// A real that may share its highest bytes with `base`.
    double realNear(double base);
    /// The bytes of a text, with its length before it; a zero that closes it is left out.
    std::string text();
    HandleReference handle();

    // Numbers of as many bytes (shorts) as they need; the highest bit says that another follows.
    std::uint64_t modularChar();
    std::int64_t signedModularChar();
    std::uint64_t modularShort();

private:
    [[noreturn]] void endsTooEarly() const;
    template <std::size_t Size> std::uint64_t number();

    std::string_view m_bytes;
    std::string_view m_what;
    std::size_t m_position = 0;
    std::size_t m_end = 0;
};

} // namespace drawing::dwg
