#pragma once

#include <string>
#include <string_view>

namespace drawing::dwg {

// In DXF, and in memory, a control character stands as a caret and a letter, and a caret as a caret and a blank; the
// binary form has the characters themselves.
std::string withCarets(std::string_view text);
std::string withoutCarets(std::string_view text);

} // namespace drawing::dwg
