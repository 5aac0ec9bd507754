// How the tests print the host's values.
#pragma once

#include <gtest/gtest.h>

#include "standin/arx/gemat3d.h"

inline void PrintTo(const AcGePoint3d& p, std::ostream* out)
{
    *out << '(' << p.x << ", " << p.y << ", " << p.z << ')';
}

inline void expectPoint(const AcGePoint3d& actual, double x, double y, double z = 0)
{
    EXPECT_NEAR(actual.x, x, 1e-9);
    EXPECT_NEAR(actual.y, y, 1e-9);
    EXPECT_NEAR(actual.z, z, 1e-9);
}
