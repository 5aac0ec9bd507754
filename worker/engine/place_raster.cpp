#include "worker/engine/place_raster.h"

#include <cmath>
#include <memory>
#include <system_error>

#include "drawing/drawing_file.h"
#include "imaging/error.h"
#include "imaging/raster_file.h"

namespace worker {

namespace {

constexpr double millimetresPerInch = 25.4;

struct Placement
{
    imaging::Size pixels;
    drawing::Vector2 millimetresPerPixel;
    bool resolutionKnown;
    double scale; // drawing units per millimetre
    drawing::Vector3 insertion;
};

// A file that does not tell its resolution is placed one millimetre wide, as the host does it.
Placement placementOf(imaging::Size pixels, imaging::Resolution resolution, double scale,
                      const drawing::Vector3& insertion)
{
    const bool known = resolution.x > 0 && resolution.y > 0;
    const drawing::Vector2 pixel =
        known ? drawing::Vector2{millimetresPerInch / resolution.x, millimetresPerInch / resolution.y}
              : drawing::Vector2{1.0 / pixels.width, 1.0 / pixels.width};
    return {pixels, pixel, known, scale, insertion};
}

drawing::Vector3 oppositeCorner(const Placement& placement)
{
    const drawing::Vector2 pixel = placement.millimetresPerPixel * placement.scale;
    return placement.insertion +
           drawing::Vector3{pixel.x * placement.pixels.width, pixel.y * placement.pixels.height, 0};
}

void requirePlace(const Placement& placement)
{
    const drawing::Vector3 corner = oppositeCorner(placement);
    if (!(placement.scale > 0) || !std::isfinite(corner.x + corner.y + corner.z))
        throw imaging::ImagingError("The raster's scale or place is out of range.");
}

std::string utf8(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

void writeDrawingOf(const std::filesystem::path& raster, const Placement& placement, const std::filesystem::path& file)
{
    const drawing::Vector2 pixels{double(placement.pixels.width), double(placement.pixels.height)};
    drawing::Document document;
    auto definition = std::make_unique<drawing::ImageDefinition>();
    definition->path = utf8(raster);
    definition->pixels = pixels;
    definition->pixelSize = placement.millimetresPerPixel;
    definition->units =
        placement.resolutionKnown ? drawing::ImageDefinition::Units::Inch : drawing::ImageDefinition::Units::None;

    auto image = std::make_unique<drawing::Image>();
    const drawing::Vector2 pixel = placement.millimetresPerPixel * placement.scale;
    image->position = placement.insertion;
    image->u = {pixel.x, 0, 0};
    image->v = {0, pixel.y, 0};
    image->pixels = pixels;
    image->resetClip();

    drawing::ImageDefinition& added = document.addImageDefinition(utf8(raster.stem()), std::move(definition));
    document.attachDefinition(document.addEntity(document.modelSpace(), std::move(image)), added);
    document.obtainRasterVariables();
    drawing::writeDrawing(document, file, drawing::DrawingForm::Dwg);
}

} // namespace

void makeNewRaster(NewRaster& request, CommitGate& gate)
{
    const std::optional<imaging::Format> format = imaging::formatFromCode(request.formatCode);
    if (!format || !imaging::describe(*format).writable)
        throw imaging::ImagingError("There is no file format number " + std::to_string(request.formatCode) +
                                    " to write.");
    const auto dotsPerInch = double(request.dotsPerInch);
    if (dotsPerInch < 1)
        throw imaging::ImagingError("The new raster has no resolution.");
    const imaging::Bitmap blank(request.pixels);
    if (blank.empty())
        throw imaging::ImagingError("The new raster has no pixels.");
    const imaging::Resolution resolution{dotsPerInch, dotsPerInch};
    const Placement placement = placementOf(request.pixels, resolution, request.scale, request.insertion);
    requirePlace(placement);
    gate.pass([&] {
        // The drawing first: it takes nothing's place, and goes again if the raster can't be written.
        writeDrawingOf(request.rasterFile, placement, request.drawingFile);
        try {
            imaging::writeRaster(request.rasterFile, blank, resolution, *format);
        } catch (...) {
            std::error_code ignored;
            std::filesystem::remove(request.drawingFile, ignored);
            throw;
        }
    });
    request.corner = oppositeCorner(placement);
}

void insertRaster(InsertRaster& request, CommitGate& gate)
{
    const imaging::RasterInfo info = imaging::inspectRaster(request.rasterFile);
    const Placement placement = placementOf(info.size, info.resolution, request.scale, request.insertion);
    requirePlace(placement);
    gate.pass([&] { writeDrawingOf(request.rasterFile, placement, request.drawingFile); });
    request.corner = oppositeCorner(placement);
}

} // namespace worker
