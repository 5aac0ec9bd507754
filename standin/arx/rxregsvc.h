// The registry of service objects, the dynamic linker, and the loading of modules.
#pragma once

#include "standin/arx/rxdefs.h"
#include "standin/arx/rxobject.h"

#define ACRX_DYNAMIC_LINKER L"DynamicLinker"
#define ACRX_COMMAND_DOCK L"ACAD_REGISTERED_COMMANDS"
#define ACED_EDITOR_OBJ L"AcEditor"

/// Objects by name; owns none of them.
class HALVORAN_STANDIN_API AcRxDictionary : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcRxDictionary);

    /// Null if there is no object of that name.
    virtual AcRxObject* at(const ACHAR* key) const = 0;
};

/// The dictionary of services: "DynamicLinker", "ACAD_REGISTERED_COMMANDS" and "AcEditor".
HALVORAN_STANDIN_API AcRxDictionary* acrxSysRegistry();

class HALVORAN_STANDIN_API AcRxDynamicLinker : public AcRxObject
{
    ACRX_DECLARE_MEMBERS(AcRxDynamicLinker);

    /// A module is locked against unloading until it asks otherwise. False for an id that is no loaded module's.
    virtual bool unlockApplication(void* applicationId) = 0;
    virtual bool lockApplication(void* applicationId) = 0;
    virtual bool isApplicationLocked(const ACHAR* moduleName) const = 0;
    virtual bool registerAppMDIAware(void* applicationId) = 0;
    /// The name may be a full path, or a bare name that is looked for beside the host program; true if it is loaded.
    virtual bool loadModule(const ACHAR* fileName, bool print) = 0;
    virtual bool unloadModule(const ACHAR* fileName) = 0;
};

#define acrxDynamicLinker AcRxDynamicLinker_cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER))
inline AcRxDynamicLinker* AcRxDynamicLinker_cast(AcRxObject* object)
{
    return object && object->isKindOf(AcRxDynamicLinker::desc()) ? static_cast<AcRxDynamicLinker*>(object) : nullptr;
}

HALVORAN_STANDIN_API bool acrxUnlockApplication(void* applicationId);
HALVORAN_STANDIN_API bool acrxRegisterAppMDIAware(void* applicationId);

/// Loads a further module; RTNORM, or RTERROR if there is none of that name or it refuses.
HALVORAN_STANDIN_API int acedArxLoad(const ACHAR* moduleName);
