#include "worker/engine/clipboard_file.h"

#include <algorithm>

#include "imaging/crop.h"
#include "imaging/dib.h"
#include "imaging/error.h"
#include "imaging/paste.h"
#include "worker/engine/edit_file.h"

namespace worker {

namespace {

// Brings a far-off position near enough to reckon with; it still lies beyond every image.
imaging::Point withinReach(imaging::Point position)
{
    constexpr int reach = 1 << 29;
    return {std::clamp(position.x, -reach, reach), std::clamp(position.y, -reach, reach)};
}

} // namespace

void copyFromFile(CopyToClipboard& request)
{
    imaging::RasterFile raster = imaging::readRaster(request.file);
    if (request.region) {
        // What lies outside the image has no pixels to copy.
        const imaging::Region inside = imaging::intersect(*request.region, imaging::Region(raster.bitmap.bounds()));
        if (inside.empty())
            throw imaging::ImagingError("The selected area lies outside the image.");
        raster.bitmap = imaging::crop(raster.bitmap, inside);
    }
    request.dib = imaging::writeDib(raster.bitmap, raster.info.resolution);
}

void pasteIntoFile(const PasteFromClipboard& request, CommitGate& gate)
{
    const imaging::Bitmap pasted = imaging::readDib(request.dib);
    imaging::RasterFile raster = imaging::readRaster(request.file);
    imaging::paste(raster.bitmap, pasted, withinReach(request.position),
                   request.transparent ? imaging::PasteMode::transparent : imaging::PasteMode::opaque);
    gate.pass([&] {
        imaging::writeRaster(request.file, raster.bitmap, raster.info.resolution, rewriteFormat(raster.info.format));
    });
}

} // namespace worker
