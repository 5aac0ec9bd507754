#include <cmath>

#include "standin/arx/gemat3d.h"

const AcGeVector3d AcGeVector3d::kXAxis(1, 0, 0);
const AcGeVector3d AcGeVector3d::kYAxis(0, 1, 0);
const AcGeVector3d AcGeVector3d::kZAxis(0, 0, 1);
const AcGePoint3d AcGePoint3d::kOrigin(0, 0, 0);
const AcGeMatrix3d AcGeMatrix3d::kIdentity;

double AcGeVector2d::length() const
{
    return std::hypot(x, y);
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& matrix)
{
    const auto& m = matrix.entry;
    return *this = AcGeVector3d(m[0][0] * x + m[0][1] * y + m[0][2] * z, m[1][0] * x + m[1][1] * y + m[1][2] * z,
                                m[2][0] * x + m[2][1] * y + m[2][2] * z);
}

double AcGeVector3d::length() const
{
    return std::hypot(x, y, z);
}

AcGeVector3d AcGeVector3d::crossProduct(const AcGeVector3d& other) const
{
    return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
}

AcGeVector3d AcGeVector3d::normal() const
{
    const double size = length();
    return size > 0 ? *this / size : *this;
}

AcGePoint3d& AcGePoint3d::set(double xx, double yy, double zz)
{
    x = xx;
    y = yy;
    z = zz;
    return *this;
}

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& matrix)
{
    const auto& m = matrix.entry;
    const double w = m[3][0] * x + m[3][1] * y + m[3][2] * z + m[3][3];
    const AcGePoint3d moved(m[0][0] * x + m[0][1] * y + m[0][2] * z + m[0][3],
                            m[1][0] * x + m[1][1] * y + m[1][2] * z + m[1][3],
                            m[2][0] * x + m[2][1] * y + m[2][2] * z + m[2][3]);
    return *this = w == 1 ? moved : AcGePoint3d(moved.x / w, moved.y / w, moved.z / w);
}

double AcGePoint3d::distanceTo(const AcGePoint3d& point) const
{
    return (*this - point).length();
}

AcGeMatrix3d::AcGeMatrix3d()
{
    setToIdentity();
}

AcGeMatrix3d& AcGeMatrix3d::setToIdentity()
{
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column)
            entry[row][column] = row == column;
    }
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis)
{
    const double columns[4][4] = {{xAxis.x, xAxis.y, xAxis.z, 0},
                                  {yAxis.x, yAxis.y, yAxis.z, 0},
                                  {zAxis.x, zAxis.y, zAxis.z, 0},
                                  {origin.x, origin.y, origin.z, 1}};
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column)
            entry[row][column] = columns[column][row];
    }
    return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const
{
    xAxis = AcGeVector3d(entry[0][0], entry[1][0], entry[2][0]);
    yAxis = AcGeVector3d(entry[0][1], entry[1][1], entry[2][1]);
    zAxis = AcGeVector3d(entry[0][2], entry[1][2], entry[2][2]);
    origin = AcGePoint3d(entry[0][3], entry[1][3], entry[2][3]);
}

AcGeMatrix3d& AcGeMatrix3d::setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                               const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                               const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                               const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis)
{
    AcGeMatrix3d from;
    from.setCoordSystem(fromOrigin, fromXAxis, fromYAxis, fromZAxis);
    AcGeMatrix3d to;
    to.setCoordSystem(toOrigin, toXAxis, toYAxis, toZAxis);
    return *this = to * from.inverse();
}

AcGeMatrix3d AcGeMatrix3d::alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                         const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                         const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                         const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis)
{
    AcGeMatrix3d matrix;
    matrix.setToAlignCoordSys(fromOrigin, fromXAxis, fromYAxis, fromZAxis, toOrigin, toXAxis, toYAxis, toZAxis);
    return matrix;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& other) const
{
    AcGeMatrix3d product;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            double sum = 0;
            for (int i = 0; i < 4; ++i)
                sum += entry[row][i] * other.entry[i][column];
            product.entry[row][column] = sum;
        }
    }
    return product;
}

// The determinant of the linear part: matrices here are affine, with a last row of 0 0 0 1.
double AcGeMatrix3d::det() const
{
    AcGePoint3d origin;
    AcGeVector3d x, y, z;
    getCoordSystem(origin, x, y, z);
    return x.dotProduct(y.crossProduct(z));
}

// By cofactors: the rows of the inverse are the cross products of the axes over the determinant.
AcGeMatrix3d AcGeMatrix3d::inverse() const
{
    AcGePoint3d origin;
    AcGeVector3d x, y, z;
    getCoordSystem(origin, x, y, z);
    const double determinant = det();
    AcGeMatrix3d result;
    if (determinant == 0 || !std::isfinite(determinant))
        return result;
    const AcGeVector3d rows[3] = {y.crossProduct(z) / determinant, z.crossProduct(x) / determinant,
                                  x.crossProduct(y) / determinant};
    const AcGeVector3d offset = origin - AcGePoint3d::kOrigin;
    for (int row = 0; row < 3; ++row) {
        result.entry[row][0] = rows[row].x;
        result.entry[row][1] = rows[row].y;
        result.entry[row][2] = rows[row].z;
        result.entry[row][3] = -rows[row].dotProduct(offset);
    }
    return result;
}
