#pragma once

#include "imaging/bitmap.h"

namespace imaging {

/// The image at another size. In a direction that shrinks, a pixel is ink when at least half of the area is ink that it
/// covers in the source, parts of source pixels counted as such; in a direction that grows, it takes the nearest source
/// pixel. Throws ImagingError for a size that is absurd, or empty where the source is not.
Bitmap resample(const Bitmap& bitmap, Size size);

} // namespace imaging
