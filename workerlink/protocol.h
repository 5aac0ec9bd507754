#pragma once

#include <cstdint>

// What both sides of the link have to agree on, in plain C++, so that the worker's engine can use it anywhere. The
// record itself stands in WorkerMessage.h, its bytes in SerializeMessage.h, the exchange in RunWorker.h; docs/record.md
// shows them together.

/// What the module asks of the worker: the first field of every record.
enum WorkerOperation : std::uint32_t
{
    OperationNewRaster = 4,
    OperationInsertRaster = 5,
    OperationFormatQuery = 6,
    OperationConvertFile = 7, // save as, save a part, crop
    OperationCopyToClipboard = 8,
    OperationPasteFromClipboard = 9,
    OperationInvert = 10,
    OperationRotate = 11,
    OperationFilter = 12,
    OperationRasterize = 13,
};

/// What the filter does: a value of its record's `mode`.
enum FilterMode : std::uint32_t
{
    FilterFill = 0,
    FilterDespeckle = 1,
};

/// Asks the format query for the row of the file's own format.
inline constexpr int OwnFormatRow = -1;

/// The format number that a conversion keeps the source's kind of file with.
inline constexpr std::uint32_t SameFormat = 0;

/// What rasterizing answers when no entity lay over the raster, which then stays as it was, and when an entity held
/// more than can be drawn; 0 otherwise.
inline constexpr std::int32_t NothingOverRaster = -1;
inline constexpr std::int32_t SomethingLeftOut = 1;

/// The names of the semaphores by which the worker tells how far it is; the transfer's number stands for %lu.
inline constexpr wchar_t WorkingSemaphore[] = L"WORKING_%lu";
inline constexpr wchar_t ReadySemaphore[] = L"READY_%lu";
inline constexpr wchar_t OkSemaphore[] = L"OK_%lu";

/// Pixel coordinates lie within plus and minus this. Beyond it no coordinate means a pixel, and pixel arithmetic would
/// leave the range of int: the worker cuts regions and positions to it and refuses pivots.
inline constexpr int FarthestCoordinate = 1 << 28;
