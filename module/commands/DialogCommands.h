// Commands on the current raster that ask by a dialog.
#pragma once

void DespeckleCommand();
void FillCommand();
void ChangeRasterCommand();
void PropertiesCommand();
