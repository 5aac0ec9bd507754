#pragma once

#include "platform/platform.h"

class CAcraster;

/// Asks for a file and its type and saves the raster there, or what `region` has of it. False if the user gave up or
/// the saving failed, of which the command line then tells the reason.
bool SaveUnderChosenName(CAcraster& raster, CRgn* region);
