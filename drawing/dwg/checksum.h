#pragma once

#include <cstdint>
#include <string_view>

namespace drawing::dwg {

/// Every checksum of the form begins with this value.
inline constexpr std::uint16_t checksumSeed = 0xC0C1;

/// The 16-bit cyclic redundancy check of the reflected polynomial 0xA001, most significant term x^16 + x^15 + x^2 + 1.
std::uint16_t checksum(std::string_view bytes, std::uint16_t seed = checksumSeed);

} // namespace drawing::dwg
