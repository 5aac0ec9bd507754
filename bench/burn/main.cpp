// burn_bench DRAWING.dxf PENS SHEET.tif: burns the drawing, an A0 in millimetres, into a copy of the sheet as the
// worker does it, and prints how long that and its steps take as a table in Markdown.

#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>

#include "drawing/drawing_file.h"
#include "drawing/flatten.h"
#include "imaging/raster_file.h"
#include "worker/engine/operations.h"
#include "workerlink/protocol.h"

namespace {

constexpr drawing::Vector2 bottomLeft{0, 0};
constexpr drawing::Vector2 topRight{841, 1189}; // millimetres
constexpr int runs = 7;

class NoClipboard : public worker::Clipboard
{
public:
    std::vector<std::byte> readDib() override { return {}; }
    void putDib(std::span<const std::byte>) override {}
};

// Prints the best time of several runs, in milliseconds.
void measure(const char* step, const std::function<void()>& work)
{
    double best = 1e9;
    for (int run = 0; run < runs; ++run) {
        const auto begin = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
        best = std::min(best, time.count());
    }
    std::cout << "| " << step << " | " << int(best + 0.5) << " |" << std::endl;
}

void burn(const std::filesystem::path& drawing, const std::filesystem::path& pens, const std::filesystem::path& sheet)
{
    worker::CommitGate gate;
    NoClipboard clipboard;
    worker::Request request;
    request.rasterize = {.drawingFile = drawing,
                         .penFile = pens,
                         .rasterFile = sheet,
                         .fontsDir = {},
                         .corner1 = bottomLeft,
                         .corner2 = topRight,
                         .region = {}};
    worker::findOperation(OperationRasterize)->run(request, {gate, clipboard});
}

int run(const std::filesystem::path& drawing, const std::filesystem::path& pens, const std::filesystem::path& sheet)
{
    const std::filesystem::path copy = std::filesystem::path(sheet) += ".burnt.tif";
    const imaging::RasterFile raster = imaging::readRaster(sheet);
    const drawing::Document document = drawing::readDrawing(drawing);
    std::size_t pieces = 0;
    drawing::FlattenOptions options;
    options.tolerance = 0.25 * topRight.x / raster.bitmap.width(); // a quarter of a pixel, as the worker does
    std::cout << "| Step | ms |\n|---|---:|\n";
    const std::filesystem::path binary = std::filesystem::path(drawing).replace_extension(".dwg");
    const std::filesystem::path text = std::filesystem::path(drawing).replace_extension(".again.dxf");
    measure("drawing, read as DXF", [&] { drawing::readDrawing(drawing); });
    measure("drawing, written as DXF", [&] { drawing::writeDrawing(document, text); });
    measure("drawing, written as AC1015", [&] { drawing::writeDrawing(document, binary, drawing::DrawingForm::Dwg); });
    measure("drawing, read as AC1015", [&] { drawing::readDrawing(binary); });
    measure("drawing, flattened", [&] {
        pieces = 0;
        drawing::flattenBlock(document, document.modelSpace(), options, [&](drawing::FlatItem&&) { ++pieces; });
    });
    measure("raster, read", [&] { imaging::readRaster(sheet); });
    measure("raster, written",
            [&] { imaging::writeRaster(copy, raster.bitmap, raster.info.resolution, imaging::Format::TiffGroup4); });
    std::filesystem::copy_file(sheet, copy, std::filesystem::copy_options::overwrite_existing);
    measure("all of it", [&] { burn(drawing, pens, copy); });
    std::cout << "\n" << document.modelSpace().entities.size() << " entities, " << pieces << " pieces\n";
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: burn_bench DRAWING.dxf PENS SHEET.tif\n";
        return 1;
    }
    try {
        return run(argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
