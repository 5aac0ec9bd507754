#include "worker/engine/clipboard_file.h"

#include <algorithm>

#include "imaging/dib.h"
#include "imaging/paste.h"
#include "worker/engine/crop_to_region.h"
#include "worker/engine/edit_file.h"
#include "workerlink/protocol.h"

namespace worker {

namespace {

// Brings a far-off position near enough to reckon with; it still lies beyond every image.
imaging::Point withinReach(imaging::Point position)
{
    const auto near = [](int value) { return std::clamp(value, -FarthestCoordinate, FarthestCoordinate); };
    return {near(position.x), near(position.y)};
}

} // namespace

void copyFromFile(const CopyToClipboard& request, Clipboard& clipboard)
{
    imaging::RasterFile raster = imaging::readRaster(request.file);
    if (request.region)
        cropToRegion(raster.bitmap, *request.region);
    const std::vector<std::byte> dib = imaging::writeDib(raster.bitmap, raster.info.resolution);
    raster.bitmap = imaging::Bitmap(); // the clipboard takes another copy
    clipboard.putDib(dib);
}

void pasteIntoFile(const PasteFromClipboard& request, Clipboard& clipboard, CommitGate& gate)
{
    const imaging::Bitmap pasted = imaging::readDib(clipboard.readDib());
    imaging::RasterFile raster = imaging::readRaster(request.file);
    imaging::paste(raster.bitmap, pasted, withinReach(request.position),
                   request.transparent ? imaging::PasteMode::transparent : imaging::PasteMode::opaque);
    writeBack(request.file, raster, gate);
}

} // namespace worker
