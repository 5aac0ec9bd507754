// Angles and points of the rotate tools, on integer points with y down. Angles are radians from +x towards +y. The
// constants are these decimals, not pi in full precision, so that every comparison falls out the same way each time.
#pragma once

#include "platform/platform.h"

constexpr double fullTurn = 6.283185308;
constexpr double halfTurn = 3.141592654;

/// 0 to a full turn; 0.0 for two equal points.
double DirectionOf(CPoint from, CPoint to);
/// The smaller angle between two directions, 0 to half a turn.
double AngleBetween(double a, double b);
double DistanceBetween(CPoint a, CPoint b);
CPoint PointAt(CPoint center, double angle, double radius);
/// Whether the way from `first` by the smaller angle between them, in the negative sense, leads to `second`.
bool TurnsBackward(double first, double second);
