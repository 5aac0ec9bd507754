// Vectors.
#pragma once

#include "standin/export.h"

class AcGeMatrix3d;

class HALVORAN_STANDIN_API AcGeVector2d
{
public:
    AcGeVector2d() = default;
    AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}
    double length() const;

    double x = 0;
    double y = 0;
};

class HALVORAN_STANDIN_API AcGeVector3d
{
public:
    AcGeVector3d() = default;
    AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    AcGeVector3d& transformBy(const AcGeMatrix3d& matrix);
    AcGeVector3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    AcGeVector3d operator/(double divisor) const { return {x / divisor, y / divisor, z / divisor}; }
    AcGeVector3d operator+(const AcGeVector3d& other) const { return {x + other.x, y + other.y, z + other.z}; }
    AcGeVector3d operator-(const AcGeVector3d& other) const { return {x - other.x, y - other.y, z - other.z}; }
    AcGeVector3d operator-() const { return {-x, -y, -z}; }
    double length() const;
    double dotProduct(const AcGeVector3d& other) const { return x * other.x + y * other.y + z * other.z; }
    AcGeVector3d crossProduct(const AcGeVector3d& other) const;
    /// Of length 1; the null vector stays as it is.
    AcGeVector3d normal() const;

    double x = 0;
    double y = 0;
    double z = 0;
};
