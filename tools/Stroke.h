// What the tools share that paint with the square stamp: the widths and colours that they paint with, how wide the
// stamp and its cursor are at the present zoom, and the pixels of a stroke.
#pragma once

#include <cmath>
#include <cstdlib>

#include "platform/platform.h"

class CAcraster;

// Settings that last as long as the module is loaded: sides of the stamp in image pixels, and 0 (ink) or 0xFFFFFF.
extern int PenWidth;
extern int LineWidth;
extern int EraserWidth;
extern COLORREF PenColor;
extern COLORREF LineColor;

/// Changes whenever the view is panned or zoomed; compared by exact equality.
double CursorViewKey();

/// The half side in view pixels of the cursor's square for a brush of `width` image pixels; at most 15.
int CursorHalfSize(const CAcraster& raster, int width);

/// The side of the stamp in image pixels: `width`, but never wider on screen than the largest cursor. 0, which paints
/// nothing, when an image pixel is wider on screen than that.
int StampSide(const CAcraster& raster, int width);

/// Calls `visit(CPoint)` for each pixel of a straight stroke, without `from` and with `to`. The offsets across the
/// longer direction round downward; at 45 degrees the stroke runs along y.
template <typename Visit> void ForEachStrokePixel(CPoint from, CPoint to, Visit&& visit)
{
    const int dx = to.x - from.x;
    const int dy = to.y - from.y;
    const int ax = std::abs(dx);
    const int ay = std::abs(dy);
    const int sx = dx < 0 ? -1 : 1;
    const int sy = dy < 0 ? -1 : 1;
    if (ay < ax) {
        for (int i = 1; i <= ax; ++i)
            visit(CPoint(from.x + i * sx, from.y + static_cast<int>(static_cast<double>(i) * ay / ax) * sy));
    } else {
        for (int i = 1; i <= ay; ++i)
            visit(CPoint(from.x + static_cast<int>(static_cast<double>(i) * ax / ay) * sx, from.y + i * sy));
    }
}
