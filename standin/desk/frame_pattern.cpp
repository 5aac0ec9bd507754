#include "standin/desk/frame_pattern.h"

#include <algorithm>

namespace desk::script {
namespace {

constexpr int period = 8;
constexpr int shortestRun = 2 * period;

std::vector<imaging::Point> outlineOf(const imaging::Rect& rectangle, const ViewPicture& picture)
{
    std::vector<imaging::Point> points;
    const auto add = [&](int x, int y) {
        if (picture.holds(x, y))
            points.push_back({x, y});
    };
    for (int x = std::max(rectangle.left, 0); x < std::min(rectangle.right, picture.size.width); ++x) {
        add(x, rectangle.top);
        add(x, rectangle.bottom - 1);
    }
    for (int y = std::max(rectangle.top, 0); y < std::min(rectangle.bottom, picture.size.height); ++y) {
        add(rectangle.left, y);
        add(rectangle.right - 1, y);
    }
    return points;
}

std::uint32_t patternAt(const FramePattern& pattern, int x, int y)
{
    return pattern[std::size_t(y & 7) * period + (x & 7)];
}

// Looks along a row or a column for the pattern at any of its positions.
template <class At> bool runIn(int length, const FramePattern& pattern, bool upright, const At& at)
{
    for (int shift = 0; shift < period; ++shift) {
        int run = 0;
        for (int i = 0; i < length; ++i) {
            const std::uint32_t wanted = upright ? patternAt(pattern, 0, i + shift) : patternAt(pattern, i + shift, 0);
            run = at(i) == wanted ? run + 1 : 0;
            if (run >= shortestRun)
                return true;
        }
    }
    return false;
}

} // namespace

double outlineMatch(const ViewPicture& picture, const imaging::Rect& rectangle, const FramePattern& pattern)
{
    const auto points = outlineOf(rectangle, picture);
    if (points.empty())
        return 0;
    std::size_t best = 0;
    for (int dy = 0; dy < period; ++dy) {
        for (int dx = 0; dx < period; ++dx) {
            std::size_t matching = 0;
            for (const imaging::Point& point : points)
                matching += picture.at(point.x, point.y) == patternAt(pattern, point.x + dx, point.y + dy) ? 1 : 0;
            best = std::max(best, matching);
        }
    }
    return double(best) / double(points.size());
}

bool holdsPatternRun(const ViewPicture& picture, const FramePattern& pattern)
{
    for (int y = 0; y < picture.size.height; ++y) {
        if (runIn(picture.size.width, pattern, false, [&](int x) { return picture.at(x, y); }))
            return true;
    }
    for (int x = 0; x < picture.size.width; ++x) {
        if (runIn(picture.size.height, pattern, true, [&](int y) { return picture.at(x, y); }))
            return true;
    }
    return false;
}

} // namespace desk::script
