#include "worker/engine/clipboard_file.h"

#include <algorithm>

#include "imaging/dib.h"
#include "imaging/paste.h"
#include "worker/engine/crop_to_region.h"
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
    if (request.region)
        cropToRegion(raster.bitmap, *request.region);
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
