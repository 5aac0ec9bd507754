// Transformations of space.
#pragma once

#include "standin/arx/gepnt3d.h"

/// Row-major 4 by 4 matrix that acts on column vectors; starts as the identity.
class HALVORAN_STANDIN_API AcGeMatrix3d
{
public:
    AcGeMatrix3d();

    static const AcGeMatrix3d kIdentity;

    AcGeMatrix3d& setToIdentity();
    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis,
                                 const AcGeVector3d& zAxis);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis, AcGeVector3d& zAxis) const;
    /// Maps the first coordinate system onto the second.
    AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                     const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                     const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                     const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);
    static AcGeMatrix3d alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                      const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                      const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                      const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);

    AcGeMatrix3d operator*(const AcGeMatrix3d& other) const;
    /// The identity if the matrix cannot be inverted.
    AcGeMatrix3d inverse() const;
    double det() const;

    double operator()(unsigned row, unsigned column) const { return entry[row][column]; }
    double& operator()(unsigned row, unsigned column) { return entry[row][column]; }

    double entry[4][4];
};
