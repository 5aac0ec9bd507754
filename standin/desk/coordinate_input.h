#pragma once

#include <optional>
#include <string>

#include "standin/desk/vec2.h"

namespace desk {

/// A point as typed at the command line: "x,y", "@dx,dy" from the last point, "@distance<degrees" or
/// "distance<degrees". A third coordinate may follow the first two and is dropped, as the desk draws in the plane.
std::optional<Vec2> parsePoint(const std::wstring& text, Vec2 lastPoint);

/// A finite number that takes up the whole text.
std::optional<double> parseNumber(const std::wstring& text);

/// A number with up to four digits behind the point, without trailing zeros.
std::wstring formatNumber(double value);
std::wstring formatPoint(Vec2 point);

} // namespace desk
