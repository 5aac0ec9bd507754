#pragma once

/// Places an existing raster file of 1 bit. Only a cancelled file dialog leaves the raster current that was so before.
void InsertRasterCommand();
