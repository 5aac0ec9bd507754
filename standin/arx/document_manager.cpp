#include "standin/arx/document_manager.h"

#include <algorithm>

#include "standin/arx/dbapserv.h"
#include "standin/arx/object_store.h"
#include "standin/arx/strictness.h"

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

template <class Key> OpenDocument* findWhere(const std::vector<std::unique_ptr<OpenDocument>>& documents, Key key)
{
    const auto found = std::find_if(documents.begin(), documents.end(), [&](const auto& each) { return key(*each); });
    return found == documents.end() ? nullptr : found->get();
}

OpenDocument* DocumentManager::find(DrawingId id) const
{
    return findWhere(m_documents, [&](const OpenDocument& each) { return each.id() == id; });
}

OpenDocument* DocumentManager::find(const AcDbDatabase* database) const
{
    return findWhere(m_documents, [&](const OpenDocument& each) { return database && each.database() == database; });
}

OpenDocument* DocumentManager::find(const AcApDocument* document) const
{
    return findWhere(m_documents, [&](const OpenDocument& each) { return &each == document; });
}

void DocumentManager::add(std::unique_ptr<AcDbDatabase> database)
{
    m_documents.push_back(std::make_unique<OpenDocument>(++m_lastId, std::move(database)));
    activate(*m_documents.back());
}

void DocumentManager::activate(OpenDocument& document)
{
    std::erase(m_activations, &document);
    m_activations.push_back(&document);
    m_active = &document;
}

void DocumentManager::removeActive()
{
    OpenDocument* const gone = m_active;
    m_activations.pop_back();
    m_active = m_activations.empty() ? nullptr : m_activations.back();
    std::erase_if(m_documents, [&](const auto& each) { return each.get() == gone; });
}

Acad::ErrorStatus DocumentManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode, const ACHAR*,
                                                const ACHAR*, bool)
{
    OpenDocument* found = find(document);
    if (!found) {
        recordBreach("A document was locked that is not open.");
        return Acad::eNoDocument;
    }
    if (mode == AcAp::kNone || mode == AcAp::kNotLocked)
        return Acad::eInvalidInput;
    found->locks.push_back(mode);
    return Acad::eOk;
}

Acad::ErrorStatus DocumentManager::unlockDocument(AcApDocument* document)
{
    OpenDocument* found = find(document);
    if (!found) {
        recordBreach("A document was unlocked that is not open.");
        return Acad::eNoDocument;
    }
    if (found->locks.empty()) {
        recordBreach("The document was unlocked more often than locked.");
        return Acad::eLockViolation;
    }
    found->locks.pop_back();
    return Acad::eOk;
}

bool mayWrite(const AcDbDatabase* database)
{
    const OpenDocument* document = documentManager().find(database);
    return !document || document->mayWrite();
}

int documentLocks()
{
    std::size_t count = 0;
    for (const auto& document : documentManager().documents())
        count += document->locks.size();
    return int(count);
}

CommandLock::CommandLock(AcAp::DocLockMode mode) : m_drawing(activeDrawing())
{
    if (OpenDocument* document = documentManager().find(m_drawing))
        document->commandLocks.push_back(mode);
}

CommandLock::~CommandLock()
{
    if (OpenDocument* document = documentManager().find(m_drawing))
        document->commandLocks.pop_back();
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
