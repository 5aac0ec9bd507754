#pragma once

#include <algorithm>
#include <cmath>

namespace imaging {

/// The integers from begin up to, without, end.
struct Span
{
    int begin = 0;
    int end = 0;
};

/// Of the integers i of `span`, those with low <= slope i + start < high. Exact but for i where the value comes within
/// rounding of a bound.
inline Span whereBetween(Span span, double slope, double start, double low, double high)
{
    if (slope == 0)
        return start >= low && start < high ? span : Span{span.begin, span.begin};
    // Rising, i begins where the value reaches low; falling, just behind the i where it still is high.
    const double first = slope > 0 ? std::ceil((low - start) / slope) : std::floor((high - start) / slope) + 1;
    const double end = slope > 0 ? std::ceil((high - start) / slope) : std::floor((low - start) / slope) + 1;
    const double from = std::clamp(first, double(span.begin), double(span.end));
    const double to = std::clamp(end, from, double(span.end));
    return {int(from), int(to)};
}

} // namespace imaging
