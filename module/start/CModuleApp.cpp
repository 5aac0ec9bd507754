#include "module/start/CModuleApp.h"

#include <utility>

#include "module/base/CDefault.h"
#include "module/base/CTempMFC.h"
#include "module/base/ExtensionModule.h"
#include "module/commands/CommandTable.h"
#include "module/dialogs/CSettings.h"
#include "module/raster/CCheckDef.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/CSaveRaster.h"
#include "module/raster/PendingFileSwap.h"
#include "module/shell/CFloatingBar.h"
#include "module/shell/CSplashWnd.h"
#include "module/start/MonitorTimer.h"
#include "module/tools/CTool.h"
#include "module/tools/RotateStart.h"
#include "module/tools/ToolMessageHook.h"
#include "workerlink/CMemMapWatch.h"

namespace {

void DeleteLeftoverDrawing()
{
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    // Nothing in this version writes the file; an older one may have left it.
    DeleteFileW(folder + CString(L"HVtemp.dwg"));
}

} // namespace

CModuleApp::CModuleApp()
{
    g_pPendingFileSwap.reset();
}

CModuleApp::~CModuleApp()
{
    {
        const CTempMFC resources;
        RemoveCommands();
        FlushSaveReactors();
        RunPendingFileSwap();
        delete std::exchange(m_pReactor, nullptr);
        delete std::exchange(m_pDefault, nullptr);
        delete std::exchange(m_pToolbar, nullptr);
        DropCurrentRaster();
        CSaveRaster::ForgetAll();
        // The raster's end may have saved another one onto a file that is held.
        RunPendingFileSwap();
        delete m_pTool;
        ButtonClickTimer.reset();
        CancelRotateStart();
        CSettings::CancelTimers();
        CSplashWnd::Close();
        StopMonitorTimer();
        CMemMapWatch::WakeAll();
        DeleteFileW(m_strTempFile);
        DeleteLeftoverDrawing();
        ExtensionModuleEnd();
    }
    CTempMFC::Reset();
}
