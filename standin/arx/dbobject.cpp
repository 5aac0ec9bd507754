#include "standin/arx/dbobject.h"

#include <algorithm>

#include "standin/arx/dbentity.h"
#include "standin/arx/desk_services.h"
#include "standin/arx/document_manager.h"
#include "standin/arx/object_store.h"
#include "standin/arx/rx_define.h"
#include "standin/arx/strictness.h"
#include "standin/arx/text.h"

ACRX_DEFINE_MEMBERS(AcDbObjectReactor, AcRxObject)
ACRX_DEFINE_MEMBERS(AcDbObject, AcRxObject)
ACRX_DEFINE_MEMBERS(AcDbEntity, AcDbObject)

namespace {

constexpr int mostReaders = 256;

std::string describe(const AcDbStub& stub)
{
    const drawing::Object* record = standin::recordOf(&stub);
    char handle[32];
    std::snprintf(handle, sizeof handle, " %llX", static_cast<unsigned long long>(stub.handle));
    return (record ? std::string(record->name()) : std::string("Object")) + handle;
}

Acad::ErrorStatus refuse(Acad::ErrorStatus status, const AcDbStub& stub, const char* what)
{
    standin::recordBreach(describe(stub) + ' ' + what + '.');
    return status;
}

Acad::ErrorStatus openStub(AcDbStub& stub, AcDb::OpenMode mode)
{
    if (stub.writer)
        return refuse(Acad::eWasOpenForWrite, stub, "was opened while it was open for write");
    if (mode == AcDb::kForRead) {
        if (stub.readers == mostReaders)
            return refuse(Acad::eAtMaxReaders, stub, "was opened for read too many times");
        ++stub.readers;
        return Acad::eOk;
    }
    if (stub.readers > 0)
        return refuse(Acad::eWasOpenForRead, stub, "was opened for write while it was open for read");
    if (!standin::mayWrite(stub.database))
        return refuse(Acad::eLockViolation, stub, "was opened for write without a document lock");
    stub.writer = true;
    return Acad::eOk;
}

// Reactors may remove or delete themselves while they are told.
template <class Call> void tell(const AcDbObject& object, Call call)
{
    const std::vector<AcDbObjectReactor*> present = object.reactors();
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
    AcDbStub* stub = standin::knownStub(reinterpret_cast<std::int64_t>(id.stub()));
    if (!stub || !stub->database)
        return Acad::eNoDatabase;
    if (stub->erased && !openErased)
        return Acad::eWasErased;
    AcDbObject* found = standin::objectOf(*stub);
    if (!found || !standin::recordOf(stub))
        return Acad::ePermanentlyErased;
    if (type && !found->isKindOf(type))
        return Acad::eNotThatKindOfClass;
    const Acad::ErrorStatus status = openStub(*stub, mode);
    if (status == Acad::eOk)
        object = found;
    return status;
}

AcDbDatabase* AcDbObject::database() const
{
    return m_id.database();
}

Acad::ErrorStatus AcDbObject::close()
{
    AcDbStub* stub = m_id.stub();
    if (!stub) {
        standin::recordBreach("An object that is in no database was closed.");
        return Acad::eNotInDatabase;
    }
    if (!stub->open())
        return refuse(Acad::eNotOpenForRead, *stub, "was closed though it was not open");
    if (stub->writer)
        stub->writer = false;
    else
        --stub->readers;
    if (!stub->writer && m_modified) {
        m_modified = false;
        tell(*this, [&](AcDbObjectReactor& reactor) { reactor.modified(this); });
        if (stub->database == standin::drawingDatabase() && standin::deskServices())
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
    AcDbStub* stub = m_id.stub();
    if (!stub)
        return Acad::eNotInDatabase;
    if (erasing == bool(stub->erased))
        return erasing ? Acad::eWasErased : Acad::eInvalidInput;
    drawing::Document& document = stub->database->state().document;
    if (erasing) {
        subErase(true);
        try {
            stub->erased = document.erase(stub->handle);
        } catch (const drawing::DrawingError&) {
            return Acad::eNotApplicable; // what no drawing can be without
        }
    } else {
        document.restore(std::move(*stub->erased));
        stub->erased.reset();
        subErase(false);
    }
    setModified();
    tell(*this, [&](AcDbObjectReactor& reactor) { reactor.erased(this, erasing); });
    return Acad::eOk;
}

Adesk::Boolean AcDbObject::isErased() const
{
    return m_id.isErased();
}

Adesk::Boolean AcDbObject::isReadEnabled() const
{
    return !m_id.stub() || m_id.stub()->open();
}

Adesk::Boolean AcDbObject::isWriteEnabled() const
{
    return !m_id.stub() || m_id.stub()->writer;
}

Acad::ErrorStatus AcDbObject::upgradeOpen()
{
    AcDbStub* stub = m_id.stub();
    if (!stub)
        return Acad::eNotInDatabase;
    if (stub->writer)
        return Acad::eWasOpenForWrite;
    if (stub->readers != 1)
        return refuse(Acad::eWasOpenForRead, *stub, "was upgraded though it was not open for read just once");
    stub->readers = 0;
    const Acad::ErrorStatus status = openStub(*stub, AcDb::kForWrite);
    if (status != Acad::eOk)
        stub->readers = 1;
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
    return refuse(Acad::eNotOpenForRead, *m_id.stub(), (std::string("was not open for ") + call).c_str());
}

Acad::ErrorStatus AcDbObject::assertWriteEnabled(const char* call)
{
    if (isWriteEnabled())
        return Acad::eOk;
    return refuse(Acad::eNotOpenForWrite, *m_id.stub(), (std::string("was not open for write for ") + call).c_str());
}
