#include "worker/engine/rasterize.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
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

    // What of the drawing lies within so many pixels of the raster.
    drawing::Extents window(imaging::Size size, double margin) const
    {
        std::optional<drawing::Extents> window;
        for (const Position& p : {Position{-margin, -margin}, Position{size.width + margin, size.height + margin}})
            drawing::include(window, {m_origin.x + p.x / m_scale.x, m_origin.y + p.y / m_scale.y});
        return *window;
    }

    // The longest distance in the drawing that is nowhere longer than so many pixels.
    double distance(double pixels) const { return pixels / std::max(std::abs(m_scale.x), std::abs(m_scale.y)); }

private:
    Vector2 m_origin;
    Vector2 m_scale;
};

// Dashes that repeat within so many pixels can't be told apart, nor can so many along one path.
constexpr double finestPeriod = 1;
constexpr std::size_t mostDashes = 100'000;

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
    int penOf(const drawing::FlatStyle& style)
    {
        return penPixels(m_pens.width(m_colors.indexOf(style)), m_resolution);
    }

    auto toPixel() const
    {
        return [this](const Vector2& p) { return m_map.pixel(p); };
    }

    template <class Map>
    static void convert(const std::vector<Vector2>& points, std::vector<Position>& pixels, const Map& map)
    {
        pixels.resize(points.size());
        std::transform(points.begin(), points.end(), pixels.begin(), map);
    }

    template <class Map> void convert(const std::vector<std::vector<Vector2>>& contours, const Map& map)
    {
        m_contours.resize(contours.size());
        for (std::size_t i = 0; i < contours.size(); ++i)
            convert(contours[i], m_contours[i], map);
    }

    void burn(const drawing::FlatPath& path, const drawing::FlatStyle& style)
    {
        const int width = penOf(style);
        if (drawing::periodOf(style.dashes) < m_map.distance(finestPeriod) || path.points.size() < 2) {
            convert(path.points, m_points, toPixel());
            imaging::stroke(m_painter, m_points, path.closed, width);
            return;
        }
        std::vector<Vector2> points = path.points;
        if (path.closed)
            points.push_back(points.front());
        drawing::drawDashed(points, style.dashes, mostDashes, [&](const Vector2& from, const Vector2& to) {
            imaging::stroke(m_painter, std::array{m_map.pixel(from), m_map.pixel(to)}, false, width);
        });
    }

    void burn(const drawing::FlatArea& area, const drawing::FlatStyle&)
    {
        convert(area.contours, toPixel());
        imaging::fillArea(m_painter, m_contours, imaging::FillRule::evenOdd);
    }

    void burn(const drawing::FlatText& text, const drawing::FlatStyle& style)
    {
        const int width = penOf(style);
        for (const drawing::PlacedGlyph& placed : text.glyphs) {
            const auto toPixel = [&](const Vector2& p) {
                return m_map.pixel(placed.origin + text.across * p.x + text.up * p.y);
            };
            convert(placed.glyph->contours, toPixel);
            imaging::fillArea(m_painter, m_contours, imaging::FillRule::nonZero);
            for (const std::vector<Vector2>& line : placed.glyph->strokes) {
                convert(line, m_points, toPixel);
                imaging::stroke(m_painter, m_points, false, width);
            }
        }
        for (const auto& [from, to] : text.rules)
            imaging::stroke(m_painter, std::array{m_map.pixel(from), m_map.pixel(to)}, false, width);
    }

    // A raster is nothing to be made a raster of.
    void burn(const drawing::FlatImage&, const drawing::FlatStyle&) {}

    imaging::SpanPainter& m_painter;
    const PixelMap& m_map;
    const PenTable& m_pens;
    imaging::Resolution m_resolution;
    PenColors m_colors;
    std::vector<Position> m_points; // kept for their memory
    std::vector<std::vector<Position>> m_contours;
};

drawing::FlattenOptions optionsFor(const PixelMap& map, imaging::Size size, drawing::FontSource* fonts)
{
    constexpr double stray = 0.25; // pixels by which curves may be off: half of what would show
    drawing::FlattenOptions options;
    options.tolerance = map.distance(stray);
    options.window = map.window(size, widestPen);
    options.fonts = fonts;
    return options;
}

// Whether anything lay over pixels that may be drawn on.
bool burnDrawing(const drawing::Document& document, const PixelMap& map, const PenTable& pens,
                 const imaging::Region* region, drawing::FontSource* fonts, imaging::RasterFile& raster)
{
    imaging::SpanPainter painter(raster.bitmap, region);
    Burner burner(painter, map, pens, raster.info.resolution);
    drawing::flattenBlock(document, document.modelSpace(), optionsFor(map, raster.bitmap.size(), fonts),
                          [&](const drawing::FlatItem& item) { burner.burn(item); });
    return painter.touched();
}

} // namespace

void rasterizeFile(Rasterize& request, Fonts* fonts, CommitGate& gate)
{
    const PenTable pens = readPenTable(request.penFile);
    imaging::RasterFile raster = imaging::readRaster(request.rasterFile);
    const PixelMap map(request.corner1, request.corner2, raster.bitmap.size());
    const drawing::Document document = drawing::readDrawing(request.drawingFile);
    const imaging::Region* region = request.region ? &*request.region : nullptr;
    const auto typefaces = fonts ? fonts->open(request.fontsDir) : nullptr;
    const bool touched = burnDrawing(document, map, pens, region, typefaces.get(), raster);
    request.result = touched ? 0 : NothingOverRaster;
    if (touched)
        writeBack(request.rasterFile, raster, gate);
}

} // namespace worker
