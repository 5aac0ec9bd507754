// What the commands that bring a raster into the drawing have in common.
#pragma once

#include <optional>

#include "module/raster/CAcraster.h"
#include "platform/platform.h"
#include "workerlink/WorkerMessage.h"

/// Gives up the current raster, as the drawing is about to change, and can make it current again.
class CSurrenderedRaster
{
public:
    CSurrenderedRaster();

    /// If there was one.
    void MakeCurrentAgain();

private:
    std::optional<AcDbObjectId> m_entity;
};

/// How the worker's drawing is to be placed.
struct Placement
{
    CString drawingFile; // with one image, as the worker wrote it
    CString rasterFile;  // full path
    bool savePath;       // the drawing is to name the file with its folder
    bool zoom;           // show the image
    WorkerPoint corner;  // of the image, in drawing units
    WorkerPoint oppositeCorner;
};

void PlaceRaster(const Placement& placement);

/// A box with the stop icon.
void ShowError(const wchar_t* text);
