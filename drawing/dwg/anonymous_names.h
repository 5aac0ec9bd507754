// Blocks without names of their own: dimensions', hatches', unnamed groups' and those of the spaces. In DXF a number
// tells them apart, which is the block's place in its table; this form leaves it out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace drawing::dwg {

/// The name in DXF of the block at that place of the table.
std::string numberedBlockName(std::string_view stored, std::size_t place);
/// The name in this form.
std::string storedBlockName(std::string_view name);

} // namespace drawing::dwg
