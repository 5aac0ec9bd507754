// The working image in files: written as TIFF for the worker, read back from it, saved under a name of the user's.

#include <memory>
#include <optional>

#include "module/base/CScopeGuard.h"
#include "module/base/CTempFile.h"
#include "module/base/SayOnCommandLine.h"
#include "module/raster/AskWorker.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CSaveRaster.h"
#include "module/raster/CShownFile.h"
#include "module/raster/LentRegion.h"
#include "module/raster/PendingFileSwap.h"
#include "module/raster/SetAsideFile.h"
#include "workerlink/WorkerMessage.h"

namespace {

// The revision of the TIFF codec's options.
constexpr int tiffCodecRevision = 3;

// What a request carries in place of a format number that nobody asks for.
constexpr int formatNotAsked = -1000;
constexpr int ownFormat = -1;

constexpr const wchar_t* workerFailed = L"The raster was not saved: the file could not be written.";

void Keep(CTempFile& edited)
{
    edited.m_nKeep = 1;
    SayOnCommandLine(L"The edited raster lies in " + edited.m_strPath);
}

} // namespace

bool CAcraster::WriteTiff(const CString& path) const
{
    try {
        if (m_pImage && !path.IsEmpty() && WriteTiffFile(path))
            return true;
    } catch (...) {
        // Whatever the imaging library throws: there is no whole file.
    }
    DeleteFileW(path);
    return false;
}

bool CAcraster::WriteTiffFile(const CString& path) const
{
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
    return descriptor.writeImageFrame(rows.get());
}

RasterFormats CAcraster::QueryFormats() const
{
    WorkerMessage message(OperationFormatQuery);
    message.formatQuery.file = GetFileName();
    message.formatQuery.filterIndex = ownFormat;
    message.formatQuery.formatCode = formatNotAsked;
    if (!AskWorker(message))
        message.formatQuery.filter.Empty();
    return {message.formatQuery.filter, message.formatQuery.filterIndex};
}

std::optional<DWORD> CAcraster::QueryFormatCode(int filterIndex) const
{
    WorkerMessage message(OperationFormatQuery);
    message.formatQuery.file = GetFileName();
    message.formatQuery.filterIndex = filterIndex;
    message.formatQuery.formatCode = formatNotAsked;
    if (!AskWorker(message) || message.formatQuery.formatCode < 0)
        return std::nullopt;
    return static_cast<DWORD>(message.formatQuery.formatCode);
}

// The drawing may name its file by a relative path, or the host have found it elsewhere.
bool CAcraster::IsOwnFile(const CString& path) const
{
    return path == CString(m_objects.m_pDefinition->sourceFileName()) ||
           IsSameFile(path, CString(m_objects.m_pDefinition->activeFileName()));
}

bool CAcraster::SaveAs(const CString& path, DWORD formatCode, CRgn* region)
{
    CRgn inside;
    if (region && !ClipToImage(*region, inside)) {
        SayOnCommandLine(L"The raster was not saved: the selected area lies beside it.");
        return false;
    }
    CRgn* part = region ? &inside : nullptr;
    CTempFile source;
    if (!WriteTiff(source.m_strPath)) {
        SayOnCommandLine(L"The raster was not saved: its temporary file could not be written.");
        return false;
    }
    if (SaveFrom(source, path, formatCode, part))
        return true;
    // What somebody else has open may be about to go: then its edits are nowhere else.
    if (m_life == Life::Borrowed)
        Keep(source);
    return false;
}

bool CAcraster::SaveFrom(CTempFile& source, const CString& path, DWORD formatCode, CRgn* region)
{
    if (IsOwnFile(path))
        return SaveOntoOwnFile(source, path, formatCode, region);
    const AcDbObjectId own = m_objects.m_pDefinition->objectId();
    const CShownFile shown(own.database(), path, own);
    if (shown.IsEdited()) {
        SayOnCommandLine(L"The raster was not saved: the file is shown in the drawing and has changes of its own.");
        return false;
    }
    if (!SendSave(source.m_strPath, path, formatCode, region)) {
        SayOnCommandLine(workerFailed);
        return false;
    }
    DropPendingFileSwap(path);
    return true;
}

void CAcraster::KeepInFile() const
{
    CTempFile file;
    if (WriteTiff(file.m_strPath))
        Keep(file);
}

bool CAcraster::SendSave(const CString& source, const CString& target, DWORD formatCode, CRgn* region) const
{
    WorkerMessage message(OperationConvertFile);
    message.convertFile.sourceFile = source;
    message.convertFile.targetFile = target;
    message.convertFile.formatCode = formatCode;
    const LentRegion lent(message.convertFile.region, region);
    return AskWorker(message);
}

// The order: the host lets go of the file; the file is set aside; the worker writes its successor; the host loads it
// and the old file goes. If the file is held all the same, the successor is shown from the temporary folder and waits
// there for a later swap. If a step fails, the old file comes back and the edited image stays in the drawing.
bool CAcraster::SaveOntoOwnFile(CTempFile& source, const CString& path, DWORD formatCode, CRgn* region)
{
    if (IsMarkedReadOnly(path)) {
        SayOnCommandLine(L"The raster was not saved: its file is write-protected.");
        return false;
    }
    const CString name(m_objects.m_pDefinition->activeFileName());
    LetGoOfFile();
    CScopeGuard showEdited([&] { ShowEditedImage(source, name); });
    CSetAsideFile former;
    const FileRelease release = former.SetAside(path);
    if (release == FileRelease::WriteProtected) {
        SayOnCommandLine(L"The raster was not saved: its file can't be replaced.");
        return false;
    }
    // What failed for now leaves nothing in the temporary folder; what waits there for its swap has to outlast this.
    CTempFile waiting;
    const bool held = release == FileRelease::Held;
    const CString target = held ? waiting.m_strPath : path;
    if (!SendSave(source.m_strPath, target, formatCode, region)) {
        SayOnCommandLine(workerFailed);
        return false;
    }
    std::unique_ptr<Atil::Image> saved = held ? LoadFrom(target, name) : Load();
    if (!saved) {
        SayOnCommandLine(L"The raster was not saved: what was written can't be read.");
        return false;
    }

    showEdited.Dismiss();
    former.Remove();
    // A successor from an earlier saving has come too late.
    DropPendingFileSwap(path);
    if (held) {
        waiting.m_nKeep = 1;
        PostponeFileSwap({target, path, m_objects.m_pDefinition->objectId()});
    }
    if (m_life == Life::Managed)
        m_pImage = saved.release();
    // What was a part of the image is the whole of it now.
    if (region)
        ResetRegion();
    return true;
}

void CAcraster::LetGoOfFile()
{
    if (m_life == Life::Managed)
        DeleteImage();
    // What is unsaved is being saved: nobody is to ask about it.
    m_objects.m_pDefinition->setImageModified(false);
    m_objects.m_pDefinition->unload(true);
}

// Loads the definition's image; a copy of it, or null if it can't be read.
std::unique_ptr<Atil::Image> CAcraster::Load()
{
    m_objects.m_pDefinition->load();
    return std::unique_ptr<Atil::Image>(m_objects.m_pDefinition->imageCopy(true));
}

// The same from another file, under whose name it does not go on.
std::unique_ptr<Atil::Image> CAcraster::LoadFrom(const CString& file, const CString& name)
{
    m_objects.m_pDefinition->setActiveFileName(file);
    std::unique_ptr<Atil::Image> image = Load();
    m_objects.m_pDefinition->setActiveFileName(name);
    return image;
}

// Puts the edited image back into the drawing, from the file that it was written to. It is loaded from there in place
// of the raster's own file, whose image may be of another size, and assigned to itself, so that it counts as edited. An
// image that did not come back lives on in its file alone.
void CAcraster::ShowEditedImage(CTempFile& source, const CString& name)
{
    AcDbRasterImageDef& definition = *m_objects.m_pDefinition;
    std::unique_ptr<Atil::Image> edited = LoadFrom(source.m_strPath, name);
    Atil::Image* shown = nullptr;
    const bool back = edited && definition.openImage(shown) == Acad::eOk;
    if (back) {
        *shown = *edited;
        definition.closeImage();
        definition.setImageModified(true);
    }
    if (m_life != Life::Managed)
        return;
    if (!back) {
        Keep(source);
        return;
    }
    m_pImage = edited.release();
    // The one that it had went with the image.
    AttachSaveReactor(&definition, m_nDpi);
}
