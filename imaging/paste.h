#pragma once

#include "imaging/bitmap.h"

namespace imaging {

enum class PasteMode
{
    transparent, // Adds the source's ink; its paper lets the target show.
    opaque       // Replaces what lies under the source.
};

/// Lays the source on the target with its top left pixel at the given point, which may lie outside the target; what
/// falls outside is left out. Source and target are two bitmaps.
void paste(Bitmap& target, const Bitmap& source, Point at, PasteMode mode);

} // namespace imaging
