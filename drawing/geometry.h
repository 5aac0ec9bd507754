#pragma once

#include <optional>

namespace drawing {

struct Vector2
{
    double x = 0;
    double y = 0;
    friend Vector2 operator+(const Vector2& a, const Vector2& b) { return {a.x + b.x, a.y + b.y}; }
    friend Vector2 operator-(const Vector2& a, const Vector2& b) { return {a.x - b.x, a.y - b.y}; }
    friend Vector2 operator*(const Vector2& a, double factor) { return {a.x * factor, a.y * factor}; }
    bool operator==(const Vector2&) const = default;
};

struct Vector3
{
    double x = 0;
    double y = 0;
    double z = 0;
    bool operator==(const Vector3&) const = default;
};

Vector3 operator+(const Vector3& a, const Vector3& b);
Vector3 operator-(const Vector3& a, const Vector3& b);
Vector3 operator*(const Vector3& a, double factor);
double dot(const Vector3& a, const Vector3& b);
Vector3 cross(const Vector3& a, const Vector3& b);
double length(const Vector3& a);
double length(const Vector2& a);
/// The vector of length 1 in the same direction; the zero vector stays zero.
Vector3 normalized(const Vector3& a);

inline constexpr Vector3 worldZAxis{0, 0, 1};

/// An affine map: a point p goes to xAxis p.x + yAxis p.y + zAxis p.z + origin.
struct Transform
{
    Vector3 xAxis{1, 0, 0};
    Vector3 yAxis{0, 1, 0};
    Vector3 zAxis{0, 0, 1};
    Vector3 origin{0, 0, 0};

    static Transform translation(const Vector3& offset);
    static Transform scaling(const Vector3& factors);
    /// Counter-clockwise about z, in radians.
    static Transform rotation(double radians);
    /// From the plane coordinates of an entity with this extrusion direction to the drawing's coordinates.
    static Transform fromExtrusion(const Vector3& extrusion);

    Vector3 point(const Vector3& p) const;
    Vector3 direction(const Vector3& v) const;
};

/// The map that applies `inner` first and then `outer`.
Transform operator*(const Transform& outer, const Transform& inner);

/// A rectangle of the drawing, both corners included.
struct Extents
{
    Vector2 low;
    Vector2 high;
    bool operator==(const Extents&) const = default;
};

/// `extents` widened so that it holds `p`; starts it where there was none.
void include(std::optional<Extents>& extents, const Vector2& p);

} // namespace drawing
