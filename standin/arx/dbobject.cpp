#include "standin/arx/dbobject.h"

#include <algorithm>

#include "standin/arx/dbentity.h"
#include "standin/arx/desk_services.h"
#include "standin/arx/document_manager.h"
#include "standin/arx/edit_log.h"
#include "standin/arx/object_store.h"
#include "standin/arx/rx_define.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"

ACRX_DEFINE_MEMBERS(AcDbObjectReactor, AcRxObject)
ACRX_DEFINE_MEMBERS(AcDbObject, AcRxObject)
ACRX_DEFINE_MEMBERS(AcDbEntity, AcDbObject)

namespace {

constexpr int mostReaders = 256;

std::string describe(const standin::ObjectSlot& slot)
{
    const drawing::Object* record = standin::recordOf(&slot);
    char handle[32];
    std::snprintf(handle, sizeof handle, " %llX", static_cast<unsigned long long>(slot.handle));
    return (record ? std::string(record->name()) : std::string("Object")) + handle;
}

Acad::ErrorStatus refuse(Acad::ErrorStatus status, const standin::ObjectSlot& slot, const char* what)
{
    standin::recordBreach(describe(slot) + ' ' + what + '.');
    return status;
}

Acad::ErrorStatus openSlot(standin::ObjectSlot& slot, AcDb::OpenMode mode)
{
    if (mode == AcDb::kForNotify) {
        ++slot.notifiers;
        return Acad::eOk;
    }
    if (slot.writer)
        return refuse(Acad::eWasOpenForWrite, slot, "was opened while it was open for write");
    if (mode == AcDb::kForRead) {
        if (slot.readers == mostReaders)
            return refuse(Acad::eAtMaxReaders, slot, "was opened for read too many times");
        ++slot.readers;
        return Acad::eOk;
    }
    if (slot.readers > 0)
        return refuse(Acad::eWasOpenForRead, slot, "was opened for write while it was open for read");
    if (!standin::mayWrite(slot.database))
        return refuse(Acad::eLockViolation, slot, "was opened for write without a document lock");
    if (standin::onLockedLayer(slot))
        return Acad::eOnLockedLayer;
    slot.writer = true;
    return Acad::eOk;
}

// Reactors may remove or delete themselves while they are told.
template <class Call> void tell(const AcDbObject& object, Call call)
{
    const std::vector<AcDbObjectReactor*> present(object.reactors().begin(), object.reactors().end());
    for (AcDbObjectReactor* reactor : present) {
        const auto& now = object.reactors();
        if (std::find(now.begin(), now.end(), reactor) != now.end())
            call(*reactor);
    }
}

} // namespace

AcDbObject::~AcDbObject() = default;

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode, AcRxClass* type,
                                     bool openErased)
{
    object = nullptr;
    if (id.isNull())
        return Acad::eNullObjectId;
    standin::ObjectSlot* slot = standin::knownSlot(reinterpret_cast<std::int64_t>(id.slot()));
    if (!slot || !slot->database)
        return Acad::eNoDatabase;
    if (slot->erased && !openErased)
        return Acad::eWasErased;
    AcDbObject* found = standin::objectOf(*slot);
    if (!found || !standin::recordOf(slot))
        return Acad::ePermanentlyErased;
    if (type && !found->isKindOf(type))
        return Acad::eNotThatKindOfClass;
    const Acad::ErrorStatus status = openSlot(*slot, mode);
    if (status == Acad::eOk)
        object = found;
    return status;
}

AcDbDatabase* AcDbObject::database() const
{
    return m_id.database();
}

void AcDbObject::setModified()
{
    m_modified = true;
    if (database())
        database()->state().changes.note();
}

Acad::ErrorStatus AcDbObject::close()
{
    standin::ObjectSlot* slot = m_id.slot();
    if (!slot) {
        standin::recordBreach("An object that is in no database was closed.");
        return Acad::eNotInDatabase;
    }
    if (!slot->open())
        return refuse(Acad::eNotOpenForRead, *slot, "was closed though it was not open");
    if (slot->notifiers > 0) { // opened last
        --slot->notifiers;
    } else if (slot->writer) {
        slot->writer = false;
    } else {
        --slot->readers;
    }
    if (!slot->writer && m_modified) {
        m_modified = false;
        tell(*this, [&](AcDbObjectReactor& reactor) { reactor.modified(this); });
        if (slot->database == standin::drawingDatabase() && standin::deskServices())
            standin::deskServices()->redraw();
    }
    tell(*this, [&](AcDbObjectReactor& reactor) { reactor.objectClosed(m_id); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(Adesk::Boolean erasing)
{
    const Acad::ErrorStatus status = assertWriteEnabled("erase");
    if (status != Acad::eOk)
        return status;
    standin::ObjectSlot* slot = m_id.slot();
    if (!slot)
        return Acad::eNotInDatabase;
    if (erasing == bool(slot->erased))
        return erasing ? Acad::eWasErased : Acad::eInvalidInput;
    drawing::Document& document = slot->database->state().document;
    if (erasing) {
        subErase(true);
        try {
            slot->erased = document.erase(slot->handle);
        } catch (const drawing::DrawingError&) {
            return Acad::eNotApplicable; // what no drawing can be without
        }
    } else {
        document.restore(std::move(*slot->erased));
        slot->erased.reset();
        subErase(false);
    }
    setModified();
    if (isKindOf(AcDbEntity::desc()))
        standin::noteEntityChange(slot->database, slot->handle, !erasing);
    tell(*this, [&](AcDbObjectReactor& reactor) { reactor.erased(this, erasing); });
    return Acad::eOk;
}

Adesk::Boolean AcDbObject::isErased() const
{
    return m_id.isErased();
}

Adesk::Boolean AcDbObject::isReadEnabled() const
{
    return !m_id.slot() || m_id.slot()->open();
}

Adesk::Boolean AcDbObject::isWriteEnabled() const
{
    return !m_id.slot() || m_id.slot()->writer;
}

Acad::ErrorStatus AcDbObject::upgradeOpen()
{
    standin::ObjectSlot* slot = m_id.slot();
    if (!slot)
        return Acad::eNotInDatabase;
    if (slot->writer)
        return Acad::eWasOpenForWrite;
    if (slot->readers != 1)
        return refuse(Acad::eWasOpenForRead, *slot, "was upgraded though it was not open for read just once");
    slot->readers = 0;
    const Acad::ErrorStatus status = openSlot(*slot, AcDb::kForWrite);
    if (status != Acad::eOk)
        slot->readers = 1;
    return status;
}

Acad::ErrorStatus AcDbObject::addReactor(AcDbObjectReactor* reactor) const
{
    if (!reactor)
        return Acad::eNullObjectPointer;
    if (std::find(m_reactors.begin(), m_reactors.end(), reactor) != m_reactors.end())
        return Acad::eDuplicateKey;
    m_reactors.push_back(reactor);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::removeReactor(AcDbObjectReactor* reactor) const
{
    return std::erase(m_reactors, reactor) ? Acad::eOk : Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbObject::assertReadEnabled(const char* call) const
{
    if (isReadEnabled())
        return Acad::eOk;
    return refuse(Acad::eNotOpenForRead, *m_id.slot(), (std::string("was not open for ") + call).c_str());
}

Acad::ErrorStatus AcDbObject::assertWriteEnabled(const char* call)
{
    if (isWriteEnabled())
        return Acad::eOk;
    return refuse(Acad::eNotOpenForWrite, *m_id.slot(), (std::string("was not open for write for ") + call).c_str());
}
