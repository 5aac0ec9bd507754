// Commands that change the current raster's image and commit it.
#pragma once

void InvertCommand();
void FlipHorizontalCommand();
void FlipVerticalCommand();
/// Nothing without a selection that has pixels of the image; afterwards nothing is selected.
void CropCommand();
