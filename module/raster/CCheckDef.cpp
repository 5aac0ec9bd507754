#include "module/raster/CCheckDef.h"

#include "module/base/CArxApp.h"
#include "module/raster/CSaveRaster.h"
#include "module/raster/PendingFileSwap.h"

CCheckDef::CCheckDef()
{
    if (AcEditor* editor = acedEditor)
        editor->addReactor(this);
}

CCheckDef::~CCheckDef()
{
    if (AcEditor* editor = acedEditor)
        editor->removeReactor(this);
}

void CCheckDef::Flush() const
{
    if (!m_bSuspended)
        FlushSaveReactors();
}

void CCheckDef::databaseToBeDestroyed(AcDbDatabase* database)
{
    Flush();
    ForgetDatabaseOfSwap(database);
}

void CCheckDef::saveComplete(AcDbDatabase*, const ACHAR*)
{
    Flush();
}

void CCheckDef::commandWillStart(const ACHAR*)
{
    g_bInCommand = true;
}

void CCheckDef::commandEnded(const ACHAR*)
{
    g_bInCommand = false;
}

void CCheckDef::commandCancelled(const ACHAR*)
{
    g_bInCommand = false;
}

void CCheckDef::commandFailed(const ACHAR*)
{
    g_bInCommand = false;
}
