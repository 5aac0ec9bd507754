#include <vector>

#include "standin/afx/afx_app.h"
#include "standin/afx/state.h"

IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

CWinApp::CWinApp(LPCWSTR lpszAppName) : m_pszAppName(lpszAppName)
{
    afx::processState().app = this;
    afx::threadState().thread = this;
    ::DuplicateHandle(::GetCurrentProcess(), ::GetCurrentThread(), ::GetCurrentProcess(), &m_hThread, 0, FALSE,
                      DUPLICATE_SAME_ACCESS);
    m_nThreadID = ::GetCurrentThreadId();
    m_bAutoDelete = FALSE; // usually a static object
}

CWinApp::~CWinApp()
{
    if (afx::processState().app == this)
        afx::processState().app = nullptr;
}

BOOL CWinApp::InitInstance()
{
    return TRUE;
}

int CWinApp::Run()
{
    return CWinThread::Run();
}

BOOL CWinApp::OnIdle(LONG lCount)
{
    return CWinThread::OnIdle(lCount);
}

int CWinApp::ExitInstance()
{
    return CWinThread::ExitInstance();
}

void CWinApp::SetRegistryKey(LPCWSTR lpszRegistryKey)
{
    m_registryKey = lpszRegistryKey;
    m_pszRegistryKey = m_registryKey;
    m_pszProfileName = m_pszAppName;
}

HCURSOR CWinApp::LoadCursor(LPCWSTR lpszResourceName) const
{
    return ::LoadCursorW(AfxFindResourceHandle(lpszResourceName, RT_GROUP_CURSOR), lpszResourceName);
}

HCURSOR CWinApp::LoadCursor(UINT nIDResource) const
{
    return LoadCursor(MAKEINTRESOURCEW(nIDResource));
}

HICON CWinApp::LoadIcon(LPCWSTR lpszResourceName) const
{
    return ::LoadIconW(AfxFindResourceHandle(lpszResourceName, RT_GROUP_ICON), lpszResourceName);
}

HICON CWinApp::LoadIcon(UINT nIDResource) const
{
    return LoadIcon(MAKEINTRESOURCEW(nIDResource));
}

void CWinApp::DoWaitCursor(int nCode)
{
    m_nWaitCursorCount += nCode;
    if (m_nWaitCursorCount > 0) {
        const HCURSOR former = ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
        if (nCode > 0 && m_nWaitCursorCount == 1)
            m_hcurWaitCursorRestore = former;
    } else {
        m_nWaitCursorCount = 0;
        if (nCode < 0)
            ::SetCursor(m_hcurWaitCursorRestore);
    }
}

namespace {

int showMessage(LPCWSTR text, LPCWSTR title, UINT type)
{
    if (!(type & MB_ICONMASK)) {
        const UINT buttons = type & MB_TYPEMASK;
        if (buttons == MB_OK || buttons == MB_OKCANCEL || buttons == MB_YESNO || buttons == MB_YESNOCANCEL)
            type |= MB_ICONEXCLAMATION;
    }
    HWND top = nullptr;
    const HWND owner = CWnd::GetSafeOwner(nullptr, &top);
    const int answer = ::MessageBoxW(owner, text, title, type);
    if (top)
        ::EnableWindow(top, TRUE);
    return answer;
}

CString executableName()
{
    wchar_t path[MAX_PATH];
    const DWORD length = ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    CString name(path, static_cast<int>(length));
    name = name.Mid(name.ReverseFind(L'\\') + 1);
    const int dot = name.ReverseFind(L'.');
    return dot > 0 ? name.Left(dot) : name;
}

} // namespace

int CWinApp::DoMessageBox(LPCWSTR lpszPrompt, UINT nType, UINT)
{
    return showMessage(lpszPrompt, AfxGetAppName(), nType);
}

CWinApp* AfxGetApp()
{
    return afx::processState().app;
}

CWnd* AfxGetMainWnd()
{
    CWinThread* thread = AfxGetThread();
    return thread ? thread->GetMainWnd() : nullptr;
}

LPCWSTR AfxGetAppName()
{
    CWinApp* app = AfxGetApp();
    if (app && app->m_pszAppName)
        return app->m_pszAppName;
    static const CString name = executableName();
    return name;
}

// As a struct and not a function, since a friend function can't be both imported and declared again in the class.
struct afx::ProgramStart
{
    static void tell(CWinApp& app, HINSTANCE instance, LPWSTR commandLine, int show)
    {
        app.m_hInstance = instance;
        app.m_lpCmdLine = commandLine;
        app.m_nCmdShow = show;
        app.m_exeName = executableName();
        app.m_pszExeName = app.m_exeName;
        if (app.m_pszAppName)
            return;
        if (!app.m_title.LoadString(AFX_IDS_APP_TITLE))
            app.m_title = app.m_exeName;
        app.m_pszAppName = app.m_title;
    }
};

BOOL AfxWinInit(HINSTANCE hInstance, HINSTANCE, LPWSTR lpCmdLine, int nCmdShow)
{
    ::SetErrorMode(::SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    afx::processState().instance = hInstance;
    afx::processState().resources = hInstance;
    if (CWinApp* app = AfxGetApp())
        afx::ProgramStart::tell(*app, hInstance, lpCmdLine, nCmdShow);
    return TRUE;
}

int AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPWSTR lpCmdLine, int nCmdShow)
{
    CWinApp* app = AfxGetApp();
    if (!app || !AfxWinInit(hInstance, hPrevInstance, lpCmdLine, nCmdShow))
        return -1;
    if (!app->InitInstance()) {
        if (app->m_pMainWnd)
            app->m_pMainWnd->DestroyWindow();
        return app->ExitInstance();
    }
    return app->Run();
}

int AfxMessageBox(LPCWSTR lpszText, UINT nType, UINT nIDHelp)
{
    CWinApp* app = AfxGetApp();
    return app ? app->DoMessageBox(lpszText, nType, nIDHelp) : showMessage(lpszText, AfxGetAppName(), nType);
}

int AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp)
{
    CString text;
    text.LoadString(nIDPrompt);
    return AfxMessageBox(text, nType, nIDHelp == UINT_MAX ? nIDPrompt : nIDHelp);
}

void AfxFormatString1(CString& rString, UINT nIDS, LPCWSTR lpsz1)
{
    AfxFormatString2(rString, nIDS, lpsz1, L"");
}

void AfxFormatString2(CString& rString, UINT nIDS, LPCWSTR lpsz1, LPCWSTR lpsz2)
{
    CString pattern;
    pattern.LoadString(nIDS);
    rString.Empty();
    for (int i = 0; i < pattern.GetLength(); ++i) {
        const wchar_t next = i + 1 < pattern.GetLength() ? pattern[i + 1] : L'\0';
        if (pattern[i] == L'%' && (next == L'1' || next == L'2')) {
            rString += next == L'1' ? lpsz1 : lpsz2;
            ++i;
        } else {
            rString += pattern[i];
        }
    }
}

void AfxBeginWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(1);
}

void AfxEndWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(-1);
}

void AfxRestoreWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(0);
}
