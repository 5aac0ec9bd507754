#include "worker/record_conversion.h"

#include <vector>

#include "imaging/error.h"

namespace worker {

namespace {

std::filesystem::path pathFrom(const CString& text)
{
    return std::filesystem::path(static_cast<LPCWSTR>(text));
}

imaging::Point pointFrom(const POINT& point)
{
    return {static_cast<int>(point.x), static_cast<int>(point.y)};
}

std::optional<imaging::Region> regionFrom(const CRgn* region)
{
    if (region == nullptr)
        return std::nullopt;
    const int size = region->GetRegionData(nullptr, 0);
    if (size < static_cast<int>(sizeof(RGNDATAHEADER)))
        throw imaging::ImagingError("The region can't be read.");
    std::vector<BYTE> block(static_cast<size_t>(size));
    const auto* data = reinterpret_cast<const RGNDATA*>(block.data());
    region->GetRegionData(reinterpret_cast<RGNDATA*>(block.data()), size);
    const auto* rectangles = reinterpret_cast<const RECT*>(data->Buffer);
    constexpr imaging::Rect everyPixel{-FarthestCoordinate, -FarthestCoordinate, FarthestCoordinate,
                                       FarthestCoordinate};
    std::vector<imaging::Rect> rects;
    rects.reserve(data->rdh.nCount);
    for (DWORD i = 0; i < data->rdh.nCount; ++i) {
        const imaging::Rect rect{static_cast<int>(rectangles[i].left), static_cast<int>(rectangles[i].top),
                                 static_cast<int>(rectangles[i].right), static_cast<int>(rectangles[i].bottom)};
        rects.push_back(rect.intersect(everyPixel));
    }
    return imaging::Region::fromRects(rects);
}

drawing::Vector3 vectorFrom(const WorkerPoint& point)
{
    return {point.x, point.y, point.z};
}

WorkerPoint pointFrom(const drawing::Vector3& vector)
{
    return {vector.x, vector.y, vector.z};
}

// The record's groups have no types of their own.
NewRaster requestFrom(const decltype(WorkerMessage::newRaster)& record)
{
    return {.drawingFile = pathFrom(record.drawingFile),
            .rasterFile = pathFrom(record.rasterFile),
            .formatCode = record.formatCode,
            .dotsPerInch = record.dpi,
            .pixels = {static_cast<int>(record.pixelSize.cx), static_cast<int>(record.pixelSize.cy)},
            .scale = record.scale,
            .insertion = vectorFrom(record.insertion),
            .corner = {}};
}

InsertRaster requestFrom(const decltype(WorkerMessage::insertRaster)& record)
{
    return {.drawingFile = pathFrom(record.drawingFile),
            .rasterFile = pathFrom(record.rasterFile),
            .scale = record.scale,
            .insertion = vectorFrom(record.insertion),
            .corner = {}};
}

FormatQuery requestFrom(const decltype(WorkerMessage::formatQuery)& record)
{
    return {.file = pathFrom(record.file), .filter = {}, .filterIndex = record.filterIndex, .formatCode = 0};
}

ConvertFile requestFrom(const decltype(WorkerMessage::convertFile)& record)
{
    return {.sourceFile = pathFrom(record.sourceFile),
            .targetFile = pathFrom(record.targetFile),
            .formatCode = record.formatCode,
            .region = regionFrom(record.region)};
}

CopyToClipboard requestFrom(const decltype(WorkerMessage::copyToClipboard)& record)
{
    return {.file = pathFrom(record.file), .region = regionFrom(record.region)};
}

PasteFromClipboard requestFrom(const decltype(WorkerMessage::pasteFromClipboard)& record)
{
    return {.file = pathFrom(record.file), .position = pointFrom(record.position), .transparent = record.transparent};
}

Invert requestFrom(const decltype(WorkerMessage::invert)& record)
{
    return {.file = pathFrom(record.file)};
}

Rotate requestFrom(const decltype(WorkerMessage::rotate)& record)
{
    return {.file = pathFrom(record.file),
            .angle = record.angle,
            .pivot = pointFrom(record.pivot),
            .transparent = record.transparent,
            .region = regionFrom(record.region)};
}

Filter requestFrom(const decltype(WorkerMessage::filter)& record)
{
    return {.file = pathFrom(record.file),
            .mode = record.mode,
            .size = record.size,
            .selectionOnly = record.selectionOnly != 0,
            .region = regionFrom(record.region)};
}

Rasterize requestFrom(const decltype(WorkerMessage::rasterize)& record)
{
    return {.drawingFile = pathFrom(record.drawingFile),
            .penFile = pathFrom(record.penFile),
            .rasterFile = pathFrom(record.rasterFile),
            .fontsDir = pathFrom(record.fontsDir),
            .corner1 = {record.corner1.x, record.corner1.y},
            .corner2 = {record.corner2.x, record.corner2.y},
            .result = 0,
            .region = regionFrom(record.region)};
}

void putResult(const FormatQuery& request, decltype(WorkerMessage::formatQuery)& record)
{
    record.filter = std::wstring(request.filter.begin(), request.filter.end()).c_str();
    record.filterIndex = request.filterIndex;
    record.formatCode = request.formatCode;
}

} // namespace

Request requestFromRecord(const WorkerMessage& record)
{
    Request request;
    switch (record.operation) {
    case OperationNewRaster:
        request.newRaster = requestFrom(record.newRaster);
        break;
    case OperationInsertRaster:
        request.insertRaster = requestFrom(record.insertRaster);
        break;
    case OperationFormatQuery:
        request.formatQuery = requestFrom(record.formatQuery);
        break;
    case OperationConvertFile:
        request.convertFile = requestFrom(record.convertFile);
        break;
    case OperationCopyToClipboard:
        request.copyToClipboard = requestFrom(record.copyToClipboard);
        break;
    case OperationPasteFromClipboard:
        request.pasteFromClipboard = requestFrom(record.pasteFromClipboard);
        break;
    case OperationInvert:
        request.invert = requestFrom(record.invert);
        break;
    case OperationRotate:
        request.rotate = requestFrom(record.rotate);
        break;
    case OperationFilter:
        request.filter = requestFrom(record.filter);
        break;
    case OperationRasterize:
        request.rasterize = requestFrom(record.rasterize);
        break;
    default: // an operation that the worker does not know
        break;
    }
    return request;
}

void putResults(const Request& request, WorkerMessage& record)
{
    switch (record.operation) {
    case OperationNewRaster:
        record.newRaster.reservedPoint = pointFrom(request.newRaster.corner);
        break;
    case OperationInsertRaster:
        record.insertRaster.reservedPoint = pointFrom(request.insertRaster.corner);
        break;
    case OperationFormatQuery:
        putResult(request.formatQuery, record.formatQuery);
        break;
    case OperationRasterize:
        record.rasterize.result = request.rasterize.result;
        break;
    default: // an operation without results of its own
        break;
    }
}

} // namespace worker
