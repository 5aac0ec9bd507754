#pragma once

#include <memory>
#include <vector>

#include "module/shell/CSubCwnd.h"
#include "platform/platform.h"

/// The module's file dialog: opens in the folder of a preset path, keeps the name's extension in step with the chosen
/// type, and paints its frame on the module's own colour. Set what else it is to open with through GetOFN.
class CFileDialogEx : public CFileDialog
{
public:
    /// The filter is pairs of text and pattern, parted by | and ended by ||.
    CFileDialogEx(BOOL openDialog, DWORD flags, LPCWSTR filter, CWnd* parent);
    ~CFileDialogEx() override;
    CFileDialogEx(const CFileDialogEx&) = delete;
    CFileDialogEx& operator=(const CFileDialogEx&) = delete;

    /// IDCANCEL, or what the operating system's dialog returned.
    INT_PTR DoModal() override;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    void OnTypeChange() override;

private:
    static UINT_PTR CALLBACK FileDialogHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void PrepareNameBuffer();
    void OpenInPresetFolder();
    int ShowDialog();
    CString ChosenPattern() const;

    std::unique_ptr<CSubCwnd> m_pFrameSubclass; // while the dialog is open
    LPOFNHOOKPROC m_pOldHook = nullptr;         // the class library's own
    std::vector<wchar_t> m_nameBuffer;          // for a selection of many files
    CString m_presetFolder;                     // what the fields' initial folder points at after a preset path
    CWnd* m_pDialogWindow = nullptr;            // the frame, as the last notification named it
};

/// What the frames of the module's file dialogs are painted in.
extern COLORREF ModuleBackColor;

/// The brush of that colour that all file dialogs share; null when there is none.
HBRUSH FileDialogBrush();
