#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "drawing/geometry.h"
#include "imaging/geometry.h"
#include "imaging/region.h"

// What the worker is asked for, as plain values: one group of fields for each operation, in which its results go back.

namespace worker {

struct NewRaster
{
    std::filesystem::path drawingFile; // written
    std::filesystem::path rasterFile;  // written
    std::uint32_t formatCode = 0;
    std::uint32_t dotsPerInch = 0;
    imaging::Size pixels;
    double scale = 1;           // drawing units per millimetre
    drawing::Vector3 insertion; // of the lower left corner, in drawing units
    drawing::Vector3 corner;    // out: the upper right corner
};

struct InsertRaster
{
    std::filesystem::path drawingFile; // written
    std::filesystem::path rasterFile;
    double scale = 1;           // drawing units per millimetre
    drawing::Vector3 insertion; // of the lower left corner, in drawing units
    drawing::Vector3 corner;    // out: the upper right corner
};

struct FormatQuery
{
    std::filesystem::path file;
    std::u16string filter;        // out: the file dialog's filter, in its form with |
    std::int32_t filterIndex = 0; // zero-based, or OwnFormatRow
    std::int32_t formatCode = 0;  // out: the format number of filterIndex
};

struct ConvertFile
{
    std::filesystem::path sourceFile;
    std::filesystem::path targetFile;      // may be the source itself
    std::uint32_t formatCode = 0;          // or SameFormat
    std::optional<imaging::Region> region; // what to keep, in pixels; everything when there is none
};

struct CopyToClipboard
{
    std::filesystem::path file;
    std::optional<imaging::Region> region; // what to copy, in pixels; everything when there is none
};

struct PasteFromClipboard
{
    std::filesystem::path file; // rewritten
    imaging::Point position;    // pixel of the pasted rectangle's top left corner
    bool transparent = false;   // adds ink only
};

struct Invert
{
    std::filesystem::path file; // rewritten
};

struct Rotate
{
    std::filesystem::path file; // rewritten
    double angle = 0;           // radians, from +x towards +y: clockwise as seen
    imaging::Point pivot;       // pixel
    bool transparent = false;
    std::optional<imaging::Region> region; // what turns; everything when there is none
};

struct Filter
{
    std::filesystem::path file; // rewritten
    std::uint32_t mode = 0;     // FilterDespeckle removes specks of ink, FilterFill fills holes
    std::uint32_t size = 0;     // side of the largest speck or hole, in tenths of a millimetre
    bool selectionOnly = false;
    std::optional<imaging::Region> region; // where to work with selectionOnly
};

struct Rasterize
{
    std::filesystem::path drawingFile;
    std::filesystem::path penFile;    // one pen width a line, see PenTable
    std::filesystem::path rasterFile; // rewritten
    std::filesystem::path fontsDir;
    drawing::Vector2 corner1;              // drawing point of the pixel corner (0, height)
    drawing::Vector2 corner2;              // drawing point of the pixel corner (width, 0)
    std::int32_t result = 0;               // out: 0, NothingOverRaster or SomethingLeftOut
    std::optional<imaging::Region> region; // where to draw, in pixels; everywhere when there is none
};

/// Of the groups the one of the operation that is asked for counts.
struct Request
{
    NewRaster newRaster;
    InsertRaster insertRaster;
    FormatQuery formatQuery;
    ConvertFile convertFile;
    CopyToClipboard copyToClipboard;
    PasteFromClipboard pasteFromClipboard;
    Invert invert;
    Rotate rotate;
    Filter filter;
    Rasterize rasterize;
};

} // namespace worker
