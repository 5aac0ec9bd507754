#pragma once

#include "platform/platform.h"

class CAcraster;

/// Has the user change the width and the colour of the pen or the line, in a dialog at a point of the screen, and makes
/// the colour that of the raster. False, with all as it was, if he gave up.
bool AskPenAttributes(CAcraster& raster, CPoint screenPoint, int& width, COLORREF& color);
