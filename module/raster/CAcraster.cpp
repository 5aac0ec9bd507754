#include "module/raster/CAcraster.h"

#include <algorithm>
#include <utility>

#include "module/base/CArxApp.h"
#include "module/base/PostCommandText.h"
#include "module/raster/CDocumentLock.h"
#include "module/raster/Coordinates.h"

namespace {

constexpr double millimetresPerInch = 25.4;

unsigned rastersMade = 0;

} // namespace

CAcraster::CAcraster(const ads_name entityName) : m_nSerial(++rastersMade)
{
    ads_name_set(entityName, m_entityName);
    acdbGetObjectId(m_entityId, m_entityName);

    CDocumentLock lock;
    if (!OpenObjects(AcDb::kForWrite)) {
        // The document stays locked, as after every opening that fails; the host takes the lock back with the document.
        lock.Abandon();
        return;
    }
    if (!m_pDefinition->isLoaded()) {
        m_pDefinition->load();
        m_bLoadedHere = true;
    }
    if (m_pDefinition->isLoaded())
        TakeWorkingImage();
    m_pRegion = std::make_unique<CRgn>();
    m_pRegion->CreateRectRgnIndirect(GetImageRect());
    m_nLockCount = 1;
    m_nDpi = TruncateToInt(millimetresPerInch / m_pDefinition->resolutionMMPerPixel().x);
}

CAcraster::CAcraster(AcDbRasterImageDef* definition, Atil::Image* image)
    : m_nSerial(++rastersMade), m_pImage(image), m_pDefinition(definition), m_pRegion(std::make_unique<CRgn>())
{
    m_pRegion->CreateRectRgnIndirect(GetImageRect());
    m_nDpi = TruncateToInt(millimetresPerInch / m_pDefinition->resolutionMMPerPixel().x);
}

CAcraster::~CAcraster()
{
    if (m_nLockCount == -1)
        return;
    m_nLockCount = std::min(m_nLockCount, 1);
    if (m_nLockCount > 0)
        Unlock();
    if (m_bLoadedHere)
        UnloadAfterUse();
}

int CAcraster::Lock(int write)
{
    if (m_nLockCount < 0)
        return 1;
    if (m_nLockCount > 0) {
        ++m_nLockCount;
        return 1;
    }

    CDocumentLock lock;
    if (acdbGetObjectId(m_entityId, m_entityName) != Acad::eOk ||
        !OpenObjects(write ? AcDb::kForWrite : AcDb::kForRead)) {
        // The caller destroys the raster now; the document stays locked all the same.
        lock.Abandon();
        return 0;
    }
    if (!m_pDefinition->isLoaded())
        m_pDefinition->load();
    TakeWorkingImage();
    m_nLockCount = 1;
    return 1;
}

int CAcraster::Unlock()
{
    if (m_nLockCount <= 0)
        return m_nLockCount;
    if (--m_nLockCount == 0) {
        DeleteImage();
        CloseObjects();
    }
    return m_nLockCount;
}

void CAcraster::Suspend(int close)
{
    if (m_nLockCount <= 0)
        return;
    if (close) {
        CloseObjects();
    } else {
        const CDocumentLock lock;
        OpenObjects(AcDb::kForWrite);
    }
    g_pArxApp->m_bSuspended = close != 0;
}

void CAcraster::Reload()
{
    // An image that was erased while it was suspended has nothing to commit to; the next first Lock finds that out.
    if (!m_pDefinition)
        return;
    const CDocumentLock lock;
    Atil::Image* image = nullptr;
    const bool opened = m_pImage && m_pDefinition->openImage(image) == Acad::eOk;
    if (opened)
        *image = *m_pImage;
    DeleteImage();
    m_pEntity->close();
    m_pEntity = nullptr;
    if (opened)
        m_pDefinition->closeImage();
    CloseObjects();
    // A lone tab makes the host refresh its view.
    PostCommandText(L"\t");
    OpenObjects(AcDb::kForWrite);
    TakeWorkingImage();
    m_bDirty = false;
}

void CAcraster::KeepLoaded()
{
    if (!m_bLoadedHere)
        return;
    Suspend(1);
    {
        const CDocumentLock lock;
        if (OpenObjects(AcDb::kForWrite)) {
            // Unloaded and loaded once more, so that the drawing itself takes note of it.
            m_pDefinition->unload(true);
            m_pDefinition->load();
            CloseObjects();
        }
    }
    Suspend(0);
    m_bLoadedHere = false;
}

AcDbObjectId CAcraster::ReadEntityData()
{
    m_pEntity->getPixelToModelTransform(m_pixelToModel);
    m_bShown = m_pEntity->isSetDisplayOpt(AcDbRasterImage::kShow);
    m_bTransparent = m_pEntity->isSetDisplayOpt(AcDbRasterImage::kTransparent);
    return m_pEntity->imageDefId();
}

// Opens the entity and then its definition; if either fails, neither is open.
bool CAcraster::OpenObjects(AcDb::OpenMode mode)
{
    if (acdbOpenObject(m_pEntity, m_entityId, mode) != Acad::eOk) {
        m_pEntity = nullptr;
        return false;
    }
    if (acdbOpenObject(m_pDefinition, ReadEntityData(), mode) != Acad::eOk) {
        m_pDefinition = nullptr;
        CloseObjects();
        return false;
    }
    return true;
}

void CAcraster::CloseObjects()
{
    if (m_pDefinition)
        m_pDefinition->close();
    m_pDefinition = nullptr;
    if (m_pEntity)
        m_pEntity->close();
    m_pEntity = nullptr;
}

void CAcraster::DeleteImage()
{
    delete m_pImage;
    m_pImage = nullptr;
}

void CAcraster::TakeWorkingImage()
{
    m_pImage = m_pDefinition ? m_pDefinition->imageCopy(true) : nullptr;
}

void CAcraster::UnloadAfterUse()
{
    const CDocumentLock lock;
    if (!OpenObjects(AcDb::kForWrite))
        return;
    if (m_pDefinition->isLoaded())
        m_pDefinition->unload(true);
    CloseObjects();
}

CSize CAcraster::GetSize() const
{
    if (!m_pDefinition)
        return CSize(0, 0);
    const AcGeVector2d size = m_pDefinition->size();
    return CSize(TruncateToInt(size.x), TruncateToInt(size.y));
}

CRect CAcraster::GetRegionBox() const
{
    CRect box;
    m_pRegion->GetRgnBox(&box);
    return box;
}

void CAcraster::ResetRegion()
{
    m_pRegion->SetRectRgn(GetImageRect());
}

int CAcraster::HasSelection() const
{
    if (!GetRegionBox().EqualRect(GetImageRect()))
        return 1;
    // Two rectangles or more are a selection even if their box fills the image.
    constexpr int oneRectangle = sizeof(RGNDATAHEADER) + sizeof(RECT);
    return m_pRegion->GetRegionData(nullptr, 0) > oneRectangle;
}

CString CAcraster::GetFileName() const
{
    const CString name = m_pDefinition->activeFileName();
    return name.IsEmpty() ? CString(L"File not found") : name;
}

void CAcraster::GetEntityName(ads_name& name) const
{
    acdbGetAdsName(name, m_pEntity->objectId());
}

int CAcraster::GetColorDepth() const
{
    return m_pDefinition->colorDepth();
}

int CAcraster::GetImageKind() const
{
    return m_pImage && m_pImage->dataModel().dataModelType() == Atil::DataModelAttributes::kBitonalModel ? 2 : 0;
}

void CAcraster::GetPlacement(AcGePoint3d& origin, double& width, double& height) const
{
    AcGeVector3d u;
    AcGeVector3d v;
    m_pEntity->getOrientation(origin, u, v);
    width = u.x;
    height = v.y;
}

void CAcraster::SetShown(bool shown)
{
    m_pEntity->setDisplayOpt(AcDbRasterImage::kShow, shown);
    m_bShown = shown;
}

void CAcraster::SetTransparent(bool transparent)
{
    m_pEntity->setDisplayOpt(AcDbRasterImage::kTransparent, transparent);
    m_bTransparent = transparent;
}

BYTE CAcraster::SetColorFlag(BYTE flag)
{
    return std::exchange(m_nColorFlag, flag);
}

int CAcraster::SetStampSize(int size)
{
    return std::exchange(m_nStampSize, size);
}
