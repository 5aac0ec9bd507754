// CWinApp: the program, with its settings in the registry.
#pragma once

#include "standin/afx/afx_thread.h"

#define AFX_IDS_APP_TITLE 0xE000

namespace afx {
struct ProgramStart; // names the program object at its start
}

/// Tells the current program object, or a program without one, about the process.
HALVORAN_STANDIN_API BOOL AfxWinInit(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPWSTR lpCmdLine, int nCmdShow);
/// AfxWinInit, InitInstance, Run and ExitInstance of the program object.
HALVORAN_STANDIN_API int AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPWSTR lpCmdLine, int nCmdShow);

/// One object, usually global, made before AfxWinInit runs.
class HALVORAN_STANDIN_API CWinApp : public CWinThread
{
    DECLARE_DYNAMIC(CWinApp)
public:
    explicit CWinApp(LPCWSTR lpszAppName = nullptr);
    ~CWinApp() override;

    HINSTANCE m_hInstance = nullptr;
    LPWSTR m_lpCmdLine = nullptr;
    int m_nCmdShow = SW_SHOWNORMAL;
    LPCWSTR m_pszAppName = nullptr;     // title of message boxes
    LPCWSTR m_pszRegistryKey = nullptr; // company, under HKEY_CURRENT_USER\Software
    LPCWSTR m_pszProfileName = nullptr; // program, under the company
    LPCWSTR m_pszExeName = nullptr;

    HCURSOR LoadCursor(LPCWSTR lpszResourceName) const;
    HCURSOR LoadCursor(UINT nIDResource) const;
    HICON LoadIcon(LPCWSTR lpszResourceName) const;
    HICON LoadIcon(UINT nIDResource) const;

    /// Values lie under HKEY_CURRENT_USER\Software\<registry key>\<profile name>\<section>. Integers are REG_DWORD,
    /// strings REG_SZ. A missing value, or one of another type, reads as the default.
    UINT GetProfileInt(LPCWSTR lpszSection, LPCWSTR lpszEntry, int nDefault);
    BOOL WriteProfileInt(LPCWSTR lpszSection, LPCWSTR lpszEntry, int nValue);
    CString GetProfileString(LPCWSTR lpszSection, LPCWSTR lpszEntry, LPCWSTR lpszDefault = nullptr);
    /// A null value deletes the entry, a null entry the section.
    BOOL WriteProfileString(LPCWSTR lpszSection, LPCWSTR lpszEntry, LPCWSTR lpszValue);

    BOOL InitInstance() override;
    int Run() override;
    BOOL OnIdle(LONG lCount) override;
    int ExitInstance() override;
    virtual int DoMessageBox(LPCWSTR lpszPrompt, UINT nType, UINT nIDPrompt);
    /// 1 begins, -1 ends, 0 shows the wait cursor again if one is on. Nests.
    virtual void DoWaitCursor(int nCode);

protected:
    void SetRegistryKey(LPCWSTR lpszRegistryKey);

private:
    /// Null when the section is not there, or when no registry key is set.
    HKEY openSection(LPCWSTR section, bool create) const;

    int m_nWaitCursorCount = 0;
    HCURSOR m_hcurWaitCursorRestore = nullptr;
    /// What the pointers above point to, unless someone has put others there.
    CString m_exeName;
    CString m_title;
    CString m_registryKey;

    friend struct afx::ProgramStart;
};

HALVORAN_STANDIN_API CWinApp* AfxGetApp();
HALVORAN_STANDIN_API CWnd* AfxGetMainWnd();
HALVORAN_STANDIN_API LPCWSTR AfxGetAppName();

HALVORAN_STANDIN_API int AfxMessageBox(LPCWSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
HALVORAN_STANDIN_API int AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = UINT_MAX);
/// "%1" in rString is replaced by lpsz1, "%2" by lpsz2.
HALVORAN_STANDIN_API void AfxFormatString1(CString& rString, UINT nIDS, LPCWSTR lpsz1);
HALVORAN_STANDIN_API void AfxFormatString2(CString& rString, UINT nIDS, LPCWSTR lpsz1, LPCWSTR lpsz2);

HALVORAN_STANDIN_API void AfxBeginWaitCursor();
HALVORAN_STANDIN_API void AfxEndWaitCursor();
HALVORAN_STANDIN_API void AfxRestoreWaitCursor();

/// The wait cursor for as long as the object lives.
class HALVORAN_STANDIN_API CWaitCursor
{
public:
    CWaitCursor() { AfxBeginWaitCursor(); }
    ~CWaitCursor() { AfxEndWaitCursor(); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    void Restore() { AfxRestoreWaitCursor(); }
};
