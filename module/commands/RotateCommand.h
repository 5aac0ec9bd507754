// ORVO_ROTATE: asks how to turn the current raster, then turns it or starts the tool that does.
#pragma once

void RotateCommand();
