// CWinThread: a thread of the program, with or without a message loop.
#pragma once

#include "standin/afx/afx_command.h"
#include "standin/afx/afx_window.h"

using AFX_THREADPROC = UINT (*)(LPVOID);

/// What the class library knows of one thread.
struct AFX_THREAD_STATE
{
    CWnd* m_pWndInit;          // attached to the next window created; see AfxHookWindowCreate
    CWnd* m_pAlternateWndInit; // attached to the next common dialog's hook window
    HHOOK m_hHookOldCbtFilter;
    MSG m_lastSentMsg;
};

/// Deletes itself when its thread ends, unless m_bAutoDelete is cleared; then whoever made it deletes it.
class HALVORAN_STANDIN_API CWinThread : public CCmdTarget
{
    DECLARE_DYNAMIC(CWinThread)
public:
    CWinThread();
    CWinThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam);
    ~CWinThread() override;

    BOOL CreateThread(DWORD dwCreateFlags = 0, UINT nStackSize = 0, LPSECURITY_ATTRIBUTES lpSecurityAttrs = nullptr);
    DWORD ResumeThread();
    BOOL SetThreadPriority(int nPriority);
    BOOL PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam);
    operator HANDLE() const { return m_hThread; }

    virtual BOOL InitInstance();
    /// The message loop; the exit code.
    virtual int Run();
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// One message; false for WM_QUIT.
    virtual BOOL PumpMessage();
    /// lCount counts the calls since the last message; false when there is nothing more to do.
    virtual BOOL OnIdle(LONG lCount);
    virtual BOOL IsIdleMessage(MSG* pMsg);
    virtual int ExitInstance();
    virtual LRESULT ProcessWndProcException(class CException* e, const MSG* pMsg);
    virtual CWnd* GetMainWnd();
    virtual void Delete();

    CWnd* m_pMainWnd = nullptr;
    CWnd* m_pActiveWnd = nullptr;
    BOOL m_bAutoDelete = TRUE;
    HANDLE m_hThread = nullptr;
    DWORD m_nThreadID = 0;
    LPVOID m_pThreadParams = nullptr;
    AFX_THREADPROC m_pfnThreadProc = nullptr;
    MSG m_msgCur{};

private:
    CPoint m_lastMouse;
    UINT m_lastMouseMessage = 0;
};

HALVORAN_STANDIN_API CWinThread* AfxBeginThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam,
                                                int nPriority = THREAD_PRIORITY_NORMAL, UINT nStackSize = 0,
                                                DWORD dwCreateFlags = 0,
                                                LPSECURITY_ATTRIBUTES lpSecurityAttrs = nullptr);
HALVORAN_STANDIN_API void AfxEndThread(UINT nExitCode, BOOL bDelete = TRUE);
HALVORAN_STANDIN_API CWinThread* AfxGetThread();
HALVORAN_STANDIN_API AFX_THREAD_STATE* AfxGetThreadState();
/// Pumps one message through the current thread's object; false for WM_QUIT.
HALVORAN_STANDIN_API BOOL AfxPumpMessage();
HALVORAN_STANDIN_API BOOL AfxPreTranslateMessage(MSG* pMsg);
