#pragma once

#include "platform/platform.h"

/// Follows the host's editor: keeps g_bInCommand true, and flushes the save reactors whenever a drawing was saved or a
/// database goes, of whichever drawing.
class CCheckDef : public AcEditorReactor2
{
public:
    CCheckDef();
    ~CCheckDef() override;
    CCheckDef(const CCheckDef&) = delete;
    CCheckDef& operator=(const CCheckDef&) = delete;

    /// While suspended it leaves the save reactors alone: the module itself makes and saves a database.
    void SetSuspended(int suspended) { m_bSuspended = suspended; }

    void databaseToBeDestroyed(AcDbDatabase* database) override;
    void saveComplete(AcDbDatabase* database, const ACHAR* actualName) override;
    void commandWillStart(const ACHAR* command) override;
    void commandEnded(const ACHAR* command) override;
    void commandCancelled(const ACHAR* command) override;
    void commandFailed(const ACHAR* command) override;

private:
    void Flush() const;

    int m_bSuspended = 0;
};
