// View space and drawing space, and the rounding that all conversions share.
//
//   view space     integer client coordinates of the drawing view, origin top left, y down
//   drawing space  doubles in drawing units, y up
//   image space    integer pixels of the raster, origin top left, y down (see CAcraster)
//
// The view conversions read the host's variables at every call, so they stay right through pan and zoom. They hold for
// a plan view of the world without twist; a drawing point's z is left out of account.
#pragma once

#include "platform/platform.h"

/// Toward zero, as every real becomes an integer in this module; values that no int can hold stop at its ends.
int TruncateToInt(double value);

/// The drawing view's size in pixels, from the host's "screensize".
CSize ReadViewSize();

/// The host's view as it is now, for many conversions in one go; not to be kept, for the view moves.
class ViewScale
{
public:
    /// Reads the host's variables.
    ViewScale();

    CPoint ToView(const AcGePoint3d& point) const;
    /// The drawing point lies at z = 0.
    AcGePoint3d ToWorld(CPoint point) const;
    CSize ViewSize() const { return m_size; }

private:
    CSize m_size;
    resbuf m_centre;
    double m_unitsPerPixel;
    double m_left;   // of the view, in view pixels from the drawing's origin
    double m_middle; // of the view's height, likewise
};

CPoint WorldToView(const AcGePoint3d& point);
/// The drawing point lies at z = 0.
AcGePoint3d ViewToWorld(CPoint point);
