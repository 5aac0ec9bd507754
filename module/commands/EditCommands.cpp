#include "module/commands/EditCommands.h"

#include "module/raster/CommandPattern.h"

void InvertCommand()
{
    EditCurrentRaster([](CAcraster& raster) { raster.Invert(); });
}

void FlipHorizontalCommand()
{
    EditCurrentRaster([](CAcraster& raster) { raster.FlipHorizontal(); });
}

void FlipVerticalCommand()
{
    EditCurrentRaster([](CAcraster& raster) { raster.FlipVertical(); });
}

void CropCommand()
{
    WithCurrentRaster([](CAcraster& raster) {
        if (!raster.HasSelectedPixels())
            return;
        const CWaitCursor wait;
        raster.Crop();
        raster.Reload(true);
        // Once more, now that the drawing has the new size.
        raster.ResetRegion();
    });
}
