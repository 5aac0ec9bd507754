#include "module/raster/PendingFileSwap.h"

#include <utility>

#include "module/base/CArxApp.h"
#include "module/base/CScopeGuard.h"
#include "module/base/SayOnCommandLine.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CDocumentLock.h"
#include "module/raster/SetAsideFile.h"

std::unique_ptr<PendingFileSwap> g_pPendingFileSwap;

namespace {

bool replacing; // a postponed replacement is under way

bool IsFile(const CString& path)
{
    const DWORD attributes = GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// By way of a name beside the target: from another drive the file is copied, which may break off.
bool PutInPlace(const PendingFileSwap& swap)
{
    CSetAsideFile former;
    if (IsFile(swap.targetPath) && former.SetAside(swap.targetPath) != FileRelease::Freed)
        return false;
    const CString fresh = FreeNameBeside(swap.targetPath);
    if (!MoveFileW(swap.sourcePath, fresh))
        return false;
    if (!MoveFileW(fresh, swap.targetPath)) {
        MoveFileW(fresh, swap.sourcePath);
        return false;
    }
    former.Remove();
    return true;
}

void RunNow()
{
    // A tick that comes by while the host loads the image leaves the next one alone.
    if (!g_pPendingFileSwap || std::exchange(replacing, true))
        return;
    const CScopeGuard over([] { replacing = false; });
    const std::unique_ptr<PendingFileSwap> swap = std::move(g_pPendingFileSwap);
    RunFileSwap(*swap);
}

} // namespace

void PostponeFileSwap(const PendingFileSwap& swap)
{
    RunNow();
    g_pPendingFileSwap = std::make_unique<PendingFileSwap>(swap);
}

void DropPendingFileSwap(const CString& target)
{
    if (!g_pPendingFileSwap || !IsSameFile(g_pPendingFileSwap->targetPath, target))
        return;
    DeleteFileW(g_pPendingFileSwap->sourcePath);
    g_pPendingFileSwap.reset();
}

void ForgetDefinitionOfSwap(const AcDbObjectId& definition)
{
    if (g_pPendingFileSwap && g_pPendingFileSwap->definitionId == definition)
        g_pPendingFileSwap->definitionId.setNull();
}

void ForgetDatabaseOfSwap(const AcDbDatabase* database)
{
    if (g_pPendingFileSwap && g_pPendingFileSwap->definitionId.database() == database)
        g_pPendingFileSwap->definitionId.setNull();
}

void RunPendingFileSwap()
{
    // A stroke keeps the definition open, and there is but one try.
    const CAcraster* raster = g_pArxApp->m_pRaster;
    const bool inUse = g_pPendingFileSwap && raster && raster->GetLockCount() > 0 &&
                       raster->GetDefinitionId() == g_pPendingFileSwap->definitionId;
    if (!inUse)
        RunNow();
}

void RunFileSwap(const PendingFileSwap& swap)
{
    if (!IsFile(swap.sourcePath))
        return;

    const CDocumentLock lock(swap.definitionId);
    AcDbRasterImageDef* definition = nullptr;
    if (swap.definitionId.isValid())
        acdbOpenObject(definition, swap.definitionId, AcDb::kForWrite);
    const CScopeGuard close([definition] {
        if (definition)
            definition->close();
    });
    // An image that the user had unloaded stays so, and one that was edited since the saving is not thrown away.
    const bool loadAgain = definition && definition->isLoaded() && !definition->imageModified();
    if (loadAgain)
        definition->unload(false);
    if (!PutInPlace(swap))
        SayOnCommandLine(L"The raster's file could not be replaced. The saved raster lies in " + swap.sourcePath);
    if (loadAgain)
        definition->load();
}
