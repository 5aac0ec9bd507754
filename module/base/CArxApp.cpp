#include "module/base/CArxApp.h"

#include "module/base/CTempFile.h"

CArxApp* g_pArxApp = nullptr;
bool g_bInCommand = false;

CArxApp::CArxApp()
    : m_nClipFormat(RegisterClipboardFormatW(L"Halvoran Raster Pakage")), m_strTempFile(CTempFile().m_strPath)
{}
