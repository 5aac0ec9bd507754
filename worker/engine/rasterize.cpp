#include "worker/engine/rasterize.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <variant>
#include <vector>

#include "drawing/drawing_file.h"
#include "drawing/flatten.h"
#include "imaging/area.h"
#include "imaging/error.h"
#include "imaging/stroke.h"
#include "worker/engine/edit_file.h"
#include "worker/engine/pen_table.h"
#include "workerlink/protocol.h"

namespace worker {

namespace {

using drawing::Vector2;
using imaging::Position;

// From the drawing to the raster that lies in it.
class PixelMap
{
public:
    // The corners are those of the pixels at the bottom left and the top right.
    PixelMap(Vector2 corner1, Vector2 corner2, imaging::Size size)
        : m_origin{corner1.x, corner2.y}, m_scale{size.width / (corner2.x - corner1.x),
                                                  size.height / (corner1.y - corner2.y)}
    {
        const auto usable = [](double scale) { return std::isfinite(scale) && scale != 0; };
        if (!usable(m_scale.x) || !usable(m_scale.y))
            throw imaging::ImagingError("The raster has no area in the drawing.");
    }

    Position pixel(const Vector2& p) const { return {(p.x - m_origin.x) * m_scale.x, (p.y - m_origin.y) * m_scale.y}; }

    // The longest distance in the drawing that is nowhere longer than so many pixels.
    double distance(double pixels) const { return pixels / std::max(std::abs(m_scale.x), std::abs(m_scale.y)); }

private:
    Vector2 m_origin;
    Vector2 m_scale;
};

// Draws the pieces of a flattened drawing.
class Burner
{
public:
    Burner(imaging::SpanPainter& painter, const PixelMap& map, const PenTable& pens, imaging::Resolution resolution)
        : m_painter(painter), m_map(map), m_pens(pens), m_resolution(resolution)
    {}

    void burn(const drawing::FlatItem& item)
    {
        std::visit([&](const auto& shape) { burn(shape, item.style); }, item.shape);
        // A small file can hold blocks in blocks with lines without end. This takes half a minute to draw.
        constexpr std::uint64_t mostWork = std::uint64_t(1) << 33;
        if (m_painter.work() > mostWork)
            throw imaging::ImagingError("The drawing holds more than can be drawn into a raster.");
    }

private:
    void burn(const drawing::FlatPath& path, const drawing::FlatStyle& style)
    {
        convert(path.points, m_points);
        const int width = m_pens.width(m_colors.indexOf(style));
        imaging::stroke(m_painter, m_points, path.closed, penPixels(width, m_resolution));
    }

    void burn(const drawing::FlatArea& area, const drawing::FlatStyle&)
    {
        m_contours.resize(area.contours.size());
        for (std::size_t i = 0; i < area.contours.size(); ++i)
            convert(area.contours[i], m_contours[i]);
        imaging::fillArea(m_painter, m_contours);
    }

    void burn(const drawing::FlatText&, const drawing::FlatStyle&) {}

    // A raster is nothing to be made a raster of.
    void burn(const drawing::FlatImage&, const drawing::FlatStyle&) {}

    void convert(const std::vector<Vector2>& points, std::vector<Position>& pixels) const
    {
        pixels.resize(points.size());
        std::transform(points.begin(), points.end(), pixels.begin(), [&](const Vector2& p) { return m_map.pixel(p); });
    }

    imaging::SpanPainter& m_painter;
    const PixelMap& m_map;
    const PenTable& m_pens;
    imaging::Resolution m_resolution;
    PenColors m_colors;
    std::vector<Position> m_points; // kept for their memory
    std::vector<std::vector<Position>> m_contours;
};

// Whether anything lay over pixels that may be drawn on.
bool burnDrawing(const drawing::Document& document, const PixelMap& map, const PenTable& pens,
                 const imaging::Region* region, imaging::RasterFile& raster)
{
    constexpr double stray = 0.25; // pixels by which curves may be off: half of what would show
    imaging::SpanPainter painter(raster.bitmap, region);
    Burner burner(painter, map, pens, raster.info.resolution);
    drawing::FlattenOptions options;
    options.tolerance = map.distance(stray);
    drawing::flattenBlock(document, document.modelSpace(), options,
                          [&](const drawing::FlatItem& item) { burner.burn(item); });
    return painter.touched();
}

} // namespace

void rasterizeFile(Rasterize& request, CommitGate& gate)
{
    const PenTable pens = readPenTable(request.penFile);
    imaging::RasterFile raster = imaging::readRaster(request.rasterFile);
    const PixelMap map(request.corner1, request.corner2, raster.bitmap.size());
    const drawing::Document document = drawing::readDrawing(request.drawingFile);
    const imaging::Region* region = request.region ? &*request.region : nullptr;
    const bool touched = burnDrawing(document, map, pens, region, raster);
    request.result = touched ? 0 : NothingOverRaster;
    if (touched)
        writeBack(request.rasterFile, raster, gate);
}

} // namespace worker
