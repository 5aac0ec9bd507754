#pragma once

#include <cstdint>

namespace imaging {

/// Adds 64 numbers to a sum, one after the other, and tells where it is then at least the threshold: the first number's
/// answer is the most significant bit. The numbers are 0 afterwards. The sums must fit.
std::uint64_t whereReached(std::int64_t* numbers, std::int64_t& sum, std::int64_t threshold);

/// The same, eight at a time where the processor can.
std::uint64_t whereReached(std::int32_t* numbers, std::int32_t& sum, std::int32_t threshold);

} // namespace imaging
