#include "standin/desk/canvas.h"

#include <algorithm>
#include <cmath>

namespace desk {
namespace {

// Rows of samples in each row of pixels.
constexpr int samplesPerPixel = 4;

// Shortens the segment to the rectangle widened by a margin; false if nothing of it is left.
bool cutToRect(Vec2& a, Vec2& b, const imaging::Rect& rect)
{
    constexpr double margin = 2;
    const double low[2] = {rect.left - margin, rect.top - margin};
    const double high[2] = {rect.right + margin, rect.bottom + margin};
    const double from[2] = {a.x, a.y};
    const double along[2] = {b.x - a.x, b.y - a.y};
    double first = 0, last = 1;
    for (int axis = 0; axis < 2; ++axis) {
        if (along[axis] == 0) {
            if (from[axis] < low[axis] || from[axis] > high[axis])
                return false;
            continue;
        }
        double enter = (low[axis] - from[axis]) / along[axis];
        double leave = (high[axis] - from[axis]) / along[axis];
        if (enter > leave)
            std::swap(enter, leave);
        first = std::max(first, enter);
        last = std::min(last, leave);
    }
    if (!(first <= last))
        return false;
    const Vec2 start = a, way = b - a;
    a = start + way * first;
    b = start + way * last;
    return true;
}

} // namespace

Color mix(Color a, Color b, unsigned share)
{
    if (share >= 255)
        return b;
    if (share == 0)
        return a;
    const unsigned whole = share + (share >> 7); // 0..256, so that a shift can divide
    const unsigned redBlue = (((a & 0xFF00FF) * (256 - whole) + (b & 0xFF00FF) * whole) >> 8) & 0xFF00FF;
    const unsigned green = (((a & 0x00FF00) * (256 - whole) + (b & 0x00FF00) * whole) >> 8) & 0x00FF00;
    return redBlue | green;
}

Canvas::Canvas(std::uint32_t* pixels, imaging::Size size, std::ptrdiff_t stride)
    : m_pixels(pixels), m_size(size), m_stride(stride), m_clip(imaging::Rect::of(size))
{}

void Canvas::fill(Color color)
{
    for (int y = m_clip.top; y < m_clip.bottom; ++y)
        std::fill(&at(m_clip.left, y), &at(m_clip.left, y) + std::max(m_clip.width(), 0), color);
}

void Canvas::blendPixel(int x, int y, Color color, unsigned share)
{
    if (m_clip.contains({x, y}))
        at(x, y) = mix(at(x, y), color, share);
}

void Canvas::line(Vec2 a, Vec2 b, Color color)
{
    if (m_clip.empty() || !cutToRect(a, b, m_clip))
        return;
    constexpr double level = 0.01;
    if (std::abs(a.y - b.y) < level)
        a.y = b.y = std::round((a.y + b.y) / 2);
    if (std::abs(a.x - b.x) < level)
        a.x = b.x = std::round((a.x + b.x) / 2);

    const bool steep = std::abs(b.y - a.y) > std::abs(b.x - a.x);
    if (steep) {
        std::swap(a.x, a.y);
        std::swap(b.x, b.y);
    }
    if (a.x > b.x)
        std::swap(a, b);
    const double slope = b.x > a.x ? (b.y - a.y) / (b.x - a.x) : 0;
    const int first = static_cast<int>(std::lround(a.x)), last = static_cast<int>(std::lround(b.x));
    for (int x = first; x <= last; ++x) {
        const double y = a.y + slope * (std::clamp<double>(x, a.x, b.x) - a.x);
        const int row = static_cast<int>(std::floor(y));
        const unsigned below = static_cast<unsigned>(std::lround((y - row) * 255));
        if (steep) {
            blendPixel(row, x, color, 255 - below);
            blendPixel(row + 1, x, color, below);
        } else {
            blendPixel(x, row, color, 255 - below);
            blendPixel(x, row + 1, color, below);
        }
    }
}

void Canvas::point(Vec2 at, Color color)
{
    if (!(at.x > m_clip.left - 4.0 && at.x < m_clip.right + 4.0 && at.y > m_clip.top - 4.0 &&
          at.y < m_clip.bottom + 4.0))
        return;
    const int x = static_cast<int>(std::lround(at.x)), y = static_cast<int>(std::lround(at.y));
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx)
            blendPixel(x + dx, y + dy, color, 255);
    }
}

void Canvas::addCoverage(std::vector<float>& row, double from, double to) const
{
    from = std::max(from - m_clip.left, 0.0);
    to = std::min<double>(to - m_clip.left, m_clip.width());
    if (!(from < to))
        return;
    constexpr float weight = 1.0f / samplesPerPixel;
    const int first = static_cast<int>(from), last = std::min(static_cast<int>(to), m_clip.width() - 1);
    if (first == last) {
        row[first] += weight * static_cast<float>(to - from);
        return;
    }
    row[first] += weight * static_cast<float>(first + 1 - from);
    for (int x = first + 1; x < last; ++x)
        row[x] += weight;
    row[last] += weight * static_cast<float>(to - last);
}

void Canvas::crossingsAt(std::span<const std::vector<Vec2>> contours, double y, std::vector<Crossing>& crossings) const
{
    crossings.clear();
    for (const auto& contour : contours) {
        for (std::size_t i = 0, j = contour.size() - 1; i < contour.size(); j = i++) {
            const Vec2 a = contour[j], b = contour[i];
            if ((a.y <= y) != (b.y <= y))
                crossings.push_back({a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y), a.y <= y ? 1 : -1});
        }
    }
    std::sort(crossings.begin(), crossings.end(), [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
}

void Canvas::polygon(std::span<const std::vector<Vec2>> contours, Color color, unsigned opacity, FillRule rule)
{
    double low = 1e300, high = -1e300;
    for (const auto& contour : contours) {
        for (const Vec2 point : contour) {
            low = std::min(low, point.y);
            high = std::max(high, point.y);
        }
    }
    if (m_clip.empty() || !(high >= m_clip.top - 1.0 && low <= m_clip.bottom + 1.0))
        return;
    const int top = std::max<int>(m_clip.top, static_cast<int>(std::floor(std::max(low + 0.5, m_clip.top - 1.0))));
    const int bottom =
        std::min<int>(m_clip.bottom, static_cast<int>(std::ceil(std::min(high + 0.5, m_clip.bottom + 1.0))));

    std::vector<float> row(m_clip.width());
    std::vector<Crossing> crossings;
    for (int y = top; y < bottom; ++y) {
        std::fill(row.begin(), row.end(), 0.0f);
        for (int sample = 0; sample < samplesPerPixel; ++sample) {
            crossingsAt(contours, y - 0.5 + (sample + 0.5) / samplesPerPixel, crossings);
            int winding = 0;
            for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
                winding += crossings[i].winding;
                if (rule == FillRule::NonZero ? winding != 0 : i % 2 == 0)
                    addCoverage(row, crossings[i].x + 0.5, crossings[i + 1].x + 0.5);
            }
        }
        for (int x = 0; x < m_clip.width(); ++x) {
            if (row[x] > 0) {
                at(m_clip.left + x, y) = mix(at(m_clip.left + x, y), color,
                                             static_cast<unsigned>(std::lround(std::min(row[x], 1.0f) * opacity)));
            }
        }
    }
}

void Canvas::blend(const imaging::Rect& area, std::span<const std::uint8_t> coverage, Color color)
{
    const imaging::Rect part = area.intersect(m_clip);
    for (int y = part.top; y < part.bottom; ++y) {
        const std::uint8_t* share =
            coverage.data() + std::size_t(y - area.top) * area.width() + (part.left - area.left);
        for (int x = part.left; x < part.right; ++x, ++share) {
            if (*share != 0)
                at(x, y) = mix(at(x, y), color, *share);
        }
    }
}

} // namespace desk
