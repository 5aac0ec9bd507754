#include "module/raster/CAcraster.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "module/base/CArxApp.h"
#include "module/base/PostCommandText.h"
#include "module/raster/CDocumentLock.h"
#include "module/raster/CSaveRaster.h"
#include "module/raster/Coordinates.h"

namespace {

constexpr double millimetresPerInch = 25.4;

unsigned rastersMade = 0;

// Of an edited image its own, of any other its file's.
int ResolutionOf(const AcDbRasterImageDef& definition)
{
    if (const std::optional<int> unsaved = UnsavedResolution(definition.objectId()))
        return *unsaved;
    return TruncateToInt(millimetresPerInch / definition.resolutionMMPerPixel().x);
}

} // namespace

CAcraster::CAcraster(const ads_name entityName) : m_nSerial(++rastersMade), m_objects(entityName)
{
    CDocumentLock lock;
    if (!m_objects.Open(AcDb::kForWrite)) {
        // The document stays locked, as after every opening that fails; the host takes the lock back with the document.
        lock.Abandon();
        return;
    }
    m_life = Life::Managed;
    if (!m_objects.m_pDefinition->isLoaded()) {
        m_objects.m_pDefinition->load();
        m_bLoadedHere = true;
    }
    if (m_objects.m_pDefinition->isLoaded())
        TakeWorkingImage();
    m_pRegion = std::make_unique<CRgn>();
    m_pRegion->CreateRectRgnIndirect(GetImageRect());
    m_nLockCount = 1;
    m_nDpi = ResolutionOf(*m_objects.m_pDefinition);
}

CAcraster::CAcraster(AcDbRasterImageDef* definition, Atil::Image* image)
    : m_nSerial(++rastersMade), m_life(Life::Borrowed), m_objects(definition), m_pImage(image),
      m_pRegion(std::make_unique<CRgn>())
{
    m_pRegion->CreateRectRgnIndirect(GetImageRect());
    m_nDpi = ResolutionOf(*m_objects.m_pDefinition);
}

CAcraster::~CAcraster()
{
    if (m_life != Life::Managed)
        return;
    m_nLockCount = std::min(m_nLockCount, 1);
    if (m_nLockCount > 0)
        Unlock();
    if (m_bLoadedHere)
        UnloadAfterUse();
}

int CAcraster::Lock(int write)
{
    if (m_life != Life::Managed)
        return 1;
    // A commit that could not open the objects again has left them closed under a lock that is still counted.
    if (m_nLockCount > 0 && (IsOpen() || g_pArxApp->m_bSuspended)) {
        ++m_nLockCount;
        return 1;
    }
    if (m_nLockCount > 0)
        return 0;

    CDocumentLock lock;
    if (!m_objects.Find() || !m_objects.Open(write ? AcDb::kForWrite : AcDb::kForRead)) {
        // The caller destroys the raster now; the document stays locked all the same.
        lock.Abandon();
        return 0;
    }
    if (!m_objects.m_pDefinition->isLoaded())
        m_objects.m_pDefinition->load();
    TakeWorkingImage();
    m_nLockCount = 1;
    // An image that the host has meanwhile loaded in another size has nothing left of the selection.
    if (!(GetSize() == m_lastSize))
        ResetRegion();
    return 1;
}

int CAcraster::Unlock()
{
    if (m_life == Life::Managed && m_nLockCount > 0 && --m_nLockCount == 0) {
        m_lastSize = GetSize();
        DeleteImage();
        m_objects.Close();
    }
    return GetLockCount();
}

void CAcraster::Suspend(bool close)
{
    if (m_nLockCount <= 0)
        return;
    if (close) {
        m_objects.Close();
    } else {
        const CDocumentLock lock;
        m_objects.Open(AcDb::kForWrite);
    }
    g_pArxApp->m_bSuspended = close;
}

void CAcraster::Reload(bool attachReactor)
{
    // An image that was erased while it was suspended has nothing to commit to; the next first Lock finds that out.
    if (!m_objects.m_pDefinition)
        return;
    const CDocumentLock lock;
    Atil::Image* image = nullptr;
    const bool opened = m_pImage && m_objects.m_pDefinition->openImage(image) == Acad::eOk;
    if (opened)
        *image = *m_pImage;
    DeleteImage();
    m_objects.CloseEntity();
    if (opened)
        m_objects.m_pDefinition->closeImage();
    m_objects.Close();
    // A lone tab makes the host refresh its view.
    PostCommandText(L"\t");
    m_objects.Open(AcDb::kForWrite);
    TakeWorkingImage();
    m_bDirty = false;
    if (attachReactor && m_objects.m_pDefinition)
        AttachSaveReactor(m_objects.m_pDefinition, m_nDpi);
}

void CAcraster::KeepLoaded()
{
    if (!m_bLoadedHere)
        return;
    Suspend(true);
    {
        const CDocumentLock lock;
        // With the entity closed: the host tells the entities of an image that comes and goes.
        if (m_objects.OpenDefinition(AcDb::kForWrite)) {
            // Unloaded and loaded once more, so that the drawing itself takes note of it.
            m_objects.m_pDefinition->unload(true);
            m_objects.m_pDefinition->load();
            m_objects.Close();
        }
    }
    Suspend(false);
    m_bLoadedHere = false;
}

void CAcraster::DeleteImage()
{
    delete m_pImage;
    m_pImage = nullptr;
}

void CAcraster::TakeWorkingImage()
{
    m_pImage = m_objects.m_pDefinition ? m_objects.m_pDefinition->imageCopy(true) : nullptr;
}

// The user may have gone on to another drawing.
void CAcraster::UnloadAfterUse()
{
    const CDocumentLock lock(m_objects.GetEntityId());
    if (!m_objects.Open(AcDb::kForWrite))
        return;
    if (m_objects.m_pDefinition->isLoaded())
        m_objects.m_pDefinition->unload(true);
    m_objects.Close();
}

bool CAcraster::IsInOtherDrawing() const
{
    const AcDbObjectId entity = m_objects.GetEntityId();
    const AcDbDatabase* database = entity.isNull() ? nullptr : entity.database();
    return database && database != acdbHostApplicationServices()->workingDatabase();
}

CSize CAcraster::GetSize() const
{
    if (!m_objects.m_pDefinition)
        return CSize(0, 0);
    const AcGeVector2d size = m_objects.m_pDefinition->size();
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

bool CAcraster::HasSelection() const
{
    if (!GetRegionBox().EqualRect(GetImageRect()))
        return true;
    // Two rectangles or more are a selection even if their box fills the image.
    constexpr int oneRectangle = sizeof(RGNDATAHEADER) + sizeof(RECT);
    return m_pRegion->GetRegionData(nullptr, 0) > oneRectangle;
}

bool CAcraster::HasSelectedPixels() const
{
    CRgn inside;
    return HasSelection() && ClipToImage(*m_pRegion, inside);
}

CString CAcraster::GetFileName() const
{
    const CString name = m_objects.m_pDefinition->activeFileName();
    return name.IsEmpty() ? CString(L"File not found") : name;
}

void CAcraster::GetEntityName(ads_name& name) const
{
    acdbGetAdsName(name, m_objects.m_pEntity->objectId());
}

int CAcraster::GetColorDepth() const
{
    return m_objects.m_pDefinition->colorDepth();
}

int CAcraster::GetImageKind() const
{
    return m_pImage && m_pImage->dataModel().dataModelType() == Atil::DataModelAttributes::kBitonalModel ? 2 : 0;
}

void CAcraster::GetPlacement(AcGePoint3d& origin, double& width, double& height) const
{
    AcGeVector3d u;
    AcGeVector3d v;
    m_objects.m_pEntity->getOrientation(origin, u, v);
    width = u.x;
    height = v.y;
}

void CAcraster::SetShown(bool shown)
{
    m_objects.m_pEntity->setDisplayOpt(AcDbRasterImage::kShow, shown);
    m_objects.m_bShown = shown;
}

void CAcraster::SetTransparent(bool transparent)
{
    m_objects.m_pEntity->setDisplayOpt(AcDbRasterImage::kTransparent, transparent);
    m_objects.m_bTransparent = transparent;
}

BYTE CAcraster::SetColorFlag(BYTE flag)
{
    return std::exchange(m_nColorFlag, flag);
}

int CAcraster::SetStampSize(int size)
{
    return std::exchange(m_nStampSize, size);
}
