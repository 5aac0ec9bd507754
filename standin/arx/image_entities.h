// The image entities that show a definition.
#pragma once

#include "drawing/document.h"

class AcDbDatabase;

namespace standin {

/// What of an image stays in the drawing when its number of pixels becomes another.
enum class Keep
{
    pixelSize,
    edges
};

/// Gives every image of the definition this many pixels. A clip boundary that was the whole image stays the whole
/// image; another one stays on its pixels or, with the edges kept, at its place in the drawing.
void resizeImageEntities(AcDbDatabase& database, drawing::Handle definition, drawing::Vector2 pixels, Keep keep);

} // namespace standin
