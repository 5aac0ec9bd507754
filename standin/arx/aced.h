// The editor: reactors on commands, databases and system variables.
#pragma once

#include "standin/arx/rxevent.h"
#include "standin/arx/rxregsvc.h"

class HALVORAN_STANDIN_API AcEditorReactor : public AcRxEventReactor
{
    ACRX_DECLARE_MEMBERS(AcEditorReactor);

    virtual void commandWillStart(const ACHAR* /*command*/) {}
    virtual void commandEnded(const ACHAR* /*command*/) {}
    virtual void commandCancelled(const ACHAR* /*command*/) {}
    virtual void commandFailed(const ACHAR* /*command*/) {}
};

class HALVORAN_STANDIN_API AcEditorReactor2 : public AcEditorReactor
{
    ACRX_DECLARE_MEMBERS(AcEditorReactor2);
};

class HALVORAN_STANDIN_API AcEditor : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcEditor);

    /// The editor does not own its reactors; one that goes must have been removed before.
    virtual void addReactor(AcEditorReactor* reactor) = 0;
    virtual void removeReactor(AcEditorReactor* reactor) = 0;
};

#define acedEditor AcEditor_cast(acrxSysRegistry()->at(ACED_EDITOR_OBJ))
inline AcEditor* AcEditor_cast(AcRxObject* object)
{
    return object && object->isKindOf(AcEditor::desc()) ? static_cast<AcEditor*>(object) : nullptr;
}
