#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"

namespace imaging {

/// Turns the region's pixels, or the whole image, about the centre of the pivot pixel, which may lie outside. A
/// positive angle turns +x towards +y, clockwise as seen. The pixels are lifted first, so that the region becomes
/// paper; then each pixel takes the nearest source pixel, if that belongs to the region. Transparent adds the turned
/// ink to what is there; otherwise the turned paper is laid down as well. The bitmap keeps its size; what turns out of
/// it is lost. Throws ImagingError for an angle that is not a finite number.
void rotate(Bitmap& bitmap, double radians, Point pivot, bool transparent, const Region* region = nullptr);

} // namespace imaging
