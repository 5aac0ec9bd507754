// The open drawings, which of them is active, and who may write to them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standin/arx/acdocman.h"
#include "standin/arx/dbmain.h"
#include "standin/host.h"

namespace standin {

class OpenDocument final : public AcApDocument
{
public:
    OpenDocument(DrawingId id, std::unique_ptr<AcDbDatabase> database) : m_id(id), m_database(std::move(database)) {}

    const ACHAR* fileName() const override;
    AcDbDatabase* database() const override { return m_database.get(); }
    AcAp::DocLockMode lockMode() const override;

    DrawingId id() const { return m_id; }
    /// The database's end, while the document is still there for whoever is told of it.
    void destroyDatabase();

    std::vector<AcAp::DocLockMode> locks;        // of lockDocument
    std::vector<AcAp::DocLockMode> commandLocks; // of the commands that run
    bool mayWrite() const;

private:
    DrawingId m_id;
    std::unique_ptr<AcDbDatabase> m_database;
};

class DocumentManager final : public AcApDocManager
{
public:
    AcApDocument* curDocument() const override { return m_active; }
    AcApDocument* mdiActiveDocument() const override { return m_active; }
    AcApDocument* document(const AcDbDatabase* database) const override { return find(database); }
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode, const ACHAR* globalCommand,
                                   const ACHAR* localCommand, bool prompt) override;
    Acad::ErrorStatus unlockDocument(AcApDocument* document) override;

    /// In the order of their opening.
    const std::vector<std::unique_ptr<OpenDocument>>& documents() const { return m_documents; }
    /// Null if no drawing is open.
    OpenDocument* active() const { return m_active; }
    /// Null if there is none of that id, database or address.
    OpenDocument* find(DrawingId id) const;
    OpenDocument* find(const AcDbDatabase* database) const;
    OpenDocument* find(const AcApDocument* document) const;

    /// Becomes the active one.
    void add(std::unique_ptr<AcDbDatabase> database);
    /// One of the open ones.
    void activate(OpenDocument& document);
    /// The one that was active before the active one takes its place.
    void removeActive();

private:
    std::vector<std::unique_ptr<OpenDocument>> m_documents;
    std::vector<OpenDocument*> m_activations; // the same, the one that was active last at the end
    OpenDocument* m_active = nullptr;
    DrawingId m_lastId = 0;
};

DocumentManager& documentManager();

/// Whether objects of this database may be opened for write: always, unless it is an open drawing's.
bool mayWrite(const AcDbDatabase* database);

/// A command's own lock on the document that is active as it begins, for as long as it runs. The command may close the
/// document or activate another one.
class CommandLock
{
public:
    explicit CommandLock(AcAp::DocLockMode mode);
    ~CommandLock();
    CommandLock(const CommandLock&) = delete;
    CommandLock& operator=(const CommandLock&) = delete;

private:
    DrawingId m_drawing;
};

} // namespace standin
