#pragma once

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
    bool closed = false; // a line runs from the last point back to the first, which is not repeated
};

/// An area without outline: a point lies in it if a ray from it crosses the contours an odd number of times. Contours
/// close by themselves; the first point is not repeated.
struct FlatArea
{
    std::vector<std::vector<Vector2>> contours;
};

/// Text to be drawn in the frame of `direction` and `up`.
struct FlatText
{
    Vector2 position;        // where the alignment puts the text
    Vector2 direction{1, 0}; // along the baseline, length 1
    Vector2 up{0, 1};  // square to the direction, towards the top of capitals; mirrored text has it on the other side
    double height = 0; // of capitals
    double widthFactor = 1;
    double oblique = 0; // lean to the right, in degrees
    HorizontalAlignment horizontal = HorizontalAlignment::Left;
    VerticalAlignment vertical = VerticalAlignment::Baseline;
    double fitLength = 0;           // for Aligned and Fit: the length between the two points; 0 otherwise
    double wrapWidth = 0;           // lines longer than this are to be broken; 0: never
    double lineSpacing = 0;         // from baseline to baseline
    std::vector<std::string> lines; // UTF-8
    std::string font;               // font file of the text style
    double rotation() const;        // of the direction, radians
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
    double viewHeight = 0;          // of the view in drawing units, for points that are sized by it; 0: they are dots
    bool hiddenToo = false;         // pieces on layers that are off or frozen and invisible entities also come
    int depth = 32;                 // of block references in block references; what lies deeper is left out
    std::size_t limit = 50'000'000; // of points in all; when it is passed the rest is left out
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

/// The rectangle around all that a block shows, text measured as 0.9 heights a character; nothing if the block is
/// empty.
std::optional<Extents> extentsOf(const Document& document, const Block& block);
std::optional<Extents> extentsOf(const Document& document, const Entity& entity);

} // namespace drawing
