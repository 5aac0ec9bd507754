#include "workerlink/SerializeMessage.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

// The fields of a record, one after the other, into an archive or out of it: each group's order is told once for both
// directions.
class RecordFields
{
public:
    explicit RecordFields(CArchive& archive) : m_archive(archive) {}

    template <typename... Field> void operator()(Field&... fields) { (Transfer(fields), ...); }

    // In a record without a region the count 0 clears `clearedByNone`.
    void Region(CRgn*& region, CRgn*& clearedByNone);

private:
    void Transfer(CString& text) { Stream(text); }
    void Transfer(DWORD& number) { Stream(number); }
    void Transfer(int& number) { Stream(number); }
    void Transfer(double& number) { Stream(number); }
    void Transfer(SIZE& pair) { Block(&pair, sizeof(pair)); }
    void Transfer(POINT& pair) { Block(&pair, sizeof(pair)); }
    void Transfer(WorkerPoint& point) { Block(&point, sizeof(point)); }
    void Transfer(bool& flag);
    void Transfer(CRgn*& region) { Region(region, region); }

    template <typename Value> void Stream(Value& value);
    void Block(void* bytes, UINT count);
    void WriteRegion(const CRgn* region);
    std::vector<BYTE> ReadRegionBlock(DWORD count);
    CRgn* ReadRegion(DWORD count);

    CArchive& m_archive;
};

static_assert(sizeof(DWORD) == 4 && sizeof(int) == 4 && sizeof(double) == 8);
static_assert(sizeof(SIZE) == 8 && sizeof(POINT) == 8 && sizeof(WorkerPoint) == 24);

template <typename Value> void RecordFields::Stream(Value& value)
{
    if (m_archive.IsStoring()) {
        m_archive << value;
    } else {
        m_archive >> value;
    }
}

// Read whole or not at all.
void RecordFields::Block(void* bytes, UINT count)
{
    if (m_archive.IsStoring()) {
        m_archive.Write(bytes, count);
    } else if (m_archive.Read(bytes, count) != count) {
        AfxThrowArchiveException(CArchiveException::endOfFile);
    }
}

void RecordFields::Transfer(bool& flag)
{
    BYTE byte = flag ? 1 : 0;
    Stream(byte);
    flag = byte != 0;
}

void RecordFields::Region(CRgn*& region, CRgn*& clearedByNone)
{
    if (m_archive.IsStoring()) {
        WriteRegion(region);
        return;
    }
    DWORD count = 0;
    m_archive >> count;
    if (count == 0) {
        clearedByNone = nullptr;
    } else {
        region = ReadRegion(count);
    }
}

void RecordFields::WriteRegion(const CRgn* region)
{
    const DWORD count = region != nullptr ? static_cast<DWORD>(region->GetRegionData(nullptr, 0)) : 0;
    m_archive << count;
    if (count == 0)
        return;
    std::vector<BYTE> block(count);
    region->GetRegionData(reinterpret_cast<RGNDATA*>(block.data()), static_cast<int>(count));
    m_archive.Write(block.data(), count);
}

// In steps, so that the count of a broken record asks for no more memory than the record can fill.
std::vector<BYTE> RecordFields::ReadRegionBlock(DWORD count)
{
    constexpr DWORD step = 64 * 1024;
    std::vector<BYTE> block;
    while (block.size() < count) {
        const DWORD wanted = std::min<DWORD>(step, count - static_cast<DWORD>(block.size()));
        block.resize(block.size() + wanted);
        Block(block.data() + block.size() - wanted, wanted);
    }
    return block;
}

// A new region that the record does not free.
CRgn* RecordFields::ReadRegion(DWORD count)
{
    const std::vector<BYTE> block = ReadRegionBlock(count);
    // The system trusts the header's number of rectangles, so it has to fit the block.
    RGNDATAHEADER header;
    if (block.size() < sizeof(header))
        AfxThrowArchiveException(CArchiveException::endOfFile);
    std::memcpy(&header, block.data(), sizeof(header));
    if (header.nCount > (block.size() - sizeof(header)) / sizeof(RECT))
        AfxThrowArchiveException(CArchiveException::endOfFile);
    auto region = std::make_unique<CRgn>();
    if (!region->CreateFromData(nullptr, static_cast<int>(count), reinterpret_cast<const RGNDATA*>(block.data())))
        AfxThrowArchiveException(CArchiveException::genericException);
    return region.release();
}

void TransferGroup(RecordFields& fields, WorkerMessage& message)
{
    switch (message.operation) {
    case OperationNewRaster: {
        auto& group = message.newRaster;
        fields(group.drawingFile, group.rasterFile, group.formatCode, group.dpi, group.pixelSize, group.scale,
               group.insertion, group.reservedPoint);
        break;
    }
    case OperationInsertRaster: {
        auto& group = message.insertRaster;
        fields(group.drawingFile, group.rasterFile, group.scale, group.insertion, group.reservedPoint);
        break;
    }
    case OperationFormatQuery: {
        auto& group = message.formatQuery;
        fields(group.file, group.filter, group.filterIndex, group.formatCode);
        break;
    }
    case OperationConvertFile: {
        auto& group = message.convertFile;
        fields(group.sourceFile, group.targetFile, group.formatCode, group.region);
        break;
    }
    case OperationCopyToClipboard:
        fields(message.copyToClipboard.file, message.copyToClipboard.region);
        break;
    case OperationPasteFromClipboard: {
        auto& group = message.pasteFromClipboard;
        fields(group.file, group.position, group.transparent);
        break;
    }
    case OperationInvert:
        fields(message.invert.file);
        break;
    case OperationRotate: {
        auto& group = message.rotate;
        fields(group.file, group.angle, group.pivot, group.transparent, group.region);
        break;
    }
    case OperationFilter: {
        auto& group = message.filter;
        fields(group.file, group.mode, group.size, group.selectionOnly, group.region);
        break;
    }
    case OperationRasterize: {
        auto& group = message.rasterize;
        fields(group.drawingFile, group.penFile, group.rasterFile, group.fontsDir, group.corner1, group.corner2,
               group.result);
        // No region in a reply clears the filter's region and leaves this group's own: both sides rely on it.
        fields.Region(group.region, message.filter.region);
        break;
    }
    default: // a code without a body
        break;
    }
}

} // namespace

std::vector<BYTE> SerializeMessage(const WorkerMessage& message)
{
    WorkerMessage record(message); // the fields go through one routine for both directions, which may change them
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive << record.operation;
    RecordFields fields(archive);
    TransferGroup(fields, record);
    archive.Close();
    std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

void DeserializeMessage(WorkerMessage& message, const BYTE* bytes, size_t length)
{
    CMemFile file(const_cast<BYTE*>(bytes), static_cast<UINT>(length)); // attached for reading: never written to
    CArchive archive(&file, CArchive::load);
    archive >> message.operation;
    RecordFields fields(archive);
    TransferGroup(fields, message);
}
