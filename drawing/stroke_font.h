#pragma once

#include "drawing/glyphs.h"

namespace drawing {

/// The glyph of the built-in stroke font, which needs no file: Latin, Greek and Cyrillic letters and the signs of
/// drawings. A character that it lacks is a box, the same for all. Held for ever.
const Glyph& strokeGlyph(char32_t character);

} // namespace drawing
