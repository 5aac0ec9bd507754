#include "module/tools/ToolMessageHook.h"

#include "module/base/CArxApp.h"
#include "module/base/COneShotTimer.h"
#include "module/base/CTempMFC.h"
#include "module/shell/CFloatingBar.h"
#include "module/tools/CTool.h"

int ToolInputEnabled = 1;
int ToolHookCount = 0;
std::unique_ptr<CTimer> ButtonClickTimer;
int LastToolIdOnClick = 0;
WORD LastToolCommand = 0;

namespace {

constexpr UINT closeDelay = 100; // ms

HHOOK hook = nullptr;

// The message before: a WM_COMMAND that comes twice with one time stamp must reach a tool once.
DWORD lastTime = 0;
UINT lastMessage = 0;

using MouseHandler = int (CTool::*)(CPoint point, UINT flags);

void Neutralise(MSG& message)
{
    message.message = WM_NULL;
}

void EndTool()
{
    delete g_pArxApp->m_pTool;
}

// Both halves are taken as unsigned: a captured mouse left of or above the view gives large coordinates.
CPoint MousePoint(const MSG& message)
{
    return CPoint(LOWORD(message.lParam), HIWORD(message.lParam));
}

bool IsForWindow(const MSG& message, const CWnd* window)
{
    return window && window->m_hWnd && message.hwnd == window->m_hWnd;
}

int CallMouseHandler(const MSG& message, MouseHandler handler)
{
    return (g_pArxApp->m_pTool->*handler)(MousePoint(message), static_cast<UINT>(message.wParam));
}

// Gives the message to the tool, which ends if it answers 0.
void HandToTool(MSG& message, MouseHandler handler)
{
    const CTempMFC resources;
    if (!CallMouseHandler(message, handler))
        EndTool();
    Neutralise(message);
}

using ToolCloseTimer = COneShotTimer<EndTool>;

// A press on another window ends the tool; on the module's toolbar it may be about to start the tool anew.
void OnPressOutside(const MSG& message)
{
    if (IsForWindow(message, g_pArxApp->m_pToolbar)) {
        ButtonClickTimer = std::make_unique<CTimer>();
        LastToolIdOnClick = g_pArxApp->m_pTool->ToolId();
    }
    EndTool();
}

void OnLButtonDown(MSG& message)
{
    const CTempMFC resources;
    if (!CallMouseHandler(message, &CTool::OnLButtonDown)) {
        CTool* tool = g_pArxApp->m_pTool;
        // The select tool is to live until the click has finished.
        if (tool && tool->ToolId() == ToolIdSelectRaster) {
            ToolCloseTimer::Start(closeDelay);
        } else {
            EndTool();
        }
    }
    Neutralise(message);
}

// False if the tool ended on the way, and the message is to go no further in the chain of hooks.
bool OnMouseMove(MSG& message)
{
    const CTempMFC resources;
    g_pArxApp->m_pTool->UpdateCursor();
    if (!g_pArxApp->m_pTool)
        return false;
    if (!CallMouseHandler(message, &CTool::OnMouseMove))
        EndTool();
    Neutralise(message);
    return true;
}

void OnCommand(MSG& message)
{
    const CTempMFC resources;
    const WORD id = LOWORD(message.wParam);
    if (ButtonClickTimer && !ButtonClickTimer->HasElapsed() && id == LastToolCommand) {
        Neutralise(message);
        return;
    }
    // A command that the tool doesn't know ends it and then runs: so one tool takes the place of another.
    if (g_pArxApp->m_pTool->OnCommand(id)) {
        Neutralise(message);
    } else {
        EndTool();
    }
    ButtonClickTimer = std::make_unique<CTimer>();
    LastToolCommand = id;
}

// False if the message is to go no further in the chain of hooks.
bool Dispatch(MSG& message)
{
    CTool* tool = g_pArxApp->m_pTool;
    const bool forView = IsForWindow(message, tool->m_pView);
    const bool busy = tool->m_bBusy;
    switch (message.message) {
    case WM_MOUSEMOVE:
        return busy || !forView || OnMouseMove(message);
    case WM_LBUTTONDOWN:
        if (!busy && forView) {
            OnLButtonDown(message);
        } else if (!busy) {
            OnPressOutside(message);
        }
        break;
    case WM_LBUTTONUP:
        // Whatever the window: the tool may hold the capture.
        if (!busy)
            HandToTool(message, &CTool::OnLButtonUp);
        break;
    case WM_LBUTTONDBLCLK:
        if (forView) {
            HandToTool(message, &CTool::OnLButtonDblClk);
        } else {
            EndTool();
        }
        break;
    case WM_RBUTTONDOWN:
        if (!busy && forView) {
            HandToTool(message, &CTool::OnRButtonDown);
        } else if (!busy) {
            EndTool();
        }
        break;
    case WM_RBUTTONUP:
        HandToTool(message, &CTool::OnRButtonUp);
        break;
    case WM_KEYDOWN:
        if (message.wParam == VK_ESCAPE)
            EndTool();
        break;
    case WM_COMMAND:
        OnCommand(message);
        break;
    case WM_DESTROY:
        // Whatever window it is for: the frame that the toolbar floats in may be the one that goes.
        if (g_pArxApp->m_pToolbar)
            g_pArxApp->m_pToolbar->UnhookFrame();
        break;
    default:
        break;
    }
    return true;
}

bool HandleMessage(MSG& message)
{
    if (message.message == WM_COMMAND && message.message == lastMessage && message.time == lastTime) {
        Neutralise(message);
        lastMessage = 0;
        lastTime = 0;
        return true;
    }
    lastMessage = message.message;
    lastTime = message.time;
    if (!ToolInputEnabled || !g_pArxApp->m_pTool)
        return true;
    if (!g_pArxApp->m_pTool->HasView()) {
        EndTool();
        return true;
    }
    if (IsForWindow(message, g_pArxApp->m_pTool->m_pView)) {
        if (g_pArxApp->m_pTool->PreMessage(&message))
            Neutralise(message);
        if (!g_pArxApp->m_pTool)
            return true;
    }
    return Dispatch(message);
}

} // namespace

void InstallToolHook()
{
    hook = SetWindowsHookExW(WH_GETMESSAGE, ToolMessageHook, nullptr, GetCurrentThreadId());
    ++ToolHookCount;
}

void RemoveToolHook()
{
    UnhookWindowsHookEx(hook);
    --ToolHookCount;
}

void StopToolCloseTimer()
{
    ToolCloseTimer::Stop();
}

LRESULT CALLBACK ToolMessageHook(int code, WPARAM wParam, LPARAM lParam)
{
    const bool removed = wParam != PM_NOREMOVE;
    if (code >= 0 && ToolHookCount == 1 && removed && !HandleMessage(*reinterpret_cast<MSG*>(lParam)))
        return 0;
    return CallNextHookEx(hook, code, wParam, lParam);
}
