// Burning entities of the drawing into the raster. The worker draws them, from a drawing file of their own.

#include <memory>

#include "module/base/CArxApp.h"
#include "module/base/CScopeGuard.h"
#include "module/base/CTempFile.h"
#include "module/base/ExtensionModule.h"
#include "module/base/SayOnCommandLine.h"
#include "module/raster/AskWorker.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCheckDef.h"
#include "module/raster/CPenList.h"
#include "module/raster/LentRegion.h"
#include "workerlink/WorkerMessage.h"

namespace {

WorkerPoint FlatPoint(const AcGePoint3d& point)
{
    return {point.x, point.y, 0};
}

// Straight from the drawing in memory, so that what was not saved comes along.
bool WriteEntities(const AcDbObjectIdArray& entities, const CString& path)
{
    AcDbDatabase* made = nullptr;
    if (acdbHostApplicationServices()->workingDatabase()->wblock(made, entities, AcGePoint3d(0, 0, 0)) != Acad::eOk)
        return false;
    const std::unique_ptr<AcDbDatabase> database(made);
    return database->saveAs(path, false, AcDb::kDHL_1015, nullptr) == Acad::eOk;
}

} // namespace

bool CAcraster::ExportEntities(const AcDbObjectIdArray& entities, const CString& path)
{
    CCheckDef* reactor = g_pArxApp->m_pReactor;
    Suspend(true);
    // The drawing that is made and saved here is none whose end or saving is to ask for unsaved rasters.
    if (reactor)
        reactor->SetSuspended(1);
    const CScopeGuard resume([&] {
        Suspend(false);
        if (reactor)
            reactor->SetSuspended(0);
    });
    return WriteEntities(entities, path);
}

bool CAcraster::Rasterize(const AcDbObjectIdArray& entities, CPenList& pens)
{
    CRgn inside;
    if (!ClipToImage(*m_pRegion, inside))
        return false;
    const CTempFile drawing;
    if (!ExportEntities(entities, drawing.m_strPath) || !IsOpen()) {
        SayOnCommandLine(L"Nothing was rasterized: the selected objects could not be exported.");
        return false;
    }
    const CTempFile image;
    const CTempFile penFile;
    // A table without a name would ask for one.
    if (!WriteTiff(image.m_strPath) || penFile.m_strPath.IsEmpty()) {
        SayOnCommandLine(L"Nothing was rasterized: its temporary files could not be written.");
        return false;
    }
    pens.WriteFile(penFile.m_strPath);

    const CSize size = GetSize();
    WorkerMessage message(OperationRasterize);
    message.rasterize.drawingFile = drawing.m_strPath;
    message.rasterize.penFile = penFile.m_strPath;
    message.rasterize.rasterFile = image.m_strPath;
    message.rasterize.fontsDir = ProgramFilePath(L"Fonts");
    message.rasterize.corner1 = FlatPoint(PixelToWorld(CPoint(0, size.cy)));
    message.rasterize.corner2 = FlatPoint(PixelToWorld(CPoint(size.cx, 0)));
    const LentRegion region(message.rasterize.region, &inside);
    if (!AskWorker(message))
        return false;
    if (message.rasterize.result == NothingOverRaster) {
        AfxMessageBox(L"No raster under the entities");
        return false;
    }
    if (message.rasterize.result == SomethingLeftOut)
        SayOnCommandLine(L"Not all of it was rasterized: an object holds more than can be drawn.");
    return ReadBack(image.m_strPath);
}
