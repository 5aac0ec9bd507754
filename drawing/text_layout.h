#pragma once

#include <optional>
#include <vector>

#include "drawing/entities.h"
#include "drawing/flatten.h"
#include "drawing/rich_text.h"

namespace drawing {

/// Where a text stands. A point (x, y) of the text's plane lies at origin + across x + up y.
struct TextFrame
{
    Vector2 origin; // where the alignment puts the text
    Vector2 across{1, 0};
    Vector2 up{0, 1};
    HorizontalAlignment horizontal = HorizontalAlignment::Left;
    VerticalAlignment vertical = VerticalAlignment::Baseline;
    double fitLength = 0;      // for Aligned and Fit: what the line is stretched to, in the plane; 0: not stretched
    double columnWidth = 0;    // lines are broken at blanks to keep it; 0: never
    double spacingFactor = 1;  // on the distance of baselines, 5/3 of the height
    double exactSpacingOf = 0; // the height that the distance goes by; 0: the largest in the lower line
};

struct LaidText
{
    FlatText text;
    std::optional<TextColor> color; // nothing: the entity's
};

/// The text's glyphs, line by line; a new piece begins where size, lean or colour change. Without a font source, and
/// for fonts that it lacks, the stroke font is used.
std::vector<LaidText> layOut(const RichText& text, const TextFrame& frame, FontSource* fonts);

} // namespace drawing
