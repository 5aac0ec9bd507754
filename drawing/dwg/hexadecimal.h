#pragma once

#include <string>
#include <string_view>

namespace drawing::dwg {

/// Two digits for each byte.
std::string hexadecimal(std::string_view bytes);
/// Throws DrawingError if the text is none.
std::string bytesOfHexadecimal(std::string_view text);

} // namespace drawing::dwg
