#include "module/raster/CRasterObjects.h"

CRasterObjects::CRasterObjects(const ads_name entityName)
{
    ads_name_set(entityName, m_entityName);
    Find();
}

bool CRasterObjects::Find()
{
    return acdbGetObjectId(m_entityId, m_entityName) == Acad::eOk;
}

AcDbObjectId CRasterObjects::ReadEntityData()
{
    m_pEntity->getPixelToModelTransform(m_pixelToModel);
    m_bShown = m_pEntity->isSetDisplayOpt(AcDbRasterImage::kShow);
    m_bTransparent = m_pEntity->isSetDisplayOpt(AcDbRasterImage::kTransparent);
    return m_pEntity->imageDefId();
}

bool CRasterObjects::Open(AcDb::OpenMode mode)
{
    if (acdbOpenObject(m_pEntity, m_entityId, mode) != Acad::eOk) {
        m_pEntity = nullptr;
        return false;
    }
    if (acdbOpenObject(m_pDefinition, ReadEntityData(), mode) != Acad::eOk) {
        m_pDefinition = nullptr;
        CloseEntity();
        return false;
    }
    return true;
}

bool CRasterObjects::OpenDefinition(AcDb::OpenMode mode)
{
    if (!Open(mode))
        return false;
    CloseEntity();
    return true;
}

void CRasterObjects::Close()
{
    if (m_pDefinition)
        m_pDefinition->close();
    m_pDefinition = nullptr;
    CloseEntity();
}

void CRasterObjects::CloseEntity()
{
    if (m_pEntity)
        m_pEntity->close();
    m_pEntity = nullptr;
}
