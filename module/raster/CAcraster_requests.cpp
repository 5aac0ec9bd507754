// Operations that the worker does: the working image travels in a temporary TIFF file, which the worker rewrites.

#include "module/base/CTempFile.h"
#include "module/raster/AskWorker.h"
#include "module/raster/CAcraster.h"
#include "module/raster/ClipboardOfThisThread.h"
#include "module/raster/LentRegion.h"
#include "workerlink/WorkerMessage.h"

// A worker that fails leaves the image as it was, and nothing is said: the caller commits what it has.

// Has the worker rewrite the image; each of the message's file fields is set to the name of the file. False if it
// failed.
bool CAcraster::RewriteByWorker(WorkerMessage& message, std::initializer_list<CString*> fileFields)
{
    const CTempFile file;
    // A file that was not written is none: the worker finds nothing and fails by itself.
    WriteTiff(file.m_strPath);
    for (CString* field : fileFields)
        *field = file.m_strPath;
    return AskWorker(message) && ReadBack(file.m_strPath);
}

// Takes the image that the worker left in the file as the working image. False if there is none that can be read.
bool CAcraster::ReadBack(const CString& path)
{
    AcDbRasterImageDef definition;
    definition.setSourceFileName(path);
    definition.load();
    Atil::Image* image = nullptr;
    if (!m_pImage || definition.openImage(image) != Acad::eOk)
        return false;
    *m_pImage = *image;
    definition.closeImage();
    m_bDirty = false;
    return true;
}

bool CAcraster::CopyToClipboard()
{
    const CTempFile file;
    WriteTiff(file.m_strPath);
    WorkerMessage message(OperationCopyToClipboard);
    message.copyToClipboard.file = file.m_strPath;
    const LentRegion region(message.copyToClipboard.region, m_pRegion.get());
    ReleaseClipboardOfThisThread();
    return AskWorker(message);
}

void CAcraster::PasteFromClipboard(CPoint position, bool transparent)
{
    WorkerMessage message(OperationPasteFromClipboard);
    message.pasteFromClipboard.position = position;
    message.pasteFromClipboard.transparent = transparent;
    RenderClipboardOfThisThread();
    RewriteByWorker(message, {&message.pasteFromClipboard.file});
}

void CAcraster::Invert()
{
    WorkerMessage message(OperationInvert);
    RewriteByWorker(message, {&message.invert.file});
}

void CAcraster::Rotate(double angle, CPoint pivot, bool selectionOnly, bool transparent)
{
    WorkerMessage message(OperationRotate);
    message.rotate.angle = angle;
    message.rotate.pivot = pivot;
    message.rotate.transparent = transparent;
    const LentRegion region(message.rotate.region, selectionOnly ? m_pRegion.get() : nullptr);
    if (RewriteByWorker(message, {&message.rotate.file}))
        ResetRegion();
}

void CAcraster::Filter(DWORD mode, DWORD size, bool selectionOnly)
{
    WorkerMessage message(OperationFilter);
    message.filter.mode = mode;
    message.filter.size = size;
    message.filter.selectionOnly = selectionOnly;
    const LentRegion region(message.filter.region, selectionOnly ? m_pRegion.get() : nullptr);
    RewriteByWorker(message, {&message.filter.file});
}

void CAcraster::Crop()
{
    if (!HasSelectedPixels())
        return;
    CRgn kept;
    ClipToImage(*m_pRegion, kept);
    WorkerMessage message(OperationConvertFile);
    const LentRegion region(message.convertFile.region, &kept);
    if (!RewriteByWorker(message, {&message.convertFile.sourceFile, &message.convertFile.targetFile}))
        return;

    CRect box;
    kept.GetRgnBox(&box);
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    m_objects.m_pEntity->getOrientation(origin, u, v);
    m_objects.m_pEntity->setOrientation(PixelToWorld(CPoint(box.left, box.bottom)), u, v);
    ResetRegion();
}
