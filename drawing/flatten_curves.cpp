#include "drawing/flatten_curves.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace drawing {

double largestStretch(const Transform& map)
{
    const double squares =
        map.xAxis.x * map.xAxis.x + map.xAxis.y * map.xAxis.y + map.yAxis.x * map.yAxis.x + map.yAxis.y * map.yAxis.y;
    const double area = std::abs(map.xAxis.x * map.yAxis.y - map.xAxis.y * map.yAxis.x);
    return (std::sqrt(squares + 2 * area) + std::sqrt(std::max(0.0, squares - 2 * area))) / 2;
}

double sweepBetween(double start, double end)
{
    constexpr double wholeTurn = 2 * std::numbers::pi;
    constexpr double rounding = 1e-6;
    if (end - start > wholeTurn - rounding && std::abs(std::remainder(end - start, wholeTurn)) < rounding) {
        return wholeTurn;
    }
    double sweep = std::fmod(end - start, wholeTurn);
    if (sweep <= 0) {
        sweep += wholeTurn;
    }
    return sweep;
}

int arcSteps(double radius, double sweep, double tolerance)
{
    constexpr double wholeTurn = 2 * std::numbers::pi;
    constexpr int fixedSteps = 128;
    constexpr int fewestSteps = 8;
    constexpr int mostSteps = 20'000;
    double perTurn = fixedSteps;
    if (tolerance > 0) {
        // A line over the angle a strays from the circle by r (1 - cos(a / 2)).
        const double stray = std::min(1.0, tolerance / std::max(radius, tolerance));
        perTurn = std::clamp(wholeTurn / (2 * std::acos(1 - stray)), double(fewestSteps), double(mostSteps));
    }
    // Whole quarters, so that the outermost points of a circle are among its points.
    constexpr double quarters = 4;
    perTurn = std::ceil(perTurn / quarters) * quarters;
    constexpr double roundingSlack = 1e-9;
    return std::max(
        1, static_cast<int>(std::ceil(std::min(std::abs(sweep), wholeTurn) / wholeTurn * perTurn - roundingSlack)));
}

std::vector<Vector2> arcPoints(const Vector2& center, double radius, double start, double sweep, int steps)
{
    std::vector<Vector2> points;
    points.reserve(static_cast<std::size_t>(steps) + 1);
    for (int i = 0; i <= steps; ++i) {
        const double angle = start + sweep * i / steps;
        points.push_back({center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)});
    }
    return points;
}

std::vector<Vector2> bulgePoints(const Vector2& from, const Vector2& to, double bulge, double stretch, double tolerance)
{
    const Vector2 chord = to - from;
    const double half = length(chord) / 2;
    constexpr double straightBulge = 1e-9;
    if (std::abs(bulge) < straightBulge || half == 0) {
        return {to};
    }
    const double sweep = 4 * std::atan(bulge);
    // The centre lies on the chord's perpendicular; its distance follows from the sagitta, bulge times half the chord.
    const double toCenter = (1 / bulge - bulge) / 2;
    const Vector2 center{(from.x + to.x - chord.y * toCenter) / 2, (from.y + to.y + chord.x * toCenter) / 2};
    const double radius = length(from - center);
    const double start = std::atan2(from.y - center.y, from.x - center.x);
    std::vector<Vector2> points = arcPoints(center, radius, start, sweep, arcSteps(radius * stretch, sweep, tolerance));
    points.erase(points.begin());
    points.back() = to;
    return points;
}

} // namespace drawing
