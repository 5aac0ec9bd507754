#pragma once

#include "drawing/glyphs.h"

namespace drawing {

/// The glyph of the built-in stroke font, which needs no file. A character that it lacks is a box. Held for ever.
const Glyph& strokeGlyph(char32_t character);

/// True if the stroke font has the character.
bool hasStrokeGlyph(char32_t character);

} // namespace drawing
