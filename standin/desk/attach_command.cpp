// Placing a raster file in the drawing.

#include "imaging/error.h"
#include "imaging/raster_file.h"
#include "standin/desk/commands.h"
#include "standin/desk/coordinate_input.h"
#include "standin/text.h"

namespace desk::commands {
namespace {

using standin::CommandOutcome;

constexpr double millimetresPerInch = 25.4;

double inchesPerPixel(double dotsPerInch)
{
    constexpr double usual = 300; // of a file that knows no resolution
    return 1 / (dotsPerInch > 0 ? dotsPerInch : usual);
}

// The side of a pixel in drawing units, at the size that was scanned: drawings are in millimetres or in inches.
double pixelSide(double dotsPerInch)
{
    const double inches = inchesPerPixel(dotsPerInch);
    const auto metric = standin::systemVariable(L"MEASUREMENT");
    const auto* flag = metric ? std::get_if<std::int16_t>(&*metric) : nullptr;
    return flag != nullptr && *flag == 0 ? inches : inches * millimetresPerInch;
}

// The definition of that file, which the drawing may have already.
drawing::ImageDefinition& definitionFor(const std::filesystem::path& file, const imaging::RasterInfo& info)
{
    drawing::Document& document = standin::document();
    const std::string path = standin::toUtf8(file.wstring());
    const drawing::Dictionary& names = document.obtainImageDictionary();
    for (const auto& entry : names.entries) {
        auto* present = document.find<drawing::ImageDefinition>(entry.object);
        if (present != nullptr && present->path == path)
            return *present;
    }
    const std::string stem = standin::toUtf8(file.stem().wstring());
    std::string name = stem;
    for (int number = 1; names.find(name) != 0; ++number)
        name = stem + "_" + std::to_string(number);
    auto definition = std::make_unique<drawing::ImageDefinition>();
    definition->path = path;
    definition->pixels = {double(info.size.width), double(info.size.height)};
    definition->pixelSize = {inchesPerPixel(info.resolution.x) * millimetresPerInch,
                             inchesPerPixel(info.resolution.y) * millimetresPerInch};
    return document.addImageDefinition(name, std::move(definition));
}

} // namespace

CommandOutcome attachImage(Editor& editor)
{
    const auto typed = askPath(editor, L"Enter name of raster file to attach:");
    if (!typed)
        return CommandOutcome::cancelled;
    std::error_code error;
    const std::filesystem::path file = std::filesystem::absolute(*typed, error);
    imaging::RasterInfo info;
    try {
        info = imaging::inspectRaster(file);
    } catch (const imaging::ImagingError& failure) {
        editor.print(file.filename().wstring() + L": " + standin::fromUtf8(failure.what()));
        return CommandOutcome::failed;
    }
    Prompt prompt;
    prompt.text = L"Specify insertion point <0,0>:";
    const Reply corner = editor.ask(prompt);
    if (corner.kind == Reply::Kind::cancel)
        return CommandOutcome::cancelled;
    drawing::ImageDefinition& definition = definitionFor(file, info);
    auto made = std::make_unique<drawing::Image>();
    drawing::Image& image = *made;
    image.position = {corner.point.x, corner.point.y, 0};
    image.u = {pixelSide(info.resolution.x), 0, 0};
    image.v = {0, pixelSide(info.resolution.y), 0};
    image.pixels = definition.pixels;
    image.resetClip();
    editor.addEntity(std::move(made));
    standin::document().attachDefinition(image, definition);
    editor.regenerate();
    return CommandOutcome::ended;
}

} // namespace desk::commands
