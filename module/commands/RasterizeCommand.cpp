#include "module/commands/RasterizeCommand.h"

#include "module/dialogs/CDRasterize.h"
#include "module/raster/CommandPattern.h"

namespace {

// False if the user gave up. What the host refuses outright it would refuse again and again.
bool AskForEntities()
{
    for (;;) {
        ads_name set;
        const int result = acedSSGet(nullptr, nullptr, nullptr, nullptr, set);
        if (result == RTNORM)
            acedSSFree(set);
        if (result == RTNORM || result == RTCAN || result == RTREJ)
            return result == RTNORM;
    }
}

// What the user selected, but for the raster itself.
AcDbObjectIdArray SelectedEntities(const CAcraster& raster)
{
    AcDbObjectIdArray entities(0, 8);
    acedGetCurrentSelectionSet(entities);
    ads_name name;
    raster.GetEntityName(name);
    AcDbObjectId own;
    if (acdbGetObjectId(own, name) == Acad::eOk)
        entities.remove(own);
    return entities;
}

void Rasterize(CAcraster& raster)
{
    raster.Suspend(true);
    const bool selected = AskForEntities();
    raster.Suspend(false);
    if (!selected || !raster.IsOpen())
        return;
    const AcDbObjectIdArray entities = SelectedEntities(raster);
    if (entities.isEmpty())
        return;
    CDRasterize dialog;
    dialog.m_bOnlySelection = raster.HasSelection();
    if (dialog.DoModal() != IDOK)
        return;
    const CWaitCursor wait;
    raster.Rasterize(entities, dialog.Pens());
}

} // namespace

void RasterizeCommand()
{
    WithCurrentRaster([](CAcraster& raster) {
        Rasterize(raster);
        // Whatever came of it, even of a selection that was cancelled.
        raster.Reload(true);
    });
}
