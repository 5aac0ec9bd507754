// Text as the host's API and the windows have it, and as drawings and other files do: for the stand-in and the desk.
#pragma once

#include <string>
#include <string_view>

#include "standin/export.h"

namespace standin {

HALVORAN_STANDIN_API std::string toUtf8(std::wstring_view text);
/// Bytes that are not UTF-8 become the replacement character.
HALVORAN_STANDIN_API std::wstring fromUtf8(std::string_view text);

/// For comparing names of commands, keywords and variables.
HALVORAN_STANDIN_API std::wstring upperCase(std::wstring_view text);

} // namespace standin
