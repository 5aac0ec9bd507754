#pragma once

#include "platform/platform.h"

class CCurentRaster;

/// Has the user change the width and the colour of the pen or the line, in a dialog at a point of the screen, and makes
/// the colour that of the raster, if that is still there. False, with both as they were, if he gave up.
bool AskPenAttributes(const CCurentRaster& current, CPoint screenPoint, int& width, COLORREF& color);
