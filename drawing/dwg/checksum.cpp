#include "drawing/dwg/checksum.h"

#include <array>
#include <cstddef>

namespace drawing::dwg {

namespace {

constexpr std::uint16_t reflectedPolynomial = 0xA001;

constexpr std::array<std::uint16_t, 256> makeTable()
{
    std::array<std::uint16_t, 256> table{};
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        unsigned value = byte;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1u) != 0 ? value >> 1 ^ reflectedPolynomial : value >> 1;
        }
        table[byte] = static_cast<std::uint16_t>(value);
    }
    return table;
}

} // namespace

std::uint16_t checksum(std::string_view bytes, std::uint16_t seed)
{
    static constexpr std::array<std::uint16_t, 256> table = makeTable();
    unsigned value = seed;
    for (const char each : bytes) {
        value = value >> 8 ^ table[(value ^ static_cast<unsigned char>(each)) & 0xFFu];
    }
    return static_cast<std::uint16_t>(value);
}

} // namespace drawing::dwg
