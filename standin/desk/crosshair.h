#pragma once

#include <windows.h>

#include "standin/desk/canvas.h"
#include "standin/desk/editor.h"
#include "standin/desk/palette.h"
#include "standin/desk/view_transform.h"

namespace desk {

/// The drawing cursor: a cross with the pick box in its middle, dark with a light rim, to be seen on any ground.
/// The caller destroys it.
HCURSOR makeCrosshair();

/// The program's icon; the caller destroys it.
HICON makeProgramIcon(int side);

/// A rubber line, circle, rectangle or selection window.
void drawRubber(Canvas& canvas, const ViewTransform& view, const Palette& palette, const Editor::Overlay& overlay);

} // namespace desk
