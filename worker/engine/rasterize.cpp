#include "worker/engine/rasterize.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "drawing/drawing_file.h"
#include "drawing/flatten.h"
#include "imaging/area.h"
#include "imaging/error.h"
#include "imaging/parallel.h"
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

// Strokes and areas in pixels, gathered to be painted together: band by band, so that a band's rows stay in the
// processor's cache, and several bands at the same time.
class Burning
{
public:
    Burning(imaging::Bitmap& bitmap, const imaging::Region* region) : m_bitmap(bitmap), m_region(bitmap.bounds())
    {
        if (region)
            m_region = imaging::intersect(*region, m_region);
    }

    /// The points are those that `add` was given since the last stroke.
    void stroke(bool closed, int width)
    {
        gather(Piece{.points = {m_taken, m_points.size()}, .closed = closed, .width = width},
               m_points.size() - m_taken);
        m_taken = m_points.size();
    }

    void add(const Position& point) { m_points.push_back(point); }

    void area(std::vector<std::vector<Position>> contours, imaging::FillRule rule)
    {
        std::size_t points = 0;
        for (const std::vector<Position>& contour : contours)
            points += contour.size();
        m_areas.push_back({std::move(contours), rule});
        gather(Piece{.area = m_areas.size()}, points);
    }

    /// Paints what has been gathered. Throws when all in all it is too much.
    void paint();

    bool touched() const { return m_touched; }

private:
    struct Area
    {
        std::vector<std::vector<Position>> contours;
        imaging::FillRule rule;
    };
    struct Piece
    {
        std::pair<std::size_t, std::size_t> points = {}; // of a stroke: from the one up to, without, the other
        bool closed = false;
        int width = 1;        // of a stroke
        std::size_t area = 0; // from 1; 0 for a stroke
        double top = 0;
        double bottom = 0;
    };

    void gather(Piece piece, std::size_t points);
    void include(Piece& piece, std::span<const Position> points) const;
    void paint(imaging::SpanPainter& painter, const Piece& piece) const;

    imaging::Bitmap& m_bitmap;
    imaging::Region m_region;
    std::vector<Position> m_points;
    std::size_t m_taken = 0; // by the strokes so far
    std::vector<Area> m_areas;
    std::vector<Piece> m_pieces;
    std::size_t m_gathered = 0; // points
    std::uint64_t m_work = 0;
    bool m_touched = false;
};

void Burning::include(Piece& piece, std::span<const Position> points) const
{
    for (const Position& p : points) {
        piece.top = std::min(piece.top, p.y);
        piece.bottom = std::max(piece.bottom, p.y);
    }
}

// Takes a piece if its rows can be those of the region.
void Burning::gather(Piece piece, std::size_t points)
{
    piece.top = std::numeric_limits<double>::infinity();
    piece.bottom = -piece.top;
    if (piece.area > 0) {
        for (const std::vector<Position>& contour : m_areas[piece.area - 1].contours)
            include(piece, contour);
    } else {
        include(piece, std::span(m_points).subspan(piece.points.first));
    }
    const double margin = piece.width; // more than half the pen and a pixel's rounding
    piece.top -= margin;
    piece.bottom += margin;
    m_pieces.push_back(piece);
    constexpr std::size_t mostPoints = 2'000'000;
    m_gathered += points;
    if (m_gathered > mostPoints)
        paint();
}

void Burning::paint(imaging::SpanPainter& painter, const Piece& piece) const
{
    if (piece.area > 0) {
        const Area& area = m_areas[piece.area - 1];
        imaging::fillArea(painter, area.contours, area.rule);
    } else {
        const auto [begin, end] = piece.points;
        imaging::stroke(painter, std::span(m_points).subspan(begin, end - begin), piece.closed, piece.width);
    }
}

void Burning::paint()
{
    constexpr int bandHeight = 512; // rows: a megabyte of the largest sheets
    const imaging::Rect box = m_region.box();
    std::atomic<std::uint64_t> work = m_pieces.size();
    std::atomic<bool> touched = m_touched;
    imaging::inTurns((box.height() + bandHeight - 1) / bandHeight, [&](int index) {
        const int top = box.top + index * bandHeight;
        const int bottom = std::min(top + bandHeight, box.bottom);
        const imaging::Region band =
            imaging::intersect(m_region, imaging::Region(imaging::Rect{box.left, top, box.right, bottom}));
        imaging::SpanPainter painter(m_bitmap, &band);
        for (const Piece& piece : m_pieces) {
            if (piece.top < bottom && piece.bottom > top)
                paint(painter, piece);
        }
        work += painter.work();
        touched = touched || painter.touched();
    });
    m_touched = touched;
    m_work += work;
    m_points.clear();
    m_areas.clear();
    m_pieces.clear();
    m_taken = m_gathered = 0;
    // A small file can hold blocks in blocks with lines without end. This takes half a minute to draw.
    constexpr std::uint64_t mostWork = std::uint64_t(1) << 33;
    if (m_work > mostWork)
        throw imaging::ImagingError("The drawing holds more than can be drawn into a raster.");
}

// Dashes that repeat within so many pixels can't be told apart, nor can so many along one path.
constexpr double finestPeriod = 1;
constexpr std::size_t mostDashes = 100'000;

// Gathers the pieces of a flattened drawing.
class Burner
{
public:
    Burner(Burning& burning, const PixelMap& map, const PenTable& pens, imaging::Resolution resolution)
        : m_burning(burning), m_map(map), m_pens(pens), m_resolution(resolution)
    {}

    void burn(const drawing::FlatItem& item)
    {
        std::visit([&](const auto& shape) { burn(shape, item.style); }, item.shape);
    }

private:
    int penOf(const drawing::FlatStyle& style)
    {
        return penPixels(m_pens.width(m_colors.indexOf(style)), m_resolution);
    }

    template <class Points, class Map> void stroke(const Points& points, bool closed, int width, const Map& toPixel)
    {
        for (const Vector2& p : points)
            m_burning.add(toPixel(p));
        m_burning.stroke(closed, width);
    }

    template <class Map>
    void area(const std::vector<std::vector<Vector2>>& contours, imaging::FillRule rule, const Map& toPixel)
    {
        std::vector<std::vector<Position>> pixels(contours.size());
        for (std::size_t i = 0; i < contours.size(); ++i)
            std::transform(contours[i].begin(), contours[i].end(), std::back_inserter(pixels[i]), toPixel);
        m_burning.area(std::move(pixels), rule);
    }

    void burn(const drawing::FlatPath& path, const drawing::FlatStyle& style)
    {
        const auto toPixel = [this](const Vector2& p) { return m_map.pixel(p); };
        const int width = penOf(style);
        if (drawing::periodOf(style.dashes) < m_map.distance(finestPeriod) || path.points.size() < 2) {
            stroke(path.points, path.closed, width, toPixel);
            return;
        }
        std::vector<Vector2> points = path.points;
        if (path.closed)
            points.push_back(points.front());
        drawing::drawDashed(points, style.dashes, mostDashes, [&](const Vector2& from, const Vector2& to) {
            stroke(std::array{from, to}, false, width, toPixel);
        });
    }

    void burn(const drawing::FlatArea& flat, const drawing::FlatStyle&)
    {
        area(flat.contours, imaging::FillRule::evenOdd, [this](const Vector2& p) { return m_map.pixel(p); });
    }

    void burn(const drawing::FlatText& text, const drawing::FlatStyle& style)
    {
        const int width = penOf(style);
        for (const drawing::PlacedGlyph& placed : text.glyphs) {
            const auto toPixel = [&](const Vector2& p) {
                return m_map.pixel(placed.origin + text.across * p.x + text.up * p.y);
            };
            if (!placed.glyph->contours.empty())
                area(placed.glyph->contours, imaging::FillRule::nonZero, toPixel);
            for (const std::vector<Vector2>& line : placed.glyph->strokes)
                stroke(line, false, width, toPixel);
        }
        for (const auto& rule : text.rules)
            stroke(rule, false, width, [this](const Vector2& p) { return m_map.pixel(p); });
    }

    // A raster is nothing to be made a raster of.
    void burn(const drawing::FlatImage&, const drawing::FlatStyle&) {}

    Burning& m_burning;
    const PixelMap& m_map;
    const PenTable& m_pens;
    imaging::Resolution m_resolution;
    PenColors m_colors;
};

drawing::FlattenOptions optionsFor(const PixelMap& map, imaging::Size size, drawing::FontSource* fonts)
{
    constexpr double stray = 0.25; // pixels by which curves may be off: half of what would show
    drawing::FlattenOptions options;
    options.tolerance = map.distance(stray);
    options.window = map.window(size, widestPen);
    const drawing::Extents sheet = map.window(size, 0);
    options.viewHeight = sheet.high.y - sheet.low.y;
    options.hatchLimit = 5'000'000;
    options.fonts = fonts;
    return options;
}

// What the request answers.
std::int32_t burnDrawing(const drawing::Document& document, const PixelMap& map, const PenTable& pens,
                         const imaging::Region* region, drawing::FontSource* fonts, imaging::RasterFile& raster)
{
    Burning burning(raster.bitmap, region);
    Burner burner(burning, map, pens, raster.info.resolution);
    const bool whole =
        drawing::flattenBlock(document, document.modelSpace(), optionsFor(map, raster.bitmap.size(), fonts),
                              [&](const drawing::FlatItem& item) { burner.burn(item); });
    burning.paint();
    if (!burning.touched())
        return NothingOverRaster;
    return whole ? 0 : SomethingLeftOut;
}

} // namespace

void rasterizeFile(Rasterize& request, Fonts* fonts, CommitGate& gate)
{
    const PenTable pens = readPenTable(request.penFile);
    imaging::RasterFile raster;
    drawing::Document document;
    imaging::inTurns(2, [&](int file) { // at the same time
        if (file == 0) {
            raster = imaging::readRaster(request.rasterFile);
        } else {
            document = drawing::readDrawing(request.drawingFile);
        }
    });
    const PixelMap map(request.corner1, request.corner2, raster.bitmap.size());
    const imaging::Region* region = request.region ? &*request.region : nullptr;
    const auto typefaces = fonts ? fonts->open(request.fontsDir) : nullptr;
    request.result = burnDrawing(document, map, pens, region, typefaces.get(), raster);
    if (request.result != NothingOverRaster)
        writeBack(request.rasterFile, raster, gate);
}

} // namespace worker
