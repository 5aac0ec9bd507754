// Identities of database objects.
#pragma once

#include "standin/arx/acadstrc.h"
#include "standin/arx/adsdef.h"

class AcDbDatabase;
namespace standin {
struct ObjectSlot;
}

/// One word; stays safe to ask after the object, or its whole database, has gone.
class HALVORAN_STANDIN_API AcDbObjectId
{
public:
    AcDbObjectId() = default;

    static const AcDbObjectId kNull;

    bool isNull() const { return m_slot == nullptr; }
    void setNull() { m_slot = nullptr; }
    /// Names an object of a database that is still there, be the object erased or not.
    bool isValid() const;
    bool isErased() const;
    /// Null once the database has gone.
    AcDbDatabase* database() const;
    Adesk::UInt64 handle() const;

    bool operator==(const AcDbObjectId& other) const { return m_slot == other.m_slot; }
    bool operator!=(const AcDbObjectId& other) const { return m_slot != other.m_slot; }
    bool operator<(const AcDbObjectId& other) const { return m_slot < other.m_slot; }

    static AcDbObjectId fromSlot(standin::ObjectSlot* slot);
    standin::ObjectSlot* slot() const { return m_slot; }

private:
    standin::ObjectSlot* m_slot = nullptr;
};

/// eInvalidAdsName if the name is no entity's.
HALVORAN_STANDIN_API Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
HALVORAN_STANDIN_API Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
