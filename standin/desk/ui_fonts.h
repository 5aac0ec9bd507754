#pragma once

#include "standin/afx/afx.h"

namespace desk {

/// The desk's own fonts: the first of a list of good families that is installed.
struct UiFonts
{
    UiFonts();

    CFont text;              // labels, status line
    CFont monospace;         // command line
    int monospaceHeight = 0; // of a line, in pixels
};

} // namespace desk
