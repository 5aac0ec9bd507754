// Events of databases, as the host announces them.
#pragma once

#include "standin/arx/rxobject.h"

class AcDbDatabase;

class HALVORAN_STANDIN_API AcRxEventReactor : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcRxEventReactor);

    virtual void databaseConstructed(AcDbDatabase*) {}
    virtual void databaseToBeDestroyed(AcDbDatabase*) {}
    virtual void beginSave(AcDbDatabase*, const ACHAR* /*intendedName*/) {}
    virtual void saveComplete(AcDbDatabase*, const ACHAR* /*actualName*/) {}
    virtual void abortSave(AcDbDatabase*) {}
};
