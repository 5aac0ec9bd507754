// Glyphs, and where they come from.
#pragma once

#include <string>
#include <vector>

#include "drawing/geometry.h"

namespace drawing {

/// A character's shape in units of the font's capital height, baseline at y = 0, y up.
struct Glyph
{
    std::vector<std::vector<Vector2>> contours; // filled, closing themselves, by the nonzero winding rule
    std::vector<std::vector<Vector2>> strokes;  // open lines, drawn with the entity's pen; one point is a dot
    double advance = 0;                         // to the next character's origin
};

/// The glyphs of one font in one weight and slant.
class Typeface
{
public:
    virtual ~Typeface() = default;
    /// Null if the font lacks the character. Held as long as the typeface.
    virtual const Glyph* find(char32_t character) = 0;
};

/// What a text asks for.
struct FontRequest
{
    std::string name;      // UTF-8: a family ("Arial"), or a file as a text style names it ("arial.ttf", "txt")
    bool isFamily = false; // the name is a family's
    bool bold = false;     // of a family; a file says it itself
    bool italic = false;
    bool operator==(const FontRequest&) const = default;
};

/// Finds typefaces; holds them as long as it lives.
class FontSource
{
public:
    virtual ~FontSource() = default;
    /// Null if there is none: the text is shown with the stroke font.
    virtual Typeface* find(const FontRequest& request) = 0;
};

} // namespace drawing
