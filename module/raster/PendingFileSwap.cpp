#include "module/raster/PendingFileSwap.h"

#include "module/raster/CDocumentLock.h"

std::unique_ptr<PendingFileSwap> g_pPendingFileSwap;

void RunFileSwap(const PendingFileSwap& swap)
{
    const DWORD attributes = GetFileAttributesW(swap.sourcePath);
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY))
        return;

    const CDocumentLock lock;
    AcDbRasterImageDef* definition = nullptr;
    if (swap.definitionId.isValid())
        acdbOpenObject(definition, swap.definitionId, AcDb::kForWrite);
    // An image that the user had unloaded stays so.
    const bool loadAgain = definition && definition->isLoaded();
    if (loadAgain)
        definition->unload(false);
    if (DeleteFileW(swap.targetPath))
        MoveFileW(swap.sourcePath, swap.targetPath);
    if (loadAgain)
        definition->load();
    if (definition)
        definition->close();
}
