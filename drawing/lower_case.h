#pragma once

#include <string>
#include <string_view>

namespace drawing {

/// For names that drawings compare without regard to case: letters of ASCII alone.
std::string lowerCase(std::string_view text);

} // namespace drawing
