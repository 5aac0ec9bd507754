#include "standin/desk/scene_painter.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "drawing/text_layout.h"

namespace desk {
namespace {

constexpr std::size_t maximumDashes = 4000;
constexpr unsigned opaque = 255;
// A dash pattern finer than this many pixels is drawn as a continuous line.
constexpr double finestPattern = 3;
// Texts with lower capitals than this many pixels are drawn as bars.
constexpr double smallestReadable = 2.5;

Box viewBox(const Box& drawing, const ViewTransform& view)
{
    Box box;
    box.add(view.toView(drawing.low));
    box.add(view.toView(drawing.high));
    return box;
}

bool showsIn(const Box& box, const imaging::Rect& clip)
{
    constexpr double margin = 3;
    return !box.empty() && box.low.x <= clip.right + margin && box.high.x >= clip.left - margin &&
           box.low.y <= clip.bottom + margin && box.high.y >= clip.top - margin;
}

std::vector<Vec2> toView(std::span<const Vec2> points, const ViewTransform& view)
{
    std::vector<Vec2> converted;
    converted.reserve(points.size());
    for (const Vec2 point : points)
        converted.push_back(view.toView(point));
    return converted;
}

void outline(Canvas& canvas, const std::vector<Vec2>& corners, Color color)
{
    for (std::size_t i = 0; i < corners.size(); ++i)
        canvas.line(corners[i], corners[(i + 1) % corners.size()], color);
}

void grip(Canvas& canvas, Vec2 at, Color color)
{
    const double half = 3.5;
    const Vec2 centre{std::round(at.x), std::round(at.y)};
    const std::vector<Vec2> square = {centre + Vec2{-half, -half}, centre + Vec2{half, -half},
                                      centre + Vec2{half, half}, centre + Vec2{-half, half}};
    canvas.polygon(std::span(&square, 1), color);
}

// What is gathered of a selected entity: an entity of one piece gets grips at the piece's ends, one of several pieces a
// single grip in its middle.
struct SelectedEntity
{
    Box bounds;
    std::vector<Vec2> ends; // view pixels
};

} // namespace

void ScenePainter::paint(Canvas& canvas, const Scene& scene, const ViewTransform& view, const Palette& palette,
                         bool imageFrames)
{
    canvas.fill(palette.ground);
    std::set<drawing::Handle> images;
    for (const SceneItem& item : scene.items()) {
        if (const auto* image = std::get_if<SceneImage>(&item.shape)) {
            images.insert(image->image);
            if (showsIn(viewBox(item.bounds, view), canvas.clip()))
                paintImage(canvas, item, view, palette, imageFrames);
            continue;
        }
        if (!showsIn(viewBox(item.bounds, view), canvas.clip()))
            continue;
        const Color color = palette.shown(item.color, item.inForeground);
        if (const auto* path = std::get_if<ScenePath>(&item.shape)) {
            paintPath(canvas, *path, view, color);
        } else if (const auto* area = std::get_if<SceneArea>(&item.shape)) {
            std::vector<std::vector<Vec2>> contours;
            for (const auto& contour : area->contours)
                contours.push_back(toView(contour, view));
            canvas.polygon(contours, color, opaque, FillRule::EvenOdd);
        } else {
            paintText(canvas, std::get<drawing::FlatText>(item.shape), view, color);
        }
    }
    std::erase_if(m_coverage, [&](const auto& entry) { return !images.contains(entry.first); });
}

void ScenePainter::paintPath(Canvas& canvas, const ScenePath& path, const ViewTransform& view, Color color) const
{
    const std::vector<Vec2> points = toView(path.points, view);
    if (points.size() == 1) {
        canvas.point(points.front(), color);
        return;
    }
    drawing::DashPattern dashes = path.dashes;
    for (double& element : dashes)
        element /= view.unitsPerPixel();
    if (drawing::periodOf(dashes) < finestPattern)
        dashes.clear();
    drawing::drawDashed(points, dashes, maximumDashes, [&](Vec2 a, Vec2 b) { canvas.line(a, b, color); });
}

void ScenePainter::paintText(Canvas& canvas, const drawing::FlatText& text, const ViewTransform& view,
                             Color color) const
{
    if (text.height / view.unitsPerPixel() < smallestReadable) {
        for (const auto& line : text.lineBoxes) {
            const std::vector<Vec2> bar = toView(line, view);
            canvas.polygon(std::span(&bar, 1), color, 90);
        }
        return;
    }
    std::vector<std::vector<Vec2>> contours;
    for (const drawing::PlacedGlyph& placed : text.glyphs) {
        const auto seen = [&](Vec2 point) {
            return view.toView(placed.origin + text.across * point.x + text.up * point.y);
        };
        contours.clear();
        for (const auto& contour : placed.glyph->contours)
            std::transform(contour.begin(), contour.end(), std::back_inserter(contours.emplace_back()), seen);
        canvas.polygon(contours, color);
        for (const auto& stroke : placed.glyph->strokes) {
            if (stroke.size() == 1)
                canvas.line(seen(stroke[0]), seen(stroke[0]), color);
            for (std::size_t i = 1; i < stroke.size(); ++i)
                canvas.line(seen(stroke[i - 1]), seen(stroke[i]), color);
        }
    }
    for (const auto& [from, to] : text.rules)
        canvas.line(view.toView(from), view.toView(to), color);
}

void ScenePainter::paintImage(Canvas& canvas, const SceneItem& item, const ViewTransform& view, const Palette& palette,
                              bool imageFrames)
{
    const auto& image = std::get<SceneImage>(item.shape);
    const Color color = palette.shown(item.color, item.inForeground);
    const auto pixels = m_pixels(image.image);
    if (!pixels) {
        paintMissing(canvas, image, view, color);
    } else if (image.shown) {
        paintRaster(canvas, image, pixels, view, palette, color);
    }
    if (imageFrames || !pixels || !image.shown)
        outline(canvas, toView(image.outline(), view), mix(palette.ground, color, 120));
}

void ScenePainter::paintRaster(Canvas& canvas, const SceneImage& image,
                               const std::shared_ptr<const imaging::Bitmap>& pixels, const ViewTransform& view,
                               const Palette& palette, Color color)
{
    const std::vector<Vec2> frame = toView(image.outline(), view);
    if (!image.transparent)
        canvas.polygon(std::span(&frame, 1), palette.ground);
    RasterCoverage& cached = m_coverage[image.image];
    const auto& coverage = cached.update(image, pixels, view);
    m_sampled += cached.sampled();
    const Color ink = mix(color, palette.ground, static_cast<unsigned>(image.fade * 255 / 100));
    const imaging::Rect client = imaging::Rect::of(view.client());
    if (image.clip.empty()) {
        canvas.blend(client, coverage, ink);
        return;
    }
    // What lies outside the clip is masked out: the mask is the clip polygon's own coverage.
    std::vector<std::uint32_t> maskPixels(coverage.size(), 0);
    Canvas mask(maskPixels.data(), client.size(), client.width());
    mask.setClip(canvas.clip());
    mask.polygon(std::span(&frame, 1), 0xFF);
    std::vector<std::uint8_t> masked(coverage.size());
    for (std::size_t i = 0; i < masked.size(); ++i)
        masked[i] = static_cast<std::uint8_t>(coverage[i] * (maskPixels[i] & 0xFF) / 255);
    canvas.blend(client, masked, ink);
}

// The path is written across the middle of the image, as large as fits.
void ScenePainter::paintMissing(Canvas& canvas, const SceneImage& image, const ViewTransform& view, Color color)
{
    const Vec2 right = image.placement.right(), up = image.placement.up();
    const double width = std::hypot(right.x, right.y), height = std::hypot(up.x, up.y);
    if (!(width > 0 && height > 0) || image.file.empty())
        return;
    drawing::TextFrame frame;
    frame.origin = image.placement.position + right * 0.5 + up * 0.5;
    frame.across = right * (1 / width);
    frame.up = up * (1 / height);
    frame.horizontal = drawing::HorizontalAlignment::Middle;
    drawing::TextFormat format;
    format.height = std::min(height / 8, width / (1.2 * double(image.file.size())));
    format.font = {"Arial", true};
    for (const auto& laid : drawing::layOut(drawing::literalText(image.file, format), frame, &m_fonts))
        paintText(canvas, laid.text, view, color);
}

void ScenePainter::paintSelected(Canvas& canvas, const Scene& scene, const ViewTransform& view, const Palette& palette,
                                 const std::set<drawing::Handle>& selected)
{
    const drawing::DashPattern dashes = {5, -3};
    std::map<drawing::Handle, SelectedEntity> entities;
    for (const SceneItem& item : scene.items()) {
        if (!selected.contains(item.entity))
            continue;
        SelectedEntity& entity = entities[item.entity];
        entity.bounds.add(item.bounds);
        const bool shows = showsIn(viewBox(item.bounds, view), canvas.clip());
        for (const PickPiece& piece : item.pickShape()) {
            for (const auto& contour : piece.contours) {
                std::vector<Vec2> points = toView(contour, view);
                if (points.empty())
                    continue;
                if (piece.filled)
                    points.push_back(points.front());
                entity.ends.push_back(points.front());
                entity.ends.push_back(points.back());
                if (shows) {
                    drawing::drawDashed(points, dashes, maximumDashes,
                                        [&](Vec2 a, Vec2 b) { canvas.line(a, b, palette.highlight); });
                }
            }
        }
    }
    for (const auto& [handle, entity] : entities) {
        if (entity.ends.size() > 2) {
            grip(canvas, view.toView(entity.bounds.centre()), palette.highlight);
            continue;
        }
        for (const Vec2 end : entity.ends)
            grip(canvas, end, palette.highlight);
    }
}

std::int64_t ScenePainter::takeSampledPixels()
{
    return std::exchange(m_sampled, 0);
}

} // namespace desk
