#pragma once

#include <array>
#include <vector>

#include "drawing/flatten.h"
#include "standin/desk/glyph_outlines.h"
#include "standin/desk/vec2.h"

namespace desk {

/// A text of the drawing as placed glyphs. A glyph point g lies at origin + across g.x + up g.y.
struct PlacedGlyph
{
    const Glyph* glyph = nullptr; // belongs to its typeface
    Vec2 origin;
};

struct PlacedText
{
    Vec2 across; // one capital height along the baseline, in drawing units
    Vec2 up;
    double height = 0;
    std::vector<PlacedGlyph> glyphs;
    std::vector<std::array<Vec2, 4>> lineBoxes; // around each line, for picking and for texts too small to read
};

PlacedText layOut(const drawing::FlatText& text, Typeface& typeface);

} // namespace desk
