// What the tools share that paint with the square stamp: the widths and colours that they paint with, how wide the
// stamp and its cursor are at the present zoom, and the pixels of a stroke.
#pragma once

#include <algorithm>
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

/// Makes the raster's stamp ready in a width of `width` image pixels and a colour. Returns the side that it has at the
/// present zoom.
int PrepareStamp(CAcraster& raster, int width, COLORREF color);

/// The image pixels at which a stamp of that side can change anything: in the image, and in the client area of `view`,
/// unless that is null or shows the image smaller than one of its pixels. A mouse that is held left of or above the
/// view arrives far to the right of it or below, and the stroke there and back need not be walked.
CRect StrokeReach(const CAcraster& raster, int side, const CWnd* view);

/// One coordinate of a stroke. Wide, for at a far zoom the ends can lie a whole int's range apart.
struct StrokeAxis
{
    StrokeAxis(long long from, long long to) : start(from), length(std::abs(to - from)), sign(to < from ? -1 : 1) {}
    int At(long long distance) const { return static_cast<int>(start + sign * distance); }
    /// How far from the start a coordinate lies in the stroke's direction.
    long long DistanceTo(long long coordinate) const { return sign * (coordinate - start); }

    long long start;
    long long length;
    int sign;
};

/// Calls `visit(CPoint)` for each pixel of a straight stroke, without `from` and with `to`, but not for those that lie
/// outside `reach` in the stroke's longer direction. The offsets across that direction round downward; at 45 degrees
/// the stroke runs along y.
template <typename Visit> void ForEachStrokePixel(CPoint from, CPoint to, const CRect& reach, Visit&& visit)
{
    const StrokeAxis x(from.x, to.x);
    const StrokeAxis y(from.y, to.y);
    const bool alongX = y.length < x.length;
    const StrokeAxis& longer = alongX ? x : y;
    const StrokeAxis& shorter = alongX ? y : x;
    const long long low = longer.DistanceTo(alongX ? reach.left : reach.top);
    const long long high = longer.DistanceTo((alongX ? reach.right : reach.bottom) - 1);

    const long long last = std::min(longer.length, std::max(low, high));
    for (long long i = std::max(1LL, std::min(low, high)); i <= last; ++i) {
        const double offset = static_cast<double>(i) * shorter.length / longer.length;
        const int along = longer.At(i);
        const int across = shorter.At(static_cast<long long>(offset));
        visit(alongX ? CPoint(along, across) : CPoint(across, along));
    }
}
