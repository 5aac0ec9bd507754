#include "standin/afx/afx_app.h"
#include "standin/afx/afx_dialog.h"
#include "standin/afx/afx_exception.h"
#include "standin/afx/state.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, &CDialog::OnOK)
ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
END_MESSAGE_MAP()

namespace {

INT_PTR CALLBACK dialogProcedure(HWND window, UINT message, WPARAM, LPARAM)
{
    if (message != WM_INITDIALOG)
        return FALSE;
    CDialog* dialog = DYNAMIC_DOWNCAST(CDialog, CWnd::FromHandlePermanent(window));
    return dialog ? dialog->OnInitDialog() : TRUE;
}

LPCDLGTEMPLATE loadTemplate(LPCWSTR name, HINSTANCE& module)
{
    module = AfxFindResourceHandle(name, RT_DIALOG);
    const HRSRC found = ::FindResourceW(module, name, RT_DIALOG);
    const HGLOBAL loaded = found ? ::LoadResource(module, found) : nullptr;
    return loaded ? static_cast<LPCDLGTEMPLATE>(::LockResource(loaded)) : nullptr;
}

} // namespace

CDialog::CDialog(LPCWSTR lpszTemplateName, CWnd* pParentWnd)
    : m_lpszTemplateName(lpszTemplateName), m_pParentWnd(pParentWnd)
{}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog(MAKEINTRESOURCEW(nIDTemplate), pParentWnd) {}

CDialog::~CDialog()
{
    // Here, while the class is still a dialog: its own handlers see the window's end.
    if (m_hWnd)
        DestroyWindow();
}

BOOL CDialog::Create(LPCWSTR lpszTemplateName, CWnd* pParentWnd)
{
    HINSTANCE module = nullptr;
    const LPCDLGTEMPLATE dialogTemplate = loadTemplate(lpszTemplateName, module);
    m_pParentWnd = pParentWnd ? pParentWnd : AfxGetMainWnd();
    return dialogTemplate && createFromTemplate(dialogTemplate, m_pParentWnd ? m_pParentWnd->m_hWnd : nullptr, module);
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd)
{
    return Create(MAKEINTRESOURCEW(nIDTemplate), pParentWnd);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd)
{
    m_pParentWnd = pParentWnd ? pParentWnd : AfxGetMainWnd();
    return createFromTemplate(lpDialogTemplate, m_pParentWnd ? m_pParentWnd->m_hWnd : nullptr, AfxGetResourceHandle());
}

BOOL CDialog::createFromTemplate(LPCDLGTEMPLATE dialogTemplate, HWND parent, HINSTANCE instance)
{
    AfxHookWindowCreate(this);
    const HWND window = ::CreateDialogIndirectParamW(instance, dialogTemplate, parent, dialogProcedure, 0);
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();
    return window != nullptr;
}

HWND CDialog::PreModal()
{
    const HWND owner = GetSafeOwner(m_pParentWnd ? m_pParentWnd->m_hWnd : nullptr, &m_hWndTop);
    AfxHookWindowCreate(this);
    return owner;
}

void CDialog::PostModal()
{
    AfxUnhookWindowCreate();
    Detach();
    if (m_hWndTop && ::IsWindow(m_hWndTop))
        ::EnableWindow(m_hWndTop, TRUE);
    m_hWndTop = nullptr;
}

INT_PTR CDialog::DoModal()
{
    HINSTANCE module = AfxGetResourceHandle();
    const LPCDLGTEMPLATE dialogTemplate =
        m_lpszTemplateName ? loadTemplate(m_lpszTemplateName, module) : m_lpDialogTemplate;
    if (!dialogTemplate)
        return -1;

    const HWND parent = PreModal();
    AfxUnhookWindowCreate();
    const bool parentDisabled = parent && parent != ::GetDesktopWindow() && ::IsWindowEnabled(parent);
    if (parentDisabled)
        ::EnableWindow(parent, FALSE);

    m_nModalResult = -1;
    m_nFlags |= WF_CONTINUEMODAL; // so that OnInitDialog may end the dialog
    if (createFromTemplate(dialogTemplate, parent, module)) {
        if (m_nFlags & WF_CONTINUEMODAL)
            RunModalLoop(MLF_SHOWONIDLE | (GetStyle() & DS_NOIDLEMSG ? MLF_NOIDLEMSG : 0));
        if (m_hWnd)
            SetWindowPos(nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
    }
    m_nFlags &= ~static_cast<UINT>(WF_CONTINUEMODAL);

    // The owner wakes before the dialog goes, or the operating system would activate some other program's window.
    if (parentDisabled)
        ::EnableWindow(parent, TRUE);
    if (parent && m_hWnd && ::GetActiveWindow() == m_hWnd)
        ::SetActiveWindow(parent);
    DestroyWindow();
    PostModal();
    return m_nModalResult;
}

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM)
{
    CRect before;
    GetWindowRect(&before);
    const HWND window = m_hWnd;
    const LRESULT result = Default();
    // A dialog that stays where the template put it goes to the middle of its owner.
    CRect after;
    if (::IsWindow(window) && m_hWnd == window && !(GetStyle() & (WS_VISIBLE | WS_CHILD))) {
        GetWindowRect(&after);
        if (before == after)
            CenterWindow();
    }
    return result;
}

BOOL CDialog::OnInitDialog()
{
    if (!UpdateData(FALSE))
        EndDialog(-1);
    return TRUE;
}

void CDialog::OnOK()
{
    if (UpdateData(TRUE))
        EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

void CDialog::EndDialog(int nResult)
{
    if (m_nFlags & (WF_MODALLOOP | WF_CONTINUEMODAL))
        EndModalLoop(nResult);
    ::EndDialog(m_hWnd, nResult);
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg)
{
    if (CWnd::PreTranslateMessage(pMsg))
        return TRUE;
    const bool key = pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST;
    const bool mouse = pMsg->message >= WM_MOUSEFIRST && pMsg->message <= WM_MOUSELAST;
    return (key || mouse) && IsDialogMessage(pMsg);
}

BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    // The program's commands go on to the owner; control numbers mean something only to their dialog.
    const bool command = (nCode == CN_COMMAND || nCode == CN_UPDATE_COMMAND_UI) && nID >= 0x8000 && nID < 0xF000;
    if (!command)
        return FALSE;
    CWnd* owner = GetParent();
    if (owner && owner != this && owner->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinThread* thread = AfxGetThread();
    return thread && thread->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}
