#pragma once

#include "platform/platform.h"

/// The image entity and its definition: both open or neither, and what was read of the entity when it was opened last.
/// Every opening is that of a document that the caller has locked.
class CRasterObjects
{
public:
    /// Nothing is open yet.
    explicit CRasterObjects(const ads_name entityName);
    /// A definition that the caller has open and keeps open; there is no entity, and nothing is ever closed.
    explicit CRasterObjects(AcDbRasterImageDef* definition) : m_pDefinition(definition) {}
    CRasterObjects(const CRasterObjects&) = delete;
    CRasterObjects& operator=(const CRasterObjects&) = delete;

    /// Finds the entity anew, by the name that outlasts whatever the host does to it. False if it has gone.
    bool Find();
    /// Of the entity, as it was found last.
    AcDbObjectId GetEntityId() const { return m_entityId; }
    /// False, with nothing open, if either can't be opened.
    bool Open(AcDb::OpenMode mode);
    /// The entity alone, for a moment: it is closed again, the definition stays open.
    bool OpenDefinition(AcDb::OpenMode mode);
    void Close();
    void CloseEntity();

    AcDbRasterImage* m_pEntity = nullptr; // null while it is not open
    AcDbRasterImageDef* m_pDefinition = nullptr;

    // As of the last opening.
    AcGeMatrix3d m_pixelToModel; // from the host's pixel coordinates to the drawing
    bool m_bShown = false;
    bool m_bTransparent = false;

private:
    AcDbObjectId ReadEntityData();

    ads_name m_entityName = {};
    AcDbObjectId m_entityId;
};
