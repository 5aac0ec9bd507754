// CFileDialog: the operating system's dialog for choosing a file.
#pragma once

#include "standin/afx/afx_dialog.h"

/// The object's window is the hook's own child of the dialog: GetParent() is the dialog that the user sees.
class HALVORAN_STANDIN_API CFileDialog : public CDialog
{
    DECLARE_DYNAMIC(CFileDialog)
public:
    /// The filter is pairs of text and patterns, parted by `|` and ended by `||`. The stand-in shows the same dialog
    /// with and without bVistaStyle. dwSize 0 takes the full size of OPENFILENAME.
    explicit CFileDialog(BOOL bOpenFileDialog, LPCWSTR lpszDefExt = nullptr, LPCWSTR lpszFileName = nullptr,
                         DWORD dwFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCWSTR lpszFilter = nullptr,
                         CWnd* pParentWnd = nullptr, DWORD dwSize = 0, BOOL bVistaStyle = TRUE);
    ~CFileDialog() override;

    INT_PTR DoModal() override;

    const OPENFILENAMEW& GetOFN() const { return m_ofn; }
    OPENFILENAMEW& GetOFN() { return m_ofn; }
    /// While the dialog is up these ask the dialog, and then the result.
    CString GetPathName() const;
    CString GetFileName() const;
    CString GetFileExt() const;
    CString GetFileTitle() const;
    CString GetFolderPath() const;
    BOOL GetReadOnlyPref() const;

    OPENFILENAMEW m_ofn{};

protected:
    virtual UINT OnShareViolation(LPCWSTR lpszPathName);
    /// Non-zero keeps the dialog open.
    virtual BOOL OnFileNameOK();
    virtual void OnInitDone();
    virtual void OnFileNameChange();
    virtual void OnFolderChange();
    virtual void OnTypeChange();
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    void OnOK() override;
    void OnCancel() override;

    BOOL m_bOpenFileDialog;
    CString m_strFilter;               // with terminators in place of the bars
    wchar_t m_szFileTitle[MAX_PATH]{}; // GetOFN().lpstrFileTitle
    wchar_t m_szFileName[MAX_PATH]{};  // GetOFN().lpstrFile
};
