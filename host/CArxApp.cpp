#include "host/CArxApp.h"

#include "host/CCheckDef.h"
#include "host/CTempMFC.h"
#include "host/CommandTable.h"
#include "host/ExtensionModule.h"
#include "host/MonitorTimer.h"
#include "raster/CAcraster.h"
#include "raster/CTempFile.h"
#include "raster/PendingFileSwap.h"
#include "tools/CTool.h"
#include "tools/RotateStart.h"
#include "tools/ToolMessageHook.h"

CArxApp* g_pArxApp = nullptr;
bool g_bInCommand = false;

namespace {

void DeleteLeftoverDrawing()
{
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    // Nothing in this version writes the file; an older one may have left it.
    DeleteFileW(folder + CString(L"HVtemp.dwg"));
}

} // namespace

CArxApp::CArxApp()
    : m_nClipFormat(RegisterClipboardFormatW(L"Halvoran Raster Pakage")), m_strTempFile(CTempFile().m_strPath)
{
    g_pPendingFileSwap.reset();
}

CArxApp::~CArxApp()
{
    {
        const CTempMFC resources;
        RemoveCommands();
        if (g_pPendingFileSwap) {
            RunFileSwap(*g_pPendingFileSwap);
            g_pPendingFileSwap.reset();
        }
        delete m_pReactor;
        delete m_pToolbar;
        DropRaster();
        delete m_pTool;
        ButtonClickTimer.reset();
        CancelRotateStart();
        StopMonitorTimer();
        DeleteFileW(m_strTempFile);
        DeleteLeftoverDrawing();
        ExtensionModuleEnd();
    }
    CTempMFC::Reset();
}

void CArxApp::DropRaster()
{
    delete m_pRaster;
    m_pRaster = nullptr;
}
