#include "drawing/stroke_font.h"

namespace drawing {

const Glyph& strokeGlyph(char32_t character)
{
    static const Glyph blank{{}, {}, 0.7};
    static const Glyph box{{}, {{{0.1, 0}, {0.7, 0}, {0.7, 1}, {0.1, 1}, {0.1, 0}}}, 0.9};
    return character == U' ' ? blank : box;
}

} // namespace drawing
