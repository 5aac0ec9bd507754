// Operations that the worker does: the working image travels in a temporary TIFF file, which the worker rewrites.

#include "raster/CAcraster.h"

#include "raster/CTempFile.h"
#include "workerlink/SendToWorker.h"

// A worker that fails leaves the image as it was, and nothing is said: the caller commits what it has.

void CAcraster::CopyToClipboard()
{
    const CTempFile file;
    WriteTiff(file.m_strPath);
    WorkerMessage message(OperationCopyToClipboard);
    message.copyToClipboard.file = file.m_strPath;
    message.copyToClipboard.region = m_pRegion.get();
    SendToWorker(message);
}

void CAcraster::PasteFromClipboard(CPoint position, bool transparent)
{
    const CTempFile file;
    WriteTiff(file.m_strPath);
    WorkerMessage message(OperationPasteFromClipboard);
    message.pasteFromClipboard.file = file.m_strPath;
    message.pasteFromClipboard.position = position;
    message.pasteFromClipboard.transparent = transparent;
    if (SendToWorker(message))
        ReadBack(file.m_strPath);
}

void CAcraster::Invert()
{
    const CTempFile file;
    WriteTiff(file.m_strPath);
    WorkerMessage message(OperationInvert);
    message.invert.file = file.m_strPath;
    if (SendToWorker(message))
        ReadBack(file.m_strPath);
}

void CAcraster::Rotate(double angle, CPoint pivot, bool selectionOnly, bool transparent)
{
    const CTempFile file;
    WriteTiff(file.m_strPath);
    WorkerMessage message(OperationRotate);
    message.rotate.file = file.m_strPath;
    message.rotate.angle = angle;
    message.rotate.pivot = pivot;
    message.rotate.transparent = transparent;
    message.rotate.region = selectionOnly ? m_pRegion.get() : nullptr;
    if (!SendToWorker(message))
        return;
    ReadBack(file.m_strPath);
    ResetRegion();
}

void CAcraster::Filter(DWORD mode, DWORD size, bool selectionOnly)
{
    const CTempFile file;
    WriteTiff(file.m_strPath);
    WorkerMessage message(OperationFilter);
    message.filter.file = file.m_strPath;
    message.filter.mode = mode;
    message.filter.size = size;
    message.filter.selectionOnly = selectionOnly;
    message.filter.region = selectionOnly ? m_pRegion.get() : nullptr;
    if (SendToWorker(message))
        ReadBack(file.m_strPath);
}

void CAcraster::Crop()
{
    if (!HasSelection())
        return;
    const CTempFile file;
    WriteTiff(file.m_strPath);
    WorkerMessage message(OperationConvertFile);
    message.convertFile.sourceFile = file.m_strPath;
    message.convertFile.targetFile = file.m_strPath;
    message.convertFile.region = m_pRegion.get();
    if (!SendToWorker(message))
        return;
    ReadBack(file.m_strPath);

    const CRect box = GetRegionBox();
    AcGePoint3d origin;
    AcGeVector3d u;
    AcGeVector3d v;
    m_pEntity->getOrientation(origin, u, v);
    m_pEntity->setOrientation(PixelToWorld(CPoint(box.left, box.bottom)), u, v);
    ResetRegion();
}
