#include "module/commands/NewRasterCommand.h"

#include "module/base/CTempFile.h"
#include "module/base/CTempMFC.h"
#include "module/base/SayOnCommandLine.h"
#include "module/commands/PlaceRaster.h"
#include "module/dialogs/CDNewRaster.h"
#include "module/dialogs/PaperSizes.h"
#include "module/raster/AskWorker.h"
#include "module/raster/CShownFile.h"
#include "module/raster/PendingFileSwap.h"
#include "workerlink/WorkerMessage.h"

namespace {

// The worker's numbers of the formats.
constexpr DWORD tiffGroup4 = 29;
constexpr DWORD cals = 50;

WorkerPoint PointOf(const AcGePoint3d& point)
{
    return {point.x, point.y, point.z};
}

// False if the worker can't make it, or if it would take the place of edits that are nowhere else.
bool MakeRaster(WorkerMessage& message)
{
    const CShownFile shown(acdbHostApplicationServices()->workingDatabase(), message.newRaster.rasterFile);
    if (shown.IsEdited()) {
        SayOnCommandLine(message.newRaster.rasterFile +
                         L" is shown in the drawing and has changes that are not saved.");
        return false;
    }
    if (!AskWorker(message))
        return false;
    DropPendingFileSwap(message.newRaster.rasterFile);
    return true;
}

} // namespace

void NewRasterCommand()
{
    const CTempMFC resources;
    CSurrenderedRaster former;
    CDNewRaster dialog;
    if (dialog.DoModal() != IDOK) {
        former.MakeCurrentAgain();
        return;
    }
    // What was typed last may have been confirmed without leaving its field.
    LimitResolution(dialog.m_dWidth, dialog.m_dHeight, dialog.m_nDpi);
    const CTempFile drawing;
    WorkerMessage message(OperationNewRaster);
    message.newRaster.drawingFile = drawing.m_strPath;
    message.newRaster.rasterFile = dialog.m_strFile;
    message.newRaster.formatCode = dialog.m_nFilterIndex ? cals : tiffGroup4;
    message.newRaster.dpi = static_cast<DWORD>(dialog.m_nDpi);
    message.newRaster.pixelSize = {PixelsOfLength(dialog.m_dWidth, dialog.m_nDpi),
                                   PixelsOfLength(dialog.m_dHeight, dialog.m_nDpi)};
    message.newRaster.scale = dialog.GetScale();
    message.newRaster.insertion = PointOf(dialog.m_insertion);
    if (!MakeRaster(message)) {
        ShowError(L"ERROR: Problem creating the new raster");
        return;
    }
    PlaceRaster({message.newRaster.drawingFile, dialog.m_strFile, dialog.m_bSavePath != 0, dialog.m_bZoom != 0,
                 message.newRaster.insertion, message.newRaster.reservedPoint});
}
