#pragma once

#include <string>
#include <string_view>

namespace desk {

std::string toUtf8(std::wstring_view text);
/// Bytes that are not UTF-8 become the replacement character.
std::wstring fromUtf8(std::string_view text);

} // namespace desk
