#include "module/start/ModuleStartup.h"

#include "module/base/CArxApp.h"
#include "module/base/CDefault.h"
#include "module/base/CTempMFC.h"
#include "module/base/ExtensionModule.h"
#include "module/commands/CommandTable.h"
#include "module/shell/CSplashWnd.h"
#include "module/start/MonitorTimer.h"
#include "module/toolbar/LaMfcToolbar.h"
#include "workerlink/SendToWorker.h"

namespace {

constexpr int started = 1;
constexpr int startedWithoutToolbar = 3;

// The host loads the module by itself at its own start, and when one of the commands is entered.
constexpr auto defaultLoadReason =
    static_cast<AcadApp::LoadReasons>(AcadApp::kOnAutoCADStartup | AcadApp::kOnCommandInvocation);

// The module's file as demand loading is to find it: under the name of the other host edition it is entered all the
// same with the extension of this one.
CString RegisteredModulePath()
{
    CString path = ModuleFilePath();
    CString extension = path.Right(3);
    if (extension.MakeUpper() != CString(L"LTX"))
        return path;
    return path.Left(path.GetLength() - 3) + L"ARX";
}

void RegisterForDemandLoading()
{
    AcadAppInfo application;
    application.setAppName(L"HVA6");
    // An entry that is there keeps the load reason that the user chose.
    if (application.readFromRegistry() != AcadApp::eOk)
        application.setLoadReason(defaultLoadReason);
    application.setModuleName(RegisteredModulePath());
    application.setAppDesc(L"HVA6");
    application.writeToRegistry(false, false);
    RegisterCommands(application);
}

} // namespace

int ModuleStartup()
{
    g_pArxApp->m_hInstance = GetModuleHandleW(L"HVA6_13_64.arx");
    ExtensionModuleInit(g_pArxApp->m_hInstance);
    const CTempMFC resources;
    SetWorkerPath(ProgramFilePath(L"HVV6.exe"));
    CSplashWnd::Enable(true);
    CSplashWnd::Show();
    RegisterForDemandLoading();
    g_pArxApp->m_pDefault = new CDefault;
    // The commands work without a toolbar, but nothing watches over the raster then, and no frames crawl.
    if (!CreateToolbar())
        return startedWithoutToolbar;
    StartMonitorTimer();
    acedArxLoad(L"ACISMUI");
    return started;
}
