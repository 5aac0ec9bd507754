// The command stack: groups of commands that modules register.
#pragma once

#include "standin/arx/acadstrc.h"
#include "standin/arx/rxregsvc.h"

class AcEdCommand;
class AcEdUIContext;

typedef void (*AcRxFunctionPtr)();

#define ACRX_CMD_MODAL 0x00000000
#define ACRX_CMD_TRANSPARENT 0x00000001
#define ACRX_CMD_USEPICKSET 0x00000002
#define ACRX_CMD_REDRAW 0x00000004
#define ACRX_CMD_NOPERSPECTIVE 0x00000008
#define ACRX_CMD_NOMULTIPLE 0x00000010
#define ACRX_CMD_NOTILEMODE 0x00000020
#define ACRX_CMD_NOPAPERSPACE 0x00000040
#define ACRX_CMD_SESSION 0x00200000

/// One registered command, as the stack keeps it.
class HALVORAN_STANDIN_API AcEdCommand : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcEdCommand);

    virtual const ACHAR* globalName() const = 0;
    virtual const ACHAR* localName() const = 0;
    virtual Adesk::Int32 commandFlags() const = 0;
    virtual AcRxFunctionPtr functionAddr() const = 0;
};

class HALVORAN_STANDIN_API AcEdCommandStack : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcEdCommandStack);

    /// eDuplicateKey if the group has a command of either name already; eInvalidInput for an empty name or no function.
    /// Names are compared without regard to case. The strings are copied.
    virtual Acad::ErrorStatus addCommand(const ACHAR* group, const ACHAR* globalName, const ACHAR* localName,
                                         Adesk::Int32 flags, AcRxFunctionPtr function, AcEdUIContext* context = nullptr,
                                         int functionCode = -1, HINSTANCE resources = nullptr,
                                         AcEdCommand** made = nullptr) = 0;
    /// eKeyNotFound if there is no such group or command.
    virtual Acad::ErrorStatus removeGroup(const ACHAR* group) = 0;
    virtual Acad::ErrorStatus removeCmd(const ACHAR* group, const ACHAR* globalName) = 0;
    /// Looks through all groups by the local name, or by the global one if it begins with an underscore; null if none.
    virtual AcEdCommand* lookupCmd(const ACHAR* name) const = 0;
};

#define acedRegCmds AcEdCommandStack_cast(acrxSysRegistry()->at(ACRX_COMMAND_DOCK))
inline AcEdCommandStack* AcEdCommandStack_cast(AcRxObject* object)
{
    return object && object->isKindOf(AcEdCommandStack::desc()) ? static_cast<AcEdCommandStack*>(object) : nullptr;
}
