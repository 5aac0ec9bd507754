#pragma once

/// Asks for a name and a format and saves the current raster, or its selection, there. The drawing stays as it is.
void SaveAsCommand();
