#include "standin/arx/document_manager.h"

#include <algorithm>

#include "standin/arx/dbapserv.h"
#include "standin/arx/object_store.h"
#include "standin/arx/strictness.h"
#include "standin/host.h"

namespace standin {

namespace {

bool allowsWriting(AcAp::DocLockMode mode)
{
    return mode == AcAp::kAutoWrite || mode == AcAp::kWrite || mode == AcAp::kExclusiveWrite;
}

class HostServices final : public AcDbHostApplicationServices
{
public:
    AcDbDatabase* workingDatabase() const override { return drawingDatabase(); }
};

} // namespace

// Never destroyed: the end of the process must not tell modules of a drawing's end when half of it has gone.
DocumentManager& documentManager()
{
    static auto& manager = *new DocumentManager;
    return manager;
}

const ACHAR* OpenDocument::fileName() const
{
    return m_database ? m_database->state().fileName.c_str() : L"";
}

AcAp::DocLockMode OpenDocument::lockMode() const
{
    AcAp::DocLockMode strongest = AcAp::kNotLocked;
    for (const auto* list : {&locks, &commandLocks}) {
        for (const AcAp::DocLockMode mode : *list) {
            if (strongest == AcAp::kNotLocked ||
                (allowsWriting(mode) && (!allowsWriting(strongest) || mode > strongest)))
                strongest = mode;
        }
    }
    return strongest;
}

bool OpenDocument::mayWrite() const
{
    return allowsWriting(lockMode());
}

// unique_ptr::reset clears its pointer before it deletes, but whoever is told of the end still asks for the database.
void OpenDocument::destroyDatabase()
{
    delete m_database.get();
    static_cast<void>(m_database.release());
}

Acad::ErrorStatus DocumentManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode, const ACHAR*,
                                                const ACHAR*, bool)
{
    if (!document || document != m_current.get()) {
        recordBreach("A document was locked that is not open.");
        return Acad::eNoDocument;
    }
    if (mode == AcAp::kNone || mode == AcAp::kNotLocked)
        return Acad::eInvalidInput;
    m_current->locks.push_back(mode);
    return Acad::eOk;
}

Acad::ErrorStatus DocumentManager::unlockDocument(AcApDocument* document)
{
    if (!document || document != m_current.get()) {
        recordBreach("A document was unlocked that is not open.");
        return Acad::eNoDocument;
    }
    if (m_current->locks.empty()) {
        recordBreach("The document was unlocked more often than locked.");
        return Acad::eLockViolation;
    }
    m_current->locks.pop_back();
    return Acad::eOk;
}

bool mayWrite(const AcDbDatabase* database)
{
    const OpenDocument* document = documentManager().current();
    return !document || document->database() != database || document->mayWrite();
}

int documentLocks()
{
    const OpenDocument* document = documentManager().current();
    return document ? int(document->locks.size()) : 0;
}

} // namespace standin

AcApDocManager* acDocManagerPtr()
{
    return &standin::documentManager();
}

AcDbHostApplicationServices* acdbHostApplicationServices()
{
    static standin::HostServices services;
    return &services;
}
