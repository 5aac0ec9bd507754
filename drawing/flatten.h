#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "drawing/color_index.h"
#include "drawing/dashes.h"
#include "drawing/document.h"
#include "drawing/geometry.h"
#include "drawing/glyphs.h"

namespace drawing {

/// How a flattened piece looks, with ByLayer and ByBlock resolved.
struct FlatStyle
{
    int colorIndex = 7;  // 1 to 255
    Rgb rgb;             // of the index, or the entity's true colour
    int lineweight = -3; // 1/100 mm; -3: the default
    std::string layer;
    std::string linetype;
    double linetypeScale = 1;
    DashPattern dashes; // of the linetype, in drawing units with both scales; empty for a continuous line
};

/// A run of straight lines, in drawing units; a single point stands for a POINT entity.
struct FlatPath
{
    std::vector<Vector2> points;
    bool closed = false;  // a line runs from the last point back to the first, which is not repeated
    bool endless = false; // runs on beyond the window that it is cut to: no part of the extents
};

/// An area without outline: a point lies in it if a ray from it crosses the contours an odd number of times. Contours
/// close by themselves; the first point is not repeated.
struct FlatArea
{
    std::vector<std::vector<Vector2>> contours;
};

struct PlacedGlyph
{
    const Glyph* glyph = nullptr; // belongs to its font source, or to the stroke font
    Vector2 origin;
};

/// A piece of text in one size and lean, laid out. A glyph's point g lies at origin + across g.x + up g.y.
struct FlatText
{
    Vector2 across;    // one capital height along the baseline, with the text's width factor
    Vector2 up;        // to the top of capitals; leans with the text
    double height = 0; // of capitals, square to the baseline
    std::vector<PlacedGlyph> glyphs;
    std::vector<std::array<Vector2, 4>> lineBoxes; // around each line, descenders included: where the text can be hit
    std::vector<std::array<Vector2, 2>>
        rules; // lines under, over and through it, bars of fractions: drawn with the pen
};

/// A raster image; `u` and `v` are the edges of one pixel in the drawing's plane.
struct FlatImage
{
    const Image* image = nullptr;
    Vector2 position;
    Vector2 u;
    Vector2 v;
};

using FlatShape = std::variant<FlatPath, FlatArea, FlatText, FlatImage>;

struct FlatItem
{
    Handle entity = 0; // of the block's own list that the piece belongs to, also from inside block references
    FlatStyle style;
    FlatShape shape;
    std::optional<Extents> clip; // nothing outside it is to be seen; for what a viewport of a layout shows
};

struct FlattenOptions
{
    double tolerance =
        0.01; // how far, at most, straight lines may stray from a curve; drawing units; 0: a fixed fineness
    // What can be seen of the drawing: endless lines are cut to it, and left out without it.
    std::optional<Extents> window;
    double viewHeight = 0;            // of the view in drawing units, for points that are sized by it; 0: they are dots
    bool hiddenToo = false;           // pieces on layers that are off or frozen and invisible entities also come
    int depth = 32;                   // of block references in block references; what lies deeper is left out
    std::size_t limit = 50'000'000;   // of points in all; when it is passed the rest is left out
    std::size_t hatchLimit = 200'000; // of dashes of one hatch's pattern; a hatch that has more is left out
    FontSource* fonts = nullptr;      // must outlive what is flattened; null: all text in the stroke font
};

/// Called with each piece, the lowest first.
using FlatSink = std::function<void(FlatItem&&)>;

/// All of a block, such as the model space, in draw order. Returns false if something was left out by the limits or
/// because a block holds itself.
bool flattenBlock(const Document& document, const Block& block, const FlattenOptions& options, const FlatSink& sink);
/// One entity of the model space.
bool flattenEntity(const Document& document, const Entity& entity, const FlattenOptions& options, const FlatSink& sink);

/// True if the entity's layer is on and thawed and the entity itself visible.
bool isShown(const Document& document, const Entity& entity);

/// The rectangle around all that a block shows, text measured in the stroke font; nothing if the block is empty.
std::optional<Extents> extentsOf(const Document& document, const Block& block);
std::optional<Extents> extentsOf(const Document& document, const Entity& entity);

} // namespace drawing
