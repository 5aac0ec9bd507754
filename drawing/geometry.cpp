#include "drawing/geometry.h"

#include <algorithm>
#include <cmath>

namespace drawing {

Vector3 operator+(const Vector3& a, const Vector3& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Vector3 operator-(const Vector3& a, const Vector3& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Vector3 operator*(const Vector3& a, double factor)
{
    return {a.x * factor, a.y * factor, a.z * factor};
}

double dot(const Vector3& a, const Vector3& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector3 cross(const Vector3& a, const Vector3& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double length(const Vector3& a)
{
    return std::hypot(a.x, a.y, a.z);
}

double length(const Vector2& a)
{
    return std::hypot(a.x, a.y);
}

Vector3 normalized(const Vector3& a)
{
    const double size = length(a);
    return size > 0 ? a * (1 / size) : a;
}

Transform Transform::translation(const Vector3& offset)
{
    Transform result;
    result.origin = offset;
    return result;
}

Transform Transform::scaling(const Vector3& factors)
{
    return {{factors.x, 0, 0}, {0, factors.y, 0}, {0, 0, factors.z}, {0, 0, 0}};
}

Transform Transform::rotation(double radians)
{
    const double cosine = std::cos(radians);
    const double sine = std::sin(radians);
    return {{cosine, sine, 0}, {-sine, cosine, 0}, {0, 0, 1}, {0, 0, 0}};
}

Transform Transform::fromExtrusion(const Vector3& extrusion)
{
    const Vector3 z = normalized(extrusion);
    if (z == worldZAxis || z == Vector3{}) {
        return {};
    }
    // Drawing files leave the plane's x axis to this rule: across the world's y axis when the extrusion is within 1/64
    // of the z axis, across the world's z axis otherwise.
    constexpr double nearness = 1.0 / 64;
    const bool nearZ = std::abs(z.x) < nearness && std::abs(z.y) < nearness;
    const Vector3 x = normalized(cross(nearZ ? Vector3{0, 1, 0} : worldZAxis, z));
    return {x, normalized(cross(z, x)), z, {0, 0, 0}};
}

Vector3 Transform::direction(const Vector3& v) const
{
    return xAxis * v.x + yAxis * v.y + zAxis * v.z;
}

Vector3 Transform::point(const Vector3& p) const
{
    return direction(p) + origin;
}

Transform operator*(const Transform& outer, const Transform& inner)
{
    return {outer.direction(inner.xAxis), outer.direction(inner.yAxis), outer.direction(inner.zAxis),
            outer.point(inner.origin)};
}

void include(std::optional<Extents>& extents, const Vector2& p)
{
    if (!extents) {
        extents = Extents{p, p};
        return;
    }
    extents->low = {std::min(extents->low.x, p.x), std::min(extents->low.y, p.y)};
    extents->high = {std::max(extents->high.x, p.x), std::max(extents->high.y, p.y)};
}

} // namespace drawing
