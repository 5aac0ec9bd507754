// The image entities that show a definition.
#pragma once

#include "drawing/document.h"

class AcDbDatabase;

namespace standin {
/// Gives every image of the definition this many pixels. A clip boundary that was the whole image stays the whole
/// image.
void resizeImageEntities(AcDbDatabase& database, drawing::Handle definition, drawing::Vector2 pixels);
} // namespace standin
