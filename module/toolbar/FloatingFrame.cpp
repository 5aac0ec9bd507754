#include "module/toolbar/FloatingFrame.h"

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/base/MisreadText.h"
#include "module/base/PostCommandText.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/shell/CFloatingBar.h"

namespace {

// What is posted names no module and is not entered either, so that the module stays loaded; what goes is the current
// raster. The way to unload is the settings dialog.
void OnClose()
{
    const CTempMFC resources;
    if (AfxMessageBox(IDS_CLOSE_TOOLBAR, MB_OKCANCEL) != IDOK)
        return;
    CString text;
    text.Format(L"arx u %s", MisreadText("HVA6_13_64.arx").GetString());
    PostCommandText(text);
    DropCurrentRaster();
    if (CMDIFrameWnd* hostFrame = acedGetAcadFrame())
        hostFrame->RecalcLayout();
}

} // namespace

LRESULT CALLBACK FloatingFrameProc(HWND frame, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CLOSE) {
        OnClose();
        return 0;
    }
    const auto frameProc = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(frame, GWLP_USERDATA));
    if (message == WM_DESTROY && g_pArxApp->m_pToolbar)
        g_pArxApp->m_pToolbar->UnhookFrame();
    return CallWindowProcW(frameProc, frame, message, wParam, lParam);
}
