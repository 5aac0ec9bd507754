// Open documents and their locks.
#pragma once

#include "standin/arx/acadstrc.h"
#include "standin/arx/adesk.h"

class AcDbDatabase;

struct AcAp
{
    enum DocLockMode
    {
        kNone = 0x00,
        kAutoWrite = 0x01,
        kNotLocked = 0x02,
        kWrite = 0x04,
        kRead = 0x20,
        kExclusiveWrite = 0x40
    };
};

class HALVORAN_STANDIN_API AcApDocument
{
public:
    virtual ~AcApDocument() = default;

    virtual const ACHAR* fileName() const = 0;
    virtual AcDbDatabase* database() const = 0;
    /// kNotLocked, or the strongest mode held, those of running commands included.
    virtual AcAp::DocLockMode lockMode() const = 0;
};

class HALVORAN_STANDIN_API AcApDocManager
{
public:
    virtual ~AcApDocManager() = default;

    /// The active one's, as long as nobody runs code for another one; null if no drawing is open.
    virtual AcApDocument* curDocument() const = 0;
    virtual AcApDocument* mdiActiveDocument() const = 0;
    /// The open document that the database belongs to; null if it belongs to none.
    virtual AcApDocument* document(const AcDbDatabase* database) const = 0;
    /// Locks are counted: every call that returns eOk needs an unlockDocument of its own.
    virtual Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite,
                                           const ACHAR* globalCommand = nullptr, const ACHAR* localCommand = nullptr,
                                           bool prompt = true) = 0;
    /// eLockViolation if the document is not locked.
    virtual Acad::ErrorStatus unlockDocument(AcApDocument* document) = 0;
};

HALVORAN_STANDIN_API AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
