// Text as the API's callers hand it over.
#pragma once

#include <string>
#include <string_view>

#include "standin/arx/adesk.h"
#include "standin/text.h"

namespace standin {
/// Without regard to case, as the host compares names.
bool sameText(std::wstring_view a, std::wstring_view b);
/// A wide string that a module handed over through a variable argument list. It may be 8-bit text by mistake, without a
/// wide terminator: reading ends after 255 characters or with the memory.
std::wstring readArgument(const ACHAR* text);
} // namespace standin
