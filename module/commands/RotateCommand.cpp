#include "module/commands/RotateCommand.h"

#include "module/dialogs/CDrotate.h"
#include "module/raster/CommandPattern.h"
#include "module/tools/RotateStart.h"

namespace {

void TurnWhole(CAcraster& raster, int mode)
{
    const CWaitCursor wait;
    raster.Turn(mode != CDrotate::QuarterCounterClockwise);
    if (mode == CDrotate::HalfTurn)
        raster.Turn(true);
    raster.Reload(true);
    // Once more, now that the drawing has the new size.
    raster.ResetRegion();
}

} // namespace

void RotateCommand()
{
    WithCurrentRaster([](CAcraster& raster, const CCurentRaster& current) {
        CDrotate dialog;
        if (dialog.DoModal() != IDOK || !current.GetIfCurrent())
            return;
        if (dialog.m_nMode == CDrotate::Free) {
            const CWaitCursor wait;
            StartRotateToolLater(dialog.m_bOnlySelection ? RotateFreeSelection : RotateFreeWhole);
        } else if (dialog.m_bOnlySelection) {
            StartRotateToolLater(dialog.m_nMode);
        } else {
            TurnWhole(raster, dialog.m_nMode);
        }
    });
}
