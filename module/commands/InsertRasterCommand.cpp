#include "module/commands/InsertRasterCommand.h"

#include "module/base/CTempFile.h"
#include "module/base/CTempMFC.h"
#include "module/base/ExtensionModule.h"
#include "module/commands/PlaceRaster.h"
#include "module/dialogs/CDLTAttache.h"
#include "module/raster/AskWorker.h"
#include "module/resources/resource.h"
#include "module/shell/CFileDialogEx.h"
#include "workerlink/WorkerMessage.h"

namespace {

constexpr const wchar_t* unreadable = L"ERROR: AutoCAD Can't read the file";
constexpr const wchar_t* notOneBit = L"ERROR: Halvoran in AutoCAD only works with 1-bit(black/white) images";
constexpr const wchar_t* notInserted = L"ERROR: Problem inserting the raster";

CString lastFolder; // of the file dialog; lasts as long as the module

// False if the user gave up.
bool AskForFile(CString& path)
{
    if (lastFolder.IsEmpty())
        lastFolder = ProgramFilePath(L"Examples\\");
    CString filter;
    filter.LoadString(IDS_INSERT_FILTER);
    CFileDialogEx dialog(TRUE, OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY, filter, AfxGetMainWnd());
    dialog.GetOFN().lpstrInitialDir = lastFolder;
    if (dialog.DoModal() != IDOK)
        return false;
    path = dialog.GetPathName();
    lastFolder = path.Left(path.ReverseFind(L'\\') + 1);
    return true;
}

bool LoadsInHost(AcDbRasterImageDef& definition, const CString& path)
{
    try {
        return definition.setSourceFileName(path) == Acad::eOk && definition.load() == Acad::eOk;
    } catch (...) {
        // Whatever the host's reader throws: it does not read the file.
        return false;
    }
}

// The raster's size in millimetres, if it is one that the module can edit; else the user is told.
bool ReadSize(const CString& path, double& width, double& height)
{
    AcDbRasterImageDef definition;
    if (!LoadsInHost(definition, path)) {
        ShowError(unreadable);
        return false;
    }
    const int depth = definition.colorDepth();
    const AcGeVector2d size = definition.size();
    const AcGeVector2d resolution = definition.resolutionMMPerPixel();
    definition.unload(false);
    if (depth != 1) {
        ShowError(notOneBit);
        return false;
    }
    width = size.x * resolution.x;
    height = size.y * resolution.y;
    return true;
}

} // namespace

void InsertRasterCommand()
{
    const CTempMFC resources;
    CSurrenderedRaster former;
    CString path;
    if (!AskForFile(path)) {
        former.MakeCurrentAgain();
        return;
    }
    double width = 0;
    double height = 0;
    if (!ReadSize(path, width, height))
        return;
    CDLTAttache dialog(width, height);
    if (dialog.DoModal() != IDOK)
        return;

    const CTempFile drawing;
    WorkerMessage message(OperationInsertRaster);
    message.insertRaster.drawingFile = drawing.m_strPath;
    message.insertRaster.rasterFile = path;
    message.insertRaster.scale = dialog.GetScale();
    message.insertRaster.insertion = {dialog.m_insertion.x, dialog.m_insertion.y, dialog.m_insertion.z};
    if (!AskWorker(message)) {
        ShowError(notInserted);
        return;
    }
    PlaceRaster({message.insertRaster.drawingFile, path, dialog.m_bSavePath != 0, dialog.m_bZoom != 0,
                 message.insertRaster.insertion, message.insertRaster.reservedPoint});
}
