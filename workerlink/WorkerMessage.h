#pragma once

#include "platform/platform.h"
#include "workerlink/protocol.h"

/// A point of the drawing.
struct WorkerPoint
{
    double x = 0;
    double y = 0;
    double z = 0;
};

/// The one record between module and worker, request and reply alike: the sender fills the group of its operation, and
/// the reply is read over the same record. All groups exist in every record; only the group of `operation` travels.
///
/// Regions are in image pixels and borrowed: a record never frees one, not even one that reading a reply put into it.
class WorkerMessage
{
public:
    /// Every string empty, every number zero, every region null.
    explicit WorkerMessage(DWORD operationCode) : operation(operationCode) {}
    virtual ~WorkerMessage() = default;

    DWORD operation;

    struct
    {
        CString drawingFile;       // temporary path; in the reply the drawing to read
        CString rasterFile;        // the raster to create
        DWORD formatCode = 0;      // the worker's number of the file format
        DWORD dpi = 0;             // dots per inch
        SIZE pixelSize = {};       // width and height in pixels
        double scale = 0;          // drawing units per millimetre
        WorkerPoint insertion;     // drawing units
        WorkerPoint reservedPoint; // in the reply the far corner of the placed image
    } newRaster;

    struct
    {
        CString drawingFile;       // as for a new raster
        CString rasterFile;        // the existing raster
        double scale = 0;          // drawing units per millimetre
        WorkerPoint insertion;     // drawing units
        WorkerPoint reservedPoint; // in the reply the far corner of the placed image
    } insertRaster;

    struct
    {
        CString file;        // the raster in question
        CString filter;      // in the reply the file dialog's filter, in its form with |
        int filterIndex = 0; // zero-based; -1 asks for the index of the file's own format
        int formatCode = 0;  // in the reply the format number of filterIndex; -1000 when nobody asks for it
    } formatQuery;

    struct
    {
        CString sourceFile;     // temporary TIFF with the present image
        CString targetFile;     // the file to write
        DWORD formatCode = 0;   // of the target; 0 when the target is the temporary TIFF itself
        CRgn* region = nullptr; // what to write, or null for everything
    } convertFile;

    struct
    {
        CString file;           // temporary TIFF
        CRgn* region = nullptr; // the selection
    } copyToClipboard;

    struct
    {
        CString file;             // temporary TIFF, rewritten by the worker
        POINT position = {};      // pixel of the pasted rectangle's top left corner
        bool transparent = false; // paste the ink only
    } pasteFromClipboard;

    struct
    {
        CString file; // temporary TIFF, rewritten by the worker
    } invert;

    struct
    {
        CString file;             // temporary TIFF, rewritten by the worker
        double angle = 0;         // radians, from +x towards +y of the image
        POINT pivot = {};         // the pixel about which the region turns
        bool transparent = false; // lay down the ink only
        CRgn* region = nullptr;   // the selection, or null
    } rotate;

    struct
    {
        CString file;            // temporary TIFF, rewritten by the worker
        DWORD mode = 0;          // one of the FilterMode values
        DWORD size = 0;          // tenths of a millimetre
        DWORD selectionOnly = 0; // 1 to work inside the region only
        CRgn* region = nullptr;  // the selection when selectionOnly is set, or null
    } filter;

    struct
    {
        CString drawingFile;    // temporary drawing with the chosen entities
        CString penFile;        // temporary pen table
        CString rasterFile;     // temporary TIFF, rewritten by the worker
        CString fontsDir;       // folder of fonts
        WorkerPoint corner1;    // drawing point of the pixel (0, height)
        WorkerPoint corner2;    // drawing point of the pixel (width, 0)
        int result = 0;         // in the reply -1 when no entity lay over the raster
        CRgn* region = nullptr; // the raster's present region
    } rasterize;
};
