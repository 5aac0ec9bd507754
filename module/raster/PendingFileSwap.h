#pragma once

#include <memory>

#include "platform/platform.h"

/// A raster file that was held while it should have been overwritten, and the file that is to take its place.
struct PendingFileSwap
{
    CString sourcePath;        // temporary file with the saved raster
    CString targetPath;        // the raster's file
    AcDbObjectId definitionId; // the definition to reload; may be null
};

/// The one postponed replacement, or null. Whoever runs it clears it, whether it worked or not.
extern std::unique_ptr<PendingFileSwap> g_pPendingFileSwap;

/// Moves the saved file into place while the definition lets go of its image. If the target still can't be deleted,
/// both files stay as they are; a source that has gone makes it do nothing.
void RunFileSwap(const PendingFileSwap& swap);
