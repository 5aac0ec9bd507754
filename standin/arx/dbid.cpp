#include "standin/arx/dbid.h"

#include "standin/arx/dbidar.h"
#include "standin/arx/desk_services.h"
#include "standin/arx/object_store.h"

const AcDbObjectId AcDbObjectId::kNull;

bool AcDbObjectId::isValid() const
{
    return standin::recordOf(m_slot) != nullptr;
}

bool AcDbObjectId::isErased() const
{
    return m_slot && (!standin::recordOf(m_slot) || m_slot->erased);
}

AcDbDatabase* AcDbObjectId::database() const
{
    return m_slot ? m_slot->database : nullptr;
}

Adesk::UInt64 AcDbObjectId::handle() const
{
    return m_slot ? m_slot->handle : 0;
}

AcDbObjectId AcDbObjectId::fromSlot(standin::ObjectSlot* slot)
{
    AcDbObjectId id;
    id.m_slot = slot;
    return id;
}

// An entity's name is its id's word with 0 in the second word.
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name)
{
    standin::ObjectSlot* slot = name[1] == 0 ? standin::knownSlot(name[0]) : nullptr;
    id = AcDbObjectId::fromSlot(slot && slot->database ? slot : nullptr);
    return id.isNull() ? Acad::eInvalidAdsName : Acad::eOk;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id)
{
    ads_name_clear(name);
    if (id.isNull())
        return Acad::eNullObjectId;
    name[0] = reinterpret_cast<std::int64_t>(id.slot());
    return Acad::eOk;
}

AcDbObjectIdArray::AcDbObjectIdArray(int room, int)
{
    m_ids.reserve(std::size_t(room));
}

int AcDbObjectIdArray::append(const AcDbObjectId& id)
{
    m_ids.push_back(id);
    return length() - 1;
}

AcDbObjectIdArray& AcDbObjectIdArray::removeAt(int index)
{
    if (index >= 0 && index < length())
        m_ids.erase(m_ids.begin() + index);
    return *this;
}

bool AcDbObjectIdArray::remove(const AcDbObjectId& id)
{
    int index = 0;
    if (!find(id, index))
        return false;
    removeAt(index);
    return true;
}

bool AcDbObjectIdArray::contains(const AcDbObjectId& id) const
{
    int index = 0;
    return find(id, index);
}

bool AcDbObjectIdArray::find(const AcDbObjectId& id, int& index) const
{
    for (index = 0; index < length(); ++index) {
        if (m_ids[std::size_t(index)] == id)
            return true;
    }
    return false;
}

AcDbObjectIdArray& AcDbObjectIdArray::setLogicalLength(int length)
{
    m_ids.resize(std::size_t(length));
    return *this;
}

Acad::ErrorStatus acedGetCurrentSelectionSet(AcDbObjectIdArray& ids)
{
    ids.setLogicalLength(0);
    AcDbDatabase* database = standin::drawingDatabase();
    if (!database || !standin::deskServices())
        return Acad::eNoDocument;
    for (const standin::Handle handle : standin::deskServices()->currentSelection())
        ids.append(standin::idOf(*database, handle));
    return Acad::eOk;
}
