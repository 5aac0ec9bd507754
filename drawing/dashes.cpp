#include "drawing/dashes.h"

#include <algorithm>
#include <cmath>

namespace drawing {

namespace {

double lengthOf(std::span<const Vector2> points)
{
    double sum = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        sum += length(points[i] - points[i - 1]);
    }
    return sum;
}

} // namespace

double periodOf(const DashPattern& pattern)
{
    double period = 0;
    for (const double element : pattern) {
        period += std::abs(element);
    }
    return period;
}

void drawDashed(std::span<const Vector2> points, const DashPattern& pattern, std::size_t mostDashes,
                const std::function<void(Vector2, Vector2)>& draw)
{
    const double dashes = lengthOf(points) / periodOf(pattern) * static_cast<double>(pattern.size());
    // Without a period the quotient is infinite, or no number at all.
    if (pattern.empty() || !(dashes <= static_cast<double>(mostDashes))) {
        for (std::size_t i = 1; i < points.size(); ++i) {
            draw(points[i - 1], points[i]);
        }
        return;
    }
    std::size_t element = 0;
    double left = std::abs(pattern[0]); // of the present element
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Vector2 start = points[i - 1];
        const Vector2 way = points[i] - start;
        const double whole = length(way);
        double done = 0;
        while (done < whole) {
            const double step = std::min(left, whole - done);
            if (pattern[element] >= 0) {
                draw(start + way * (done / whole), start + way * ((done + step) / whole));
            }
            done += step;
            left -= step;
            if (left <= 0) {
                element = (element + 1) % pattern.size();
                left = std::abs(pattern[element]);
            }
        }
    }
}

} // namespace drawing
