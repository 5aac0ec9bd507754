// A module's entry in the host's application list, by which it is loaded on demand.
#pragma once

#include <string>

#include "standin/arx/acadstrc.h"
#include "standin/arx/adesk.h"

class HALVORAN_STANDIN_API AcadApp
{
public:
    /// Bits; several reasons may hold together.
    enum LoadReasons
    {
        kOnProxyDetection = 0x01,
        kOnAutoCADStartup = 0x02,
        kOnCommandInvocation = 0x04,
        kOnLoadRequest = 0x08,
        kLoadDisabled = 0x10,
        kTransparentlyLoadable = 0x20
    };
    enum ErrorStatus
    {
        eOk = 0,
        eRegistryEntryNotFound,
        eRegistryOpenError,
        eRegistryCreateError,
        eRegistrySetError
    };
};

class HALVORAN_STANDIN_API AcadAppInfo
{
public:
    AcadAppInfo() = default;

    const ACHAR* appName() const { return m_appName.c_str(); }
    void setAppName(const ACHAR* name);
    const ACHAR* moduleName() const { return m_moduleName.c_str(); }
    void setModuleName(const ACHAR* path);
    const ACHAR* appDesc() const { return m_description.c_str(); }
    void setAppDesc(const ACHAR* description);
    AcadApp::LoadReasons loadReason() const { return m_loadReason; }
    void setLoadReason(AcadApp::LoadReasons reason);

    /// Fills in the entry of the name set before; eRegistryEntryNotFound leaves the object as it is.
    AcadApp::ErrorStatus readFromRegistry();
    /// The flags ask for the machine's list rather than the user's, and for no entry in the user's; both are false
    /// here.
    AcadApp::ErrorStatus writeToRegistry(bool machineWide = false, bool noUserEntry = false);
    AcadApp::ErrorStatus writeCommandNameToRegistry(const ACHAR* globalName, const ACHAR* localName);

private:
    std::wstring m_appName;
    std::wstring m_moduleName;
    std::wstring m_description;
    AcadApp::LoadReasons m_loadReason = AcadApp::LoadReasons(0);
};
