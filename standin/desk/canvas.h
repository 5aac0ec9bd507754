#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/geometry.h"
#include "standin/desk/vec2.h"

namespace desk {

/// 0x00RRGGBB, the order of a 32-bit DIB's pixels.
using Color = std::uint32_t;

/// Which points a polygon's contours enclose: those that they wind around, or those that a ray from outside reaches
/// after an odd number of crossings.
enum class FillRule
{
    NonZero,
    EvenOdd,
};

/// a at share 0, b at share 255.
Color mix(Color a, Color b, unsigned share);

/// Smooth drawing into 32-bit pixels that belong to somebody else (a DIB section as a rule).
/// Coordinates are view pixels, a pixel's centre at its integer coordinates. Everything is cut off at the clip
/// rectangle, and coordinates may lie as far outside it as doubles reach.
class Canvas
{
public:
    /// stride counts pixels from row to row. The pixels must outlive the canvas.
    Canvas(std::uint32_t* pixels, imaging::Size size, std::ptrdiff_t stride);

    imaging::Rect clip() const { return m_clip; }
    /// Cut to the canvas.
    void setClip(const imaging::Rect& clip) { m_clip = clip.intersect(imaging::Rect::of(m_size)); }

    void fill(Color color);
    /// One pixel wide. Upright and level lines lie sharply on one row or column.
    void line(Vec2 a, Vec2 b, Color color);
    /// A dot of 3 x 3 pixels.
    void point(Vec2 at, Color color);
    /// Contours close themselves.
    void polygon(std::span<const std::vector<Vec2>> contours, Color color, unsigned opacity = 255,
                 FillRule rule = FillRule::NonZero);
    /// coverage: one byte per pixel of `area`, row by row without gaps; 255 gives the full colour.
    void blend(const imaging::Rect& area, std::span<const std::uint8_t> coverage, Color color);

private:
    struct Crossing
    {
        double x;
        int winding;
    };

    std::uint32_t& at(int x, int y) { return m_pixels[y * m_stride + x]; }
    void blendPixel(int x, int y, Color color, unsigned share);
    void addCoverage(std::vector<float>& row, double from, double to) const;
    void crossingsAt(std::span<const std::vector<Vec2>> contours, double y, std::vector<Crossing>& crossings) const;

    std::uint32_t* m_pixels;
    imaging::Size m_size;
    std::ptrdiff_t m_stride;
    imaging::Rect m_clip;
};

} // namespace desk
