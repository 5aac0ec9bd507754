#pragma once

#include "platform/platform.h"

class CAcraster;

/// The three handles of free rotation: a base point and two arms, in image pixels. The angle is the one from the first
/// arm to the second. The raster that the calls are given is locked.
class CRotateHandles
{
public:
    enum Part
    {
        None = 0,
        All = 1, // inside the box of the handles, on none of them
        Base = 2,
        FirstArm = 3,
        SecondArm = 4,
    };

    /// About the middle of a view of that size.
    void Place(const CAcraster& raster, CSize view);
    /// What lies at a point of the view. The base point comes first, so it wins where handles overlap.
    Part HitAt(const CAcraster& raster, CPoint point) const;
    /// The end of a drag of that part, in image pixels.
    void Drop(Part part, CPoint start, CPoint end);
    void Offset(CSize pixels);
    CPoint BasePoint() const { return m_base; }
    CPoint FirstArmPoint() const { return m_firstArm; }
    CPoint SecondArmPoint() const { return m_secondArm; }
    /// Radians from the first arm to the second, 0 to a full turn, from +x towards +y of the image.
    double SweptAngle() const;

    /// Handles, arms and the arc with its arrow head, in the context's pen and mode.
    void Draw(CDC& view, const CAcraster& raster) const;

private:
    CRect Box(const CAcraster& raster) const;
    void DrawArc(CDC& view, CPoint base, CPoint first, CPoint second) const;

    CPoint m_base;
    CPoint m_firstArm;
    CPoint m_secondArm;
    bool m_bDirection = false; // which way the arc is drawn; set on each drop
};
