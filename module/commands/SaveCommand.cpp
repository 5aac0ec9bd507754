#include "module/commands/SaveCommand.h"

#include "module/raster/CommandPattern.h"
#include "module/raster/SaveUnderChosenName.h"
#include "module/resources/resource.h"

void SaveAsCommand()
{
    WithCurrentRaster([](CAcraster& raster, const CCurentRaster& current) {
        const bool selectionOnly =
            raster.HasSelection() && AfxMessageBox(IDS_SAVE_SELECTION, MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
        if (current.GetIfCurrent())
            SaveUnderChosenName(raster, selectionOnly ? &raster.GetRegion() : nullptr);
    });
}
