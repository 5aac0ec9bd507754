#pragma once

#include "standin/afx/afx.h"

namespace desk {

/// The desk's own fonts: the first of a list of good families that is installed.
struct UiFonts
{
    UiFonts();

    /// The pixels of this screen for a length in pixels of a screen with 96 to the inch.
    int scaled(int length) const { return MulDiv(length, dotsPerInch, USER_DEFAULT_SCREEN_DPI); }

    CFont text;              // labels, status line
    CFont monospace;         // command line
    int monospaceHeight = 0; // of a line, in pixels
    int dotsPerInch = USER_DEFAULT_SCREEN_DPI;
};

} // namespace desk
