#include "module/dialogs/CSettings.h"

#include <utility>

#include "module/base/CArxApp.h"
#include "module/base/CDefault.h"
#include "module/base/COneShotTimer.h"
#include "module/base/PostCommandText.h"
#include "module/base/RedrawView.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/shell/CFloatingBar.h"

namespace {

constexpr UINT frameDelay = 200; // ms: by then the dialog and its command have gone

constexpr auto loadAtHostStart =
    static_cast<AcadApp::LoadReasons>(AcadApp::kOnAutoCADStartup | AcadApp::kOnCommandInvocation);
constexpr auto loadOnDemand = AcadApp::kOnCommandInvocation;

void HideToolbarTimerProc()
{
    if (CMDIFrameWnd* frame = acedGetAcadFrame()) {
        frame->RecalcLayout(TRUE);
        RedrawView(frame);
    }
}

void UnloadTimerProc()
{
    HideToolbarTimerProc();
    PostCommandText(L"arx u HVA6\r");
}

using HideToolbarTimer = COneShotTimer<HideToolbarTimerProc>;
using UnloadTimer = COneShotTimer<UnloadTimerProc>;

void ShowToolbar(bool shown)
{
    CMDIFrameWnd* frame = acedGetAcadFrame();
    CFloatingBar* toolbar = g_pArxApp->m_pToolbar;
    // It may have been deleted for an unloading before, or have no window.
    if (frame && toolbar && toolbar->m_hWnd)
        frame->ShowControlBar(toolbar, shown, FALSE);
}

bool ModuleIsLocked()
{
    const AcRxDynamicLinker* linker = acrxDynamicLinker;
    return linker && linker->isApplicationLocked(L"HVA6_13_64.arx");
}

} // namespace

CSettings::CSettings() : CDialog(IDD_SETTINGS) {}

void CSettings::CancelTimers()
{
    HideToolbarTimer::Stop();
    UnloadTimer::Stop();
}

void CSettings::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_SETTINGS_UNLOAD, m_unloadButton);
    DDX_Radio(exchange, IDC_SETTINGS_LOAD_AT_START, m_nLoadChoice);
    DDX_Check(exchange, IDC_SETTINGS_UNLOAD, m_bUnload);
    DDX_Check(exchange, IDC_SETTINGS_HIDE_TOOLBAR, m_bHideToolbar);
}

BOOL CSettings::OnInitDialog()
{
    CDialog::OnInitDialog();
    m_pApplication = std::make_unique<AcadAppInfo>();
    m_pApplication->setAppName(L"HVA6");
    m_pApplication->readFromRegistry();
    m_nLoadChoice = m_pApplication->loadReason() & AcadApp::kOnAutoCADStartup ? AtHostStart : OnDemand;
    // What is locked can't be unloaded.
    if (ModuleIsLocked())
        m_unloadButton.EnableWindow(FALSE);
    m_bHideToolbar = !CDefault::GetInteger(ShowToolbarSetting);
    m_bFlat = CDefault::GetInteger(FlatToolbarSetting);
    UpdateData(FALSE);
    return TRUE;
}

void CSettings::StoreLoadChoice()
{
    m_pApplication->setLoadReason(m_nLoadChoice == AtHostStart ? loadAtHostStart : loadOnDemand);
    m_pApplication->writeToRegistry(false, false);
}

void CSettings::OnOK()
{
    UpdateData(TRUE);
    StoreLoadChoice();
    if (m_bUnload) {
        DropCurrentRaster();
        ShowToolbar(false);
        delete std::exchange(g_pArxApp->m_pToolbar, nullptr);
        UnloadTimer::Start(frameDelay);
    } else if (CDefault::GetInteger(ShowToolbarSetting) == m_bHideToolbar) {
        // The one is the negation of the other, so something was changed. A setting that is neither 0 nor 1 equals
        // neither, and stays.
        DropCurrentRaster();
        ShowToolbar(!m_bHideToolbar);
        CDefault::SetInteger(ShowToolbarSetting, !m_bHideToolbar);
        HideToolbarTimer::Start(frameDelay);
    }
    CDialog::OnOK();
}
