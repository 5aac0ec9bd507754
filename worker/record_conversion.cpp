#include "worker/record_conversion.h"

#include <vector>

namespace worker {

namespace {

// Beyond this no coordinate means a pixel, and pixel arithmetic would leave the range of int.
constexpr int farthest = 1 << 28;

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
    std::vector<BYTE> block(static_cast<size_t>(size));
    const auto* data = reinterpret_cast<const RGNDATA*>(block.data());
    region->GetRegionData(reinterpret_cast<RGNDATA*>(block.data()), size);
    const auto* rectangles = reinterpret_cast<const RECT*>(data->Buffer);
    std::vector<imaging::Rect> rects;
    rects.reserve(data->rdh.nCount);
    for (DWORD i = 0; i < data->rdh.nCount; ++i) {
        const imaging::Rect rect{static_cast<int>(rectangles[i].left), static_cast<int>(rectangles[i].top),
                                 static_cast<int>(rectangles[i].right), static_cast<int>(rectangles[i].bottom)};
        rects.push_back(rect.intersect({-farthest, -farthest, farthest, farthest}));
    }
    return imaging::Region::fromRects(rects);
}

} // namespace

Request requestFromRecord(const WorkerMessage& record)
{
    Request request;
    request.operation = record.operation;
    request.formatQuery = {pathFrom(record.formatQuery.file), {}, record.formatQuery.filterIndex, 0};
    request.convertFile = {pathFrom(record.convertFile.sourceFile), pathFrom(record.convertFile.targetFile),
                           record.convertFile.formatCode, regionFrom(record.convertFile.region)};
    request.copyToClipboard = {pathFrom(record.copyToClipboard.file), regionFrom(record.copyToClipboard.region), {}};
    request.pasteFromClipboard = {pathFrom(record.pasteFromClipboard.file),
                                  pointFrom(record.pasteFromClipboard.position),
                                  record.pasteFromClipboard.transparent,
                                  {}};
    request.invert = {pathFrom(record.invert.file)};
    request.rotate = {pathFrom(record.rotate.file), record.rotate.angle, pointFrom(record.rotate.pivot),
                      record.rotate.transparent, regionFrom(record.rotate.region)};
    request.filter = {pathFrom(record.filter.file), record.filter.mode, record.filter.size,
                      record.filter.selectionOnly != 0, regionFrom(record.filter.region)};
    return request;
}

void putResults(const Request& request, WorkerMessage& record)
{
    if (request.operation != OperationFormatQuery)
        return;
    const std::u16string& filter = request.formatQuery.filter;
    record.formatQuery.filter = std::wstring(filter.begin(), filter.end()).c_str();
    record.formatQuery.filterIndex = request.formatQuery.filterIndex;
    record.formatQuery.formatCode = request.formatQuery.formatCode;
}

} // namespace worker
