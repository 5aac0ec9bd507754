// The working image in files: written as TIFF for the worker, read back from it, saved under a name of the user's.

#include "module/base/CTempFile.h"
#include "module/raster/CAcraster.h"
#include "module/raster/LentRegion.h"
#include "module/raster/PendingFileSwap.h"
#include "workerlink/SendToWorker.h"

namespace {

// The revision of the TIFF codec's options.
constexpr int tiffCodecRevision = 3;

// What a request carries in place of a format number that nobody asks for.
constexpr int formatNotAsked = -1000;
constexpr int ownFormat = -1;

} // namespace

bool CAcraster::WriteTiff(const CString& path) const
{
    if (!m_pImage)
        return false;
    const Atil::Size size = m_pImage->size();
    const std::unique_ptr<Atil::RowProviderInterface> rows(m_pImage->read(size, Atil::Offset(0, 0), 0));
    if (!rows)
        return false;

    TiffFormatCodec codec(tiffCodecRevision);
    Atil::FileWriteDescriptor descriptor(&codec);
    const int lengthInBytes = (path.GetLength() + 1) * static_cast<int>(sizeof(wchar_t));
    const Atil::StringBuffer name(lengthInBytes, path.GetString(), Atil::StringBuffer::kUTF_16);
    DeleteFileW(path);
    if (!descriptor.setFileSpecifier(Atil::FileSpecifier(name, Atil::FileSpecifier::kFilePath)))
        return false;
    descriptor.createImageFrame(rows->dataModel(), rows->size());

    const std::unique_ptr<Atil::FormatCodecPropertyInterface> compression(
        descriptor.getProperty(Atil::FormatCodecPropertyInterface::kCompression));
    if (auto* tiffCompression = dynamic_cast<TiffCompression*>(compression.get())) {
        tiffCompression->selectCompression(TiffCompressionType::kCCITT_FAX4);
        descriptor.setProperty(tiffCompression);
    }
    const std::unique_ptr<Atil::FormatCodecPropertyInterface> resolution(
        descriptor.getProperty(Atil::FormatCodecPropertyInterface::kDensity));
    if (auto* density = dynamic_cast<Atil::FormatCodecDensity*>(resolution.get())) {
        density->setDensity(m_nDpi, m_nDpi);
        descriptor.setProperty(density);
    }
    // A file that could not be written is no file: the worker finds none and fails by itself.
    descriptor.writeImageFrame(rows.get());
    return true;
}

// Takes the image that the worker left in the file as the working image.
void CAcraster::ReadBack(const CString& path)
{
    AcDbRasterImageDef definition;
    definition.setSourceFileName(path);
    definition.load();
    Atil::Image* image = nullptr;
    if (definition.openImage(image) != Acad::eOk)
        return;
    if (m_pImage)
        *m_pImage = *image;
    definition.closeImage();
    m_bDirty = false;
}

RasterFormats CAcraster::QueryFormats() const
{
    WorkerMessage message(OperationFormatQuery);
    message.formatQuery.file = GetFileName();
    message.formatQuery.filterIndex = ownFormat;
    message.formatQuery.formatCode = formatNotAsked;
    if (!SendToWorker(message))
        message.formatQuery.filter.Empty();
    return {message.formatQuery.filter, message.formatQuery.filterIndex};
}

int CAcraster::QueryFormatCode(int filterIndex) const
{
    WorkerMessage message(OperationFormatQuery);
    message.formatQuery.file = GetFileName();
    message.formatQuery.filterIndex = filterIndex;
    SendToWorker(message);
    return message.formatQuery.formatCode;
}

// Gets the raster's own file out of the way of its successor. If it is held, `target` becomes a temporary name, and the
// swap is left for later. The definition is unloaded afterwards.
void CAcraster::ReleaseFile(CString& target)
{
    if (m_nLockCount != -1)
        DeleteImage();
    m_pDefinition->unload(true);
    if (DeleteFileW(target))
        return;
    // Only the name: the file that the worker puts there has to outlast this object.
    const CString free = CTempFile().m_strPath;
    g_pPendingFileSwap.reset(new PendingFileSwap{free, target, m_pDefinition->objectId()});
    target = free;
}

bool CAcraster::SaveAs(const CString& path, DWORD formatCode, CRgn* region)
{
    const CTempFile source;
    WriteTiff(source.m_strPath);
    const bool sameFile = path == CString(m_pDefinition->sourceFileName());
    CString target = path;
    if (sameFile)
        ReleaseFile(target);

    WorkerMessage message(OperationConvertFile);
    message.convertFile.sourceFile = source.m_strPath;
    message.convertFile.targetFile = target;
    message.convertFile.formatCode = formatCode;
    const LentRegion lent(message.convertFile.region, region);
    const bool saved = SendToWorker(message);

    if (sameFile) {
        m_pDefinition->load();
        if (m_nLockCount != -1)
            TakeWorkingImage();
    }
    return saved;
}
