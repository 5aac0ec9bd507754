#include "standin/desk/dash_pattern.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace desk {
namespace {

double distance(Vec2 a, Vec2 b)
{
    return std::hypot(b.x - a.x, b.y - a.y);
}

double lengthOf(std::span<const Vec2> points)
{
    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += distance(points[i - 1], points[i]);
    return length;
}

} // namespace

void drawDashed(std::span<const Vec2> points, const DashPattern& pattern, int maximumDashes,
                const std::function<void(Vec2, Vec2)>& draw)
{
    const double period = std::accumulate(pattern.begin(), pattern.end(), 0.0,
                                          [](double sum, double element) { return sum + std::abs(element); });
    if (!(period > 0) || lengthOf(points) / period * double(pattern.size()) > maximumDashes) {
        for (std::size_t i = 1; i < points.size(); ++i)
            draw(points[i - 1], points[i]);
        return;
    }
    std::size_t element = 0;
    double left = std::abs(pattern[0]); // of the present element
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Vec2 a = points[i - 1], way = points[i] - points[i - 1];
        const double length = distance(points[i - 1], points[i]);
        double done = 0;
        while (done < length) {
            const double step = std::min(left, length - done);
            if (pattern[element] >= 0)
                draw(a + way * (done / length), a + way * ((done + step) / length));
            done += step;
            left -= step;
            if (left <= 0) {
                element = (element + 1) % pattern.size();
                left = std::abs(pattern[element]);
            }
        }
    }
}

} // namespace desk
