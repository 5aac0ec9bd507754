// The one open drawing, and who may write to it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standin/arx/acdocman.h"
#include "standin/arx/dbmain.h"

namespace standin {

class OpenDocument final : public AcApDocument
{
public:
    const ACHAR* fileName() const override;
    AcDbDatabase* database() const override { return m_database.get(); }
    AcAp::DocLockMode lockMode() const override;

    void setDatabase(std::unique_ptr<AcDbDatabase> database) { m_database = std::move(database); }
    /// The database's end, while the document is still there for whoever is told of it.
    void destroyDatabase();

    std::vector<AcAp::DocLockMode> locks;        // of lockDocument
    std::vector<AcAp::DocLockMode> commandLocks; // of the commands that run
    bool mayWrite() const;

private:
    std::unique_ptr<AcDbDatabase> m_database;
};

class DocumentManager final : public AcApDocManager
{
public:
    AcApDocument* curDocument() const override { return m_current.get(); }
    AcApDocument* mdiActiveDocument() const override { return m_current.get(); }
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode, const ACHAR* globalCommand,
                                   const ACHAR* localCommand, bool prompt) override;
    Acad::ErrorStatus unlockDocument(AcApDocument* document) override;

    OpenDocument* current() const { return m_current.get(); }
    void setCurrent(std::unique_ptr<OpenDocument> document) { m_current = std::move(document); }

private:
    std::unique_ptr<OpenDocument> m_current;
};

DocumentManager& documentManager();

/// Whether objects of this database may be opened for write: always, unless it is the open drawing's.
bool mayWrite(const AcDbDatabase* database);

} // namespace standin
