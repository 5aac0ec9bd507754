// The current raster's selection in view space, kept from tick to tick: building it is the costly part of a tick.
#pragma once

#include "platform/platform.h"

class CAcraster;

/// Rebuilds the region only when its box in the view or the size of its data tell of a change; a view that moved by
/// less than 3 pixels is answered with the old region once more. The raster is locked. The region stays this file's.
CRgn& UpdateSelectionInView(CAcraster& raster);

void ForgetSelectionInView();

/// How often the selection was converted since the module was loaded.
unsigned SelectionConversions();
