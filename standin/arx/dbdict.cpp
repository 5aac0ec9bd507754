#include "standin/arx/dbdict.h"

#include "standin/arx/object_store.h"
#include "standin/arx/rx_define.h"
#include "standin/arx/text.h"

ACRX_DEFINE_MEMBERS(AcDbDictionaryIterator, AcRxObject)
ACRX_DEFINE_MEMBERS(AcDbDictionary, AcDbObject)

AcDbDictionaryIterator::AcDbDictionaryIterator(std::vector<Entry> entries) : m_entries(std::move(entries)) {}

bool AcDbDictionaryIterator::next()
{
    if (!done())
        ++m_next;
    return !done();
}

const ACHAR* AcDbDictionaryIterator::name() const
{
    return done() ? nullptr : m_entries[m_next].name.c_str();
}

AcDbObjectId AcDbDictionaryIterator::objectId() const
{
    return done() ? AcDbObjectId() : m_entries[m_next].id;
}

Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& object, AcDb::OpenMode mode)
{
    object = nullptr;
    return done() ? Acad::eInvalidIndex : acdbOpenAcDbObject(object, objectId(), mode, AcDbObject::desc());
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const
{
    assertReadEnabled("newIterator");
    std::vector<AcDbDictionaryIterator::Entry> entries;
    if (const auto* record = standin::recordOf<drawing::Dictionary>(objectId())) {
        for (const auto& entry : record->entries)
            entries.push_back({standin::fromUtf8(entry.key), standin::idOf(*database(), entry.object)});
    }
    return new AcDbDictionaryIterator(std::move(entries));
}

Adesk::UInt32 AcDbDictionary::numEntries() const
{
    assertReadEnabled("numEntries");
    const auto* record = standin::recordOf<drawing::Dictionary>(objectId());
    return record ? Adesk::UInt32(record->entries.size()) : 0;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* name, AcDbObjectId& id) const
{
    id.setNull();
    const Acad::ErrorStatus status = assertReadEnabled("getAt");
    if (status != Acad::eOk || !name)
        return status == Acad::eOk ? Acad::eInvalidInput : status;
    const auto* record = standin::recordOf<drawing::Dictionary>(objectId());
    const drawing::Handle handle = record ? record->find(standin::toUtf8(name)) : 0;
    if (handle == 0)
        return Acad::eKeyNotFound;
    id = standin::idOf(*database(), handle);
    return Acad::eOk;
}
