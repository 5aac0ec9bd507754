#include "module/base/CTempMFC.h"

namespace {

// The names under which the class library's application object keeps its settings.
struct ApplicationNames
{
    LPCWSTR name = nullptr;
    LPCWSTR registryKey = nullptr;
    LPCWSTR profileName = nullptr;

    static ApplicationNames Current()
    {
        const CWinApp* application = AfxGetApp();
        if (!application)
            return {};
        return {application->m_pszAppName, application->m_pszRegistryKey, application->m_pszProfileName};
    }

    void MakeCurrent() const
    {
        CWinApp* application = AfxGetApp();
        if (!application)
            return;
        application->m_pszAppName = name;
        application->m_pszRegistryKey = registryKey;
        application->m_pszProfileName = profileName;
    }
};

int depth = 0;
HINSTANCE moduleResources = nullptr;
HINSTANCE hostResources = nullptr;
ApplicationNames moduleNames;
ApplicationNames hostNames;

void SwitchToModule()
{
    const HINSTANCE current = AfxGetResourceHandle();
    if (current != moduleResources)
        hostResources = current;
    AfxSetResourceHandle(moduleResources);
    hostNames = ApplicationNames::Current();
    moduleNames.MakeCurrent();
}

void SwitchToHost()
{
    AfxSetResourceHandle(hostResources);
    hostNames.MakeCurrent();
}

} // namespace

CTempMFC::CTempMFC()
{
    if (depth++ == 0)
        SwitchToModule();
}

CTempMFC::~CTempMFC()
{
    // A guard that stood when the module was reset has nothing left to put back.
    if (depth > 0 && --depth == 0)
        SwitchToHost();
}

void CTempMFC::SetModule(HINSTANCE resources, LPCWSTR companyName, LPCWSTR applicationName)
{
    moduleResources = resources;
    hostResources = AfxGetResourceHandle();
    moduleNames = {applicationName, companyName, applicationName};
    hostNames = ApplicationNames::Current();
}

void CTempMFC::Reset()
{
    depth = 0;
    SwitchToHost();
}

CTempHost::CTempHost()
{
    if (depth > 0)
        SwitchToHost();
}

CTempHost::~CTempHost()
{
    if (depth > 0)
        SwitchToModule();
}
