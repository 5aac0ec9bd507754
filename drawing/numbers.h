#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "drawing/object.h"

namespace drawing {

/// Without the blanks and tabs on both sides.
std::string_view trimmed(std::string_view text);

// Nothing if the text, apart from blanks around it, isn't such a number or the number is out of range. The machine's
// language settings play no part.
std::optional<double> parseReal(std::string_view text); // finite
std::optional<int> parseInteger(std::string_view text);
std::optional<Handle> parseHandle(std::string_view text); // hexadecimal

/// The shortest form that reads back as the same value, always with a point: "2.0", "1.0E+20".
std::string formatReal(double value);
std::string formatHandle(Handle handle);

} // namespace drawing
