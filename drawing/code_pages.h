#pragma once

#include <array>
#include <string_view>

namespace drawing {

/// The Unicode characters of a single-byte code page's bytes 0x80 to 0xFF; the lower half is ASCII in all of them.
using CodePage = std::array<char16_t, 128>;

/// A code page by its name in a drawing file, such as "ANSI_1252"; null if it isn't known here.
const CodePage* findCodePage(std::string_view name);

} // namespace drawing
