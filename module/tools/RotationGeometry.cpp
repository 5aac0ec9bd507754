#include "module/tools/RotationGeometry.h"

#include <cmath>

#include "module/raster/Coordinates.h"

double DirectionOf(CPoint from, CPoint to)
{
    // In doubles, for at a far zoom two points can lie a whole int's range apart.
    const double dx = static_cast<double>(to.x) - from.x;
    const double dy = static_cast<double>(to.y) - from.y;
    if (dx == 0 && dy == 0)
        return 0.0;
    const double direction = std::atan2(dy, dx);
    return direction < 0 ? direction + fullTurn : direction;
}

double AngleBetween(double a, double b)
{
    while (a > fullTurn)
        a -= fullTurn;
    while (b > fullTurn)
        b -= fullTurn;
    const double difference = std::fabs(b - a);
    return difference > halfTurn ? fullTurn - difference : difference;
}

double DistanceBetween(CPoint a, CPoint b)
{
    const double dx = static_cast<double>(b.x) - a.x;
    const double dy = static_cast<double>(b.y) - a.y;
    return std::sqrt(dx * dx + dy * dy);
}

CPoint PointAt(CPoint center, double angle, double radius)
{
    return CPoint(TruncateToInt(std::cos(angle) * radius + center.x + 0.5),
                  TruncateToInt(std::sin(angle) * radius + center.y + 0.5));
}

bool TurnsBackward(double first, double second)
{
    return AngleBetween(AngleBetween(first, second) + second, first) < 0.0001;
}
