#include <process.h>

#include "standin/afx/afx_app.h"
#include "standin/afx/afx_exception.h"
#include "standin/afx/afx_frame.h"
#include "standin/afx/afx_thread.h"
#include "standin/afx/state.h"

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)

CWinThread::CWinThread() = default;

CWinThread::CWinThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam)
    : m_pThreadParams(pParam), m_pfnThreadProc(pfnThreadProc)
{}

CWinThread::~CWinThread()
{
    if (m_hThread)
        ::CloseHandle(m_hThread);
    if (afx::threadState().thread == this)
        afx::threadState().thread = nullptr;
}

namespace {

unsigned __stdcall threadEntry(void* object)
{
    CWinThread* thread = static_cast<CWinThread*>(object);
    afx::threadState().thread = thread;
    UINT code = 0;
    if (thread->m_pfnThreadProc) {
        code = thread->m_pfnThreadProc(thread->m_pThreadParams);
    } else {
        code = static_cast<UINT>(thread->InitInstance() ? thread->Run() : thread->ExitInstance());
    }
    AfxEndThread(code);
    return code;
}

} // namespace

BOOL CWinThread::CreateThread(DWORD dwCreateFlags, UINT nStackSize, LPSECURITY_ATTRIBUTES lpSecurityAttrs)
{
    // Suspended at first, so that the handle stands here before the thread can look at it.
    unsigned id = 0;
    m_hThread = reinterpret_cast<HANDLE>(
        _beginthreadex(lpSecurityAttrs, nStackSize, threadEntry, this, dwCreateFlags | CREATE_SUSPENDED, &id));
    m_nThreadID = id;
    if (!m_hThread)
        return FALSE;
    if (!(dwCreateFlags & CREATE_SUSPENDED))
        ResumeThread();
    return TRUE;
}

DWORD CWinThread::ResumeThread()
{
    return ::ResumeThread(m_hThread);
}

BOOL CWinThread::SetThreadPriority(int nPriority)
{
    return ::SetThreadPriority(m_hThread, nPriority);
}

BOOL CWinThread::PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::PostThreadMessageW(m_nThreadID, message, wParam, lParam);
}

BOOL CWinThread::InitInstance()
{
    return FALSE;
}

int CWinThread::ExitInstance()
{
    return static_cast<int>(m_msgCur.wParam); // that of WM_QUIT
}

void CWinThread::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

CWnd* CWinThread::GetMainWnd()
{
    return m_pActiveWnd ? m_pActiveWnd : m_pMainWnd;
}

int CWinThread::Run()
{
    bool idle = true;
    LONG idleCount = 0;
    MSG waiting{};
    for (;;) {
        while (idle && !::PeekMessageW(&waiting, nullptr, 0, 0, PM_NOREMOVE))
            idle = OnIdle(idleCount++);
        do {
            if (!PumpMessage())
                return ExitInstance();
            if (IsIdleMessage(&m_msgCur)) {
                idle = true;
                idleCount = 0;
            }
        } while (::PeekMessageW(&waiting, nullptr, 0, 0, PM_NOREMOVE));
    }
}

BOOL CWinThread::PumpMessage()
{
    if (!::GetMessageW(&m_msgCur, nullptr, 0, 0))
        return FALSE;
    // A handler may run a loop of its own, which overwrites m_msgCur.
    MSG message = m_msgCur;
    if (message.message != WM_KICKIDLE && !PreTranslateMessage(&message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return TRUE;
}

BOOL CWinThread::PreTranslateMessage(MSG* pMsg)
{
    CWnd* mainWindow = AfxGetMainWnd();
    if (CWnd::WalkPreTranslateTree(mainWindow ? mainWindow->m_hWnd : nullptr, pMsg))
        return TRUE;
    // Accelerators of the main window work from its modeless dialogs and floating bars too.
    if (mainWindow && pMsg->hwnd && CWnd::FromHandle(pMsg->hwnd)->GetTopLevelParent() != mainWindow)
        return mainWindow->PreTranslateMessage(pMsg);
    return FALSE;
}

namespace {

BOOL CALLBACK updateFloatingFrame(HWND window, LPARAM mainWindow)
{
    const CWnd* frame = CWnd::FromHandlePermanent(window);
    if (frame && window != reinterpret_cast<HWND>(mainWindow) && frame->IsKindOf(RUNTIME_CLASS(CFrameWnd)) &&
        ::IsWindowVisible(window))
        CWnd::SendMessageToDescendants(window, WM_IDLEUPDATECMDUI, TRUE, 0);
    return TRUE;
}

} // namespace

BOOL CWinThread::OnIdle(LONG lCount)
{
    if (lCount <= 0) {
        CWnd* mainWindow = m_pMainWnd;
        if (mainWindow && mainWindow->m_hWnd && mainWindow->IsWindowVisible()) {
            ::SendMessageW(mainWindow->m_hWnd, WM_IDLEUPDATECMDUI, TRUE, 0);
            CWnd::SendMessageToDescendants(mainWindow->m_hWnd, WM_IDLEUPDATECMDUI, TRUE, 0);
            // Floating frames are no descendants of the main window.
            ::EnumThreadWindows(::GetCurrentThreadId(), updateFloatingFrame,
                                reinterpret_cast<LPARAM>(mainWindow->m_hWnd));
        }
    } else {
        afx::deleteTemporaryObjects();
    }
    return lCount < 1;
}

BOOL CWinThread::IsIdleMessage(MSG* pMsg)
{
    // A mouse that rests sends moves all the same, and painting changes no state.
    if (pMsg->message == WM_MOUSEMOVE || pMsg->message == WM_NCMOUSEMOVE) {
        if (m_lastMouse == pMsg->pt && pMsg->message == m_lastMouseMessage)
            return FALSE;
        m_lastMouse = pMsg->pt;
        m_lastMouseMessage = pMsg->message;
        return TRUE;
    }
    constexpr UINT caretBlink = 0x0118;
    return pMsg->message != WM_PAINT && pMsg->message != caretBlink;
}

LRESULT CWinThread::ProcessWndProcException(CException* e, const MSG* pMsg)
{
    if (pMsg->message == WM_CREATE)
        return -1;
    if (pMsg->message == WM_PAINT) {
        ::ValidateRect(pMsg->hwnd, nullptr); // or the same fault would come for ever
        return 0;
    }
    if (!e->IsKindOf(RUNTIME_CLASS(CUserException)))
        e->ReportError(MB_ICONSTOP);
    return pMsg->message == WM_COMMAND; // such a command counts as taken
}

CWinThread* AfxGetThread()
{
    CWinThread* thread = afx::threadState().thread;
    return thread ? thread : AfxGetApp();
}

CWinThread* AfxBeginThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam, int nPriority, UINT nStackSize,
                           DWORD dwCreateFlags, LPSECURITY_ATTRIBUTES lpSecurityAttrs)
{
    CWinThread* thread = new CWinThread(pfnThreadProc, pParam);
    if (!thread->CreateThread(dwCreateFlags | CREATE_SUSPENDED, nStackSize, lpSecurityAttrs)) {
        thread->Delete();
        return nullptr;
    }
    thread->SetThreadPriority(nPriority);
    if (!(dwCreateFlags & CREATE_SUSPENDED))
        thread->ResumeThread();
    return thread;
}

void AfxEndThread(UINT nExitCode, BOOL bDelete)
{
    CWinThread* thread = afx::threadState().thread;
    if (thread && bDelete)
        thread->Delete();
    afx::endThreadState();
    _endthreadex(nExitCode);
}

BOOL AfxPreTranslateMessage(MSG* pMsg)
{
    CWinThread* thread = AfxGetThread();
    return thread ? thread->PreTranslateMessage(pMsg) : CWnd::WalkPreTranslateTree(nullptr, pMsg);
}

BOOL AfxPumpMessage()
{
    if (CWinThread* thread = AfxGetThread())
        return thread->PumpMessage();
    MSG message{};
    if (!::GetMessageW(&message, nullptr, 0, 0))
        return FALSE;
    if (message.message != WM_KICKIDLE && !AfxPreTranslateMessage(&message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return TRUE;
}
