#pragma once

/// Creates an empty raster file and places it. Whatever comes of it, no raster is current afterwards, unless the dialog
/// was cancelled.
void NewRasterCommand();
