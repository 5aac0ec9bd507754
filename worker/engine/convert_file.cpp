#include "worker/engine/convert_file.h"

#include "imaging/error.h"
#include "imaging/raster_file.h"
#include "worker/engine/crop_to_region.h"
#include "worker/engine/edit_file.h"
#include "workerlink/protocol.h"

namespace worker {

namespace {

imaging::Format targetFormat(std::uint32_t code, imaging::Format source)
{
    if (code == SameFormat)
        return rewriteFormat(source);
    const std::optional<imaging::Format> format = imaging::formatFromCode(code);
    if (!format || !imaging::describe(*format).writable)
        throw imaging::ImagingError("There is no file format number " + std::to_string(code) + " to write.");
    return *format;
}

} // namespace

void convertFile(const ConvertFile& request, CommitGate& gate)
{
    imaging::RasterFile raster = imaging::readRaster(request.sourceFile);
    const imaging::Format format = targetFormat(request.formatCode, raster.info.format);
    if (request.region)
        cropToRegion(raster.bitmap, *request.region);
    gate.pass([&] { imaging::writeRaster(request.targetFile, raster.bitmap, raster.info.resolution, format); });
}

} // namespace worker
