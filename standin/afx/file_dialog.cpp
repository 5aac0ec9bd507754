#include "standin/afx/afx_file_dialog.h"
#include "standin/afx/state.h"

IMPLEMENT_DYNAMIC(CFileDialog, CDialog)

namespace {

// The first message of the hook's window finds the dialog that is being opened and attaches it.
UINT_PTR CALLBACK commonDialogHook(HWND window, UINT message, WPARAM, LPARAM)
{
    AFX_THREAD_STATE* state = AfxGetThreadState();
    if (state->m_pAlternateWndInit) {
        CWnd* object = state->m_pAlternateWndInit;
        state->m_pAlternateWndInit = nullptr;
        object->SubclassWindow(window);
    }
    if (message != WM_INITDIALOG)
        return 0;
    // This message came before the object was attached, so that its message map has not seen it.
    CDialog* dialog = DYNAMIC_DOWNCAST(CDialog, CWnd::FromHandlePermanent(window));
    return dialog ? static_cast<UINT_PTR>(dialog->OnInitDialog()) : TRUE;
}

} // namespace

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCWSTR lpszDefExt, LPCWSTR lpszFileName, DWORD dwFlags,
                         LPCWSTR lpszFilter, CWnd* pParentWnd, DWORD dwSize, BOOL)
    : CDialog(0u, pParentWnd), m_bOpenFileDialog(bOpenFileDialog), m_strFilter(lpszFilter)
{
    m_ofn.lStructSize = dwSize ? dwSize : sizeof m_ofn;
    m_ofn.Flags = dwFlags | OFN_ENABLEHOOK | OFN_EXPLORER | OFN_ENABLESIZING;
    m_ofn.lpfnHook = commonDialogHook;
    m_ofn.hInstance = AfxGetResourceHandle();
    m_ofn.lpstrDefExt = lpszDefExt;
    m_ofn.lpstrFile = m_szFileName;
    m_ofn.nMaxFile = MAX_PATH;
    m_ofn.lpstrFileTitle = m_szFileTitle;
    m_ofn.nMaxFileTitle = MAX_PATH;
    if (lpszFileName)
        lstrcpynW(m_szFileName, lpszFileName, MAX_PATH);
    if (lpszFilter) {
        m_strFilter.Replace(L'|', L'\0');
        m_ofn.lpstrFilter = m_strFilter;
    }
}

CFileDialog::~CFileDialog() = default;

INT_PTR CFileDialog::DoModal()
{
    // The name buffer is cleared behind the name, as the result may be several names in a row.
    const int nameLength = lstrlenW(m_ofn.lpstrFile);
    ZeroMemory(m_ofn.lpstrFile + nameLength, (m_ofn.nMaxFile - static_cast<DWORD>(nameLength)) * sizeof(wchar_t));

    const HWND focus = ::GetFocus();
    m_ofn.hwndOwner = PreModal();
    AfxUnhookWindowCreate();
    const bool ownerDisabled = m_ofn.hwndOwner && ::IsWindowEnabled(m_ofn.hwndOwner);
    if (ownerDisabled)
        ::EnableWindow(m_ofn.hwndOwner, FALSE);

    AFX_THREAD_STATE* state = AfxGetThreadState();
    if (m_ofn.Flags & OFN_EXPLORER) {
        state->m_pAlternateWndInit = this;
    } else {
        AfxHookWindowCreate(this);
    }
    const BOOL result = m_bOpenFileDialog ? ::GetOpenFileNameW(&m_ofn) : ::GetSaveFileNameW(&m_ofn);
    state->m_pAlternateWndInit = nullptr;

    if (ownerDisabled)
        ::EnableWindow(m_ofn.hwndOwner, TRUE);
    if (::IsWindow(focus))
        ::SetFocus(focus);
    PostModal();
    return result ? result : IDCANCEL;
}

namespace {

CString askDialog(HWND hookWindow, UINT message)
{
    CString answer;
    const LRESULT length = ::SendMessageW(::GetParent(hookWindow), message, MAX_PATH,
                                          reinterpret_cast<LPARAM>(answer.GetBuffer(MAX_PATH)));
    answer.ReleaseBuffer();
    return length < 0 ? CString() : answer;
}

} // namespace

CString CFileDialog::GetPathName() const
{
    return m_hWnd ? askDialog(m_hWnd, CDM_GETFILEPATH) : CString(m_ofn.lpstrFile);
}

CString CFileDialog::GetFileName() const
{
    return m_hWnd ? askDialog(m_hWnd, CDM_GETSPEC) : CString(m_ofn.lpstrFileTitle);
}

CString CFileDialog::GetFileExt() const
{
    const CString name = GetFileName();
    const int dot = name.ReverseFind(L'.');
    return dot < 0 ? CString() : name.Mid(dot + 1);
}

CString CFileDialog::GetFileTitle() const
{
    const CString name = GetFileName();
    const int dot = name.ReverseFind(L'.');
    return dot < 0 ? name : name.Left(dot);
}

CString CFileDialog::GetFolderPath() const
{
    if (m_hWnd)
        return askDialog(m_hWnd, CDM_GETFOLDERPATH);
    const CString path = GetPathName();
    return path.Left(path.ReverseFind(L'\\'));
}

BOOL CFileDialog::GetReadOnlyPref() const
{
    return (m_ofn.Flags & OFN_READONLY) != 0;
}

BOOL CFileDialog::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (CDialog::OnNotify(wParam, lParam, pResult))
        return TRUE;
    const OFNOTIFYW* notification = reinterpret_cast<const OFNOTIFYW*>(lParam);
    *pResult = 0;
    switch (notification->hdr.code) {
    case CDN_INITDONE:
        OnInitDone();
        return TRUE;
    case CDN_SELCHANGE:
        OnFileNameChange();
        return TRUE;
    case CDN_FOLDERCHANGE:
        OnFolderChange();
        return TRUE;
    case CDN_TYPECHANGE:
        OnTypeChange();
        return TRUE;
    case CDN_SHAREVIOLATION:
        *pResult = OnShareViolation(notification->pszFile);
        break;
    case CDN_FILEOK:
        *pResult = OnFileNameOK();
        break;
    default:
        return FALSE;
    }
    // A dialog's answer to a notification lies in its window's words.
    ::SetWindowLongPtrW(m_hWnd, DWLP_MSGRESULT, *pResult);
    return TRUE;
}

UINT CFileDialog::OnShareViolation(LPCWSTR)
{
    return OFN_SHAREWARN; // the operating system's own warning
}

BOOL CFileDialog::OnFileNameOK()
{
    return FALSE;
}

void CFileDialog::OnInitDone() {}

void CFileDialog::OnFileNameChange() {}

void CFileDialog::OnFolderChange() {}

void CFileDialog::OnTypeChange() {}

void CFileDialog::OnOK()
{
    if (UpdateData(TRUE))
        Default();
}

void CFileDialog::OnCancel()
{
    Default();
}
