// The one function through which the host enters the module.

#include "module/raster/CAcraster.h"
#include "module/raster/CCheckDef.h"
#include "module/raster/CCurentRaster.h"
#include "module/start/CModuleApp.h"
#include "module/start/ModuleStartup.h"

namespace {

AcRx::AppRetCode InitModule(void* applicationId)
{
    g_pArxApp = new CModuleApp;
    // Start-up has no result of 0 at present. The host would let the module go on it, and the object stays for that.
    if (ModuleStartup() == 0)
        return AcRx::kRetError;
    if (AcRxDynamicLinker* linker = acrxDynamicLinker)
        linker->unlockApplication(applicationId);
    if (AcRxDynamicLinker* linker = acrxDynamicLinker)
        linker->registerAppMDIAware(applicationId);
    g_pArxApp->m_pAppId = applicationId;
    return AcRx::kRetOK;
}

void UnloadModule()
{
    if (!g_pArxApp)
        return;
    // The host frees its images on its own way out.
    if (g_pArxApp->m_pRaster)
        g_pArxApp->m_pRaster->ForgetImage();
    delete g_pArxApp;
    g_pArxApp = nullptr;
}

void FollowDrawing()
{
    acrxUnlockApplication(g_pArxApp->m_pAppId);
    // Not at start-up: only with a drawing is there an editor to react to.
    if (!g_pArxApp->m_pReactor)
        g_pArxApp->m_pReactor = new CCheckDef;
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* applicationId)
{
    switch (message) {
    case AcRx::kInitAppMsg:
        return InitModule(applicationId);
    case AcRx::kUnloadAppMsg:
        UnloadModule();
        break;
    case AcRx::kLoadDwgMsg:
        FollowDrawing();
        break;
    case AcRx::kUnloadDwgMsg:
        if (g_pArxApp)
            DropCurrentRaster();
        break;
    default:
        break;
    }
    return AcRx::kRetOK;
}
