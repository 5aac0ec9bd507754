#pragma once

#include "standin/desk/canvas.h"

namespace desk {

/// The colours of the drawing view.
struct Palette
{
    Color ground;
    Color foreground; // colour 7
    Color highlight;  // what is selected
    Color band;       // rubber bands
    Color windowBand, crossingBand;

    static Palette light();
    static Palette dark();

    /// The colour of an entity on this ground. A colour that would hardly stand out moves towards the foreground.
    Color shown(Color color, bool inForeground) const;
};

} // namespace desk
