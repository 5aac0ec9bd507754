// Points.
#pragma once

#include "standin/arx/gevec3d.h"

class HALVORAN_STANDIN_API AcGePoint2d
{
public:
    AcGePoint2d() = default;
    AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    double x = 0;
    double y = 0;
};

class HALVORAN_STANDIN_API AcGePoint3d
{
public:
    AcGePoint3d() = default;
    AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    static const AcGePoint3d kOrigin;

    AcGePoint3d& set(double xx, double yy, double zz);
    AcGePoint3d& transformBy(const AcGeMatrix3d& matrix);
    AcGePoint3d operator+(const AcGeVector3d& vector) const { return {x + vector.x, y + vector.y, z + vector.z}; }
    AcGePoint3d operator-(const AcGeVector3d& vector) const { return {x - vector.x, y - vector.y, z - vector.z}; }
    AcGeVector3d operator-(const AcGePoint3d& point) const { return {x - point.x, y - point.y, z - point.z}; }
    double distanceTo(const AcGePoint3d& point) const;

    double x = 0;
    double y = 0;
    double z = 0;
};
