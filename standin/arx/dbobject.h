// Database objects: opened for reading or writing, closed again, erased, watched by reactors.
#pragma once

#include <vector>

#include "standin/arx/dbid.h"
#include "standin/arx/rxobject.h"

class AcDbObject;

struct AcDb
{
    enum OpenMode
    {
        kForRead = 0,
        kForWrite = 1,
        kForNotify = 2
    };

    /// Drawing file formats that can be written.
    enum AcDbDwgVersion
    {
        kDHL_1015 = 23
    };
};

class HALVORAN_STANDIN_API AcDbObjectReactor : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcDbObjectReactor);

    virtual void modified(const AcDbObject*) {}
    virtual void erased(const AcDbObject*, Adesk::Boolean /*erasing*/ = Adesk::kTrue) {}
    virtual void objectClosed(const AcDbObjectId) {}
};

/// An object of a database lives as long as the database and is reached by opening its id; one that was constructed
/// stands alone, belongs to whoever made it, and needs no opening.
class HALVORAN_STANDIN_API AcDbObject : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcDbObject);

    ~AcDbObject() override;
    AcDbObject(const AcDbObject&) = delete;
    AcDbObject& operator=(const AcDbObject&) = delete;

    AcDbObjectId objectId() const { return m_id; }
    AcDbDatabase* database() const;

    /// eNotOpenForRead if the object was not open.
    Acad::ErrorStatus close();
    /// Needs the object open for write.
    Acad::ErrorStatus erase(Adesk::Boolean erasing = true);
    Adesk::Boolean isErased() const;
    Adesk::Boolean isReadEnabled() const;
    Adesk::Boolean isWriteEnabled() const;
    Acad::ErrorStatus upgradeOpen();

    /// The object does not own its reactors. eDuplicateKey if it is there already, eKeyNotFound if it is not.
    Acad::ErrorStatus addReactor(AcDbObjectReactor* reactor) const;
    Acad::ErrorStatus removeReactor(AcDbObjectReactor* reactor) const;

    /// For the stand-in's own use: ties the object to its record.
    void setObjectId(AcDbObjectId id) { m_id = id; }
    const std::vector<AcDbObjectReactor*>& reactors() const { return m_reactors; }

protected:
    AcDbObject() = default;

    /// Whether the call may go on; records the breach by name if not.
    Acad::ErrorStatus assertReadEnabled(const char* call) const;
    Acad::ErrorStatus assertWriteEnabled(const char* call);
    /// After a change of the record: the drawing has something to save, and the reactors hear of it at the closing.
    void setModified();
    /// The same, but for the saving.
    void setShownAnew() { m_modified = true; }
    /// What a class does before its object is erased or unerased.
    virtual void subErase(Adesk::Boolean /*erasing*/) {}

private:
    AcDbObjectId m_id;
    bool m_modified = false;
    mutable std::vector<AcDbObjectReactor*> m_reactors;
};

/// Opens an object. An object may be open for reading many times, or for writing once: eWasOpenForWrite and
/// eWasOpenForRead tell why it cannot be opened, eWasErased that it has gone, eNotThatKindOfClass that it is not of the
/// type asked for, eLockViolation that the document is not locked for writing, eOnLockedLayer that an entity is not to
/// be written.
HALVORAN_STANDIN_API Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                                          AcRxClass* type, bool openErased = false);

template <class Type>
Acad::ErrorStatus acdbOpenObject(Type*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false)
{
    AcDbObject* opened = nullptr;
    const Acad::ErrorStatus status = acdbOpenAcDbObject(opened, id, mode, Type::desc(), openErased);
    object = static_cast<Type*>(opened);
    return status;
}
