#include "worker/engine/crop_to_region.h"

#include <utility>

#include "imaging/crop.h"
#include "imaging/error.h"

namespace worker {

void cropToRegion(imaging::Bitmap& bitmap, const imaging::Region& region)
{
    imaging::Bitmap part = imaging::crop(bitmap, region);
    if (part.empty())
        throw imaging::ImagingError("The selected area lies outside the image.");
    bitmap = std::move(part);
}

} // namespace worker
