#pragma once

#include "platform/platform.h"

/// Shows the raster menu at a point of the toolbar, with a CRasMenuTool that carries out what is chosen.
void ShowRasterMenu(CWnd& toolbar, CPoint corner);
