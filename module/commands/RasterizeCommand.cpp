#include "module/commands/RasterizeCommand.h"

#include "module/base/CArxApp.h"
#include "module/dialogs/CDRasterize.h"
#include "module/raster/CommandPattern.h"

namespace {

// False if the user gave up. Where no drawing is open, nobody could ever answer.
bool AskForEntities()
{
    while (acDocManagerPtr()->curDocument()) {
        ads_name set;
        const int result = acedSSGet(nullptr, nullptr, nullptr, nullptr, set);
        if (result == RTNORM)
            acedSSFree(set);
        if (result == RTNORM || result == RTCAN)
            return result == RTNORM;
    }
    return false;
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

// The host may end the raster whenever it has the user answer.
void Rasterize(const CCurentRaster& current)
{
    current.m_pRaster->Suspend(true);
    const bool selected = AskForEntities();
    CAcraster* raster = current.GetIfCurrent();
    if (!raster) {
        g_pArxApp->m_bSuspended = false;
        return;
    }
    raster->Suspend(false);
    if (!selected || !raster->IsOpen())
        return;
    const AcDbObjectIdArray entities = SelectedEntities(*raster);
    if (entities.isEmpty())
        return;
    CDRasterize dialog;
    dialog.m_bOnlySelection = raster->HasSelection();
    if (dialog.DoModal() != IDOK || !current.GetIfCurrent())
        return;
    const CWaitCursor wait;
    raster->Rasterize(entities, dialog.Pens());
}

} // namespace

void RasterizeCommand()
{
    WithCurrentRaster([](CAcraster&, const CCurentRaster& current) {
        try {
            Rasterize(current);
        } catch (CException* exception) {
            // The pen table could not be written, for instance.
            exception->ReportError();
            exception->Delete();
        }
        // Whatever came of it, even of a selection that was cancelled.
        if (CAcraster* raster = current.GetIfCurrent())
            raster->Reload(true);
    });
}
