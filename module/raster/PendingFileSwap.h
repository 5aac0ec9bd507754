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

/// The one postponed replacement, or null.
extern std::unique_ptr<PendingFileSwap> g_pPendingFileSwap;

/// Leaves the replacement for later. One that waits already has its turn now.
void PostponeFileSwap(const PendingFileSwap& swap);

/// Gives up the one that waits for that target, with its saved file: the target has been saved anew.
void DropPendingFileSwap(const CString& target);

/// Takes the postponed replacement out of its slot and carries it out, whether it works or not.
void RunPendingFileSwap();

/// The definition, or its whole database, goes: nothing will be loaded again.
void ForgetDefinitionOfSwap(const AcDbObjectId& definition);
void ForgetDatabaseOfSwap(const AcDbDatabase* database);

/// Moves the saved file into place while the definition lets go of its image; an image that was edited since is left in
/// the drawing. If the target still can't be replaced, both files stay as they are, and the command line says where the
/// saved one lies; a source that has gone makes it do nothing.
void RunFileSwap(const PendingFileSwap& swap);
