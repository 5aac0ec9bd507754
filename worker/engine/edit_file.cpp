#include "worker/engine/edit_file.h"

#include <algorithm>
#include <cmath>

#include "imaging/despeckle.h"
#include "imaging/error.h"
#include "imaging/invert.h"
#include "imaging/rotate.h"
#include "workerlink/protocol.h"

namespace worker {

namespace {

constexpr double tenthsOfMillimetrePerInch = 254;

const imaging::Region* pointerTo(const std::optional<imaging::Region>& region)
{
    return region ? &*region : nullptr;
}

bool inRange(imaging::Point pivot)
{
    const auto near = [](int value) { return value >= -FarthestCoordinate && value <= FarthestCoordinate; };
    return near(pivot.x) && near(pivot.y);
}

} // namespace

imaging::Format rewriteFormat(imaging::Format format)
{
    return imaging::describe(format).writable ? format : imaging::Format::TiffGroup4;
}

void writeBack(const std::filesystem::path& file, const imaging::RasterFile& raster, CommitGate& gate)
{
    gate.pass(
        [&] { imaging::writeRaster(file, raster.bitmap, raster.info.resolution, rewriteFormat(raster.info.format)); });
}

int filterSide(std::uint32_t size, imaging::Resolution resolution)
{
    const double dotsPerInch = (resolution.x + resolution.y) / 2;
    const double side = std::floor(size * dotsPerInch / tenthsOfMillimetrePerInch + 0.5);
    return static_cast<int>(std::clamp(side, 1.0, double(imaging::Bitmap::maximumSide)));
}

void invertFile(const Invert& request, CommitGate& gate)
{
    imaging::RasterFile raster = imaging::readRaster(request.file);
    imaging::invert(raster.bitmap);
    writeBack(request.file, raster, gate);
}

void rotateFile(const Rotate& request, CommitGate& gate)
{
    if (!std::isfinite(request.angle) || !inRange(request.pivot))
        throw imaging::ImagingError("The rotation's angle or pivot is out of range.");
    imaging::RasterFile raster = imaging::readRaster(request.file);
    imaging::rotate(raster.bitmap, request.angle, request.pivot, request.transparent, pointerTo(request.region));
    writeBack(request.file, raster, gate);
}

void filterFile(const Filter& request, CommitGate& gate)
{
    if (request.mode != FilterFill && request.mode != FilterDespeckle)
        throw imaging::ImagingError("There is no filter number " + std::to_string(request.mode) + ".");
    if (request.selectionOnly && !request.region)
        throw imaging::ImagingError("The selection to filter is missing.");
    imaging::RasterFile raster = imaging::readRaster(request.file);
    const int side = filterSide(request.size, raster.info.resolution);
    const imaging::Region* region = request.selectionOnly ? pointerTo(request.region) : nullptr;
    if (request.mode == FilterDespeckle) {
        imaging::despeckle(raster.bitmap, side, region);
    } else {
        imaging::fillHoles(raster.bitmap, side, region);
    }
    writeBack(request.file, raster, gate);
}

} // namespace worker
