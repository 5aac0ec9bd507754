#include "module/start/CCheckDef.h"

#include "module/base/CArxApp.h"

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
