// Text between the API's wide strings and the drawing's UTF-8.
#pragma once

#include <string>
#include <string_view>

#include "standin/arx/adesk.h"

namespace standin {
std::wstring widen(std::string_view utf8);
std::string narrow(std::wstring_view wide);
/// Without regard to case, as the host compares names.
bool sameText(std::wstring_view a, std::wstring_view b);
std::wstring upperCase(std::wstring_view text);
/// A wide string that a module handed over through a variable argument list. It may be 8-bit text by mistake, without a
/// wide terminator: reading ends after 255 characters or with the memory.
std::wstring readArgument(const ACHAR* text);
} // namespace standin
