#pragma once

/// Burns entities that the user selects into the current raster.
void RasterizeCommand();
