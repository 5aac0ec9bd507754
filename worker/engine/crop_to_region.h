#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"

namespace worker {

/// Cuts the image to the box around what of the region lies inside it, with paper outside the region: the crop and the
/// saving of a part (ConvertFile), and the copy to the clipboard. Throws imaging::ImagingError, with the image as it
/// was, when nothing of the region lies inside.
void cropToRegion(imaging::Bitmap& bitmap, const imaging::Region& region);

} // namespace worker
