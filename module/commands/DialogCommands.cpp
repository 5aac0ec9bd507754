#include "module/commands/DialogCommands.h"

#include "module/dialogs/CDChras.h"
#include "module/dialogs/CDDespecle.h"
#include "module/dialogs/CDFill.h"
#include "module/dialogs/CDProperties.h"
#include "module/raster/CommandPattern.h"
#include "workerlink/protocol.h"

namespace {

template <typename Dialog> void FilterByDialog(DWORD mode)
{
    WithCurrentRaster([mode](CAcraster& raster, const CCurentRaster& current) {
        Dialog dialog;
        dialog.m_bOnlySelection = raster.HasSelection();
        if (dialog.DoModal() != IDOK || !current.GetIfCurrent())
            return;
        raster.Filter(mode, static_cast<DWORD>(dialog.m_nSize), dialog.m_bOnlySelection != 0);
        raster.Reload(true);
    });
}

} // namespace

void DespeckleCommand()
{
    FilterByDialog<CDDespecle>(FilterDespeckle);
}

void FillCommand()
{
    FilterByDialog<CDFill>(FilterFill);
}

// The dialog changes the raster by itself.
void ChangeRasterCommand()
{
    WithCurrentRaster([](CAcraster&) {
        CDChras dialog;
        dialog.DoModal();
    });
}

void PropertiesCommand()
{
    WithCurrentRaster([](CAcraster&) {
        CDProperties dialog;
        dialog.DoModal();
    });
}
